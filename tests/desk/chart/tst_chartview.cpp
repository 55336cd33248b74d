// SPDX-License-Identifier: MIT
// The chart under mouse, wheel and keys.

#include "chartsupport.h"
#include "desk/chart/chartcolors.h"
#include "desk/chart/chartview.h"
#include "desk/chart/movingaverage.h"
#include "desk/chart/wallclock.h"
#include "support/hands.h"
#include "support/strictlog.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QAccessible>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QHelpEvent>
#include <QtGui/QPaintEvent>
#include <QtGui/QPainter>
#include <QtGui/QWheelEvent>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolTip>

#include <algorithm>
#include <cmath>
#include <memory>

using testsupport::firstDay;
using testsupport::makeBars;
using testsupport::makeSeries;
using testsupport::moveMouse;
using testsupport::placeOf;
using testsupport::SeriesPointer;
using vexdesk::BarSeries;
using vexdesk::ChartColors;
using vexdesk::ChartLayout;
using vexdesk::ChartMark;
using vexdesk::ChartView;
using vexdesk::PlacedCandle;
using vexdesk::SlotRange;
using vexdesk::Timeframe;
using vexdesk::wallTime;

namespace {

bool isNear(double left, double right, double off = 1e-3)
{
    return std::abs(left - right) <= off;
}

bool isNear(const SlotRange& left, const SlotRange& right, double off = 1e-3)
{
    return isNear(left.begin, right.begin, off) && isNear(left.end, right.end, off);
}

double brightness(const QColor& color)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other)
{
    const double left = brightness(one) + 0.05;
    const double right = brightness(other) + 0.05;
    return std::max(left, right) / std::min(left, right);
}

// Notes what of a widget is painted, also for a picture of it.
class PaintedPlaces final : public QObject
{
public:
    explicit PaintedPlaces(QWidget& widget) { widget.installEventFilter(this); }

    QRegion region;

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            region |= static_cast<const QPaintEvent*>(event)->region();
        return false;
    }
};

QImage without(const QRegion& region, QImage image)
{
    QPainter painter(&image);
    painter.setClipRegion(region);
    painter.fillRect(image.rect(), Qt::black);
    return image;
}

} // namespace

class TestChartView final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_view.reset(); }

    void showsTheEndAtFirst();
    void drawsRisingBarsHollowAndFallingOnesFilled();
    void theFocusIsSeen();
    void aChartIsTheSameHoweverItCameToItsSize();
    void theWheelZoomsAroundTheMouse();
    void theWheelScrollsWithShiftAndToTheSide();
    void theMouseDragsTheTimes();
    void readingDoesNotEndADrag();
    void aRangeIsMarkedWithTheMouse();
    void escapeGivesUpAMark();
    void keysScrollAndZoom();
    void arrowsMoveACrosshair();
    void theViewFollowsTheCrosshair();
    void theCrosshairBeginsInView();
    void aMarkGoesOnInView();
    void theCrosshairPassesWhatCannotBeRead();
    void theCrosshairGoesOverNights();
    void aRangeIsMarkedWithKeys();
    void fewMarkedBarsAreShownAlone();
    void aMarkStaysWhereItWas();
    void controlZeroAndADoubleClickShowEverything();
    void zoomingOutShowsLongerTimeframes();
    void aTimeframeIsChosen();
    void nightsAreShown();
    void jumpsAreTakenBack();
    void stepsAreNoJumps();
    void goesToATime();
    void goesToADay();
    void midnightIsTheBeginOfADayAndOfWhatIsLonger();
    void homeShowsTheFirstBarWithNightsToo();
    void goesToADayThatIsNotReadYet();
    void theMouseReadsABar();
    void theCrosshairGoesWithTheMouse();
    void theCrosshairIsDrawn();
    void noLabelLooksOutFromBelowTheCrosshairs();
    void aCrosshairThatMovesPaintsItsPlaceOnly();
    void aDragHidesTheCrosshair();
    void marksAreToldWithTheBar();
    void unreadDaysLookDifferent();
    void tellsWhatMustBeRead();
    void keepsItsPlaceWhenBarsChange();
    void followsNewBarsAtTheRightEnd();
    void aContextMenuIsAskedFor();
    void keysWinOverMenus();
    void copiesWhatIsInViewOrMarked();
    void picturesHaveNoCrosshair();
    void savesPictures();
    void aScreenReaderIsToldTheBar();
    void anEmptySeriesTakesMouseAndKeys();
    void colorsCanBeReadOnEveryGround_data();
    void colorsCanBeReadOnEveryGround();
    void followsThePalette();

private:
    void wheel(QPoint place, QPoint angle, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int count = 1);
    QPoint middle() const { return m_view->chart().prices.place.center().toPoint(); }
    const PlacedCandle& candleAt(const QTime& time) const;
    QImage picture() const { return m_view->grab().toImage(); }
    qint64 pointedEnd() const { return m_view->pointed() ? m_view->pointed()->end : 0; }

    std::unique_ptr<ChartView> m_view;
    SeriesPointer m_series;
};

void TestChartView::init()
{
    testsupport::failOnStrayWarnings();
    m_view = std::make_unique<ChartView>();
    m_view->resize(800, 400);
    m_view->show();
    m_view->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_view.get()));
    m_series = makeSeries(10, 120);
    m_view->showSeries(m_series);
}

