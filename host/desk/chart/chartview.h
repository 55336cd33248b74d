// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/chartlayout.h"

#include <QtWidgets/QWidget>

#include <memory>

namespace vexdesk {

/// Draws bars as candles, with the volumes in a lower pane of the same times, and lets the user
/// zoom, scroll and point at them with mouse and keys. User-interface thread only.
class ChartView final : public QWidget
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
    const TimeRange& range() const { return m_range; }
    const TimeLimits& limits() const { return m_limits; }
    /// The nearest range that is allowed is shown.
    void setRange(const TimeRange& range);
    void showAll();
    void zoom(double factor);
    void scroll(double shareOfView);

    /// What is drawn now, and where.
    const ChartLayout& chart() const { return m_layout; }
    /// Where the mouse points, nothing where it points at no candle.
    const std::optional<Crosshair>& crosshair() const { return m_crosshair; }
    /// The candle at the crosshair, null when there is none.
    const Candle* pointed() const;

    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The range, or how far it can be moved.
    void rangeChanged();
    /// Another candle is pointed at, or none, or it is not the same any more.
    void pointedChanged();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct Drag
    {
        double x = 0;
        TimeRange range;
    };

    /// The range, the bars or the room for them have changed.
    void refresh();
    void updateCrosshair();
    double timeBelow(const QPointF& place) const;

    std::shared_ptr<const BarSeries> m_series;
    int m_timeframe = 0;
    TimeLimits m_limits;
    TimeRange m_range;
    ChartLayout m_layout;
    std::optional<QPointF> m_mouse; // while it is over the chart
    std::optional<Drag> m_drag;
    std::optional<Crosshair> m_crosshair;
};

} // namespace vexdesk
