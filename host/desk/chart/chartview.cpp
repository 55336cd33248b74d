// SPDX-License-Identifier: MIT
#include "desk/chart/chartview.h"

#include "desk/chart/axisticks.h"
#include "desk/chart/chartaccessible.h"
#include "desk/chart/chartcolors.h"
#include "desk/chart/chartfiles.h"
#include "desk/chart/chartpainter.h"
#include "desk/chart/wallclock.h"

#include <QtCore/QSet>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QHelpEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtGui/QRegion>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QToolTip>

#include <algorithm>
#include <cmath>

namespace vexdesk {

namespace {

constexpr double zoomStep = 0.8;
constexpr double scrollStep = 0.1; // of what is shown
constexpr double pageStep = 0.9;
constexpr double wheelStep = 120; // angle of a step of the wheel

// Device-independent pixels.
constexpr double thinnestCandle = 4; // with the gap beside it
constexpr double usualCandle = 8;

constexpr double halfSecond = 0.5; // before the end of a bar is in it, however short it is

// Whether a chart does something when the key is pressed.
bool isChartKey(const QKeyEvent& event)
{
    if (event.matches(QKeySequence::Copy))
        return true;
    if (event.key() == Qt::Key_0)
        return event.modifiers() == Qt::ControlModifier;
    if (event.key() == Qt::Key_F10)
        return event.modifiers() == Qt::ShiftModifier;
    static const QSet<int> keys{Qt::Key_Left,     Qt::Key_Right,  Qt::Key_PageUp, Qt::Key_PageDown,
                                Qt::Key_Home,     Qt::Key_End,    Qt::Key_Plus,   Qt::Key_Equal,
                                Qt::Key_Minus,    Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter,
                                Qt::Key_Backspace};
    return keys.contains(event.key()) &&
           !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier));
}

QRegion placeOf(const ChartLayout& chart, const std::optional<Crosshair>& crosshair)
{
    if (!crosshair)
        return {};
    constexpr double margin = 2; // of a line
    const QRectF& prices = chart.prices.place;
    const QSizeF& size = chart.size;
    const double bottom = chart.volumes.place.bottom();
    QRegion place;
    for (const QRectF& part :
         {QRectF(crosshair->at.x() - margin, 0, 2 * margin, size.height()),
          QRectF(0, crosshair->at.y() - margin, size.width(), 2 * margin),
          QRectF(prices.right(), 0, size.width() - prices.right(), size.height()),
          QRectF(0, bottom, size.width(), size.height() - bottom), crosshair->time.place,
          crosshair->value.place})
        place |= part.toAlignedRect();
    return place;
}

} // namespace

