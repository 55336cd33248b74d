// SPDX-License-Identifier: MIT
#include "desk/chart/chartitems.h"

#include "desk/chart/readout.h"

#include <QtCore/QVarLengthArray>
#include <QtGui/QFontMetricsF>
#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

namespace vexdesk {

namespace {

constexpr double tagPadding = 4;
constexpr double tickLength = 4;

// What is drawn in one colour, in few calls.
struct Strokes
{
    QVarLengthArray<QLineF, 1024> wicks;
    QVarLengthArray<QRectF, 512> bodies;
};

// With a pen of one pixel the outline is as wide as the column.
QRectF outline(const CandleColumn& column, double top, double bottom)
{
    return {column.left, std::round(top), column.width - 1,
            std::max(0.0, std::round(bottom) - std::round(top))};
}

void paintStrokes(QPainter* painter, const Strokes& strokes, const QColor& color,
                  const QColor& fill)
{
    painter->setPen(QPen(color, 1, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter->setBrush(fill);
    painter->drawLines(strokes.wicks.constData(), static_cast<int>(strokes.wicks.size()));
    painter->drawRects(strokes.bodies.constData(), static_cast<int>(strokes.bodies.size()));
}

bool isFalling(const Bar& bar)
{
    return bar.close < bar.open;
}

} // namespace

ChartItem::ChartItem(const ChartLayout& layout, const ChartColors& colors, const QSizeF& scene)
    : m_layout(layout)
    , m_colors(colors)
    , m_scene(scene)
{
    setAcceptedMouseButtons(Qt::NoButton);
}

QRectF ChartItem::boundingRect() const
{
    return {QPointF(), m_scene};
}

CandleColumn candleColumn(const ChartLayout& layout, const Candle& candle)
{
    constexpr double share = 0.7; // of the interval's width
    constexpr double thinnest = 3;
    const double slot =
        layout.xOf(static_cast<double>(candle.end)) - layout.xOf(static_cast<double>(candle.begin));
    CandleColumn column;
    column.width = std::max(thinnest, 2 * std::floor(slot * share / 2) + 1);
    column.left = std::round(layout.xOf(candle.middle()) - column.width / 2);
    return column;
}

void TimeAxisItem::paint(QPainter* painter, const QStyleOptionGraphicsItem* /*option*/,
                         QWidget* /*widget*/)
{
    painter->setFont(m_font);
    for (const TimeTick& tick : m_layout.ticks)
        paintTick(painter, tick);
    const QFontMetricsF metrics(m_font);
    const double baseline = m_layout.labelsTop + metrics.height() + metrics.ascent();
    painter->setPen(m_colors.text);
    for (const Heading& heading : headings())
        painter->drawText(QPointF(heading.left, baseline), heading.text);
}

void TimeAxisItem::paintTick(QPainter* painter, const TimeTick& tick) const
{
    const double x = std::round(m_layout.xOf(static_cast<double>(tick.time)));
    painter->setPen(tick.isBegin ? m_colors.dayLine : m_colors.grid);
    painter->drawLine(QPointF(x, m_layout.pricePane.top()),
                      QPointF(x, m_layout.pricePane.bottom()));
    painter->drawLine(QPointF(x, m_layout.volumePane.top()),
                      QPointF(x, m_layout.volumePane.bottom()));
    painter->setPen(m_colors.dayLine);
    painter->drawLine(QPointF(x, m_layout.volumePane.bottom()),
                      QPointF(x, m_layout.volumePane.bottom() + tickLength));

    painter->setPen(m_colors.text);
    const QFontMetricsF metrics(m_font);
    const double width = metrics.horizontalAdvance(tick.label);
    // Kept inside: a label may be wider than what is beside the pane.
    const QRectF place(std::max(0.0, x - width / 2), m_layout.labelsTop, width, metrics.height());
    // Rather none than a part of one.
    if (!place.intersects(m_layout.timeTag))
        painter->drawText(place.topLeft() + QPointF(0, metrics.ascent()), tick.label);
}

std::vector<TimeAxisItem::Heading> TimeAxisItem::headings() const
{
    const QFontMetricsF metrics(m_font);
    const double right = m_layout.pricePane.right();
    std::vector<Heading> shown;
    double free = 0; // where the next one may begin; the first may stand left of the pane
    for (auto tick = m_layout.ticks.begin(); tick != m_layout.ticks.end(); ++tick) {
        if (tick->heading.isEmpty())
            continue;
        const double x = std::round(m_layout.xOf(static_cast<double>(tick->time)));
        const double width = metrics.horizontalAdvance(tick->heading);
        const double left = std::clamp(x - width / 2, 0.0, std::max(0.0, right - width));
        const auto next = std::find_if(tick + 1, m_layout.ticks.end(), [](const TimeTick& later) {
            return !later.heading.isEmpty();
        });
        // The first one gives way to the begin of the next day.
        const bool givesWay = !tick->isBegin && next != m_layout.ticks.end() &&
                              m_layout.xOf(static_cast<double>(next->time)) -
                                      metrics.horizontalAdvance(next->heading) / 2 <
                                  left + width + 2 * tagPadding;
        if (givesWay || left < free)
            continue;
        shown.push_back({tick->heading, left});
        free = left + width + 2 * tagPadding;
    }
    return shown;
}

void BarsItem::paint(QPainter* painter, const QStyleOptionGraphicsItem* /*option*/,
                     QWidget* /*widget*/)
{
    Strokes risingPrices;
    Strokes fallingPrices;
    Strokes risingVolumes;
    Strokes fallingVolumes;
    const auto priceY = [this](double price) {
        return std::round(ChartLayout::yOf(price, m_layout.pricePane, m_layout.prices));
    };
    const auto volumeY = [this](double volume) {
        return ChartLayout::yOf(volume, m_layout.volumePane, m_layout.volumes);
    };
    for (const Candle& candle : m_layout.candles) {
        const Bar& bar = candle.bar;
        const CandleColumn column = candleColumn(m_layout, candle);
        const auto [bottom, top] = std::minmax(bar.open, bar.close);
        Strokes& prices = isFalling(bar) ? fallingPrices : risingPrices;
        prices.bodies.append(outline(column, priceY(top), priceY(bottom)));
        const double x = column.middle();
        if (bar.high > top)
            prices.wicks.append(QLineF(x, priceY(bar.high), x, priceY(top)));
        if (bar.low < bottom)
            prices.wicks.append(QLineF(x, priceY(bottom), x, priceY(bar.low)));
        if (bar.volume == 0)
            continue;
        const auto volume = static_cast<double>(bar.volume);
        Strokes& volumes = isFalling(bar) ? fallingVolumes : risingVolumes;
        volumes.bodies.append(
            outline(column, volumeY(std::max(0.0, volume)), volumeY(std::min(0.0, volume)) - 1));
    }

    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->save();
    painter->setClipRect(m_layout.pricePane);
    paintStrokes(painter, risingPrices, m_colors.rising, m_colors.background);
    paintStrokes(painter, fallingPrices, m_colors.falling, m_colors.falling);
    painter->setClipRect(m_layout.volumePane);
    paintStrokes(painter, risingVolumes, m_colors.rising, m_colors.background);
    paintStrokes(painter, fallingVolumes, m_colors.falling, m_colors.falling);
    painter->restore();
}

void CrosshairItem::point(qsizetype candle, double y)
{
    m_candle = candle;
    m_y = y;
    setVisible(candle >= 0);
    update();
}

const Candle* CrosshairItem::candle() const
{
    return m_candle >= 0 && m_candle < static_cast<qsizetype>(m_layout.candles.size())
               ? &m_layout.candles[static_cast<size_t>(m_candle)]
               : nullptr;
}

QRectF CrosshairItem::timeTag() const
{
    if (!candle())
        return QRectF();
    const QFontMetricsF metrics(m_font);
    const QString text = candleTimeText(*candle(), m_layout.interval, m_layout.timeframe);
    const double width = metrics.horizontalAdvance(text) + 2 * tagPadding;
    const double x = candleColumn(m_layout, *candle()).middle();
    const double left =
        std::clamp(x - width / 2, 0.0, std::max(0.0, boundingRect().right() - width));
    return {left, m_layout.labelsTop - 1, width, metrics.height() + 2};
}

void CrosshairItem::paint(QPainter* painter, const QStyleOptionGraphicsItem* /*option*/,
                          QWidget* /*widget*/)
{
    if (!candle())
        return;
    const double x = candleColumn(m_layout, *candle()).middle();
    const QRectF& price = m_layout.pricePane;
    const QRectF& volume = m_layout.volumePane;
    painter->setFont(m_font);
    painter->setPen(QPen(m_colors.crosshair, 1, Qt::DashLine));
    painter->drawLine(QPointF(x, price.top()), QPointF(x, volume.bottom()));
    painter->drawLine(QPointF(price.left(), m_y), QPointF(price.right(), m_y));

    const QFontMetricsF metrics(m_font);
    const bool isPrice = m_y <= price.bottom();
    const double value = isPrice ? ChartLayout::valueAt(m_y, price, m_layout.prices)
                                 : ChartLayout::valueAt(m_y, volume, m_layout.volumes);
    const QString text =
        isPrice ? numberText(value, m_layout.decimals) : groupedText(numberText(value, 0));
    const double height = metrics.height() + 2;
    const double width = metrics.horizontalAdvance(text) + 2 * tagPadding;
    if (isPrice || m_layout.hasVolumes)
        paintTag(painter, text,
                 {std::min(price.right() + 1, boundingRect().right() - width), m_y - height / 2,
                  width, height});
    paintTag(painter, candleTimeText(*candle(), m_layout.interval, m_layout.timeframe), timeTag());
}

void CrosshairItem::paintTag(QPainter* painter, const QString& text, const QRectF& place) const
{
    painter->fillRect(place, m_colors.tag);
    painter->setPen(m_colors.tagText);
    painter->drawText(place, Qt::AlignCenter, text);
}

} // namespace vexdesk