void TestChartView::wheel(QPoint place, QPoint angle, Qt::KeyboardModifiers modifiers)
{
    QWheelEvent event(place, m_view.get()->mapToGlobal(QPointF(place)), QPoint(), angle,
                      Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(m_view.get(), &event);
}

void TestChartView::key(Qt::Key key, Qt::KeyboardModifiers modifiers, int count)
{
    for (int i = 0; i < count; ++i)
        hands::keyClick(m_view.get(), key, modifiers);
}

const PlacedCandle& TestChartView::candleAt(const QTime& time) const
{
    for (const PlacedCandle& placed : m_view->chart().candles) {
        if (vexdesk::wallClock(placed.candle.end) == time)
            return placed;
    }
    return m_view->chart().candles.front();
}

void TestChartView::showsTheEndAtFirst()
{
    QCOMPARE(m_view->timeframe(), Timeframe::Minute);
    QCOMPARE(m_view->shownTimeframe(), Timeframe::Minute);
    const auto& candles = m_view->chart().candles;
    QCOMPARE(candles.back().slot, 10 * 120 - 1);
    QVERIFY(candles.size() > 60 && candles.size() < 120);
    QVERIFY(m_view->range().end > 1200);
    QVERIFY(isNear(m_view->chart().slotWidth(), 8, 0.7));
    QCOMPARE(m_view->place().end, 0);
}

void TestChartView::drawsRisingBarsHollowAndFallingOnesFilled()
{
    m_view->setRange({1100, 1118});
    const QImage image = picture();
    const ChartLayout& chart = m_view->chart();
    const auto colors = ChartColors::of(m_view->palette());
    int rising = 0;
    int falling = 0;
    for (const PlacedCandle& placed : chart.candles) {
        const vexdesk::CandleColumn column = chart.columnOf(placed);
        const vexdesk::Bar& bar = placed.candle.bar;
        const double open = chart.prices.yOf(bar.open);
        const double close = chart.prices.yOf(bar.close);
        if (std::abs(open - close) < 12 || column.left < chart.prices.place.left())
            continue;
        const int y = static_cast<int>((open + close) / 2) + 1; // beside a line of the grid
        const QColor inside = image.pixelColor(int(column.left + column.width / 4), y);
        const QColor edge = image.pixelColor(int(column.left), y);
        const bool isFalling = bar.close < bar.open;
        QCOMPARE(inside, isFalling ? colors.falling : colors.background);
        QCOMPARE(edge, isFalling ? colors.falling : colors.rising);
        ++(isFalling ? falling : rising);
        // The volume below it is drawn in the same way and no higher than it is.
        const double top = chart.volumes.yOf(double(bar.volume));
        QCOMPARE(image.pixelColor(int(column.left), int(top + chart.volumes.place.bottom()) / 2),
                 isFalling ? colors.falling : colors.rising);
    }
    QVERIFY(rising > 1 && falling > 1);
}

void TestChartView::theFocusIsSeen()
{
    QWidget window;
    auto* const other = new QPushButton(&window);
    m_view->setParent(&window);
    window.resize(700, 400);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    other->setFocus();
    const QImage without = picture();
    m_view->setFocus();
    QVERIFY(m_view->hasFocus());
    QVERIFY(picture() != without);
    other->setFocus();
    QVERIFY(picture() == without);
    m_view->setParent(nullptr);
}

void TestChartView::aChartIsTheSameHoweverItCameToItsSize()
{
    m_view->clearFocus();
    for (const QSize size : {QSize(1300, 700), QSize(420, 260), QSize(1300, 300)}) {
        m_view->resize(size);
        ChartView other;
        other.setAttribute(Qt::WA_ShowWithoutActivating);
        other.resize(size);
        other.show();
        other.showSeries(m_series);
        other.clearFocus();
        QCOMPARE(picture(), other.grab().toImage());
    }
}

void TestChartView::theWheelZoomsAroundTheMouse()
{
    m_view->setRange({1000, 1080});
    const QPoint place = middle() + QPoint(150, 10);
    const double slot = m_view->chart().slotAt(place.x());
    const double length = m_view->range().length();
    wheel(place, {0, 120});
    QVERIFY(m_view->range().length() < length * 0.9);
    QVERIFY(isNear(m_view->chart().slotAt(place.x()), slot, 0.1));
    wheel(place, {0, -120});
    QVERIFY(isNear(m_view->range().length(), length));
    // A fine wheel turns by parts of a step.
    for (int i = 0; i < 8; ++i)
        wheel(place, {0, 15});
    const double fine = m_view->range().length();
    wheel(place, {0, -120});
    QVERIFY(isNear(m_view->range().length(), length));
    QVERIFY(fine < length * 0.9);
}

void TestChartView::theWheelScrollsWithShiftAndToTheSide()
{
    const SlotRange before = m_view->range();
    wheel(middle(), {0, 120}, Qt::ShiftModifier);
    QVERIFY(m_view->range().begin < before.begin);
    QVERIFY(isNear(m_view->range().length(), before.length()));
    wheel(middle(), {0, -120}, Qt::ShiftModifier);
    QVERIFY(isNear(m_view->range(), before));
    wheel(middle(), {120, 0});
    QVERIFY(m_view->range().begin < before.begin);
    wheel(middle(), {-120, 0});
    QVERIFY(isNear(m_view->range(), before));
}

void TestChartView::theMouseDragsTheTimes()
{
    const SlotRange before = m_view->range();
    const double slot = m_view->chart().slotAt(middle().x());
    hands::mousePress(m_view.get(), Qt::LeftButton, {}, middle());
    moveMouse(m_view.get(), middle() + QPoint(60, 5), Qt::LeftButton);
    moveMouse(m_view.get(), middle() + QPoint(100, 5), Qt::LeftButton);
    // What was below the mouse still is.
    QVERIFY(isNear(m_view->chart().slotAt(middle().x() + 100), slot, 0.1));
    QVERIFY(isNear(m_view->range().length(), before.length()));
    hands::mouseRelease(m_view.get(), Qt::LeftButton, {}, middle() + QPoint(100, 5));
    const SlotRange dragged = m_view->range();
    moveMouse(m_view.get(), middle());
    QCOMPARE(m_view->range(), dragged);
}

void TestChartView::readingDoesNotEndADrag()
{
    hands::mousePress(m_view.get(), Qt::LeftButton, {}, middle());
    moveMouse(m_view.get(), middle() + QPoint(60, 0), Qt::LeftButton);
    m_view->updateSeries(makeSeries(10, 120));
    const double slot = m_view->chart().slotAt(middle().x() + 60);
    moveMouse(m_view.get(), middle() + QPoint(120, 0), Qt::LeftButton);
    QVERIFY(isNear(m_view->chart().slotAt(middle().x() + 120), slot, 0.1));
    hands::mouseRelease(m_view.get(), Qt::LeftButton, {}, middle());
}

void TestChartView::aRangeIsMarkedWithTheMouse()
{
    m_view->setRange({1000, 1080});
    QSignalSpy spy(m_view.get(), &ChartView::markChanged);
    const QPoint from = middle() - QPoint(150, 0);
    const QPoint to = middle() + QPoint(150, 0);
    const double first = std::floor(m_view->chart().slotAt(from.x()));
    const double last = std::floor(m_view->chart().slotAt(to.x()));
    hands::mousePress(m_view.get(), Qt::LeftButton, Qt::ShiftModifier, from);
    moveMouse(m_view.get(), to, Qt::LeftButton);
    QVERIFY(m_view->hasMark());
    QVERIFY(spy.count() > 0);
    const QImage marked = picture();
    hands::mouseRelease(m_view.get(), Qt::LeftButton, Qt::ShiftModifier, to);
    QVERIFY(!m_view->hasMark());
    QVERIFY(isNear(m_view->range(), {first, last + 1}));
    QVERIFY(marked != picture());
    m_view->goBack();
    QVERIFY(isNear(m_view->range(), {1000, 1080}));
    // A click with Shift that marks nothing leaves all as it is.
    hands::mouseClick(m_view.get(), Qt::LeftButton, Qt::ShiftModifier, from);
    QVERIFY(isNear(m_view->range(), {1000, 1080}));
}

void TestChartView::escapeGivesUpAMark()
{
    const SlotRange before = m_view->range();
    hands::mousePress(m_view.get(), Qt::LeftButton, Qt::ShiftModifier, middle());
    moveMouse(m_view.get(), middle() + QPoint(100, 0), Qt::LeftButton);
    QVERIFY(m_view->hasMark());
    key(Qt::Key_Escape);
    QVERIFY(!m_view->hasMark());
    moveMouse(m_view.get(), middle() + QPoint(110, 0), Qt::LeftButton);
    hands::mouseRelease(m_view.get(), Qt::LeftButton, Qt::ShiftModifier, middle());
    QCOMPARE(m_view->range(), before);
}

void TestChartView::keysScrollAndZoom()
{
    m_view->setRange({600, 680});
    const SlotRange before = m_view->range();
    key(Qt::Key_Left, Qt::ControlModifier);
    QVERIFY(m_view->range().begin < before.begin);
    key(Qt::Key_Right, Qt::ControlModifier);
    QVERIFY(isNear(m_view->range(), before));
    key(Qt::Key_Plus);
    QVERIFY(m_view->range().length() < before.length());
    key(Qt::Key_Minus);
    QVERIFY(isNear(m_view->range(), before));
    key(Qt::Key_Home);
    QVERIFY(isNear(m_view->range().begin, m_view->reach().begin));
    QVERIFY(m_view->range().begin < 0);
    key(Qt::Key_PageDown);
    QVERIFY(m_view->range().begin > 50);
    key(Qt::Key_PageUp);
    QVERIFY(isNear(m_view->range().begin, m_view->reach().begin));
    key(Qt::Key_End);
    QVERIFY(isNear(m_view->range().end, m_view->reach().end));
    QVERIFY(isNear(m_view->range().length(), before.length()));
}

void TestChartView::arrowsMoveACrosshair()
{
    QVERIFY(!m_view->pointed());
    key(Qt::Key_Left);
    QCOMPARE(pointedEnd(), m_view->chart().candles.back().candle.end);
    const double close = m_view->pointed()->bar.close;
    QCOMPARE(m_view->crosshair()->value.text, m_view->chart().prices.textOf(close));
    key(Qt::Key_Left, Qt::NoModifier, 3);
    QCOMPARE(m_view->crosshair()->slot, 1196);
    key(Qt::Key_Right);
    QCOMPARE(m_view->crosshair()->slot, 1197);
    // From where the mouse points.
    moveMouse(m_view.get(), placeOf(m_view->chart(), candleAt(QTime(11, 30))));
    key(Qt::Key_Right);
    QCOMPARE(vexdesk::wallClock(pointedEnd()), QTime(11, 31));
    // It stays when the mouse leaves, and goes with Escape.
    testsupport::leaveWidget(m_view.get());
    QVERIFY(m_view->pointed());
    key(Qt::Key_Escape);
    QVERIFY(!m_view->pointed());
}

void TestChartView::theViewFollowsTheCrosshair()
{
    const SlotRange before = m_view->range();
    key(Qt::Key_Left, Qt::NoModifier, 100);
    QCOMPARE(m_view->crosshair()->slot, 1200 - 100);
    QVERIFY(m_view->range().begin < before.begin);
    QVERIFY(isNear(m_view->range().length(), before.length()));
    QVERIFY(m_view->range().begin <= 1099 && m_view->range().begin > 1095);
    key(Qt::Key_Home);
    QVERIFY(!m_view->pointed()); // out of view, but not forgotten
    m_view->goBack();
    QCOMPARE(m_view->crosshair()->slot, 1100);
    key(Qt::Key_Right, Qt::NoModifier, 200);
    QCOMPARE(m_view->crosshair()->slot, 1199);
}

void TestChartView::theCrosshairBeginsInView()
{
    for (const bool areNightsShown : {false, true}) {
        m_view->setNightsShown(areNightsShown);
        m_view->goTo(firstDay.addDays(4));
        key(Qt::Key_Home);
        key(Qt::Key_Right);
        QCOMPARE(pointedEnd(), wallTime(firstDay, QTime(10, 1)));
        key(Qt::Key_Right);
        QCOMPARE(pointedEnd(), wallTime(firstDay, QTime(10, 2)));
        key(Qt::Key_End);
        key(Qt::Key_Left);
        QCOMPARE(pointedEnd(), wallTime(firstDay.addDays(11), QTime(12, 0)));
        key(Qt::Key_Left);
        QCOMPARE(pointedEnd(), wallTime(firstDay.addDays(11), QTime(11, 59)));
    }
    // In the middle, too, and the view stays there.
    m_view->setNightsShown(false);
    key(Qt::Key_End);
    key(Qt::Key_Left);
    key(Qt::Key_PageUp, Qt::NoModifier, 3);
    const SlotRange there = m_view->range();
    key(Qt::Key_Left);
    QVERIFY(m_view->crosshair());
    QVERIFY(std::abs(double(m_view->crosshair()->slot) - there.end) < 3);
    QVERIFY(isNear(m_view->range(), there, 3));
}

void TestChartView::aMarkGoesOnInView()
{
    m_view->goTo(firstDay.addDays(4));
    key(Qt::Key_Home);
    key(Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(m_view->copiedTimes().first, double(wallTime(firstDay, QTime(10, 0))));
    QCOMPARE(m_view->copiedTimes().second, double(wallTime(firstDay, QTime(10, 2))));
    // Up to the last bar that is seen, from where it was begun.
    key(Qt::Key_End);
    key(Qt::Key_Left, Qt::ShiftModifier);
    QCOMPARE(m_view->copiedTimes().first, double(wallTime(firstDay, QTime(10, 0))));
    QCOMPARE(m_view->copiedTimes().second, double(wallTime(firstDay.addDays(11), QTime(12, 0))));
}

void TestChartView::theCrosshairPassesWhatCannotBeRead()
{
    std::vector<vexdesk::SeriesDay> days = m_series->days();
    for (const size_t day : {size_t(7), size_t(9)}) {
        days[day] = testsupport::unreadDay(days[day].day, 120 * 48);
        days[day].reading = vexdesk::Failure{QStringLiteral("no right to read it")};
    }
    m_view->showSeries(std::make_shared<const BarSeries>(60, days));
    for (const bool areNightsShown : {false, true}) {
        m_view->setNightsShown(areNightsShown);
        key(Qt::Key_End);
        key(Qt::Key_Left);
        QCOMPARE(pointedEnd(), wallTime(days[8].day, QTime(12, 0)));
        key(Qt::Key_Right);
        QCOMPARE(pointedEnd(), wallTime(days[8].day, QTime(12, 0)));
        m_view->goTo(days[8].day);
        key(Qt::Key_Left);
        QCOMPARE(pointedEnd(), wallTime(days[6].day, QTime(12, 0)));
        key(Qt::Key_Right);
        QCOMPARE(pointedEnd(), wallTime(days[8].day, QTime(10, 1)));
    }
}

void TestChartView::theCrosshairGoesOverNights()
{
    m_view->setNightsShown(true);
    m_view->goTo(wallTime(firstDay.addDays(4), QTime(12, 0))); // the last bar of a Friday
    QCOMPARE(pointedEnd(), wallTime(firstDay.addDays(4), QTime(12, 0)));
    key(Qt::Key_Right);
    QCOMPARE(pointedEnd(), wallTime(firstDay.addDays(7), QTime(10, 1)));
    key(Qt::Key_Left);
    QCOMPARE(pointedEnd(), wallTime(firstDay.addDays(4), QTime(12, 0)));
}

void TestChartView::aRangeIsMarkedWithKeys()
{
    key(Qt::Key_Left, Qt::NoModifier, 31);
    QCOMPARE(m_view->crosshair()->slot, 1169);
    key(Qt::Key_Left, Qt::ShiftModifier, 24);
    QVERIFY(m_view->hasMark());
    QCOMPARE(m_view->crosshair()->slot, 1145);
    key(Qt::Key_Right, Qt::ShiftModifier, 1);
    key(Qt::Key_Return);
    QVERIFY(!m_view->hasMark());
    QVERIFY(isNear(m_view->range(), {1146, 1170}));
    // Escape takes the mark at first and then the crosshair.
    key(Qt::Key_Left, Qt::ShiftModifier);
    key(Qt::Key_Escape);
    QVERIFY(!m_view->hasMark() && m_view->pointed());
    key(Qt::Key_Escape);
    QVERIFY(!m_view->pointed());
    // A step without Shift takes the mark too.
    key(Qt::Key_Left, Qt::ShiftModifier, 3);
    QVERIFY(m_view->hasMark());
    key(Qt::Key_Left);
    QVERIFY(!m_view->hasMark());
}

void TestChartView::fewMarkedBarsAreShownAlone()
{
    key(Qt::Key_Left, Qt::NoModifier, 31);
    for (const int count : {3, 1}) {
        key(Qt::Key_Left, Qt::ShiftModifier, count - 1);
        if (count == 1) {
            key(Qt::Key_Left, Qt::ShiftModifier);
            key(Qt::Key_Right, Qt::ShiftModifier);
        }
        const auto marked = m_view->copiedTimes();
        key(Qt::Key_Return);
        QVERIFY(isNear(m_view->range().length(), count));
        QCOMPARE(m_view->copiedTimes(), marked);
        QCOMPARE(m_view->chart().candles.size(), size_t(count));
        // Bars that come do not make it another one, nor does a step closer.
        const SlotRange range = m_view->range();
        m_view->updateSeries(m_series);
        QVERIFY(isNear(m_view->range(), range));
        key(Qt::Key_Plus);
        QVERIFY(isNear(m_view->range(), range));
        m_view->goBack();
    }
}

void TestChartView::aMarkStaysWhereItWas()
{
    m_view->setTimeframe(Timeframe::Day);
    key(Qt::Key_Left, Qt::NoModifier, 3);
    key(Qt::Key_Left, Qt::ShiftModifier, 2);
    const auto marked = m_view->copiedTimes();
    QCOMPARE(marked.first, double(wallTime(firstDay.addDays(7))));
    QCOMPARE(marked.second, double(wallTime(firstDay.addDays(10))));
    // Whole days, also in shorter candles, and from either side.
    for (const bool isBackwards : {true, false}) {
        m_view->setTimeframe(Timeframe::Minutes5);
        QCOMPARE(m_view->copiedTimes().first, double(wallTime(firstDay.addDays(7), QTime(10, 0))));
        QCOMPARE(m_view->copiedTimes().second, double(wallTime(firstDay.addDays(9), QTime(12, 0))));
        m_view->setNightsShown(true);
        m_view->setNightsShown(false);
        m_view->setTimeframe(Timeframe::Day);
        QCOMPARE(m_view->copiedTimes(), marked);
        if (!isBackwards)
            return;
        m_view->clearMark();
        m_view->goTo(firstDay.addDays(7));
        key(Qt::Key_Right, Qt::ShiftModifier, 2);
        QCOMPARE(m_view->copiedTimes(), marked);
    }
}

void TestChartView::controlZeroAndADoubleClickShowEverything()
{
    const auto isAll = [this] { return isNear(m_view->range(), m_view->reach()); };
    key(Qt::Key_0);
    QVERIFY(!isAll());
    key(Qt::Key_0, Qt::ControlModifier);
    QVERIFY(isAll());
    m_view->goBack();
    QVERIFY(!isAll());
    hands::mouseDClick(m_view.get(), Qt::LeftButton, {}, middle());
    QVERIFY(isAll());
}

void TestChartView::zoomingOutShowsLongerTimeframes()
{
    QSignalSpy spy(m_view.get(), &ChartView::timeframeChanged);
    key(Qt::Key_Minus, Qt::NoModifier, 40);
    QCOMPARE(m_view->timeframe(), Timeframe::Minute);
    QCOMPARE(m_view->shownTimeframe(), Timeframe::Minutes10);
    QVERIFY(spy.count() > 0);
    QVERIFY(isNear(m_view->range(), m_view->reach()));
    QVERIFY(m_view->chart().slotWidth() >= 3.9);
    QVERIFY(m_view->chart().title.text.endsWith(QStringLiteral("10 мин")));
    key(Qt::Key_Plus, Qt::NoModifier, 40);
    QCOMPARE(m_view->shownTimeframe(), Timeframe::Minute);
    QVERIFY(m_view->chart().slotWidth() < 45);
}

void TestChartView::aTimeframeIsChosen()
{
    QSignalSpy spy(m_view.get(), &ChartView::timeframeChanged);
    m_view->setTimeframe(Timeframe::Minutes5);
    QCOMPARE(m_view->shownTimeframe(), Timeframe::Minutes5);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(m_view->chart().candles.back().candle.count, 5);
    m_view->setTimeframe(Timeframe::Minutes5);
    QCOMPARE(spy.count(), 1);
    // But a longer one that has taken its place gives way to it.
    m_view->showAll();
    QVERIFY(m_view->shownTimeframe() > Timeframe::Minutes5);
    m_view->setTimeframe(Timeframe::Minutes5);
    QCOMPARE(m_view->shownTimeframe(), Timeframe::Minutes5);
    // The crosshair of the keyboard stays where it is.
    key(Qt::Key_Left, Qt::NoModifier, 40);
    const double x = m_view->crosshair()->at.x();
    const qint64 end = pointedEnd();
    m_view->setTimeframe(Timeframe::Minute);
    QVERIFY(std::abs(m_view->crosshair()->at.x() - x) <= 12);
    QVERIFY(pointedEnd() > end - 300 && pointedEnd() <= end);
    m_view->goBack();
    QCOMPARE(m_view->timeframe(), Timeframe::Minutes5);
}

void TestChartView::nightsAreShown()
{
    m_view->setTimeframe(Timeframe::Minutes30);
    const size_t without = m_view->chart().candles.size();
    m_view->setNightsShown(true);
    QVERIFY(m_view->areNightsShown());
    QVERIFY(m_view->chart().candles.size() < without / 3);
    QVERIFY(m_view->range().end > 47);
    m_view->setNightsShown(false);
    QCOMPARE(m_view->chart().candles.size(), without);
}

void TestChartView::jumpsAreTakenBack()
{
    QSignalSpy spy(m_view.get(), &ChartView::historyChanged);
    QVERIFY(!m_view->canGoBack() && !m_view->canGoForward());
    const SlotRange first = m_view->range();
    key(Qt::Key_Home);
    const SlotRange second = m_view->range();
    QVERIFY(m_view->canGoBack() && spy.count() > 0);
    m_view->showAll();
    const SlotRange third = m_view->range();
    key(Qt::Key_Backspace);
    QVERIFY(isNear(m_view->range(), second));
    key(Qt::Key_Left, Qt::AltModifier);
    QVERIFY(isNear(m_view->range(), first));
    QVERIFY(!m_view->canGoBack() && m_view->canGoForward());
    key(Qt::Key_Right, Qt::AltModifier);
    QVERIFY(isNear(m_view->range(), second));
    m_view->goForward();
    QVERIFY(isNear(m_view->range(), third));
    QVERIFY(!m_view->canGoForward());
    // Another series has none of it.
    m_view->showSeries(makeSeries(2, 120));
    QVERIFY(!m_view->canGoBack() && !m_view->canGoForward());
}

void TestChartView::stepsAreNoJumps()
{
    key(Qt::Key_Left, Qt::ControlModifier);
    key(Qt::Key_Plus);
    key(Qt::Key_PageUp);
    key(Qt::Key_Left, Qt::NoModifier, 3);
    QVERIFY(!m_view->canGoBack());
    // From where the steps have led, a jump is taken back.
    const SlotRange before = m_view->range();
    m_view->goToFirst();
    m_view->goBack();
    QVERIFY(isNear(m_view->range(), before));
}

void TestChartView::goesToATime()
{
    m_view->goTo(wallTime(firstDay.addDays(2), QTime(11, 0)));
    QCOMPARE(pointedEnd(), wallTime(firstDay.addDays(2), QTime(11, 0)));
    QVERIFY(std::abs(m_view->crosshair()->at.x() - middle().x()) < 12);
    QVERIFY(m_view->canGoBack());
    // A bar between others, by the interval that it is in.
    m_view->setTimeframe(Timeframe::Minutes10);
    m_view->goTo(wallTime(firstDay.addDays(3), QTime(10, 51)));
    QCOMPARE(pointedEnd(), wallTime(firstDay.addDays(3), QTime(11, 0)));
}

void TestChartView::goesToADay()
{
    for (const bool areNightsShown : {false, true}) {
        m_view->setNightsShown(areNightsShown);
        m_view->goTo(firstDay.addDays(2));
        QCOMPARE(pointedEnd(), wallTime(firstDay.addDays(2), QTime(10, 1)));
        QVERIFY(std::abs(m_view->crosshair()->at.x() - middle().x()) < 12);
        m_view->goTo(firstDay.addDays(5)); // a Saturday
        QCOMPARE(pointedEnd(), wallTime(firstDay.addDays(7), QTime(10, 1)));
        m_view->goTo(firstDay.addDays(1000));
        QVERIFY(m_view->range().end >= m_view->reach().end - 1);
    }
}

void TestChartView::midnightIsTheBeginOfADayAndOfWhatIsLonger()
{
    for (const bool areNightsShown : {false, true}) {
        m_view->setNightsShown(areNightsShown);
        for (const Timeframe timeframe : {Timeframe::Day, Timeframe::Week}) {
            m_view->setTimeframe(timeframe);
            m_view->goTo(wallTime(firstDay.addDays(7)));
            QVERIFY(m_view->pointed());
            QCOMPARE(m_view->pointed()->day, firstDay.addDays(7));
        }
    }
}

void TestChartView::homeShowsTheFirstBarWithNightsToo()
{
    m_view->setNightsShown(true);
    QVERIFY(m_view->range().length() < 10 * 60); // the first bar ends at 10:01
    key(Qt::Key_Home);
    QVERIFY(!m_view->chart().candles.empty());
    QCOMPARE(m_view->chart().candles.front().candle.day, firstDay);
    QCOMPARE(m_view->chart().candles.front().candle.end, wallTime(firstDay, QTime(10, 1)));
    // When it begins is known only when the day is read.
    std::vector<vexdesk::SeriesDay> days = m_series->days();
    days.front() = testsupport::unreadDay(firstDay, 120 * 48);
    m_view->showSeries(std::make_shared<const BarSeries>(60, days));
    key(Qt::Key_Home);
    QVERIFY(m_view->chart().candles.empty());
    m_view->updateSeries(m_series);
    QVERIFY(!m_view->chart().candles.empty());
    // Who has gone elsewhere is not taken back.
    key(Qt::Key_End);
    const SlotRange end = m_view->range();
    m_view->updateSeries(m_series);
    QVERIFY(isNear(m_view->range(), end));
}

void TestChartView::goesToADayThatIsNotReadYet()
{
    for (const bool areNightsShown : {false, true}) {
        std::vector<vexdesk::SeriesDay> days = m_series->days();
        for (vexdesk::SeriesDay& day : days)
            day = testsupport::unreadDay(day.day, 120 * 48);
        m_view->setNightsShown(areNightsShown);
        m_view->showSeries(std::make_shared<const BarSeries>(60, days));
        m_view->goTo(firstDay.addDays(2));
        QVERIFY(m_view->crosshair() && !m_view->pointed());
        const auto inView = m_view->daysInView();
        QVERIFY(inView.first <= firstDay.addDays(2) && inView.second >= firstDay.addDays(2));
        m_view->updateSeries(m_series);
        QCOMPARE(pointedEnd(), wallTime(firstDay.addDays(2), QTime(10, 1)));
    }
}

void TestChartView::theMouseReadsABar()
{
    QVERIFY(!m_view->pointed() && m_view->readout().isEmpty());
    QSignalSpy spy(m_view.get(), &ChartView::pointedChanged);
    for (const QTime time : {QTime(11, 10), QTime(11, 20), QTime(12, 0)}) {
        const PlacedCandle placed = candleAt(time);
        moveMouse(m_view.get(), placeOf(m_view->chart(), placed));
        QVERIFY(spy.count() > 0);
        QCOMPARE(pointedEnd(), placed.candle.end);
        QCOMPARE(vexdesk::wallClock(pointedEnd()), time);
        QVERIFY(m_view->readout().startsWith(
            QStringLiteral("26.01.2024 %1   Откр.").arg(time.toString(QStringLiteral("hh:mm")))));
    }
    // In the pane of the volumes too, and in the empty part behind the last bar.
    const ChartLayout& chart = m_view->chart();
    moveMouse(m_view.get(), {int(chart.xOf(candleAt(QTime(11, 55)).middle())),
                             int(chart.volumes.place.center().y())});
    QCOMPARE(vexdesk::wallClock(pointedEnd()), QTime(11, 55));
    moveMouse(m_view.get(), {int(chart.prices.place.right()) - 1, middle().y()});
    QCOMPARE(vexdesk::wallClock(pointedEnd()), QTime(12, 0));
}

void TestChartView::theCrosshairGoesWithTheMouse()
{
    moveMouse(m_view.get(), middle());
    QVERIFY(m_view->pointed());
    testsupport::leaveWidget(m_view.get());
    QVERIFY(!m_view->pointed());
    moveMouse(m_view.get(), middle());
    QVERIFY(m_view->pointed());
    moveMouse(m_view.get(), {m_view->width() - 2, middle().y()}); // on the axis
    QVERIFY(!m_view->pointed());
    // The mouse takes over from the keys.
    key(Qt::Key_Left, Qt::NoModifier, 2);
    const qint64 byKeys = pointedEnd();
    moveMouse(m_view.get(), middle());
    QVERIFY(pointedEnd() != byKeys);
}

void TestChartView::theCrosshairIsDrawn()
{
    const QImage without = picture();
    moveMouse(m_view.get(), middle());
    const QImage with = picture();
    QVERIFY(with != without);
    // The labels on both axes are filled.
    const QColor tag = ChartColors::of(m_view->palette()).tag;
    QVERIFY(m_view->crosshair());
    for (const auto* const label : {&m_view->crosshair()->time, &m_view->crosshair()->value})
        QCOMPARE(with.pixelColor(label->place.topLeft().toPoint() + QPoint(1, 1)), tag);
    testsupport::leaveWidget(m_view.get());
    QCOMPARE(picture(), without);
}

void TestChartView::noLabelLooksOutFromBelowTheCrosshairs()
{
    QVERIFY(m_view->chart().last);
    const vexdesk::LastPrice last = *m_view->chart().last;
    const auto colors = ChartColors::of(m_view->palette());
    const QPoint corner = last.label.place.topLeft().toPoint() + QPoint(1, 1);
    const QColor color = last.isRising ? colors.rising : colors.falling;
    QCOMPARE(picture().pixelColor(corner), color);
    moveMouse(m_view.get(), {middle().x(), int(last.at) + 8});
    QVERIFY(m_view->crosshair()->value.place.intersects(last.label.place));
    QVERIFY(!m_view->crosshair()->value.place.contains(corner));
    QVERIFY(picture().pixelColor(corner) != color);
}

// What lies beside it is the same before and after, or it would be wrong on the screen.
void TestChartView::aCrosshairThatMovesPaintsItsPlaceOnly()
{
    QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
    PaintedPlaces painted(*m_view);
    const QRectF pane = m_view->chart().prices.place;
    const QPointF last(pane.right() - 5, m_view->chart().last->at + 3); // its label makes room
    for (const QPointF& place : {QPointF(pane.center()), QPointF(pane.left() + 40, pane.top() + 9),
                                 last, m_view->chart().volumes.place.center(), QPointF(3, 3)}) {
        const QImage before = picture();
        QCoreApplication::processEvents();
        painted.region = {};
        moveMouse(m_view.get(), place.toPoint());
        QTRY_VERIFY(!painted.region.isEmpty());
        const QRegion region = painted.region; // what follows paints all of it
        const QImage after = picture();
        QVERIFY(before != after);
        qint64 pixels = 0;
        for (const QRect& part : region)
            pixels += qint64(part.width()) * part.height();
        QVERIFY2(pixels < qint64(m_view->width()) * m_view->height() / 2,
                 qPrintable(QString::number(pixels)));
        QCOMPARE(without(region, before), without(region, after));
    }
}

void TestChartView::aDragHidesTheCrosshair()
{
    moveMouse(m_view.get(), middle());
    hands::mousePress(m_view.get(), Qt::LeftButton, {}, middle());
    QVERIFY(!m_view->pointed());
    moveMouse(m_view.get(), middle() + QPoint(10, 0), Qt::LeftButton);
    QVERIFY(!m_view->pointed());
    hands::mouseRelease(m_view.get(), Qt::LeftButton, {}, middle() + QPoint(10, 0));
    QVERIFY(m_view->pointed());
}

void TestChartView::marksAreToldWithTheBar()
{
    const QImage without = picture();
    const QDate day = firstDay.addDays(11);
    m_view->setMarks({{ChartMark::Kind::Warning, day, QTime(11, 29), QTime(11, 30),
                       QStringLiteral("Нет сделок")}});
    QVERIFY(picture() != without);
    QCOMPARE(m_view->chart().marks.size(), 1U);
    moveMouse(m_view.get(), placeOf(m_view->chart(), candleAt(QTime(11, 30))));
    QVERIFY(m_view->readout().endsWith(QStringLiteral("   Нет сделок")));
    moveMouse(m_view.get(), placeOf(m_view->chart(), candleAt(QTime(11, 31))));
    QVERIFY(!m_view->readout().contains(QStringLiteral("Нет сделок")));
    // And in a tool tip.
    const QPoint sign = m_view->chart().marks.front().place.center().toPoint();
    QHelpEvent help(QEvent::ToolTip, sign, m_view->mapToGlobal(sign));
    QApplication::sendEvent(m_view.get(), &help);
    QCOMPARE(QToolTip::text(), QStringLiteral("Нет сделок"));
    m_view->setMarks({});
    QVERIFY(m_view->chart().marks.empty());
}

void TestChartView::unreadDaysLookDifferent()
{
    std::vector<vexdesk::SeriesDay> days = m_series->days();
    const QDate last = days.back().day;
    days.back() = testsupport::unreadDay(last, 120 * 48);
    m_view->showSeries(std::make_shared<const BarSeries>(60, days));
    QVERIFY(!m_view->chart().unread.empty());
    const auto colors = ChartColors::of(m_view->palette());
    const QRectF pane = m_view->chart().prices.place;
    const double x = m_view->chart().xOf(m_view->chart().unread.front().middle());
    QCOMPARE(picture().pixel(int(x) + 2, int(pane.top()) + 2), colors.unread.rgb());
    // There is nothing to point at.
    moveMouse(m_view.get(), {int(x), middle().y()});
    QVERIFY(!m_view->crosshair());
}

void TestChartView::tellsWhatMustBeRead()
{
    using Days = std::pair<QDate, QDate>;
    m_view->setRange({130, 200});
    QCOMPARE(m_view->daysInView(), Days(firstDay.addDays(1), firstDay.addDays(1)));
    QVERIFY(m_view->needsBars());
    // What a study needs before the view, too.
    m_view->setStudies({std::make_shared<vexdesk::MovingAverage>(20)});
    QCOMPARE(m_view->daysInView(), Days(firstDay, firstDay.addDays(1)));
    m_view->setTimeframe(Timeframe::Day);
    QVERIFY(!m_view->needsBars());
    QCOMPARE(m_view->daysInView(), Days(firstDay, firstDay.addDays(11)));
}

void TestChartView::keepsItsPlaceWhenBarsChange()
{
    m_view->setRange({620, 690});
    const SlotRange before = m_view->range();
    m_view->updateSeries(makeSeries(11, 120));
    QVERIFY(isNear(m_view->range(), before));
    // Days before it have other candles than was thought: by the time at the right edge.
    const qint64 last = m_view->chart().candles.back().candle.end;
    std::vector<vexdesk::SeriesDay> days = m_series->days();
    days[1] = testsupport::readDay(days[1].day, makeBars(days[1].day, 20));
    m_view->updateSeries(std::make_shared<const BarSeries>(60, days));
    QVERIFY(isNear(m_view->range(), {520, 590}));
    QCOMPARE(m_view->chart().candles.back().candle.end, last);
    m_view->showAll();
    m_view->updateSeries(makeSeries(9, 120));
    QVERIFY(isNear(m_view->range(), m_view->reach()));
}

void TestChartView::followsNewBarsAtTheRightEnd()
{
    m_view->scroll(-0.01); // somewhat, with the last bar still in view
    const SlotRange before = m_view->range();
    QVERIFY(before.end >= 1200 && before.end < m_view->reach().end);
    std::vector<vexdesk::SeriesDay> days = m_series->days();
    days.back() = testsupport::readDay(days.back().day, makeBars(days.back().day, 125));
    m_view->updateSeries(std::make_shared<const BarSeries>(60, days));
    QVERIFY(isNear(m_view->range(), {before.begin + 5, before.end + 5}));
}

void TestChartView::aContextMenuIsAskedFor()
{
    QSignalSpy spy(m_view.get(), &ChartView::contextMenuWanted);
    QContextMenuEvent byMouse(QContextMenuEvent::Mouse, {50, 60}, {150, 160});
    QApplication::sendEvent(m_view.get(), &byMouse);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.last().front().toPoint(), QPoint(150, 160));
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, {0, 0}, {0, 0});
    QApplication::sendEvent(m_view.get(), &byKey);
    QCOMPARE(spy.last().front().toPoint(), m_view->mapToGlobal(middle()));
    key(Qt::Key_F10, Qt::ShiftModifier);
    QCOMPARE(spy.count(), 3);
    key(Qt::Key_F10);
    QCOMPARE(spy.count(), 3);
}

