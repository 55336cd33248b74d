// SPDX-License-Identifier: MIT
#include "desk/chart/chartlayout.h"

#include "desk/chart/axisticks.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QFontMetricsF>

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <utility>

namespace vexdesk {

namespace {

// Device-independent pixels.
constexpr double padding = 6;
constexpr double tagPadding = 4;
constexpr double edge = 2;           // that no label touches
constexpr double priceDistance = 40; // between lines
constexpr double signSize = 10;
constexpr double volumeLines = 3; // where there is little room

constexpr double volumeShare = 0.2; // of the height of both panes

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::ChartLayout)
};

struct Prices
{
    double low = 0;
    double high = 0;

    void add(double price)
    {
        low = std::min(low, price);
        high = std::max(high, price);
    }
    void add(const Bar& bar)
    {
        for (const double price : {bar.low, bar.open, bar.close, bar.high})
            add(price);
    }
};

// The prices in an empty stretch are those before it, or the last ones that are known.
Bar barBefore(const ChartContent& content)
{
    const std::vector<PlacedCandle> before =
        content.axis.candles({content.range.begin, content.range.begin}, 1);
    if (!before.empty())
        return before.front().candle.bar;
    const auto& days = content.axis.series().days();
    const auto last = std::find_if(days.rbegin(), days.rend(), [](const SeriesDay& day) {
        return day.summary && day.summary->count > 0;
    });
    return last == days.rend() ? Bar() : last->summary->whole();
}

void setPrices(ChartLayout& chart, const ChartContent& content)
{
    const Bar first = chart.candles.empty() ? barBefore(content) : chart.candles.front().candle.bar;
    Prices prices{first.low, first.high};
    for (const PlacedCandle& placed : chart.candles)
        prices.add(placed.candle.bar);
    for (const PlacedStudy& study : chart.studies) {
        for (const StudyLine& line : study.shapes.lines) {
            for (const QPointF& point : line.points) {
                if (point.x() >= chart.range.begin && point.x() <= chart.range.end)
                    prices.add(point.y());
            }
        }
    }
    ChartPane& pane = chart.prices;
    constexpr double margin = 0.06;
    constexpr double leastUnits = 2;     // of the last decimal
    constexpr double leastShare = 1e-12; // of a price, or a double might not tell them apart
    const double side =
        std::max({(prices.high - prices.low) * margin, std::abs(prices.high) * leastShare,
                  leastUnits * std::pow(10.0, -pane.decimals)});
    pane.low = prices.low - side;
    pane.high = prices.high + side;
}

bool isAnyTraded(const std::vector<PlacedCandle>& candles)
{
    return std::any_of(candles.begin(), candles.end(),
                       [](const PlacedCandle& placed) { return placed.candle.bar.volume != 0; });
}

// Whether any bar of the series has one; before a day was read it is taken for granted.
bool hasVolumes(const ChartLayout& chart, const BarSeries& series)
{
    if (isAnyTraded(chart.candles))
        return true;
    bool isAnyRead = false;
    for (const SeriesDay& day : series.days()) {
        if (!day.summary || day.summary->count == 0)
            continue;
        if (day.summary->whole().volume != 0)
            return true;
        isAnyRead = true;
    }
    return !isAnyRead;
}

void setVolumes(ChartPane& pane, const std::vector<PlacedCandle>& candles)
{
    double low = 0;
    double high = 0;
    for (const PlacedCandle& placed : candles) {
        low = std::min(low, static_cast<double>(placed.candle.bar.volume));
        high = std::max(high, static_cast<double>(placed.candle.bar.volume));
    }
    constexpr double margin = 0.08;
    const double side = (high - low) * margin;
    pane.low = low < 0 ? low - side : 0;
    pane.high = high > low ? high + side : 1;
}

// In steps: the panes should not change their width with every digit.
double inSteps(double width)
{
    constexpr double step = 16;
    return std::ceil((width + 3 * padding) / step) * step;
}

double axisWidth(const ChartLayout& chart, const QFontMetricsF& metrics)
{
    double widest = 0;
    for (const ChartPane* const pane : {&chart.prices, &chart.volumes}) {
        for (const double value : {pane->low, pane->high})
            widest = std::max(widest, metrics.horizontalAdvance(pane->textOf(value)));
    }
    return inSteps(widest);
}

