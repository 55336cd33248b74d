// SPDX-License-Identifier: MIT
#include "desk/chart/chartpainter.h"

#include "desk/chart/chartcolors.h"

#include <QtCore/QVarLengthArray>
#include <QtGui/QPainter>

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
    for (const Candle& candle : chart.candles) {
        const Bar& bar = candle.bar;
        const CandleColumn column = chart.columnOf(candle);
        addCandle(prices.of(bar), chart.prices, column, bar);
        const auto volume = static_cast<double>(bar.volume);
        if (bar.volume != 0)
            volumes.of(bar).addBody(column, chart.volumes.yOf(std::max(0.0, volume)),
                                    chart.volumes.yOf(std::min(0.0, volume)) - 1);
    }
    prices.paint(painter, chart.prices.place, colors);
    volumes.paint(painter, chart.volumes.place, colors);
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

void paintLabels(QPainter& painter, const ChartLayout& chart,
                 const std::optional<Crosshair>& crosshair)
{
    const auto paint = [&](const ChartLabel& label) {
        // Rather none than what the crosshair's labels leave of one.
        if (!crosshair || !(label.place.intersects(crosshair->time.place) ||
                            label.place.intersects(crosshair->value.place)))
            painter.drawText(label.place, Qt::AlignCenter | Qt::TextDontClip, label.text);
    };
    for (const auto* const lines : {&chart.prices.lines, &chart.volumes.lines, &chart.times}) {
        for (const AxisLine& line : *lines)
            paint(line.label);
    }
    for (const ChartLabel& heading : chart.headings)
        paint(heading);
}

void paintCrosshair(QPainter& painter, const ChartLayout& chart, const ChartColors& colors,
                    const Crosshair& crosshair)
{
    const QRectF& prices = chart.prices.place;
    painter.setPen(QPen(colors.crosshair, 1, Qt::DashLine));
    painter.drawLine(
        QLineF(crosshair.at.x(), prices.top(), crosshair.at.x(), chart.volumes.place.bottom()));
    painter.drawLine(QLineF(prices.left(), crosshair.at.y(), prices.right(), crosshair.at.y()));
    painter.setPen(colors.tagText);
    for (const ChartLabel* const label : {&crosshair.time, &crosshair.value}) {
        painter.fillRect(label->place, colors.tag);
        painter.drawText(label->place, Qt::AlignCenter, label->text);
    }
}

} // namespace

void paintChart(QPainter& painter, const ChartLayout& chart, const ChartColors& colors,
                const std::optional<Crosshair>& crosshair)
{
    painter.setFont(chart.font);
    paintGrid(painter, chart, colors);
    paintBars(painter, chart, colors);
    painter.setPen(colors.text);
    paintLabels(painter, chart, crosshair);
    if (crosshair)
        paintCrosshair(painter, chart, colors, *crosshair);
}

} // namespace vexdesk
