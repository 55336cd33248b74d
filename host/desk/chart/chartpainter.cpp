// SPDX-License-Identifier: MIT
#include "desk/chart/chartpainter.h"

#include "desk/chart/chartcolors.h"

#include <QtCore/QVarLengthArray>
#include <QtGui/QPainter>
#include <QtGui/QPolygonF>

#include <algorithm>
#include <cmath>
#include <optional>

namespace vexdesk {

namespace {

constexpr double tickLength = 4;

// What is filled with one colour, in one call, as far as it is in a place. Whole pixels without a
// pen: outlines and lines take many times as long to paint. The painter is not told to clip: a file
// of lines and areas knows nothing of that, and would show what is beside the panes.
class Fills
{
public:
    explicit Fills(const QRectF& place)
        : m_place(place.toRect())
    {}

    void add(double left, double top, double width, double height)
    {
        if (width <= 0 || height <= 0)
            return;
        const QRect seen = QRectF(left, top, width, height).toRect() & m_place;
        if (!seen.isEmpty())
            m_rects.append(seen);
    }
    void addLevel(double left, double right, double y) { add(left, y, right - left, 1); }
    void addUpright(double x, double top, double bottom) { add(x, top, 1, bottom - top); }

    void paint(QPainter& painter, const QColor& color) const
    {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawRects(m_rects.constData(), static_cast<int>(m_rects.size()));
    }

private:
    QRect m_place;
    QVarLengthArray<QRect, 1024> m_rects;
};

// Rising and falling bars of one pane.
class BarFills
{
public:
    explicit BarFills(const QRectF& place)
        : m_rising(place)
        , m_hollow(place)
        , m_falling(place)
    {}

    // `bottom` is the last row of pixels that is filled.
    void addBody(const Bar& bar, const CandleColumn& column, double top, double bottom)
    {
        const double height = bottom - top + 1;
        of(bar).add(column.left, top, column.width, height);
        if (bar.close >= bar.open)
            m_hollow.add(column.left + 1, top + 1, column.width - 2, height - 2);
    }
    void addWick(const Bar& bar, double x, double top, double bottom)
    {
        of(bar).addUpright(x, top, bottom);
    }
    void paint(QPainter& painter, const ChartColors& colors) const
    {
        m_rising.paint(painter, colors.rising);
        m_hollow.paint(painter, colors.background);
        m_falling.paint(painter, colors.falling);
    }

private:
    Fills& of(const Bar& bar) { return bar.close < bar.open ? m_falling : m_rising; }