// In rows above the prices, where they cover nothing; answers how high the rows are.
double placeNames(ChartLayout& chart, const QFontMetricsF& metrics)
{
    constexpr double distance = 16;
    const double line = std::ceil(metrics.height());
    const double right = chart.size.width() - edge;
    QPointF at(padding, edge);
    double height = 0;
    const auto place = [&](ChartLabel& name) {
        const double width = std::min(metrics.horizontalAdvance(name.text), right - padding);
        if (at.x() > padding && at.x() + width > right)
            at = {padding, at.y() + line};
        name.text = metrics.elidedText(name.text, Qt::ElideRight, width + 1);
        name.place = QRectF(at, QSizeF(width, line));
        at.rx() += width + distance;
        height = name.place.bottom();
    };
    if (!chart.title.text.isEmpty())
        place(chart.title);
    for (PlacedStudy& study : chart.studies)
        place(study.name);
    return height;
}

void placePanes(ChartLayout& chart, const QFontMetricsF& metrics, bool hasVolumes)
{
    const double line = std::ceil(metrics.height());
    const double top = std::max(std::ceil(line / 2), placeNames(chart, metrics)) + padding;
    const double below = std::ceil(line / 2) + 2 * line + padding;
    const double width =
        std::max(1.0, std::floor(chart.size.width() - padding - axisWidth(chart, metrics)));
    const double room = std::max(2.0, chart.size.height() - top - below);
    chart.prices.place = {padding, top, width, std::floor(room)};
    chart.volumes.place = {padding, chart.prices.place.bottom(), width, 0};
    constexpr double leastForBoth = 6; // lines of text
    if (!hasVolumes || room < leastForBoth * line)
        return;
    // A label of each pane may stand out of it.
    const double both = std::max(2.0, room - line);
    const double volumeHeight = std::floor(both * volumeShare);
    chart.prices.place = {padding, top, width, std::floor(both - volumeHeight)};
    chart.volumes.place = {padding, chart.prices.place.bottom() + line, width, volumeHeight};
}

// Half a label of the axis on the right stands out of the pane.
double labelsTop(const ChartLayout& chart, const QFontMetricsF& metrics)
{
    return chart.volumes.place.bottom() + std::ceil(metrics.height() / 2);
}

void addCandles(ChartLayout& chart, const ChartContent& content)
{
    int before = 0;
    for (const auto& study : content.studies)
        before = std::max(before, study->candlesBefore());
    std::vector<PlacedCandle> all = content.axis.candles(content.range, before);
    for (const auto& study : content.studies) {
        StudyShapes shapes = study->shapes({all, content.range, chart.prices.decimals});
        const QString name = shapes.why.isEmpty()
                                 ? study->name()
                                 : QStringLiteral("%1: %2").arg(study->name(), shapes.why);
        chart.studies.push_back({std::move(shapes), {name, {}}});
    }
    const auto first =
        std::partition_point(all.begin(), all.end(), [&content](const PlacedCandle& placed) {
            return static_cast<double>(placed.slot) + 1 <= content.range.begin;
        });
    all.erase(all.begin(), first);
    chart.candles = std::move(all);
    chart.unread = content.axis.unread(content.range);
}

void addLines(ChartPane& pane, const QFontMetricsF& metrics, double distance)
{
    const int most = static_cast<int>(pane.place.height() / distance);
    const double step = valueStep(pane.low, pane.high, most, pane.decimals);
    const double first = std::ceil(pane.low / step);
    const int count = static_cast<int>((pane.high - pane.low) / step) + 1;
    for (int i = 0; i < count; ++i) {
        const double value = (first + i) * step;
        if (value > pane.high)
            break;
        AxisLine line;
        line.at = std::round(pane.yOf(value));
        line.label.text = pane.textOf(value);
        line.label.place = {pane.place.right() + padding, line.at - metrics.height() / 2,
                            metrics.horizontalAdvance(line.label.text), metrics.height()};
        pane.lines.push_back(line);
    }
}

void addAxes(ChartLayout& chart, const QFontMetricsF& metrics)
{
    const double line = metrics.height();
    addLines(chart.prices, metrics,
             std::max(line, std::min(priceDistance, chart.prices.place.height() / 3)));
    // Numbers that nothing is measured by would be taken for those of the bars.
    if (chart.hasVolumes() && isAnyTraded(chart.candles))
        addLines(chart.volumes, metrics,
                 std::clamp(chart.volumes.place.height() / volumeLines, line, 2 * line));
}

