// SPDX-License-Identifier: MIT
// The chart under mouse, wheel and keys.

#include "chartsupport.h"
#include "desk/chart/chartcolors.h"
#include "desk/chart/chartview.h"
#include "desk/chart/wallclock.h"
#include "support/strictlog.h"

#include <QtGui/QWheelEvent>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>

#include <cmath>
#include <memory>

using testsupport::firstDay;
using testsupport::makeBar;
using testsupport::makeSeries;
using testsupport::minute;
using testsupport::moveMouse;
using testsupport::placeOf;
using vexdesk::BarSeries;
using vexdesk::Candle;
using vexdesk::ChartLayout;
using vexdesk::ChartView;
using vexdesk::TimeRange;
using vexdesk::wallTime;

namespace {

bool isNear(double left, double right, double off = 1e-3)
{
    return std::abs(left - right) <= off;
}

bool isNear(const TimeRange& left, const TimeRange& right)
{
    return isNear(left.begin, right.begin, 0.1) && isNear(left.end, right.end, 0.1);
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

} // namespace

class TestChartView final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_view.reset(); }

    void showsTheLastDayAtFirst();
    void drawsRisingBarsHollowAndFallingOnesFilled();
    void drawsNothingWhereThereIsNoBar();
    void theFocusIsSeen();
    void axesAndGridFollowTheWindow();
    void theWheelZoomsAroundTheMouse();
    void theWheelScrollsWithShiftAndToTheSide();
    void theMouseDragsTheTimes();
    void keysScrollAndZoom();
    void theEndsOfALongSeriesShowBars();
    void controlZeroAndADoubleClickShowEverything();
    void zoomingHasLimits();
    void theMouseReadsABar_data();
    void theMouseReadsABar();
    void theCrosshairSnapsToTheNearestBar();
    void theCrosshairGoesWithTheMouse();
    void theCrosshairIsDrawn();
    void aDragHidesTheCrosshair();
    void keepsItsPlaceWhenBarsChange();
    void followsNewBarsAtTheRightEnd();
    void oneBarCanBeShown();
    void anEmptySeriesTakesMouseAndKeys();
    void colorsCanBeReadOnEveryGround_data();
    void colorsCanBeReadOnEveryGround();
    void followsThePalette();

private:
    void wheel(QPoint place, QPoint angle, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    QPoint middle() const { return m_view->chart().prices.place.center().toPoint(); }
    const Candle& candleAt(const QTime& time) const;
    QImage picture() const { return m_view->grab().toImage(); }

    std::unique_ptr<ChartView> m_view;
    std::shared_ptr<const BarSeries> m_series;
};

void TestChartView::init()
{
    testsupport::failOnStrayWarnings();
    m_view = std::make_unique<ChartView>();
    m_view->resize(800, 400);
    m_view->show();
    m_view->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_view.get()));
    m_series = makeSeries(3, 120);
    m_view->showSeries(m_series, minute);
}