void TestChartView::keysWinOverMenus()
{
    for (const auto& [key, modifiers] :
         {std::pair(Qt::Key_0, Qt::KeyboardModifiers(Qt::ControlModifier)),
          std::pair(Qt::Key_C, Qt::KeyboardModifiers(Qt::ControlModifier)),
          std::pair(Qt::Key_Backspace, Qt::KeyboardModifiers()),
          std::pair(Qt::Key_Left, Qt::KeyboardModifiers(Qt::ShiftModifier))}) {
        QKeyEvent event(QEvent::ShortcutOverride, key, modifiers);
        event.ignore();
        QApplication::sendEvent(m_view.get(), &event);
        QVERIFY2(event.isAccepted(), qPrintable(QString::number(key)));
    }
    // What the chart has no use for is left to them.
    for (const auto& [key, modifiers] :
         {std::pair(Qt::Key_L, Qt::KeyboardModifiers(Qt::ControlModifier)),
          std::pair(Qt::Key_I, Qt::KeyboardModifiers(Qt::ShiftModifier)),
          std::pair(Qt::Key_F1, Qt::KeyboardModifiers())}) {
        QKeyEvent event(QEvent::ShortcutOverride, key, modifiers);
        event.ignore();
        QApplication::sendEvent(m_view.get(), &event);
        QVERIFY2(!event.isAccepted(), qPrintable(QString::number(key)));
    }
}