// The pane stays where bars without volumes are in view, or it would come and go with each step.
void addVolumesNote(ChartLayout& chart, const QFontMetricsF& metrics)
{
    if (!chart.hasVolumes() || chart.candles.empty() || isAnyTraded(chart.candles))
        return;
    const QString text = Text::tr("нет объёма");
    QRectF place(0, 0, metrics.horizontalAdvance(text), metrics.height());
    place.moveCenter(chart.volumes.place.center());
    chart.volumesNote = {text, place};
}

// Centred below this point, but inside: a label may be wider than what is beside the pane.
ChartLabel centredLabel(const QString& text, const QPointF& top, double right,
                        const QFontMetricsF& metrics, double margin = 0)
{
    const double width = metrics.horizontalAdvance(text) + 2 * margin;
    const double left = std::min(top.x() - width / 2, right - edge - width);
    return {text, {std::max(edge, left), top.y(), width, metrics.height()}};
}

bool isFree(const QRectF& place, const std::vector<QRectF>& taken, double distance)
{
    return std::none_of(taken.begin(), taken.end(), [&](const QRectF& other) {
        return place.left() < other.right() + distance && other.left() < place.right() + distance;
    });
}

// The ticks that have room, by their rank.
std::vector<size_t> byRank(const std::vector<TimeTick>& ticks)
{
    std::vector<size_t> order(ticks.size());
    std::iota(order.begin(), order.end(), size_t(0));
    std::stable_sort(order.begin(), order.end(), [&ticks](size_t left, size_t right) {
        return ticks[left].rank > ticks[right].rank;
    });
    return order;
}

// The places of dates and years by the slots at which these begin.
using HeadingPlaces = std::map<qint64, QRectF>;

HeadingPlaces addHeadings(ChartLayout& chart, const TimeTicks& found, const QFontMetricsF& metrics)
{
    const double top = labelsTop(chart, metrics) + metrics.height();
    std::vector<QRectF> taken;
    HeadingPlaces dated;
    const auto add = [&](const ChartLabel& label) {
        if (!isFree(label.place, taken, 2 * tagPadding))
            return false;
        taken.push_back(label.place);
        chart.headings.push_back(label);
        return true;
    };
    const double right = chart.size.width();
    const auto addAll = [&](QString TimeTick::*text) {
        for (const size_t i : byRank(found.ticks)) {
            const TimeTick& tick = found.ticks[i];
            if ((tick.*text).isEmpty() || dated.count(tick.slot) > 0)
                continue;
            const double x = std::round(chart.xOf(static_cast<double>(tick.slot)));
            const ChartLabel label = centredLabel(tick.*text, {x, top}, right, metrics);
            if (add(label))
                dated.emplace(tick.slot, label.place);
        }
    };
    addAll(&TimeTick::heading);
    addAll(&TimeTick::shortHeading);
    // What the view begins in the middle of gives way to what begins in it.
    if (!found.first.isEmpty())
        add(centredLabel(found.first, {chart.prices.place.left(), top}, right, metrics));
    return dated;
}

// The same time twice, where no date has room that tells them apart, says nothing.
void dropRepeatedTimes(std::vector<std::pair<qint64, AxisLine>>& lines, const HeadingPlaces& dated)
{
    QString before;
    for (auto& [slot, line] : lines) {
        if (line.label.text.isEmpty())
            continue;
        if (line.label.text == before && dated.count(slot) == 0)
            line.label = {};
        else
            before = line.label.text;
    }
}

// What stands above the date of the next day would be taken for a time of it.
bool isAboveNextDate(const QRectF& place, qint64 slot, const HeadingPlaces& dated)
{
    const auto next = dated.upper_bound(slot);
    return next != dated.end() && place.right() > next->second.left();
}

TimeTicks ticksOf(const ChartLayout& chart, const TimeAxis& axis, const QFontMetricsF& metrics)
{
    const double time = metrics.horizontalAdvance(QStringLiteral("00:00:00")) + 3 * padding;
    const double date = metrics.horizontalAdvance(QStringLiteral("00.00")) + 2 * padding;
    constexpr double dayLine = 20;
    const double slot = chart.slotWidth();
    return timeTicks(axis.begins(chart.range), chart.range,
                     {time / slot, date / slot, dayLine / slot}, axis.timeframe());
}