ChartView::ChartView(QWidget* parent)
    : QWidget(parent)
{
    installChartAccessibility();
    setObjectName(QStringLiteral("chartView"));
    setAccessibleName(tr("График цен и объёмов"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
}

ChartView::~ChartView() = default;

QSize ChartView::minimumSizeHint() const
{
    constexpr QSize smallest(240, 110);
    return smallest;
}

void ChartView::setTitle(const QString& title)
{
    m_title = title;
    setAccessibleName(title.isEmpty() ? tr("График цен и объёмов")
                                      : tr("График цен и объёмов: %1").arg(title));
    refresh();
}

void ChartView::showSeries(const std::shared_ptr<const BarSeries>& series)
{
    const bool hadHistory = canGoBack() || canGoForward();
    m_history.clear();
    m_mark.reset();
    m_pointed.reset();
    m_target.reset();
    m_grip = Grip::None;
    change(Step::None, [&] { m_viewport.showSeries(series); });
    if (hadHistory)
        Q_EMIT historyChanged();
}

void ChartView::updateSeries(const std::shared_ptr<const BarSeries>& series)
{
    const std::optional<QDate> target = m_target;
    const bool isAtFirst = m_isAtFirst;
    change(Step::None, [&] {
        m_viewport.updateSeries(series);
        // Where a day that was not read begins is not known.
        if (isAtFirst)
            m_viewport.moveToFirst();
        m_isAtFirst = isAtFirst;
        m_target = target;
        const std::optional<double> before = m_pointed;
        findTarget();
        if (m_pointed && m_pointed != before)
            m_viewport.goTo(*m_pointed);
    });
}

void ChartView::setTimeframe(Timeframe timeframe)
{
    if (timeframe != this->timeframe() || timeframe != shownTimeframe())
        change(Step::Jump, [&] { m_viewport.setTimeframe(timeframe, fixedTime()); });
}

void ChartView::setNightsShown(bool areShown)
{
    if (areShown != areNightsShown())
        change(Step::Jump, [&] { m_viewport.setNightsShown(areShown, fixedTime()); });
}

// The bar at the keyboard's crosshair stays where it is.
std::optional<double> ChartView::fixedTime() const
{
    return m_pointed && m_crosshair ? m_pointed : std::nullopt;
}

void ChartView::setStudies(std::vector<std::shared_ptr<const ChartStudy>> studies)
{
    m_studies = std::move(studies);
    refresh();
}

void ChartView::setMarks(const QList<ChartMark>& marks)
{
    if (marks == m_marks)
        return;
    m_marks = marks;
    layOut();
}

void ChartView::setPlace(const Place& place)
{
    change(Step::Small, [&] { m_viewport.setPlace(place); });
}

SlotRange ChartView::reach() const
{
    return m_viewport.limits().reach(range().length());
}

void ChartView::setRange(const SlotRange& range)
{
    if (range != m_viewport.range())
        change(Step::Small, [&] { m_viewport.setRange(range); });
}

void ChartView::zoom(double factor)
{
    change(Step::Small, [&] { m_viewport.zoom(range().middle(), factor); });
}

void ChartView::scroll(double shareOfView)
{
    change(Step::Small, [&] { m_viewport.move(shareOfView * range().length()); });
}

void ChartView::showAll()
{
    change(Step::Jump, [&] { m_viewport.showAll(); });
}

void ChartView::goToFirst()
{
    change(Step::Jump, [&] {
        m_viewport.moveToFirst();
        m_isAtFirst = true;
    });
}

void ChartView::goToLast()
{
    change(Step::Jump, [&] { m_viewport.move(reach().end - range().end); });
}

void ChartView::goTo(qint64 wallTime)
{
    if (isEmpty())
        return;
    const bool isMidnight = floorDivided(wallTime, secondsPerDay) * secondsPerDay == wallTime;
    if (isMidnight && !isBelowDay(shownTimeframe())) {
        goTo(wallDate(wallTime)); // which begins then; no day, week or month is meant that ends
        return;
    }
    change(Step::Jump, [&] {
        m_pointed = static_cast<double>(wallTime) - halfSecond;
        m_viewport.goTo(*m_pointed);
    });
}

void ChartView::goTo(const QDate& day)
{
    if (isEmpty() || !day.isValid())
        return;
    change(Step::Jump, [&] {
        m_target = day;
        m_viewport.goTo(static_cast<double>(wallTime(day)));
        findTarget();
        if (m_pointed)
            m_viewport.goTo(*m_pointed);
    });
}

// A day that was not read has no first bar yet: it is looked for again when more was read.
void ChartView::findTarget()
{
    if (!m_target || isEmpty())
        return;
    const TimeAxis& axis = m_viewport.axis();
    const qint64 slot = axis.firstSlotFrom(*m_target).value_or(axis.size() - 1);
    m_pointed = axis.timeAt(static_cast<double>(slot) + 0.5);
}

void ChartView::goBack()
{
    step(m_history.back(m_viewport.state()));
}

void ChartView::goForward()
{
    step(m_history.forward(m_viewport.state()));
}

void ChartView::step(const std::optional<ViewHistory::State>& state)
{
    if (state) {
        change(Step::Small, [&] { m_viewport.restore(*state); });
        Q_EMIT stepped();
    }
    Q_EMIT historyChanged();
}

// All that moves the view goes through here: what is marked stays at its times, and those around
// are told what has become another.
void ChartView::change(Step step, const std::function<void()>& how)
{
    const ViewHistory::State before = m_viewport.state();
    std::pair<double, double> marked;
    if (m_mark)
        marked = timesOf(markedRange());
    const bool wasEmpty = isEmpty();
    m_isAtFirst = false;
    how();
    if (m_mark)
        markTimes(marked);
    refresh();
    const ViewHistory::State now = m_viewport.state();
    if (now.timeframe != before.timeframe || now.shown != before.shown ||
        now.areNightsShown != before.areNightsShown)
        Q_EMIT timeframeChanged();
    if (step == Step::Jump && !wasEmpty && now != before) {
        m_history.leave(before);
        Q_EMIT historyChanged();
    }
    if (step != Step::None && now != before)
        Q_EMIT moved();
}

// From the begin of the first candle to the end of the last one.
std::pair<double, double> ChartView::timesOf(const SlotRange& range) const
{
    return {m_viewport.axis().timeAt(range.begin), m_viewport.axis().timeUpTo(range.end)};
}

// Marks the candles that have a part between these times, in the direction in which it was begun.
void ChartView::markTimes(const std::pair<double, double>& times)
{
    constexpr double inside = 1e-6;
    const double first = m_viewport.axis().slotOf(times.first) + inside;
    const double last = std::max(first, m_viewport.axis().slotOf(times.second) - inside);
    m_mark = m_mark->from <= m_mark->to ? Mark{first, last} : Mark{last, first};
}

void ChartView::refresh()
{
    layOut();
    Q_EMIT rangeChanged();
}

void ChartView::layOut()
{
    m_layout = isEmpty() ? ChartLayout()
                         : layOutChart({m_viewport.axis(), range(), heading(), m_studies, m_marks},
                                       size(), font());
    update();
    updateCrosshair();
}

// With the timeframe that is shown, which may not be the chosen one.
QString ChartView::heading() const
{
    const QString timeframe = timeframeText(shownTimeframe());
    return m_title.isEmpty() ? timeframe : QStringLiteral("%1, %2").arg(m_title, timeframe);
}

// Only what a crosshair covers is painted anew, and the labels that make room for its own: all of a
// large window would not keep up with the mouse.
void ChartView::updateCrosshair()
{
    const QRegion before = placeOf(m_layout, m_crosshair);
    m_crosshair.reset();
    if (m_pointed && !isEmpty()) {
        const double slot = std::floor(m_viewport.axis().slotOf(*m_pointed));
        m_crosshair = m_layout.crosshairOn(static_cast<qint64>(slot));
    } else if (m_mouse && m_grip != Grip::Moving) {
        m_crosshair = m_layout.crosshairAt(*m_mouse);
    }
    update(before | placeOf(m_layout, m_crosshair));
    announce();
    Q_EMIT pointedChanged();
}

// A screen reader says the bar that the keyboard points at; for a mouse it would never end.
void ChartView::announce()
{
    if (m_pointed)
        setReadout(*this, readout());
}

const Candle* ChartView::pointed() const
{
    return m_crosshair && m_crosshair->candle ? &m_layout.candles[*m_crosshair->candle].candle
                                              : nullptr;
}

QString ChartView::readout() const
{
    const Candle* const candle = pointed();
    if (!candle)
        return {};
    QString text = readoutText(*candle, m_layout.kind, m_layout.prices.decimals);
    if (const MarkSign* const sign = m_layout.markOf(*m_crosshair->candle))
        text +=
            QStringLiteral("   ") + QString(sign->mark.text).replace(u'\n', QStringLiteral("   "));
    return text;
}

std::pair<QDate, QDate> ChartView::daysInView() const
{
    int before = 0;
    for (const auto& study : m_studies)
        before = std::max(before, study->candlesBefore());
    const TimeAxis& axis = m_viewport.axis();
    const auto [first, last] = axis.daysIn({range().begin - before, range().end});
    if (first >= last)
        return {};
    const auto& days = axis.series().days();
    return {days[static_cast<size_t>(first)].day, days[static_cast<size_t>(last - 1)].day};
}

bool ChartView::needsBars() const
{
    return isBelowDay(shownTimeframe());
}

std::optional<qint64> ChartView::crosshairSlot() const
{
    if (m_pointed)
        return static_cast<qint64>(std::floor(m_viewport.axis().slotOf(*m_pointed)));
    if (m_crosshair)
        return m_crosshair->slot;
    return std::nullopt;
}

void ChartView::putCrosshair(qint64 slot)
{
    m_target.reset();
    m_pointed = m_viewport.axis().timeAt(static_cast<double>(slot) + 0.5);
    follow(slot);
}

// As far as must be to see the slot and the one beside it.
void ChartView::follow(qint64 slot)
{
    const auto position = static_cast<double>(slot);
    double distance = 0;
    if (position - 1 < range().begin)
        distance = position - 1 - range().begin;
    else if (position + 2 > range().end)
        distance = position + 2 - range().end;
    if (distance != 0)
        change(Step::Small, [&] { m_viewport.move(distance); });
    else
        updateCrosshair();
}

bool ChartView::isCrosshairInView() const
{
    const std::optional<qint64> slot = crosshairSlot();
    return slot && m_layout.isInView(static_cast<double>(*slot) + 0.5);
}

// The first bar in view or, backwards, the last one; of a view without bars the nearest one to it.
std::optional<qint64> ChartView::firstSlotInView(bool isForwards) const
{
    std::vector<qint64> seen;
    for (const PlacedCandle& placed : m_layout.candles) {
        if (m_layout.isInView(placed.middle()))
            seen.push_back(placed.slot);
    }
    if (!seen.empty())
        return isForwards ? seen.front() : seen.back();
    const double edge = isForwards ? std::floor(range().begin) - 1 : std::ceil(range().end);
    return m_viewport.axis().next(static_cast<qint64>(edge), isForwards);
}

void ChartView::moveCrosshair(int candles)
{
    if (isEmpty() || candles == 0)
        return;
    clearMark();
    const TimeAxis& axis = m_viewport.axis();
    std::optional<qint64> slot = crosshairSlot();
    // Nobody steps on from a bar that is not to be seen.
    if (!isCrosshairInView()) {
        slot = firstSlotInView(candles > 0);
        candles = 0;
    }
    for (int i = 0; slot && i < std::abs(candles); ++i) {
        const std::optional<qint64> next = axis.next(*slot, candles > 0);
        if (!next)
            break;
        slot = next;
    }
    if (slot)
        putCrosshair(*slot);
}

void ChartView::dropCrosshair()
{
    m_pointed.reset();
    m_target.reset();
    setReadout(*this, QString());
    clearMark();
    updateCrosshair();
}

void ChartView::markTo(int candles)
{
    if (isEmpty())
        return;
    const std::optional<Mark> before = m_mark;
    const bool wasInView = isCrosshairInView();
    if (!wasInView)
        moveCrosshair(candles);
    const std::optional<qint64> from = crosshairSlot();
    if (!from)
        return;
    const Mark mark = before.value_or(Mark{static_cast<double>(*from) + 0.5, 0});
    // What was begun out of view goes up to the bar at which the crosshair begins anew.
    if (wasInView || !before)
        moveCrosshair(candles);
    m_mark = Mark{mark.from, static_cast<double>(crosshairSlot().value_or(*from)) + 0.5};
    update();
    Q_EMIT markChanged();
}

SlotRange ChartView::markedRange() const
{
    const auto [first, last] = std::minmax(m_mark->from, m_mark->to);
    return {std::floor(first), std::floor(last) + 1};
}

void ChartView::zoomToMark()
{
    if (!m_mark)
        return;
    const SlotRange marked = markedRange();
    m_grip = Grip::None;
    unsetCursor();
    clearMark();
    change(Step::Jump, [&] { m_viewport.setRange(marked); });
}

void ChartView::clearMark()
{
    if (!m_mark)
        return;
    m_mark.reset();
    update();
    Q_EMIT markChanged();
}

std::pair<double, double> ChartView::copiedTimes() const
{
    return timesOf(m_mark ? markedRange() : range());
}

QImage ChartView::picture(double scale) const
{
    return chartImage(m_layout, ChartColors::of(palette()), scale);
}

Outcome ChartView::savePicture(const QString& path) const
{
    return saveChart(m_layout, ChartColors::of(palette()), devicePixelRatioF(), path);
}

bool ChartView::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        // The keys of the chart win over the shortcuts of menus, and all others are theirs.
        if (isChartKey(*static_cast<QKeyEvent*>(event))) {
            event->accept();
            return true;
        }
    } else if (event->type() == QEvent::ToolTip) {
        const auto* const help = static_cast<QHelpEvent*>(event);
        if (const MarkSign* const sign = m_layout.markAt(help->pos())) {
            QToolTip::showText(help->globalPos(), sign->mark.text, this, sign->place.toRect());
            return true;
        }
        QToolTip::hideText();
    }
    return QWidget::event(event);
}