void TestChartView::copiesWhatIsInViewOrMarked()
{
    QSignalSpy spy(m_view.get(), &ChartView::copyWanted);
    key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(spy.count(), 1);
    const auto& candles = m_view->chart().candles;
    const auto isCopied = [this](const PlacedCandle& placed) {
        const auto [from, to] = m_view->copiedTimes();
        return double(placed.candle.end) > from && double(placed.candle.begin) < to;
    };
    QVERIFY(std::all_of(candles.begin(), candles.end(), isCopied));
    QVERIFY(m_view->copiedTimes().first >= double(candles.front().candle.begin));
    key(Qt::Key_Left, Qt::NoModifier, 2);
    key(Qt::Key_Left, Qt::ShiftModifier, 3);
    QCOMPARE(m_view->copiedTimes().first, double(wallTime(firstDay.addDays(11), QTime(11, 55))));
    QCOMPARE(m_view->copiedTimes().second, double(wallTime(firstDay.addDays(11), QTime(11, 59))));
    // Also of what is out of view by now.
    key(Qt::Key_Home);
    QCOMPARE(m_view->copiedTimes().first, double(wallTime(firstDay.addDays(11), QTime(11, 55))));
}

void TestChartView::picturesHaveNoCrosshair()
{
    m_view->clearFocus();
    const QImage plain = m_view->picture(1);
    QCOMPARE(plain.size(), m_view->size());
    QCOMPARE(plain.convertToFormat(QImage::Format_RGB32),
             picture().convertToFormat(QImage::Format_RGB32));
    key(Qt::Key_Left, Qt::ShiftModifier, 5);
    QVERIFY(m_view->hasMark() && m_view->crosshair());
    QCOMPARE(m_view->picture(1), plain);
    QCOMPARE(m_view->picture(2).size(), 2 * m_view->size());
}

