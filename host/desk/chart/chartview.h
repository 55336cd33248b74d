// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/chartcolors.h"
#include "desk/chart/chartlayout.h"

#include <QtWidgets/QGraphicsView>

#include <memory>
#include <optional>

class QChart;
class QValueAxis;

namespace vexdesk {

class BarsItem;
class CrosshairItem;
class TimeAxisItem;

/// Draws bars as candles, with the volumes in a lower pane of the same times, and lets the user
/// zoom, scroll and point at them with mouse and keys. Where there are more bars than there is room
/// for, each candle stands for several.
///
/// The cost of a frame is that of the candles in it, not of the bars. User-interface thread only.
class ChartView final : public QGraphicsView
{
    Q_OBJECT

public:
    explicit ChartView(QWidget* parent = nullptr);
    ~ChartView() override;

    /// Shows other bars, the last day of them.
    void showSeries(const std::shared_ptr<const BarSeries>& series, int timeframe);
    /// Shows what the bars have become, at the same place.
    void updateSeries(const std::shared_ptr<const BarSeries>& series, int timeframe);

    bool isEmpty() const { return !m_series || m_series->isEmpty(); }
    const TimeRange& range() const { return m_layout.time; }
    const TimeLimits& limits() const { return m_limits; }
    /// The nearest range that is allowed is shown.
    void setRange(const TimeRange& range);
    void showAll();
    void zoom(double factor);
    void scroll(double shareOfView);

    /// What is drawn now, and where.
    const ChartLayout& chart() const { return m_layout; }
    /// The candle at the crosshair, null when there is none.
    const Candle* pointed() const;
    /// Where in the viewport the mouse would point at a candle at the height of its close.
    QPoint placeOf(const Candle& candle) const;

    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The range, or how far it can be moved.
    void rangeChanged();
    /// Another candle is pointed at, or none, or it is not the same any more.
    void pointedChanged();

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void drawForeground(QPainter* painter, const QRectF& rect) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    struct Drag
    {
        double x = 0;
        TimeRange range;
    };

    void applyColors();
    void applyFont();
    /// Sizes have changed.
    void arrange();
    /// The range or the bars have changed.
    void refresh();
    void updateAxes();
    void placePanes();
    void updateCandles();
    void updateCrosshair();
    qsizetype nearestCandle(double x) const;
    double timeBelow(const QPointF& place) const;

    std::shared_ptr<const BarSeries> m_series;
    TimeLimits m_limits;
    ChartLayout m_layout;
    ChartColors m_colors;
    QSizeF m_sceneSize;
    std::optional<QPointF> m_mouse; // while it is over the chart
    std::optional<Drag> m_drag;
    qsizetype m_pointed = -1;

    QGraphicsScene* m_scene;
    QChart* m_priceChart;
    QChart* m_volumeChart;
    QValueAxis* m_priceAxis;
    QValueAxis* m_volumeAxis;
    TimeAxisItem* m_timeAxis;
    BarsItem* m_bars;
    CrosshairItem* m_crosshair;
};

} // namespace vexdesk
