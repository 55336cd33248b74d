// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/chartcolors.h"
#include "desk/chart/chartlayout.h"

#include <QtGui/QFont>
#include <QtWidgets/QGraphicsItem>

/// The items that the chart paints on its own, over the frames and axes: hundreds of graphics
/// objects made anew for every frame would cost more than the frame. The view owns them, and what
/// they refer to.
namespace vexdesk {

/// The part that the items have in common.
class ChartItem : public QGraphicsItem
{
public:
    ChartItem(const ChartLayout& layout, const ChartColors& colors, const QSizeF& scene);

    QRectF boundingRect() const override;

protected:
    const ChartLayout& m_layout;
    const ChartColors& m_colors;

private:
    const QSizeF& m_scene;
};

/// The lines and labels of the time axis, which both panes share.
class TimeAxisItem final : public ChartItem
{
public:
    using ChartItem::ChartItem;

    void setFont(const QFont& font) { m_font = font; }
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

    struct Heading
    {
        QString text;
        double left = 0;
    };
    /// Those of the lines' headings that are shown, the leftmost first.
    std::vector<Heading> headings() const;

private:
    void paintTick(QPainter* painter, const TimeTick& tick) const;

    QFont m_font;
};

/// The candles and below them the volumes. A bar that closes below its open is filled, another one
/// hollow.
class BarsItem final : public ChartItem
{
public:
    using ChartItem::ChartItem;

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;
};

/// The lines through the bar that the mouse points at, with its time and the price below the mouse
/// on the axes.
class CrosshairItem final : public ChartItem
{
public:
    using ChartItem::ChartItem;

    void setFont(const QFont& font) { m_font = font; }
    /// The candle, by its place in the layout, and the height of the mouse.
    void point(qsizetype candle, double y);
    /// Where the time of the candle stands.
    QRectF timeTag() const;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    const Candle* candle() const;
    void paintTag(QPainter* painter, const QString& text, const QRectF& place) const;

    QFont m_font;
    qsizetype m_candle = -1;
    double m_y = 0;
};

/// The place of a candle's body or of a volume's bar from side to side: whole pixels with a gap
/// beside it, an odd number of them so that the wick is in the middle.
struct CandleColumn
{
    double left = 0;
    double width = 0;

    double middle() const { return left + (width - 1) / 2; }
};

CandleColumn candleColumn(const ChartLayout& layout, const Candle& candle);

} // namespace vexdesk