void TestChartView::savesPictures()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("chart.png"));
    QCOMPARE(m_view->savePicture(path), vexdesk::Outcome());
    const QImage saved(path);
    QCOMPARE(saved.size(), m_view->size() * m_view->devicePixelRatioF());
    QVERIFY(!m_view->savePicture(directory.filePath(QStringLiteral("none/chart.svg"))));
}

void TestChartView::aScreenReaderIsToldTheBar()
{
    m_view->setTitle(QStringLiteral("VEGA"));
    key(Qt::Key_Left, Qt::NoModifier, 2);
    QVERIFY(m_view->readout().startsWith(QStringLiteral("26.01.2024 11:59")));
    QCOMPARE(m_view->accessibleDescription(), m_view->readout());
    QAccessibleInterface* const chart = QAccessible::queryAccessibleInterface(m_view.get());
    QVERIFY(chart);
    QCOMPARE(chart->role(), QAccessible::Chart);
    QCOMPARE(chart->text(QAccessible::Value), m_view->readout());
    QCOMPARE(chart->text(QAccessible::Name), QStringLiteral("График цен и объёмов: VEGA"));
    // For a mouse it would never end.
    const QString told = m_view->accessibleDescription();
    moveMouse(m_view.get(), middle());
    QCOMPARE(m_view->accessibleDescription(), told);
}

