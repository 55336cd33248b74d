// SPDX-License-Identifier: MIT
#include "desk/chart/chartlayout.h"

#include "desk/chart/axisticks.h"
#include "desk/chart/readout.h"

#include <QtGui/QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace vexdesk {

namespace {

// Device-independent pixels.
constexpr double thinnestCandle = 4; // with the gap beside it
constexpr double padding = 6;
constexpr double tagPadding = 4;
constexpr double edge = 2;           // that no label touches
constexpr double priceDistance = 40; // between lines

constexpr double volumeShare = 0.2; // of the height of both panes

void setPrices(ChartPane& pane, const std::vector<Candle>& candles, const Bar& otherwise)
{
    const Bar& first = candles.empty() ? otherwise : candles.front().bar;
    pane.low = first.low;
    pane.high = first.high;
    for (const Candle& candle : candles) {
        const Bar& bar = candle.bar;
        pane.low = std::min({pane.low, bar.low, bar.open, bar.close});
        pane.high = std::max({pane.high, bar.high, bar.open, bar.close});
    }
    constexpr double margin = 0.06;
    constexpr double leastUnits = 2;     // of the last decimal
    constexpr double leastShare = 1e-12; // of a price, or a double might not tell them apart
    const double side = std::max({(pane.high - pane.low) * margin, std::abs(pane.high) * leastShare,
                                  leastUnits * std::pow(10.0, -pane.decimals)});
    pane.low -= side;
    pane.high += side;
}

void setVolumes(ChartPane& pane, const std::vector<Candle>& candles)
{
    double low = 0;
    double high = 0;
    for (const Candle& candle : candles) {
        low = std::min(low, static_cast<double>(candle.bar.volume));
        high = std::max(high, static_cast<double>(candle.bar.volume));
    }
    constexpr double margin = 0.08;
    const double side = (high - low) * margin;
    pane.low = low < 0 ? low - side : 0;
    pane.high = high > low ? high + side : 1;
}

double axisWidth(const ChartLayout& chart, const QFontMetricsF& metrics)
{
    double widest = 0;
    for (const ChartPane* const pane : {&chart.prices, &chart.volumes}) {
        for (const double value : {pane->low, pane->high})
            widest = std::max(widest, metrics.horizontalAdvance(pane->textOf(value)));
    }
    // In steps: the panes should not change their width with every digit.
    constexpr double step = 16;
    return std::ceil((widest + 3 * padding) / step) * step;
}

void placePanes(ChartLayout& chart, const QFontMetricsF& metrics, double axisWidth)
{
    const double line = std::ceil(metrics.height());
    const double top = std::ceil(line / 2) + padding;
    const double below = std::ceil(line / 2) + 2 * line + padding;
    const double width = std::max(1.0, std::floor(chart.size.width() - padding - axisWidth));
    // A label of each pane may stand out of it.
    const double both = std::max(2.0, chart.size.height() - top - below - line);
    const double volumeHeight = std::floor(both * volumeShare);
    chart.prices.place = {padding, top, width, std::floor(both - volumeHeight)};
    chart.volumes.place = {padding, chart.prices.place.bottom() + line, width, volumeHeight};
}

// Half a label of the axis on the right stands out of the pane.
double labelsTop(const ChartLayout& chart, const QFontMetricsF& metrics)
{
    return chart.volumes.place.bottom() + std::ceil(metrics.height() / 2);
}

qint64 intervalFor(const ChartLayout& chart)
{
    const double secondsPerPixel = chart.time.length() / chart.prices.place.width();
    return candleInterval(secondsPerPixel * thinnestCandle, chart.timeframe);
}

void addCandles(ChartLayout& chart, const BarSeries& series)
{
    chart.interval = intervalFor(chart);
    chart.candles = candlesOf(series, chart.interval, chart.time.begin, chart.time.end);
    // In an empty stretch the prices are those before it.
    const qsizetype before = series.firstAfter(static_cast<qint64>(chart.time.begin)) - 1;
    setPrices(chart.prices, chart.candles, series.at(std::max(qsizetype(0), before)));
    setVolumes(chart.volumes, chart.candles);
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

double xOfTick(const ChartLayout& chart, const TimeTick& tick)
{
    return std::round(chart.xOf(static_cast<double>(tick.time)));
}

// Centred below this point, but inside: a label may be wider than what is beside the pane.
ChartLabel centredLabel(const QString& text, const QPointF& top, double right,
                        const QFontMetricsF& metrics, double margin = 0)
{
    const double width = metrics.horizontalAdvance(text) + 2 * margin;
    const double left = std::min(top.x() - width / 2, right - edge - width);
    return {text, {std::max(edge, left), top.y(), width, metrics.height()}};
}

void addHeadings(ChartLayout& chart, const std::vector<TimeTick>& ticks,
                 const QFontMetricsF& metrics)
{
    const double top = labelsTop(chart, metrics) + metrics.height();
    std::vector<ChartLabel> labels;
    for (const TimeTick& tick : ticks) {
        if (!tick.heading.isEmpty())
            labels.push_back(centredLabel(tick.heading, {xOfTick(chart, tick), top},
                                          chart.prices.place.right(), metrics));
    }
    // The first one gives way to the begin of the next day.
    const auto follows = [](const ChartLabel& left, const ChartLabel& right) {
        return left.place.right() + 2 * tagPadding <= right.place.left();
    };
    if (labels.size() > 1 && !ticks.front().isBegin && !follows(labels[0], labels[1]))
        labels.erase(labels.begin());
    for (const ChartLabel& label : labels) {
        if (chart.headings.empty() || follows(chart.headings.back(), label))
            chart.headings.push_back(label);
    }
}

void addTimes(ChartLayout& chart, const QFontMetricsF& metrics)
{
    const double labelWidth = metrics.horizontalAdvance(QStringLiteral("00:00:00")) + 3 * padding;
    const std::vector<TimeTick> ticks =
        timeTicks(chart.time, static_cast<int>(chart.prices.place.width() / labelWidth));
    const double top = labelsTop(chart, metrics);
    for (const TimeTick& tick : ticks) {
        const double x = xOfTick(chart, tick);
        chart.times.push_back(
            {x, centredLabel(tick.label, {x, top}, chart.size.width(), metrics), tick.isBegin});
    }
    addHeadings(chart, ticks, metrics);
}

size_t nearestCandle(const std::vector<Candle>& candles, double time)
{
    const auto after =
        std::partition_point(candles.begin(), candles.end(),
                             [time](const Candle& candle) { return candle.middle() < time; });
    const bool isBefore =
        after == candles.end() ||
        (after != candles.begin() && time - (after - 1)->middle() < after->middle() - time);
    return static_cast<size_t>(after - candles.begin()) - (isBefore ? 1 : 0);
}

} // namespace

QString ChartPane::textOf(double value) const
{
    const QString text = numberText(value, decimals);
    return isGrouped ? groupedText(text) : text;
}

CandleColumn ChartLayout::columnOf(const Candle& candle) const
{
    constexpr double share = 0.7; // of the interval's width
    constexpr double thinnest = 3;
    const double slot =
        xOf(static_cast<double>(candle.end)) - xOf(static_cast<double>(candle.begin));
    CandleColumn column;
    column.width = std::max(thinnest, 2 * std::floor(slot * share / 2) + 1);
    column.left = std::round(xOf(candle.middle()) - column.width / 2);
    return column;
}

std::optional<Crosshair> ChartLayout::crosshairAt(const QPointF& mouse) const
{
    if (candles.empty() || !prices.place.united(volumes.place).contains(mouse))
        return std::nullopt;
    const QFontMetricsF metrics(font);
    Crosshair crosshair;
    crosshair.candle = nearestCandle(candles, timeAt(mouse.x()));
    const Candle& candle = candles[crosshair.candle];
    crosshair.at = {columnOf(candle).middle(), mouse.y()};
    crosshair.time = centredLabel(candleTimeText(candle, interval, timeframe),
                                  {crosshair.at.x(), labelsTop(*this, metrics)}, size.width(),
                                  metrics, tagPadding);
    const bool isPrice = mouse.y() <= prices.place.bottom();
    const ChartPane& pane = isPrice ? prices : volumes;
    if (isPrice || !pane.lines.empty()) {
        // Beside the pane, as far as there is room.
        crosshair.value = centredLabel(pane.textOf(pane.valueAt(mouse.y())),
                                       {size.width(), mouse.y() - metrics.height() / 2},
                                       size.width(), metrics, tagPadding);
        QRectF& place = crosshair.value.place;
        place.moveLeft(std::min(place.left(), pane.place.right() + 1));
    }
    return crosshair;
}

ChartLayout layOutChart(const BarSeries& series, int timeframe, const TimeRange& time,
                        const QSizeF& size, const QFont& font)
{
    ChartLayout chart;
    chart.size = size;
    chart.font = font;
    chart.time = time;
    chart.timeframe = timeframe;
    chart.prices.decimals = series.decimals();
    chart.volumes.isGrouped = true;
    const QFontMetricsF metrics(font);
    // How wide the axes are depends on the candles, and how many candles there are on the room that
    // the axes leave.
    placePanes(chart, metrics, 0);
    addCandles(chart, series);
    placePanes(chart, metrics, axisWidth(chart, metrics));
    if (intervalFor(chart) != chart.interval)
        addCandles(chart, series);

    const double line = metrics.height();
    addLines(chart.prices, metrics,
             std::max(line, std::min(priceDistance, chart.prices.place.height() / 3)));
    // Numbers that nothing is measured by would be taken for those of the bars.
    if (std::any_of(chart.candles.begin(), chart.candles.end(),
                    [](const Candle& candle) { return candle.bar.volume != 0; }))
        addLines(chart.volumes, metrics, line);
    addTimes(chart, metrics);
    return chart;
}

} // namespace vexdesk
