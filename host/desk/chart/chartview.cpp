// SPDX-License-Identifier: MIT
#include "desk/chart/chartview.h"

#include "desk/chart/chartitems.h"
#include "desk/chart/wallclock.h"

#include <QtCharts/QChart>
#include <QtCharts/QLegend>
#include <QtCharts/QValueAxis>
#include <QtGui/QFontMetricsF>
#include <QtGui/QKeyEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QGraphicsLayout>

#include <algorithm>
#include <cmath>

namespace vexdesk {

namespace {

// Device-independent pixels.
constexpr double thinnestCandle = 4; // with the gap beside it
constexpr double padding = 6;
constexpr double textMargin = 4;       // that a text item has around its text
constexpr double priceDistance = 40;   // between lines
constexpr double gapBetweenPanes = 14; // half a label
constexpr QSize smallestSize(320, 180);

constexpr double volumeShare = 0.2; // of the height of both panes

constexpr double zoomStep = 0.8;
constexpr double scrollStep = 0.1; // of what is shown
constexpr double pageStep = 0.9;
constexpr double wheelStep = 120; // angle of a step of the wheel

constexpr double barsZ = 20; // above what the frames and axes draw
constexpr double crosshairZ = 30;

QChart* makePane(QGraphicsScene* scene)
{
    auto* const pane = new QChart;
    pane->legend()->hide();
    pane->setMargins(QMargins());
    pane->setBackgroundRoundness(0);
    pane->setDropShadowEnabled(false);
    pane->setBackgroundPen(Qt::NoPen);
    pane->setAnimationOptions(QChart::NoAnimation);
    pane->setAcceptedMouseButtons(Qt::NoButton);
    scene->addItem(pane);
    return pane;
}

QValueAxis* makeAxis(QChart* pane)
{
    auto* const axis = new QValueAxis;
    axis->setTickType(QValueAxis::TicksDynamic);
    axis->setTickAnchor(0);
    axis->setTruncateLabels(false);
    pane->addAxis(axis, Qt::AlignRight);
    return axis;
}

void setTicks(QValueAxis* axis, const ValueRange& range, const ValueTicks& ticks)
{
    const QString format = QStringLiteral("%.%1f").arg(ticks.decimals);
    if (axis->labelFormat() != format)
        axis->setLabelFormat(format);
    // The lines are laid out by the range, with the step that there is then.
    axis->setTickInterval(ticks.step);
    axis->setRange(range.low, range.high);
}

ValueRange pricesOf(const std::vector<Candle>& candles, int decimals)
{
    ValueRange range{candles.front().bar.low, candles.front().bar.high};
    for (const Candle& candle : candles) {
        const Bar& bar = candle.bar;
        range.low = std::min({range.low, bar.low, bar.open, bar.close});
        range.high = std::max({range.high, bar.high, bar.open, bar.close});
    }
    constexpr double margin = 0.06;
    constexpr double leastUnits = 2; // of the last decimal
    const double side =
        std::max((range.high - range.low) * margin, leastUnits * std::pow(10.0, -decimals));
    return {range.low - side, range.high + side};
}

ValueRange volumesOf(const std::vector<Candle>& candles)
{
    double low = 0;
    double high = 0;
    for (const Candle& candle : candles) {
        low = std::min(low, static_cast<double>(candle.bar.volume));
        high = std::max(high, static_cast<double>(candle.bar.volume));
    }
    constexpr double margin = 0.08;
    const double side = (high - low) * margin;
    return {low < 0 ? low - side : 0, high > low ? high + side : 1};
}

// The upper end of an axis that leaves the label of its highest line inside: one that stands out is
// not drawn. Lengths are in pixels.
double withRoomForLabel(const ValueRange& range, double step, double length, double labelHeight)
{
    const double line = std::floor(range.high / step) * step;
    const double room = labelHeight / 2 + textMargin + 1;
    if (length < 2 * room)
        return range.high;
    return std::max(range.high, range.low + (line - range.low) * length / (length - room));
}

double widestLabel(const QFontMetricsF& metrics, const ValueRange& range, int decimals)
{
    // Grouped, whether it is or not: the volumes are.
    const auto width = [&](double number) {
        return metrics.horizontalAdvance(groupedText(numberText(number, decimals)));
    };
    return std::max(width(range.low), width(range.high));
}

} // namespace

ChartView::ChartView(QWidget* parent)
    : QGraphicsView(parent)
    , m_scene(new QGraphicsScene(this))
    , m_priceChart(makePane(m_scene))
    , m_volumeChart(makePane(m_scene))
    , m_priceAxis(makeAxis(m_priceChart))
    , m_volumeAxis(makeAxis(m_volumeChart))
    , m_timeAxis(new TimeAxisItem(m_layout, m_colors, m_sceneSize))
    , m_bars(new BarsItem(m_layout, m_colors, m_sceneSize))
    , m_crosshair(new CrosshairItem(m_layout, m_colors, m_sceneSize))
{
    setObjectName(QStringLiteral("chartView"));
    setScene(m_scene);
    m_scene->setItemIndexMethod(QGraphicsScene::NoIndex);
    m_bars->setZValue(barsZ);
    m_crosshair->setZValue(crosshairZ);
    m_crosshair->hide();
    for (QGraphicsItem* const item :
         {static_cast<QGraphicsItem*>(m_timeAxis), static_cast<QGraphicsItem*>(m_bars),
          static_cast<QGraphicsItem*>(m_crosshair)})
        m_scene->addItem(item);

    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setViewportUpdateMode(FullViewportUpdate);
    setOptimizationFlags(DontSavePainterState);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    viewport()->setMouseTracking(true);
    // As groupedText() does it, whatever the language.
    m_volumeChart->setLocalizeNumbers(true);
    m_volumeChart->setLocale(QLocale(QLocale::Russian));
    setAccessibleName(tr("График цен и объёмов"));
    applyColors();
    applyFont();
}

ChartView::~ChartView()
{
    // The items refer to members that go before the scene does.
    delete m_scene;
}

QSize ChartView::minimumSizeHint() const
{
    return smallestSize;
}

void ChartView::applyColors()
{
    m_colors = ChartColors::of(palette());
    setBackgroundBrush(m_colors.background);
    for (QChart* const pane : {m_priceChart, m_volumeChart})
        pane->setBackgroundBrush(m_colors.background);
    for (QValueAxis* const axis : {m_priceAxis, m_volumeAxis}) {
        axis->setLabelsBrush(m_colors.text);
        axis->setLinePen(QPen(m_colors.dayLine, 1));
        axis->setGridLinePen(QPen(m_colors.grid, 1));
    }
}

void ChartView::applyFont()
{
    m_timeAxis->setFont(font());
    m_crosshair->setFont(font());
    for (QValueAxis* const axis : {m_priceAxis, m_volumeAxis})
        axis->setLabelsFont(font());
}

void ChartView::showSeries(const std::shared_ptr<const BarSeries>& series, int timeframe)
{
    m_series = series;
    m_drag.reset();
    m_layout.timeframe = timeframe;
    if (!isEmpty()) {
        m_limits = TimeLimits(static_cast<double>(series->firstTime()),
                              static_cast<double>(series->lastTime()), timeframe);
        const auto begin = static_cast<double>(series->days().back()->bars().front().time);
        m_layout.time = m_limits.fitted(
            TimeLimits(begin, static_cast<double>(series->lastTime()), timeframe).all());
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
    m_layout.timeframe = timeframe;
    const TimeLimits now(static_cast<double>(series->firstTime()),
                         static_cast<double>(series->lastTime()), timeframe);
    m_layout.time = m_limits.followed(m_layout.time, now);
    m_limits = now;
    m_drag.reset();
    refresh();
}

void ChartView::setRange(const TimeRange& range)
{
    if (isEmpty())
        return;
    const TimeRange fitted = m_limits.fitted(range);
    if (fitted == m_layout.time)
        return;
    m_layout.time = fitted;
    refresh();
}

void ChartView::showAll()
{
    setRange(m_limits.all());
}

void ChartView::zoom(double factor)
{
    if (!isEmpty())
        setRange(m_limits.zoomed(range(), (range().begin + range().end) / 2, factor));
}

void ChartView::scroll(double shareOfView)
{
    if (!isEmpty())
        setRange(m_limits.moved(range(), shareOfView * range().length()));
}

void ChartView::refresh()
{
    if (!isEmpty() && !m_sceneSize.isEmpty())
        updateAxes();
    else
        m_layout.candles.clear();
    updateCrosshair();
    m_bars->update();
    Q_EMIT rangeChanged();
}

void ChartView::updateAxes()
{
    m_layout.decimals = m_series->decimals();
    updateCandles();
    if (!m_layout.candles.empty())
        m_layout.prices = pricesOf(m_layout.candles, m_layout.decimals);
    m_layout.volumes = m_layout.candles.empty() ? ValueRange() : volumesOf(m_layout.candles);
    m_layout.hasVolumes = std::any_of(m_layout.candles.cbegin(), m_layout.candles.cend(),
                                      [](const Candle& candle) { return candle.bar.volume != 0; });

    const double before = m_layout.pricePane.width();
    placePanes();
    // Longer labels leave less room, and that may ask for longer intervals.
    if (m_layout.pricePane.width() != before)
        updateCandles();

    const auto count = [](const QRectF& pane, double distance) {
        return static_cast<int>(pane.height() / distance);
    };
    setTicks(m_priceAxis, m_layout.prices,
             valueTicks(m_layout.prices.low, m_layout.prices.high,
                        count(m_layout.pricePane, priceDistance), m_layout.decimals));
    // The pane is low: its labels may stand close to each other, so that one of them is not the 0.
    const QFontMetricsF metrics(font());
    const double labelHeight = metrics.height();
    const ValueTicks volumeTicks = valueTicks(m_layout.volumes.low, m_layout.volumes.high,
                                              count(m_layout.volumePane, labelHeight), 0);
    m_layout.volumes.high = withRoomForLabel(m_layout.volumes, volumeTicks.step,
                                             m_layout.volumePane.height(), labelHeight);
    setTicks(m_volumeAxis, m_layout.volumes, volumeTicks);
    // Numbers that nothing is measured by would be taken for those of the bars.
    m_volumeAxis->setVisible(m_layout.hasVolumes);
    // At once, with the candles, and not with the next turn of the event loop.
    for (QChart* const pane : {m_priceChart, m_volumeChart})
        pane->layout()->activate();

    const double labelWidth = metrics.horizontalAdvance(QStringLiteral("00:00:00")) + 3 * padding;
    m_layout.ticks =
        timeTicks(m_layout.time, static_cast<int>(m_layout.pricePane.width() / labelWidth));
}

void ChartView::updateCandles()
{
    const double seconds = m_layout.time.length() / std::max(1.0, m_layout.pricePane.width());
    m_layout.interval = candleInterval(seconds * thinnestCandle, m_layout.timeframe);
    m_layout.candles =
        candlesOf(*m_series, m_layout.interval, m_layout.time.begin, m_layout.time.end);
}

void ChartView::placePanes()
{
    const QFontMetricsF metrics(font());
    const double labels = std::max(widestLabel(metrics, m_layout.prices, m_layout.decimals),
                                   widestLabel(metrics, m_layout.volumes, 0));
    // In steps: the panes should not change their width with every digit.
    constexpr double step = 16;
    const double right = std::ceil((labels + 3 * padding) / step) * step;
    const double left = padding;
    const double top = std::ceil(metrics.height() / 2 + textMargin);
    const double below = std::ceil(2 * metrics.height() + 2 * padding);
    const double width = std::max(1.0, std::floor(m_sceneSize.width() - left - right));
    const double both = std::max(2.0, m_sceneSize.height() - top - below - gapBetweenPanes);
    const double volumeHeight = std::floor(both * volumeShare);
    const double priceHeight = std::floor(both - volumeHeight);

    const QRectF pricePane(left, top, width, priceHeight);
    const QRectF volumePane(left, top + priceHeight + gapBetweenPanes, width, volumeHeight);
    if (pricePane == m_layout.pricePane && volumePane == m_layout.volumePane)
        return;
    m_layout.pricePane = pricePane;
    m_layout.volumePane = volumePane;
    m_layout.labelsTop = volumePane.bottom() + padding;
    const double between = volumePane.top() - gapBetweenPanes / 2;
    m_priceChart->setGeometry(QRectF(0, 0, m_sceneSize.width(), between));
    m_priceChart->setPlotArea(pricePane);
    m_volumeChart->setGeometry(
        QRectF(0, between, m_sceneSize.width(), m_sceneSize.height() - between));
    m_volumeChart->setPlotArea(volumePane.translated(0, -between));
}

void ChartView::arrange()
{
    const QSizeF size = viewport()->size();
    if (size == m_sceneSize)
        return;
    m_sceneSize = size;
    m_scene->setSceneRect(QRectF(QPointF(), size));
    m_layout.pricePane = QRectF(); // whatever it was, it is placed anew
    placePanes();
    refresh();
}

qsizetype ChartView::nearestCandle(double x) const
{
    const std::vector<Candle>& candles = m_layout.candles;
    const double time = m_layout.timeAt(x);
    const auto after =
        std::partition_point(candles.begin(), candles.end(),
                             [time](const Candle& candle) { return candle.middle() < time; });
    auto nearest = after;
    if (after == candles.end() ||
        (after != candles.begin() && time - (after - 1)->middle() < after->middle() - time))
        nearest = after - 1;
    return nearest - candles.begin();
}

void ChartView::updateCrosshair()
{
    m_pointed = -1;
    const QRectF both = m_layout.pricePane.united(m_layout.volumePane);
    if (m_mouse && !m_drag && !m_layout.candles.empty() && both.contains(*m_mouse)) {
        m_pointed = nearestCandle(m_mouse->x());
        m_crosshair->point(m_pointed, m_mouse->y());
    } else {
        m_crosshair->point(-1, 0);
    }
    m_layout.timeTag = m_crosshair->timeTag();
    Q_EMIT pointedChanged();
}

const Candle* ChartView::pointed() const
{
    return m_pointed >= 0 && m_pointed < static_cast<qsizetype>(m_layout.candles.size())
               ? &m_layout.candles[static_cast<size_t>(m_pointed)]
               : nullptr;
}

QPoint ChartView::placeOf(const Candle& candle) const
{
    return QPointF(m_layout.xOf(candle.middle()),
                   ChartLayout::yOf(candle.bar.close, m_layout.pricePane, m_layout.prices))
        .toPoint();
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
    return QGraphicsView::event(event);
}

bool ChartView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave) {
        m_mouse.reset();
        updateCrosshair();
    }
    return QGraphicsView::viewportEvent(event);
}

