// SPDX-License-Identifier: MIT
#include "desk/chart/chartview.h"

#include "desk/chart/chartcolors.h"
#include "desk/chart/chartpainter.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtGui/QWheelEvent>

#include <algorithm>
#include <cmath>

namespace vexdesk {

namespace {

constexpr double zoomStep = 0.8;
constexpr double scrollStep = 0.1; // of what is shown
constexpr double pageStep = 0.9;
constexpr double wheelStep = 120; // angle of a step of the wheel

TimeLimits limitsOf(const BarSeries& series, int timeframe)
{
    return {static_cast<double>(series.firstTime()), static_cast<double>(series.lastTime()),
            static_cast<double>(timeframe)};
}

} // namespace

ChartView::ChartView(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("chartView"));
    setAccessibleName(tr("График цен и объёмов"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
}

ChartView::~ChartView() = default;

QSize ChartView::minimumSizeHint() const
{
    constexpr QSize smallest(320, 180);
    return smallest;
}

void ChartView::showSeries(const std::shared_ptr<const BarSeries>& series, int timeframe)
{
    m_series = series;
    m_timeframe = timeframe;
    m_drag.reset();
    if (!isEmpty()) {
        m_limits = limitsOf(*series, timeframe);
        const auto begin = static_cast<double>(series->days().back()->bars().front().time);
        m_range = m_limits.fitted(TimeLimits(begin, m_limits.lastTime(), timeframe).all());
    }
    refresh();
}

void ChartView::updateSeries(const std::shared_ptr<const BarSeries>& series, int timeframe)
{
    if (isEmpty() || series->isEmpty()) {
        showSeries(series, timeframe);
        return;
    }
    m_series = series;
    m_timeframe = timeframe;
    const TimeLimits now = limitsOf(*series, timeframe);
    m_range = m_limits.followed(m_range, now);
    m_limits = now;
    m_drag.reset();
    refresh();
}

void ChartView::setRange(const TimeRange& range)
{
    if (isEmpty())
        return;
    const TimeRange fitted = m_limits.fitted(range);
    if (fitted == m_range)
        return;
    m_range = fitted;
    refresh();
}

void ChartView::showAll()
{
    setRange(m_limits.all());
}

void ChartView::zoom(double factor)
{
    if (!isEmpty())
        setRange(m_limits.zoomed(m_range, (m_range.begin + m_range.end) / 2, factor));
}

void ChartView::scroll(double shareOfView)
{
    setRange(m_limits.moved(m_range, shareOfView * m_range.length()));
}

void ChartView::refresh()
{
    m_layout =
        isEmpty() ? ChartLayout() : layOutChart(*m_series, m_timeframe, m_range, size(), font());
    updateCrosshair();
    Q_EMIT rangeChanged();
}

void ChartView::updateCrosshair()
{
    m_crosshair = m_mouse && !m_drag ? m_layout.crosshairAt(*m_mouse) : std::nullopt;
    update();
    Q_EMIT pointedChanged();
}

const Candle* ChartView::pointed() const
{
    return m_crosshair ? &m_layout.candles[m_crosshair->candle] : nullptr;
}

bool ChartView::event(QEvent* event)
{
    // The keys of the chart win over the shortcuts of menus.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* const key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_0 && key->modifiers() == Qt::ControlModifier) {
            event->accept();
            return true;
        }
    }
    return QWidget::event(event);
}

void ChartView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const ChartColors colors = ChartColors::of(palette());
    painter.fillRect(rect(), colors.background);
    paintChart(painter, m_layout, colors, m_crosshair);
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void ChartView::resizeEvent(QResizeEvent* /*event*/)
{
    refresh();
}

void ChartView::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        refresh();
}

void ChartView::leaveEvent(QEvent* /*event*/)
{
    m_mouse.reset();
    updateCrosshair();
}

void ChartView::wheelEvent(QWheelEvent* event)
{
    event->accept();
    if (isEmpty())
        return;
    QPoint angle = event->angleDelta();
    // With Shift, and on some systems already as a turn to the side, the wheel scrolls.
    if (event->modifiers() & Qt::ShiftModifier && angle.x() == 0)
        angle = QPoint(angle.y(), 0);
    if (angle.x() != 0)
        scroll(-scrollStep * angle.x() / wheelStep);
    else if (angle.y() != 0)
        setRange(m_limits.zoomed(m_range, timeBelow(event->position()),
                                 std::pow(zoomStep, angle.y() / wheelStep)));
}

// Beside the panes, the nearest time in them.
double ChartView::timeBelow(const QPointF& place) const
{
    const QRectF& pane = m_layout.prices.place;
    return m_layout.timeAt(std::clamp(place.x(), pane.left(), pane.right()));
}

void ChartView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || isEmpty())
        return;
    m_drag = Drag{event->position().x(), m_range};
    setCursor(Qt::ClosedHandCursor);
    updateCrosshair();
}

void ChartView::mouseMoveEvent(QMouseEvent* event)
{
    m_mouse = event->position();
    if (m_drag) {
        const double pixels = m_drag->x - event->position().x();
        setRange(m_limits.moved(m_drag->range,
                                pixels / m_layout.prices.place.width() * m_drag->range.length()));
    }
    updateCrosshair();
}

void ChartView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_drag)
        return;
    m_drag.reset();
    unsetCursor();
    m_mouse = event->position();
    updateCrosshair();
}

void ChartView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        showAll();
}

void ChartView::keyPressEvent(QKeyEvent* event)
{
    const double toTheEnd = m_limits.all().length() / std::max(1.0, m_range.length());
    switch (event->key()) {
    case Qt::Key_Left:
        return scroll(-scrollStep);
    case Qt::Key_Right:
        return scroll(scrollStep);
    case Qt::Key_PageUp:
        return scroll(-pageStep);
    case Qt::Key_PageDown:
        return scroll(pageStep);
    case Qt::Key_Home:
        return scroll(-toTheEnd);
    case Qt::Key_End:
        return scroll(toTheEnd);
    case Qt::Key_Plus:
    case Qt::Key_Equal: // the same key without Shift
        return zoom(zoomStep);
    case Qt::Key_Minus:
        return zoom(1 / zoomStep);
    case Qt::Key_0:
        if (event->modifiers() & Qt::ControlModifier)
            return showAll();
        [[fallthrough]];
    default:
        event->ignore();
    }
}

} // namespace vexdesk