    Fills m_rising;
    Fills m_hollow;
    Fills m_falling;
};

void addCandle(BarFills& fills, const ChartPane& pane, const CandleColumn& column, const Bar& bar)
{
    const auto y = [&pane](double price) { return std::round(pane.yOf(price)); };
    const auto [low, high] = std::minmax(bar.open, bar.close);
    const double top = y(high);
    const double bottom = y(low);
    fills.addBody(bar, column, top, bottom);
    fills.addWick(bar, column.middle(), y(bar.high), top);
    fills.addWick(bar, column.middle(), bottom + 1, y(bar.low) + 1);
}

void addVolume(BarFills& fills, const ChartPane& pane, const CandleColumn& column, const Bar& bar)
{
    const auto volume = static_cast<double>(bar.volume);
    const double top = std::round(pane.yOf(std::max(0.0, volume)));
    const double bottom = std::round(pane.yOf(std::min(0.0, volume))) - 1;
    fills.addBody(bar, column, std::min(top, bottom), bottom);
}

void paintBars(QPainter& painter, const ChartLayout& chart, const ChartColors& colors)
{
    BarFills prices(chart.prices.place);
    BarFills volumes(chart.volumes.place);
    for (const PlacedCandle& placed : chart.candles) {
        const Bar& bar = placed.candle.bar;
        const CandleColumn column = chart.columnOf(placed);
        addCandle(prices, chart.prices, column, bar);
        if (bar.volume != 0)
            addVolume(volumes, chart.volumes, column, bar);
    }
    prices.paint(painter, colors);
    volumes.paint(painter, colors);
}

// From side to side of the slots, in both panes.
void fillSlots(QPainter& painter, const ChartLayout& chart, const SlotRange& range,
               const QColor& color)
{
    const double left = std::max(chart.prices.place.left(), std::round(chart.xOf(range.begin)));
    const double right = std::min(chart.prices.place.right(), std::round(chart.xOf(range.end)));
    if (right <= left)
        return;
    for (const ChartPane* const pane : {&chart.prices, &chart.volumes})
        painter.fillRect(QRectF(left, pane->place.top(), right - left, pane->place.height()),
                         color);
}

void paintGrid(QPainter& painter, const ChartLayout& chart, const ChartColors& colors)
{
    const QRectF everything(QPointF(), chart.size);
    Fills grid(everything);
    Fills axes(everything); // and where days begin
    for (const ChartPane* const pane : {&chart.prices, &chart.volumes}) {
        const QRectF& place = pane->place;
        for (const AxisLine& line : chart.times)
            (line.isBegin ? axes : grid).addUpright(line.at, place.top(), place.bottom());
        for (const AxisLine& line : pane->lines) {
            grid.addLevel(place.left(), place.right(), line.at);
            axes.addLevel(place.right(), place.right() + tickLength, line.at);
        }
        if (!pane->lines.empty())
            axes.addUpright(place.right(), place.top(), place.bottom());
    }
    const double bottom = chart.volumes.place.bottom();
    for (const AxisLine& line : chart.times)
        axes.addUpright(line.at, bottom, bottom + tickLength);
    grid.paint(painter, colors.grid);
    axes.paint(painter, colors.dayLine);
}

const QColor& colorOf(const ChartColors& colors, size_t study)
{
    return colors.studies[study % colors.studies.size()];
}

// Below the candles: the rows that studies have at the right side.
void paintRows(QPainter& painter, const ChartLayout& chart, const ChartColors& colors)
{
    constexpr double longest = 0.3; // of the pane
    constexpr float seenThrough = 0.25F;
    const ChartPane& pane = chart.prices;
    for (const PlacedStudy& study : chart.studies) {
        for (const StudyRow& row : study.shapes.rows) {
            const double top = std::round(pane.yOf(row.high));
            const double height = std::max(1.0, std::round(pane.yOf(row.low)) - top - 1);
            double right = pane.place.right();
            for (const auto& [share, base] :
                 {std::pair(row.rising, colors.rising), std::pair(row.falling, colors.falling)}) {
                QColor color = base;
                color.setAlphaF(seenThrough);
                const double width = std::round(share * longest * pane.place.width());
                const QRectF whole(right - width, top, width, height);
                painter.fillRect(whole.intersected(pane.place), color);
                right -= width;
            }
        }
    }
}

// The part of a line that is within a place; nothing where it only passes by.
std::optional<QLineF> within(const QRectF& place, const QLineF& line)
{
    double from = 0;
    double to = 1;
    // As far as it is inside of each edge, when it comes in or goes out there.
    const auto cut = [&from, &to](double speed, double distance) {
        if (speed < 0)
            from = std::max(from, distance / speed);
        else if (speed > 0)
            to = std::min(to, distance / speed);
        else if (distance < 0)
            to = -1;
    };
    cut(-line.dx(), line.x1() - place.left());
    cut(line.dx(), place.right() - line.x1());
    cut(-line.dy(), line.y1() - place.top());
    cut(line.dy(), place.bottom() - line.y1());
    if (from >= to)
        return std::nullopt;
    return QLineF(line.pointAt(from), line.pointAt(to));
}

void paintStudyLines(QPainter& painter, const ChartLayout& chart, const ChartColors& colors)
{
    constexpr double lineWidth = 1.6;
    const auto placeOf = [&chart](const QPointF& point) {
        return QPointF(chart.xOf(point.x()), chart.prices.yOf(point.y()));
    };
    constexpr double half = lineWidth / 2;
    const QRectF seen = chart.prices.place.adjusted(half, half, -half, -half);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    for (size_t i = 0; i < chart.studies.size(); ++i) {
        painter.setPen(QPen(colorOf(colors, i), lineWidth));
        // Piece by piece: a polyline with joins takes many times as long.
        QVarLengthArray<QLineF, 1024> pieces;
        for (const StudyLine& line : chart.studies[i].shapes.lines) {
            for (size_t at = 1; at < line.points.size(); ++at) {
                const QLineF whole(placeOf(line.points[at - 1]), placeOf(line.points[at]));
                if (const std::optional<QLineF> piece = within(seen, whole))
                    pieces.append(*piece);
            }
        }
        painter.drawLines(pieces.constData(), static_cast<int>(pieces.size()));
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
}

// Different in shape too, for those who do not see the colours.
void paintMarks(QPainter& painter, const ChartLayout& chart, const ChartColors& colors)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colors.background, 1));
    for (const MarkSign& sign : chart.marks) {
        const QRectF& place = sign.place;
        const QPointF middle = place.center();
        switch (sign.mark.kind) {
        case ChartMark::Kind::Note:
            painter.setBrush(colors.note);
            painter.drawEllipse(place);
            break;
        case ChartMark::Kind::Warning:
            painter.setBrush(colors.warning);
            painter.drawPolygon(
                QPolygonF({{middle.x(), place.top()}, place.bottomRight(), place.bottomLeft()}));
            break;
        case ChartMark::Kind::Fault:
            painter.setBrush(colors.fault);
            painter.drawPolygon(QPolygonF({{middle.x(), place.top()},
                                           {place.right(), middle.y()},
                                           {middle.x(), place.bottom()},
                                           {place.left(), middle.y()}}));
            break;
        }
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setBrush(Qt::NoBrush);
}

void paintTag(QPainter& painter, const ChartLabel& label, const QColor& ground, const QColor& text)
{
    painter.fillRect(label.place, ground);
    painter.setPen(text);
    painter.drawText(label.place, Qt::AlignCenter | Qt::TextDontClip, label.text);
}

void paintNames(QPainter& painter, const ChartLayout& chart, const ChartColors& colors)
{
    const auto paint = [&](const ChartLabel& name, const QColor& color) {
        painter.setPen(color);
        painter.drawText(name.place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip,
                         name.text);
    };
    paint(chart.title, colors.text);
    for (size_t i = 0; i < chart.studies.size(); ++i)
        paint(chart.studies[i].name,
              chart.studies[i].shapes.lines.empty() ? colors.text : colorOf(colors, i));
}

void paintLabels(QPainter& painter, const ChartLayout& chart,
                 const std::optional<Crosshair>& crosshair)
{
    std::vector<QRectF> covered;
    if (crosshair)
        covered = {crosshair->time.place, crosshair->value.place};
    if (chart.last)
        covered.push_back(chart.last->label.place);
    constexpr double distance = 4;
    const auto paint = [&](const ChartLabel& label) {
        // Rather none than what is left of one below another, or than two that look like one.
        const QRectF around = label.place.adjusted(-distance, 0, distance, 0);
        if (std::none_of(covered.begin(), covered.end(),
                         [&around](const QRectF& place) { return place.intersects(around); }))
            painter.drawText(label.place, Qt::AlignCenter | Qt::TextDontClip, label.text);
    };
    for (const auto* const lines : {&chart.prices.lines, &chart.volumes.lines, &chart.times}) {
        for (const AxisLine& line : *lines)
            paint(line.label);
    }
    for (const ChartLabel& heading : chart.headings)
        paint(heading);
}

void paintLastPrice(QPainter& painter, const ChartLayout& chart, const ChartColors& colors,
                    const std::optional<Crosshair>& crosshair)
{
    const QColor& color = chart.last->isRising ? colors.rising : colors.falling;
    const QRectF& place = chart.prices.place;
    painter.setPen(QPen(color, 1, Qt::DotLine, Qt::FlatCap));
    painter.drawLine(QLineF(place.left(), chart.last->at, place.right(), chart.last->at));
    // As other labels: rather none than half of one below that of the crosshair.
    if (!crosshair || !crosshair->value.place.intersects(chart.last->label.place))
        paintTag(painter, chart.last->label, color, colors.background);
}

void paintCrosshair(QPainter& painter, const ChartLayout& chart, const ChartColors& colors,
                    const Crosshair& crosshair)
{
    const QRectF& prices = chart.prices.place;
    painter.setPen(QPen(colors.crosshair, 1, Qt::DashLine));
    painter.drawLine(
        QLineF(crosshair.at.x(), prices.top(), crosshair.at.x(), chart.volumes.place.bottom()));
    if (crosshair.candle)
        painter.drawLine(QLineF(prices.left(), crosshair.at.y(), prices.right(), crosshair.at.y()));
    for (const ChartLabel* const label : {&crosshair.time, &crosshair.value}) {
        if (!label->text.isEmpty())
            paintTag(painter, *label, colors.tag, colors.tagText);
    }
}

} // namespace

void paintChart(QPainter& painter, const ChartLayout& chart, const ChartColors& colors,
                const ChartOverlay& overlay)
{
    painter.setFont(chart.font);
    for (const SlotRange& stretch : chart.unread)
        fillSlots(painter, chart, stretch, colors.unread);
    paintGrid(painter, chart, colors);
    paintRows(painter, chart, colors);
    paintBars(painter, chart, colors);
    paintStudyLines(painter, chart, colors);
    paintMarks(painter, chart, colors);
    paintNames(painter, chart, colors);
    painter.setPen(colors.text);
    paintLabels(painter, chart, overlay.crosshair);
    if (chart.last)
        paintLastPrice(painter, chart, colors, overlay.crosshair);
    if (overlay.marked)
        fillSlots(painter, chart, *overlay.marked, colors.band);
    if (overlay.crosshair)
        paintCrosshair(painter, chart, colors, *overlay.crosshair);
}

} // namespace vexdesk