void addTimes(ChartLayout& chart, const TimeAxis& axis, const QFontMetricsF& metrics)
{
    const TimeTicks found = ticksOf(chart, axis, metrics);
    const double top = labelsTop(chart, metrics);
    const HeadingPlaces dated = addHeadings(chart, found, metrics);
    std::vector<std::pair<qint64, AxisLine>> lines;
    std::vector<QRectF> taken;
    for (const size_t i : byRank(found.ticks)) {
        const TimeTick& tick = found.ticks[i];
        AxisLine line;
        line.at = std::round(chart.xOf(static_cast<double>(tick.slot)));
        line.isBegin = tick.isBegin;
        ChartLabel label = centredLabel(tick.label, {line.at, top}, chart.size.width(), metrics);
        const bool hasRoom =
            isFree(label.place, taken, padding) && !isAboveNextDate(label.place, tick.slot, dated);
        if (hasRoom && !tick.label.isEmpty()) {
            taken.push_back(label.place);
            line.label = std::move(label);
        }
        // A day is seen to begin where its time or its date has no room too.
        if (hasRoom || tick.isKept)
            lines.emplace_back(tick.slot, line);
    }
    std::sort(lines.begin(), lines.end(),
              [](const auto& left, const auto& right) { return left.first < right.first; });
    dropRepeatedTimes(lines, dated);
    for (const auto& [slot, line] : lines)
        chart.times.push_back(line);
}

// Beside the pane, as far as there is room.
ChartLabel valueTag(const ChartLayout& chart, const ChartPane& pane, double value, double y,
                    const QFontMetricsF& metrics)
{
    ChartLabel tag =
        centredLabel(pane.textOf(value), {chart.size.width(), y - metrics.height() / 2},
                     chart.size.width(), metrics, tagPadding);
    tag.place.moveLeft(std::min(tag.place.left(), pane.place.right() + 1));
    return tag;
}

void addLastPrice(ChartLayout& chart, const TimeAxis& axis, const QFontMetricsF& metrics)
{
    const auto& days = axis.series().days();
    const auto day = std::find_if(days.rbegin(), days.rend(), [](const SeriesDay& one) {
        return !one.summary || one.summary->count > 0;
    });
    if (day == days.rend() || !day->summary)
        return;
    Bar bar = day->summary->whole();
    if (bar.close <= chart.prices.low || bar.close >= chart.prices.high)
        return;
    LastPrice last;
    last.at = std::round(chart.prices.yOf(bar.close));
    last.label = valueTag(chart, chart.prices, bar.close, last.at, metrics);
    // In the colour of the candle that it belongs to.
    if (!chart.candles.empty() && chart.candles.back().candle.bar.time == bar.time)
        bar = chart.candles.back().candle.bar;
    last.isRising = bar.close >= bar.open;
    chart.last = last;
}

void addMarks(ChartLayout& chart, const QList<ChartMark>& marks)
{
    if (marks.isEmpty())
        return;
    constexpr double distance = 4;
    for (const CandleMark& mark : marksOfCandles(marks, chart.candles)) {
        const PlacedCandle& placed = chart.candles[mark.candle];
        const Bar& bar = placed.candle.bar;
        const double y = std::round(chart.prices.yOf(std::min({bar.low, bar.open, bar.close})));
        const double top = std::min(y + distance, chart.prices.place.bottom() - signSize);
        const double left = chart.columnOf(placed).middle() - std::floor(signSize / 2);
        chart.marks.push_back({mark, {left, top, signSize, signSize}});
    }
}

// The candle whose middle is nearest; there is one.
size_t nearestCandle(const std::vector<PlacedCandle>& candles, double slot)
{
    const auto after =
        std::partition_point(candles.begin(), candles.end(),
                             [slot](const PlacedCandle& candle) { return candle.middle() < slot; });
    const bool isBefore =
        after == candles.end() ||
        (after != candles.begin() && slot - (after - 1)->middle() < after->middle() - slot);
    return static_cast<size_t>(after - candles.begin()) - (isBefore ? 1 : 0);
}

// A day that was not read may have a candle of what the next one tells of it.
bool isUnread(const ChartLayout& chart, double slot)
{
    const auto isIn = [slot](const SlotRange& stretch) {
        return stretch.begin <= slot && slot < stretch.end;
    };
    if (std::none_of(chart.unread.begin(), chart.unread.end(), isIn))
        return false;
    return chart.candles.empty() ||
           static_cast<double>(chart.candles[nearestCandle(chart.candles, slot)].slot) !=
               std::floor(slot);
}