void TestChartView::anEmptySeriesTakesMouseAndKeys()
{
    m_view->showSeries(std::make_shared<const BarSeries>());
    QVERIFY(m_view->isEmpty());
    wheel(middle(), {0, 120});
    moveMouse(m_view.get(), middle());
    hands::mouseClick(m_view.get(), Qt::LeftButton, {}, middle());
    hands::mouseDClick(m_view.get(), Qt::LeftButton, {}, middle());
    for (const Qt::Key one : {Qt::Key_Left, Qt::Key_Plus, Qt::Key_Home, Qt::Key_End, Qt::Key_PageUp,
                              Qt::Key_Backspace, Qt::Key_Return})
        key(one);
    key(Qt::Key_Left, Qt::ShiftModifier);
    m_view->goTo(firstDay);
    m_view->goTo(wallTime(firstDay));
    m_view->setTimeframe(Timeframe::Hour);
    m_view->setTimeframe(Timeframe::Minute);
    QVERIFY(!m_view->pointed() && !m_view->hasMark() && !m_view->canGoBack());
    QVERIFY(m_view->chart().candles.empty());
    QCOMPARE(m_view->daysInView(), (std::pair<QDate, QDate>()));
    QVERIFY(!picture().isNull() && !m_view->picture(1).isNull());
    m_view->updateSeries(m_series);
    QCOMPARE(m_view->chart().candles.back().slot, 1199);
}