void ChartView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const ChartColors colors = ChartColors::of(palette());
    ChartOverlay overlay{m_crosshair, std::nullopt};
    if (m_mark)
        overlay.marked = markedRange();
    if (isEmpty())
        painter.fillRect(rect(), colors.background);
    else
        paintChart(painter, m_layout, colors, overlay);
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void ChartView::resizeEvent(QResizeEvent* /*event*/)
{
    const double width = usualPaneWidth(size(), font());
    change(Step::None, [&] { m_viewport.setRoom(width / thinnestCandle, width / usualCandle); });
}

void ChartView::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        resizeEvent(nullptr);
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
        change(Step::Small, [&] {
            m_viewport.zoom(slotBelow(event->position()),
                            std::pow(zoomStep, angle.y() / wheelStep));
        });
}

// Beside the panes, the nearest position in them.
double ChartView::slotBelow(const QPointF& place) const
{
    const QRectF& pane = m_layout.prices.place;
    return m_layout.slotAt(std::clamp(place.x(), pane.left(), pane.right()));
}

void ChartView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || isEmpty())
        return;
    clearMark();
    if (event->modifiers() & Qt::ShiftModifier) {
        m_grip = Grip::Marking;
        m_gripAt = slotBelow(event->position());
        setCursor(Qt::IBeamCursor);
    } else {
        m_grip = Grip::Moving;
        m_gripAt = event->position().x();
        setCursor(Qt::ClosedHandCursor);
    }
    updateCrosshair();
}