void ChartView::resizeEvent(QResizeEvent* event)
{
    QGraphicsView::resizeEvent(event);
    arrange();
}

void ChartView::showEvent(QShowEvent* event)
{
    QGraphicsView::showEvent(event);
    arrange();
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
        setRange(m_limits.zoomed(range(), timeBelow(event->position()),
                                 std::pow(zoomStep, angle.y() / wheelStep)));
}

// Beside the panes, the nearest time in them.
double ChartView::timeBelow(const QPointF& place) const
{
    const QRectF& pane = m_layout.pricePane;
    return m_layout.timeAt(std::clamp(place.x(), pane.left(), pane.right()));
}

void ChartView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || isEmpty())
        return;
    m_drag = Drag{event->position().x(), range()};
    viewport()->setCursor(Qt::ClosedHandCursor);
    updateCrosshair();
}

void ChartView::mouseMoveEvent(QMouseEvent* event)
{
    m_mouse = event->position();
    if (m_drag) {
        const double seconds = (m_drag->x - event->position().x()) /
                               std::max(1.0, m_layout.pricePane.width()) * m_drag->range.length();
        setRange(m_limits.moved(m_drag->range, seconds));
    }
    updateCrosshair();
}

void ChartView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_drag)
        return;
    m_drag.reset();
    viewport()->unsetCursor();
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
    const bool hasControl = event->modifiers() & Qt::ControlModifier;
    switch (event->key()) {
    case Qt::Key_Left:
        scroll(-scrollStep);
        break;
    case Qt::Key_Right:
        scroll(scrollStep);
        break;
    case Qt::Key_PageUp:
        scroll(-pageStep);
        break;
    case Qt::Key_PageDown:
        scroll(pageStep);
        break;
    case Qt::Key_Plus:
    case Qt::Key_Equal: // the same key without Shift
        zoom(zoomStep);
        break;
    case Qt::Key_Minus:
        zoom(1 / zoomStep);
        break;
    case Qt::Key_Home:
        setRange({m_limits.all().begin, m_limits.all().begin + range().length()});
        break;
    case Qt::Key_End:
        setRange({m_limits.all().end - range().length(), m_limits.all().end});
        break;
    case Qt::Key_0:
        if (hasControl) {
            showAll();
            break;
        }
        [[fallthrough]];
    default:
        event->ignore();
    }
}

void ChartView::drawForeground(QPainter* painter, const QRectF& /*rect*/)
{
    if (!hasFocus())
        return;
    painter->setPen(palette().color(QPalette::Highlight));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(QRectF(QPointF(), m_sceneSize).adjusted(0, 0, -1, -1));
}

void ChartView::focusInEvent(QFocusEvent* event)
{
    QGraphicsView::focusInEvent(event);
    viewport()->update();
}

void ChartView::focusOutEvent(QFocusEvent* event)
{
    QGraphicsView::focusOutEvent(event);
    viewport()->update();
}

void ChartView::changeEvent(QEvent* event)
{
    QGraphicsView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        applyColors();
    } else if (event->type() == QEvent::FontChange) {
        applyFont();
        placePanes();
        refresh();
    }
}

} // namespace vexdesk
