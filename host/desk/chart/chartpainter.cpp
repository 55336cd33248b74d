// SPDX-License-Identifier: MIT
#include "desk/chart/chartpainter.h"

#include "desk/chart/chartcolors.h"

#include <QtCore/QVarLengthArray>
#include <QtGui/QPainter>
#include <QtGui/QPolygonF>

#include <algorithm>
#include <cmath>

namespace vexdesk {

namespace {

constexpr double tickLength = 4;

// What is drawn in one colour, in few calls.
struct Strokes
{
    QVarLengthArray<QLineF, 1024> lines;
    QVarLengthArray<QRectF, 512> bodies;

    void addBody(const CandleColumn& column, double top, double bottom)
    {
        // With a pen of one pixel the outline is as wide as the column.
        top = std::round(top);
        bodies.append(
            QRectF(column.left, top, column.width - 1, std::max(0.0, std::round(bottom) - top)));
    }
    void paint(QPainter& painter, const QColor& color, const QBrush& fill = Qt::NoBrush) const
    {
        painter.setPen(QPen(color, 1, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
        painter.setBrush(fill);
        painter.drawLines(lines.constData(), static_cast<int>(lines.size()));
        painter.drawRects(bodies.constData(), static_cast<int>(bodies.size()));
    }
};

// Rising and falling bars of one pane.
struct PaneStrokes
{
    Strokes rising;
    Strokes falling;

    Strokes& of(const Bar& bar) { return bar.close < bar.open ? falling : rising; }
    void paint(QPainter& painter, const QRectF& place, const ChartColors& colors) const
    {
        painter.setClipRect(place);
        rising.paint(painter, colors.rising, colors.background);
        falling.paint(painter, colors.falling, colors.falling);
        painter.setClipping(false);
    }
};

void addCandle(Strokes& strokes, const ChartPane& pane, const CandleColumn& column, const Bar& bar)
{
    const auto y = [&pane](double price) { return std::round(pane.yOf(price)); };
    const auto [bottom, top] = std::minmax(bar.open, bar.close);
    strokes.addBody(column, y(top), y(bottom));
    const double x = column.middle();
    if (bar.high > top)
        strokes.lines.append(QLineF(x, y(bar.high), x, y(top)));
    if (bar.low < bottom)
        strokes.lines.append(QLineF(x, y(bottom), x, y(bar.low)));
}

void paintBars(QPainter& painter, const ChartLayout& chart, const ChartColors& colors)
{
    PaneStrokes prices;
    PaneStrokes volumes;
    for (const PlacedCandle& placed : chart.candles) {
        const Bar& bar = placed.candle.bar;
        const CandleColumn column = chart.columnOf(placed);
        addCandle(prices.of(bar), chart.prices, column, bar);
        const auto volume = static_cast<double>(bar.volume);
        if (bar.volume != 0)
            volumes.of(bar).addBody(column, chart.volumes.yOf(std::max(0.0, volume)),
                                    chart.volumes.yOf(std::min(0.0, volume)) - 1);
    }
    prices.paint(painter, chart.prices.place, colors);
    volumes.paint(painter, chart.volumes.place, colors);
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
    Strokes grid;
    Strokes axes; // and where days begin
    for (const ChartPane* const pane : {&chart.prices, &chart.volumes}) {
        const QRectF& place = pane->place;
        for (const AxisLine& line : chart.times)
            (line.isBegin ? axes : grid)
                .lines.append(QLineF(line.at, place.top(), line.at, place.bottom()));
        for (const AxisLine& line : pane->lines) {
            grid.lines.append(QLineF(place.left(), line.at, place.right(), line.at));
            axes.lines.append(QLineF(place.right(), line.at, place.right() + tickLength, line.at));
        }
        if (!pane->lines.empty())
            axes.lines.append(QLineF(place.topRight(), place.bottomRight()));
    }
    const double bottom = chart.volumes.place.bottom();
    for (const AxisLine& line : chart.times)
        axes.lines.append(QLineF(line.at, bottom, line.at, bottom + tickLength));
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
    painter.setClipRect(pane.place);
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
                painter.fillRect(QRectF(right - width, top, width, height), color);
                right -= width;
            }
        }
    }
    painter.setClipping(false);
}

void paintStudyLines(QPainter& painter, const ChartLayout& chart, const ChartColors& colors)
{
    constexpr double lineWidth = 1.6;
    painter.setClipRect(chart.prices.place);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    for (size_t i = 0; i < chart.studies.size(); ++i) {
        painter.setPen(QPen(colorOf(colors, i), lineWidth));
        for (const StudyLine& line : chart.studies[i].shapes.lines) {
            QPolygonF points;
            points.reserve(static_cast<qsizetype>(line.points.size()));
            for (const QPointF& point : line.points)
                points.append({chart.xOf(point.x()), chart.prices.yOf(point.y())});
            painter.drawPolyline(points);
        }
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setClipping(false);
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
    const auto paint = [&](const ChartLabel& label) {
        // Rather none than what is left of one below another.
        if (std::none_of(covered.begin(), covered.end(),
                         [&label](const QRectF& place) { return place.intersects(label.place); }))
            painter.drawText(label.place, Qt::AlignCenter | Qt::TextDontClip, label.text);
    };
    for (const auto* const lines : {&chart.prices.lines, &chart.volumes.lines, &chart.times}) {
        for (const AxisLine& line : *lines)
            paint(line.label);
    }
    for (const ChartLabel& heading : chart.headings)
        paint(heading);
}

void paintLastPrice(QPainter& painter, const ChartLayout& chart, const ChartColors& colors)
{
    const QColor& color = chart.last->isRising ? colors.rising : colors.falling;
    const QRectF& place = chart.prices.place;
    painter.setPen(QPen(color, 1, Qt::DotLine));
    painter.drawLine(QLineF(place.left(), chart.last->at, place.right(), chart.last->at));
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
        paintLastPrice(painter, chart, colors);
    if (overlay.marked)
        fillSlots(painter, chart, *overlay.marked, colors.band);
    if (overlay.crosshair)
        paintCrosshair(painter, chart, colors, *overlay.crosshair);
}

} // namespace vexdesk