void ChartView::mouseMoveEvent(QMouseEvent* event)
{
    m_mouse = event->position();
    m_pointed.reset();
    m_target.reset();
    if (m_grip == Grip::Moving) {
        // Step by step: between two of them the slots may have become others.
        const double pixels = m_gripAt - event->position().x();
        m_gripAt = event->position().x();
        change(Step::Small, [&] { m_viewport.move(pixels / m_layout.slotWidth()); });
        return;
    }
    if (m_grip == Grip::Marking) {
        m_mark = Mark{m_mark ? m_mark->from : m_gripAt, slotBelow(event->position())};
        update();
        Q_EMIT markChanged();
    }
    updateCrosshair();
}

void ChartView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || m_grip == Grip::None)
        return;
    const bool isMarked = m_grip == Grip::Marking && m_mark;
    m_grip = Grip::None;
    unsetCursor();
    m_mouse = event->position();
    if (isMarked)
        zoomToMark();
    else
        updateCrosshair();
}

void ChartView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        showAll();
}

void ChartView::contextMenuEvent(QContextMenuEvent* event)
{
    event->accept();
    if (event->reason() == QContextMenuEvent::Mouse)
        Q_EMIT contextMenuWanted(event->globalPos());
    else
        Q_EMIT contextMenuWanted(mapToGlobal(
            m_crosshair ? m_crosshair->at.toPoint() : m_layout.prices.place.center().toPoint()));
}