void setTime(Crosshair& crosshair, const ChartLayout& chart, const QFontMetricsF& metrics)
{
    const PlacedCandle& placed = chart.candles[*crosshair.candle];
    crosshair.slot = placed.slot;
    crosshair.at.setX(chart.columnOf(placed).middle());
    crosshair.time = centredLabel(candleTimeText(placed.candle, chart.kind),
                                  {crosshair.at.x(), labelsTop(chart, metrics)}, chart.size.width(),
                                  metrics, tagPadding);
}

} // namespace

QString ChartPane::textOf(double value) const
{
    const QString text = numberText(value, decimals);
    return isGrouped ? groupedText(text) : text;
}

CandleColumn ChartLayout::columnOf(const PlacedCandle& candle) const
{
    constexpr double share = 0.7; // of the slot's width
    CandleColumn column;
    column.width = 2 * std::floor(slotWidth() * share / 2) + 1;
    column.left = std::round(xOf(candle.middle()) - column.width / 2);
    return column;
}

std::optional<Crosshair> ChartLayout::crosshairAt(const QPointF& mouse) const
{
    const double slot = slotAt(mouse.x());
    if (candles.empty() || isUnread(*this, slot) ||
        !prices.place.united(volumes.place).contains(mouse))
        return std::nullopt;
    const QFontMetricsF metrics(font);
    Crosshair crosshair;
    crosshair.candle = nearestCandle(candles, slot);
    crosshair.at = mouse;
    setTime(crosshair, *this, metrics);
    const bool isPrice = !hasVolumes() || mouse.y() <= prices.place.bottom();
    const ChartPane& pane = isPrice ? prices : volumes;
    if (isPrice || !pane.lines.empty())
        crosshair.value = valueTag(*this, pane, pane.valueAt(mouse.y()), mouse.y(), metrics);
    return crosshair;
}

std::optional<Crosshair> ChartLayout::crosshairOn(qint64 slot) const
{
    const double middle = static_cast<double>(slot) + 0.5;
    if (!isInView(middle))
        return std::nullopt;
    Crosshair crosshair;
    if (isUnread(*this, middle)) {
        crosshair.slot = slot;
        crosshair.at = {std::round(xOf(middle)), prices.place.bottom()};
        return crosshair;
    }
    if (candles.empty())
        return std::nullopt;
    const QFontMetricsF metrics(font);
    crosshair.candle = nearestCandle(candles, middle);
    setTime(crosshair, *this, metrics);
    const double close = candles[*crosshair.candle].candle.bar.close;
    crosshair.at.setY(std::round(prices.yOf(close)));
    crosshair.value = valueTag(*this, prices, close, crosshair.at.y(), metrics);
    return crosshair;
}

const MarkSign* ChartLayout::markAt(const QPointF& place) const
{
    const auto found = std::find_if(marks.begin(), marks.end(), [&place](const MarkSign& sign) {
        return sign.place.contains(place);
    });
    return found == marks.end() ? nullptr : &*found;
}

const MarkSign* ChartLayout::markOf(size_t candle) const
{
    const auto found = std::find_if(marks.begin(), marks.end(), [candle](const MarkSign& sign) {
        return sign.mark.candle == candle;
    });
    return found == marks.end() ? nullptr : &*found;
}

double usualPaneWidth(const QSizeF& size, const QFont& font)
{
    const double label = QFontMetricsF(font).horizontalAdvance(QStringLiteral("000000.00"));
    return std::max(1.0, size.width() - padding - inSteps(label));
}

ChartLayout layOutChart(const ChartContent& content, const QSizeF& size, const QFont& font)
{
    const QFontMetricsF metrics(font);
    ChartLayout chart;
    chart.size = size;
    chart.font = font;
    chart.range = content.range;
    chart.kind = {content.axis.timeframe(), content.axis.series().timeframe()};
    chart.title.text = content.title;
    chart.fullTitle = content.title;
    chart.prices.decimals = content.axis.series().decimals();
    chart.volumes.isGrouped = true;
    addCandles(chart, content);
    setPrices(chart, content);
    setVolumes(chart.volumes, chart.candles);
    placePanes(chart, metrics, hasVolumes(chart, content.axis.series()));
    addAxes(chart, metrics);
    addVolumesNote(chart, metrics);
    addTimes(chart, content.axis, metrics);
    addLastPrice(chart, content.axis, metrics);
    addMarks(chart, content.marks);
    content.axis.folded()->letGo();
    return chart;
}

} // namespace vexdesk