void TestChartView::colorsCanBeReadOnEveryGround_data()
{
    QTest::addColumn<QColor>("ground");
    QTest::addColumn<QColor>("ink");
    QTest::newRow("light") << QColor(Qt::white) << QColor(Qt::black);
    QTest::newRow("paper") << QColor(240, 235, 220) << QColor(40, 40, 40);
    QTest::newRow("dark") << QColor(30, 30, 30) << QColor(230, 230, 230);
    QTest::newRow("black") << QColor(Qt::black) << QColor(Qt::white);
}

void TestChartView::colorsCanBeReadOnEveryGround()
{
    QFETCH(const QColor, ground);
    QFETCH(const QColor, ink);
    QPalette palette;
    palette.setColor(QPalette::Base, ground);
    palette.setColor(QPalette::Text, ink);
    const auto colors = ChartColors::of(palette);
    constexpr double readable = 4.5;
    for (const QColor& color : {colors.rising, colors.falling, colors.text})
        QVERIFY(contrast(colors.background, color) > readable);
    // The names of the studies are written in their colours.
    for (const QColor& color : colors.studies)
        QVERIFY2(contrast(colors.background, color) > readable, qPrintable(color.name()));
    constexpr double seen = 3;
    for (const QColor& color : {colors.note, colors.warning, colors.fault})
        QVERIFY2(contrast(colors.background, color) > seen, qPrintable(color.name()));
    constexpr double visible = 1.1;
    QVERIFY(contrast(colors.background, colors.grid) > visible);
    QVERIFY(contrast(colors.background, colors.grid) < contrast(colors.background, colors.dayLine));
    QVERIFY(colors.unread != colors.background);
}

void TestChartView::followsThePalette()
{
    QPalette dark = m_view->palette();
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, QColor(230, 230, 230));
    m_view->setPalette(dark);
    const QImage image = picture();
    const QRectF pane = m_view->chart().prices.place;
    QCOMPARE(image.pixelColor(int(pane.left()) + 1, int(pane.top()) + 1), QColor(30, 30, 30));
    QCOMPARE(image.pixelColor(1, 1), QColor(30, 30, 30));
}

QTEST_MAIN(TestChartView)
#include "tst_chartview.moc"
