// SPDX-License-Identifier: MIT
#include "desk/chart/chartpainter.h"

#include "desk/chart/chartcolors.h"

#include <QtCore/QVarLengthArray>
#include <QtGui/QPaintEngine>
#include <QtGui/QPainter>
#include <QtGui/QPolygonF>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

namespace vexdesk {

namespace {

constexpr double tickLength = 4;

// What is filled with one colour, as far as it is in a place. Whole pixels without a pen: outlines
// and lines take many times as long to paint. The painter is not told to clip: a file of lines and
// areas knows nothing of that, and would show what is beside the panes.
class Fills
{
public:
    Fills(const QRectF& place, const QColor& color)
        : m_place(place.toRect())
        , m_color(color)
    {}

    void add(double left, double top, double width, double height)
    {
        if (width <= 0 || height <= 0)
            return;
        const QRect seen = QRectF(left, top, width, height).toRect() & m_place;
        if (!seen.isEmpty())
            m_rects.push_back(seen);
    }
    void addLevel(double left, double right, double y) { add(left, y, right - left, 1); }
    void addUpright(double x, double top, double bottom) { add(x, top, 1, bottom - top); }

    void paint(QPainter& painter, const QRect& band) const
    {
        QVarLengthArray<QRect, 1024> rects;
        for (const QRect& rect : m_rects) {
            if (rect.top() <= band.bottom() && rect.bottom() >= band.top())
                rects.append(rect & band);
        }
        if (rects.isEmpty())
            return;
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_color);
        painter.drawRects(rects.constData(), static_cast<int>(rects.size()));
    }

private:
    QRect m_place;
    QColor m_color;
    std::vector<QRect> m_rects;
};

// All fills of a chart, those below first.
using Layers = std::vector<Fills>;

// Band by band, as high as the memory next to the processor has room for: a line from top to bottom
// is in as many places of a large picture as it has pixels, and each would be fetched anew.
void paintLayers(QPainter& painter, const Layers& layers, const QSizeF& size)
{
    constexpr double bandPixels = 100'000;
    const QRect all = QRectF(QPointF(), size).toAlignedRect();
    const bool isPicture = painter.paintEngine()->type() == QPaintEngine::Raster;
    const double scale = painter.device()->devicePixelRatioF();
    const double most = bandPixels / std::max(1.0, all.width() * scale * scale);
    const int height = isPicture ? std::max(8, static_cast<int>(most)) : all.height();
    for (int top = 0; top < all.height(); top += height) {
        const QRect band(0, top, all.width(), std::min(height, all.height() - top));
        for (const Fills& fills : layers)
            fills.paint(painter, band);
    }
    painter.setBrush(Qt::NoBrush);
}

// Rising and falling bars of one pane.
class BarFills
{
public:
    BarFills(const QRectF& place, const ChartColors& colors)
        : m_rising(place, colors.rising)
        , m_hollow(place, colors.background)
        , m_falling(place, colors.falling)
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
    void moveTo(Layers& layers)
    {
        for (Fills* const fills : {&m_rising, &m_hollow, &m_falling})
            layers.push_back(std::move(*fills));
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

void addBars(Layers& layers, const ChartLayout& chart, const ChartColors& colors)
{
    BarFills prices(chart.prices.place, colors);
    BarFills volumes(chart.volumes.place, colors);
    for (const PlacedCandle& placed : chart.candles) {
        const Bar& bar = placed.candle.bar;
        const CandleColumn column = chart.columnOf(placed);
        addCandle(prices, chart.prices, column, bar);
        if (bar.volume != 0)
            addVolume(volumes, chart.volumes, column, bar);
    }
    prices.moveTo(layers);
    volumes.moveTo(layers);
}

// From side to side of the slots, in both panes.
void addSlots(Fills& fills, const ChartLayout& chart, const SlotRange& range)
{
    const double left = std::max(chart.prices.place.left(), std::round(chart.xOf(range.begin)));
    const double right = std::min(chart.prices.place.right(), std::round(chart.xOf(range.end)));
    for (const ChartPane* const pane : {&chart.prices, &chart.volumes})
        fills.add(left, pane->place.top(), right - left, pane->place.height());
}

void addGround(Layers& layers, const ChartLayout& chart, const ChartColors& colors)
{
    const QRectF everything(QPointF(), chart.size);
    Fills ground(QRectF(everything.toAlignedRect()), colors.background);
    ground.add(0, 0, std::ceil(everything.width()), std::ceil(everything.height()));
    Fills unread(everything, colors.unread);
    for (const SlotRange& stretch : chart.unread)
        addSlots(unread, chart, stretch);
    layers.push_back(std::move(ground));
    layers.push_back(std::move(unread));
}

void addGrid(Layers& layers, const ChartLayout& chart, const ChartColors& colors)
{
    const QRectF everything(QPointF(), chart.size);
    Fills grid(everything, colors.grid);
    Fills axes(everything, colors.dayLine); // and where days begin
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
    layers.push_back(std::move(grid));
    layers.push_back(std::move(axes));
}

const QColor& colorOf(const ChartColors& colors, size_t study)
{
    return colors.studies[study % colors.studies.size()];
}

QColor seenThrough(QColor color)
{
    constexpr float share = 0.25F;
    color.setAlphaF(share);
    return color;
}

// Below the candles: the rows that studies have at the right side.
void addRows(Layers& layers, const ChartLayout& chart, const ChartColors& colors)
{
    constexpr double longest = 0.3; // of the pane
    const ChartPane& pane = chart.prices;
    for (const PlacedStudy& study : chart.studies) {
        Fills rising(pane.place, seenThrough(colors.rising));
        Fills falling(pane.place, seenThrough(colors.falling));
        for (const StudyRow& row : study.shapes.rows) {
            const double top = std::round(pane.yOf(row.high));
            const double height = std::max(1.0, std::round(pane.yOf(row.low)) - top - 1);
            const auto widthOf = [&pane](double share) {
                return std::round(share * longest * pane.place.width());
            };
            const double middle = pane.place.right() - widthOf(row.rising);
            rising.add(middle, top, widthOf(row.rising), height);
            falling.add(middle - widthOf(row.falling), top, widthOf(row.falling), height);
        }
        layers.push_back(std::move(rising));
        layers.push_back(std::move(falling));
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
    paint(chart.volumesNote);
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
    Layers layers;
    addGround(layers, chart, colors);
    addGrid(layers, chart, colors);
    addRows(layers, chart, colors);
    addBars(layers, chart, colors);
    paintLayers(painter, layers, chart.size);
    paintStudyLines(painter, chart, colors);
    paintMarks(painter, chart, colors);
    paintNames(painter, chart, colors);
    painter.setPen(colors.text);
    paintLabels(painter, chart, overlay.crosshair);
    if (chart.last)
        paintLastPrice(painter, chart, colors, overlay.crosshair);
    if (overlay.marked) {
        Fills marked(QRectF(QPointF(), chart.size), colors.band);
        addSlots(marked, chart, *overlay.marked);
        marked.paint(painter, QRectF(QPointF(), chart.size).toAlignedRect());
    }
    if (overlay.crosshair)
        paintCrosshair(painter, chart, colors, *overlay.crosshair);
}

} // namespace vexdesk