// Whether there was something to give up: a range that is being marked, the crosshair.
bool ChartView::giveUp()
{
    const bool had = m_mark || m_pointed || m_grip == Grip::Marking;
    if (m_grip == Grip::Marking) {
        m_grip = Grip::None;
        unsetCursor();
    }
    if (m_mark)
        clearMark();
    else if (m_pointed)
        dropCrosshair();
    return had;
}

bool ChartView::moveByKey(const QKeyEvent& event)
{
    const bool isForwards = event.key() == Qt::Key_Right;
    const int one = isForwards ? 1 : -1;
    switch (event.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (event.modifiers() & Qt::AltModifier)
            isForwards ? goForward() : goBack();
        else if (event.modifiers() & Qt::ControlModifier)
            scroll(one * scrollStep);
        else if (event.modifiers() & Qt::ShiftModifier)
            markTo(one);
        else
            moveCrosshair(one);
        return true;
    case Qt::Key_PageUp:
        scroll(-pageStep);
        return true;
    case Qt::Key_PageDown:
        scroll(pageStep);
        return true;
    case Qt::Key_Plus:
    case Qt::Key_Equal: // the same key without Shift
        zoom(zoomStep);
        return true;
    case Qt::Key_Minus:
        zoom(1 / zoomStep);
        return true;
    default:
        return false;
    }
}

bool ChartView::jumpByKey(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Home:
        goToFirst();
        return true;
    case Qt::Key_End:
        goToLast();
        return true;
    case Qt::Key_Backspace:
        goBack();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!m_mark)
            return false;
        zoomToMark();
        return true;
    case Qt::Key_Escape:
        return giveUp();
    case Qt::Key_0:
        if (!(event.modifiers() & Qt::ControlModifier))
            return false;
        showAll();
        return true;
    case Qt::Key_F10:
        if (event.modifiers() != Qt::ShiftModifier)
            return false;
        Q_EMIT contextMenuWanted(mapToGlobal(m_layout.prices.place.center().toPoint()));
        return true;
    default:
        return false;
    }
}

void ChartView::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        Q_EMIT copyWanted();
    else if (!moveByKey(*event) && !jumpByKey(*event))
        event->ignore();
}

} // namespace vexdesk