void TestChartView::wheel(QPoint place, QPoint angle, Qt::KeyboardModifiers modifiers)
{
    QWheelEvent event(place, m_view.get()->mapToGlobal(QPointF(place)), QPoint(), angle,
                      Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(m_view.get(), &event);
}

const Candle& TestChartView::candleAt(const QTime& time) const
{
    for (const Candle& candle : m_view->chart().candles) {
        if (vexdesk::wallClock(candle.end) == time)
            return candle;
    }
    return m_view->chart().candles.front();
}

void TestChartView::showsTheLastDayAtFirst()
{
    const QDate last = firstDay.addDays(2);
    QVERIFY(m_view->range().begin <= double(wallTime(last, QTime(10, 0))));
    QVERIFY(m_view->range().begin > double(wallTime(last, QTime(9, 30))));
    QVERIFY(m_view->range().end >= double(wallTime(last, QTime(12, 0))));
    QVERIFY(m_view->range().end < double(wallTime(last, QTime(12, 30))));
    QCOMPARE(m_view->chart().candles.size(), 120U);
    QCOMPARE(m_view->chart().interval, minute);
}

void TestChartView::drawsRisingBarsHollowAndFallingOnesFilled()
{
    const double begin = double(wallTime(firstDay, QTime(10, 26)));
    m_view->setRange({begin, begin + 24 * minute});
    const QImage image = picture();
    const ChartLayout& chart = m_view->chart();
    const auto colors = vexdesk::ChartColors::of(m_view->palette());
    int rising = 0;
    int falling = 0;
    for (const Candle& candle : chart.candles) {
        const vexdesk::CandleColumn column = chart.columnOf(candle);
        const double open = chart.prices.yOf(candle.bar.open);
        const double close = chart.prices.yOf(candle.bar.close);
        if (std::abs(open - close) < 8 || column.left < chart.prices.place.left())
            continue;
        const int y = static_cast<int>((open + close) / 2);
        const QColor inside = image.pixelColor(int(column.left + column.width / 4), y);
        const QColor edge = image.pixelColor(int(column.left), y);
        if (candle.bar.close < candle.bar.open) {
            QCOMPARE(inside, colors.falling);
            QCOMPARE(edge, colors.falling);
            ++falling;
        } else {
            QCOMPARE(inside, colors.background);
            QCOMPARE(edge, colors.rising);
            ++rising;
        }
        // The volume below it is drawn in the same way and no higher than it is.
        const double top = chart.volumes.yOf(double(candle.bar.volume));
        QCOMPARE(image.pixelColor(int(column.left), int(top + chart.volumes.place.bottom()) / 2),
                 candle.bar.close < candle.bar.open ? colors.falling : colors.rising);
    }
    QVERIFY(rising > 1 && falling > 1);
}

void TestChartView::drawsNothingWhereThereIsNoBar()
{
    // A gap of a minute and one of a night.
    const auto series =
        testsupport::seriesOf({{makeBar(firstDay, {10, 1}, 1), makeBar(firstDay, {10, 2}, 2),
                                makeBar(firstDay, {10, 4}, 4)},
                               {makeBar(firstDay.addDays(1), {10, 1}, 1)}});
    m_view->showSeries(series, minute);
    const double begin = double(wallTime(firstDay, QTime(9, 58)));
    m_view->setRange({begin, begin + 10 * minute});
    QCOMPARE(m_view->chart().candles.size(), 3U);
    const QImage image = picture();
    const ChartLayout& chart = m_view->chart();
    const auto colors = vexdesk::ChartColors::of(m_view->palette());
    const auto drawn = [&](const QTime& end) {
        const double at = double(wallTime(firstDay, end)) - minute / 2.0;
        const int x = static_cast<int>(chart.xOf(at));
        int count = 0;
        for (int y = int(chart.prices.place.top()); y < int(chart.volumes.place.bottom()); ++y) {
            for (int side = -3; side <= 3; ++side) {
                const QColor color = image.pixelColor(x + side, y);
                count += color == colors.rising || color == colors.falling;
            }
        }
        return count > 0;
    };
    QVERIFY(drawn({10, 1}));
    QVERIFY(drawn({10, 2}));
    QVERIFY(!drawn({10, 3}));
    QVERIFY(drawn({10, 4}));
    QVERIFY(!drawn({10, 5}));
    m_view->showAll();
    // Two clusters at the ends and the night between them.
    const auto& candles = m_view->chart().candles;
    QVERIFY(candles.back().middle() - candles.front().middle() > 20 * 3600);
    QCOMPARE(candles.size(), 2U);
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

void TestChartView::axesAndGridFollowTheWindow()
{
    m_view->clearFocus();
    for (const QSize size : {QSize(1300, 700), QSize(420, 260), QSize(1300, 300)}) {
        m_view->resize(size);
        // As one that has had this size from the beginning.
        ChartView other;
        other.setAttribute(Qt::WA_ShowWithoutActivating);
        other.resize(size);
        other.show();
        other.showSeries(m_series, minute);
        other.clearFocus();
        QCOMPARE(picture(), other.grab().toImage());
    }
}

void TestChartView::theWheelZoomsAroundTheMouse()
{
    const QPoint place = middle() + QPoint(150, 10);
    const double time = m_view->chart().timeAt(place.x());
    const double length = m_view->range().length();
    wheel(place, {0, 120});
    QVERIFY(m_view->range().length() < length * 0.9);
    QVERIFY(isNear(m_view->chart().timeAt(place.x()), time, 1));
    wheel(place, {0, -120});
    QVERIFY(isNear(m_view->range().length(), length, 1));
    // A fine wheel turns by parts of a step.
    for (int i = 0; i < 8; ++i)
        wheel(place, {0, 15});
    const double fine = m_view->range().length();
    wheel(place, {0, -120});
    QVERIFY(isNear(m_view->range().length(), length, 1));
    QVERIFY(fine < length * 0.9);
}

void TestChartView::theWheelScrollsWithShiftAndToTheSide()
{
    const TimeRange before = m_view->range();
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
    const TimeRange before = m_view->range();
    QWidget* const viewport = m_view.get();
    const double time = m_view->chart().timeAt(middle().x());
    QTest::mousePress(viewport, Qt::LeftButton, {}, middle());
    moveMouse(m_view.get(), middle() + QPoint(60, 5), Qt::LeftButton);
    moveMouse(m_view.get(), middle() + QPoint(100, 5), Qt::LeftButton);
    // What was below the mouse still is.
    QVERIFY(isNear(m_view->chart().timeAt(middle().x() + 100), time, 1));
    QVERIFY(isNear(m_view->range().length(), before.length()));
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, middle() + QPoint(100, 5));
    const TimeRange dragged = m_view->range();
    moveMouse(m_view.get(), middle());
    QCOMPARE(m_view->range(), dragged);
}

void TestChartView::keysScrollAndZoom()
{
    m_view->setFocus();
    const TimeRange before = m_view->range();
    const TimeRange ends = m_view->limits().reach(before.length());
    QTest::keyClick(m_view.get(), Qt::Key_Left);
    QVERIFY(m_view->range().begin < before.begin);
    QTest::keyClick(m_view.get(), Qt::Key_Right);
    QVERIFY(isNear(m_view->range(), before));
    QTest::keyClick(m_view.get(), Qt::Key_Plus);
    QVERIFY(m_view->range().length() < before.length());
    QTest::keyClick(m_view.get(), Qt::Key_Minus);
    QVERIFY(isNear(m_view->range(), before));
    QTest::keyClick(m_view.get(), Qt::Key_Home);
    QVERIFY(isNear(m_view->range().begin, ends.begin));
    QTest::keyClick(m_view.get(), Qt::Key_PageDown);
    QVERIFY(m_view->range().begin > ends.begin);
    QTest::keyClick(m_view.get(), Qt::Key_PageUp);
    QVERIFY(isNear(m_view->range().begin, ends.begin));
    QTest::keyClick(m_view.get(), Qt::Key_End);
    QVERIFY(isNear(m_view->range().end, ends.end));
    QVERIFY(isNear(m_view->range().length(), before.length()));
}

void TestChartView::theEndsOfALongSeriesShowBars()
{
    const auto series = makeSeries(500, 120);
    m_view->showSeries(series, minute);
    const size_t whole = m_view->chart().candles.size();
    QTest::keyClick(m_view.get(), Qt::Key_Home);
    QCOMPARE(m_view->chart().candles.size(), whole);
    QVERIFY(m_view->range().begin < double(series->firstTime()));
    QTest::keyClick(m_view.get(), Qt::Key_End);
    QCOMPARE(m_view->chart().candles.size(), whole);
    QVERIFY(m_view->range().end > double(series->lastTime()));
}

void TestChartView::controlZeroAndADoubleClickShowEverything()
{
    QTest::keyClick(m_view.get(), Qt::Key_0);
    QVERIFY(m_view->range() != m_view->limits().all());
    QTest::keyClick(m_view.get(), Qt::Key_0, Qt::ControlModifier);
    QCOMPARE(m_view->range(), m_view->limits().all());
    m_view->zoom(0.1);
    QTest::mouseDClick(m_view.get(), Qt::LeftButton, {}, middle());
    QCOMPARE(m_view->range(), m_view->limits().all());
}

void TestChartView::zoomingHasLimits()
{
    for (int i = 0; i < 100; ++i)
        wheel(middle(), {0, 120});
    QVERIFY(m_view->range().length() >= 5 * minute);
    QVERIFY(m_view->range().length() <= 20 * minute);
    for (int i = 0; i < 200; ++i)
        wheel(middle(), {0, -120});
    QVERIFY(isNear(m_view->range(), m_view->limits().all()));
}

void TestChartView::theMouseReadsABar_data()
{
    QTest::addColumn<QTime>("time");
    QTest::newRow("first") << QTime(10, 1);
    QTest::newRow("a rising one") << QTime(10, 20);
    QTest::newRow("last") << QTime(12, 0);
}

void TestChartView::theMouseReadsABar()
{
    QFETCH(const QTime, time);
    QVERIFY(!m_view->pointed());
    QSignalSpy spy(m_view.get(), &ChartView::pointedChanged);
    const Candle candle = candleAt(time);
    moveMouse(m_view.get(), placeOf(m_view->chart(), candle));
    QVERIFY(spy.count() > 0);
    QVERIFY(m_view->pointed());
    const int number = QTime(10, 0).secsTo(time) / minute;
    QVERIFY(m_view->pointed()->bar == makeBar(firstDay.addDays(2), time, number));
}

void TestChartView::theCrosshairSnapsToTheNearestBar()
{
    const double begin = double(wallTime(firstDay, QTime(11, 50)));
    m_view->setRange({begin, begin + 60 * minute});
    // In the empty part after the last bar of the day.
    moveMouse(m_view.get(), {int(m_view->chart().xOf(begin + 50 * minute)), middle().y()});
    QVERIFY(m_view->pointed());
    QCOMPARE(m_view->pointed()->end, wallTime(firstDay, QTime(12, 0)));
    // In the pane of the volumes too.
    const Candle& candle = candleAt(QTime(11, 55));
    moveMouse(m_view.get(), {int(m_view->chart().xOf(candle.middle())),
                             int(m_view->chart().volumes.place.center().y())});
    QCOMPARE(m_view->pointed()->end, candle.end);
    // And after the view has moved below the mouse.
    wheel(placeOf(m_view->chart(), candle), {0, -120}, Qt::ShiftModifier);
    QVERIFY(m_view->pointed());
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
}

void TestChartView::theCrosshairIsDrawn()
{
    const QImage without = picture();
    moveMouse(m_view.get(), middle());
    const QImage with = picture();
    QVERIFY(with != without);
    // The labels on both axes are filled.
    const QColor tag = vexdesk::ChartColors::of(m_view->palette()).tag;
    QVERIFY(m_view->crosshair());
    for (const auto* const label : {&m_view->crosshair()->time, &m_view->crosshair()->value})
        QCOMPARE(with.pixelColor(label->place.topLeft().toPoint() + QPoint(1, 1)), tag);
    testsupport::leaveWidget(m_view.get());
    QCOMPARE(picture(), without);
}

void TestChartView::aDragHidesTheCrosshair()
{
    moveMouse(m_view.get(), middle());
    QTest::mousePress(m_view.get(), Qt::LeftButton, {}, middle());
    QVERIFY(!m_view->pointed());
    moveMouse(m_view.get(), middle() + QPoint(10, 0), Qt::LeftButton);
    QVERIFY(!m_view->pointed());
    QTest::mouseRelease(m_view.get(), Qt::LeftButton, {}, middle() + QPoint(10, 0));
    QVERIFY(m_view->pointed());
}

void TestChartView::keepsItsPlaceWhenBarsChange()
{
    const double begin = double(wallTime(firstDay.addDays(1), QTime(10, 30)));
    m_view->setRange({begin, begin + 30 * minute});
    const TimeRange before = m_view->range();
    m_view->updateSeries(makeSeries(4, 120), minute);
    QCOMPARE(m_view->range(), before);
    m_view->showAll();
    m_view->updateSeries(makeSeries(5, 120), minute);
    QCOMPARE(m_view->range(), m_view->limits().all());
}

void TestChartView::followsNewBarsAtTheRightEnd()
{
    const TimeRange before = m_view->range();
    m_view->updateSeries(makeSeries(3, 125), minute);
    QVERIFY(isNear(m_view->range().begin, before.begin + 5 * minute));
    QCOMPARE(m_view->chart().candles.back().end, wallTime(firstDay.addDays(2), QTime(12, 5)));
}

void TestChartView::oneBarCanBeShown()
{
    m_view->showSeries(makeSeries(1, 1), minute);
    QCOMPARE(m_view->chart().candles.size(), 1U);
    const QImage image = picture();
    const QRectF pane = m_view->chart().prices.place;
    const double x = m_view->chart().xOf(m_view->chart().candles.front().middle());
    QVERIFY(pane.left() < x && x < pane.right());
    moveMouse(m_view.get(), middle());
    QVERIFY(m_view->pointed());
    wheel(middle(), {0, 120});
    m_view->showAll();
    QVERIFY(image.width() > 0);
}

void TestChartView::anEmptySeriesTakesMouseAndKeys()
{
    m_view->showSeries(std::make_shared<const BarSeries>(), minute);
    QVERIFY(m_view->isEmpty());
    wheel(middle(), {0, 120});
    moveMouse(m_view.get(), middle());
    QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, middle());
    QTest::mouseDClick(m_view.get(), Qt::LeftButton, {}, middle());
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Plus, Qt::Key_Home, Qt::Key_End})
        QTest::keyClick(m_view.get(), key);
    QVERIFY(!m_view->pointed());
    QVERIFY(m_view->chart().candles.empty());
    QVERIFY(!picture().isNull());
    m_view->updateSeries(m_series, minute);
    QCOMPARE(m_view->chart().candles.size(), 120U);
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
    const auto colors = vexdesk::ChartColors::of(palette);
    constexpr double readable = 4.5;
    QVERIFY(contrast(colors.background, colors.rising) > readable);
    QVERIFY(contrast(colors.background, colors.falling) > readable);
    QVERIFY(contrast(colors.background, colors.text) > readable);
    constexpr double visible = 1.1;
    QVERIFY(contrast(colors.background, colors.grid) > visible);
    QVERIFY(contrast(colors.background, colors.grid) < contrast(colors.background, colors.dayLine));
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
