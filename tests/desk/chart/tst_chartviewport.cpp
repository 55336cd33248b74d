// SPDX-License-Identifier: MIT
// What of a series is shown, and what stays where it is when more of it is known.

#include "chartseries.h"
#include "desk/chart/chartviewport.h"
#include "desk/chart/wallclock.h"
#include "support/strictlog.h"

#include <QtTest/QTest>

#include <cmath>

using testsupport::firstDay;
using testsupport::makeSeries;
using testsupport::SeriesPointer;
using vexdesk::BarSeries;
using vexdesk::ChartPlace;
using vexdesk::ChartViewport;
using vexdesk::SlotRange;
using vexdesk::Timeframe;
using vexdesk::wallTime;

namespace {

bool isNear(double left, double right, double off = 1e-3)
{
    return std::abs(left - right) <= off;
}

bool isNear(const SlotRange& left, const SlotRange& right)
{
    return isNear(left.begin, right.begin) && isNear(left.end, right.end);
}

constexpr double most = 200; // slots that have room
constexpr double usual = 100;

ChartViewport viewportOf(const SeriesPointer& series)
{
    ChartViewport viewport;
    viewport.setRoom(most, usual);
    viewport.showSeries(series);
    return viewport;
}

SeriesPointer unreadSeries(const SeriesPointer& series, qint64 bytes)
{
    std::vector<vexdesk::SeriesDay> days = series->days();
    for (vexdesk::SeriesDay& day : days)
        day = testsupport::unreadDay(day.day, bytes);
    return std::make_shared<const BarSeries>(series->timeframe(), std::move(days));
}

} // namespace

class TestChartViewport final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void beginsAtTheEnd();
    void zoomingKeepsWhatIsFixed();
    void zoomingGoesThroughTheTimeframes();
    void theChosenTimeframeComesBack();
    void notShorterThanWhatIsStored();
    void aTimeframeKeepsTheRightEdge();
    void nightsKeepTheRightEdge();
    void staysWhileDaysAreRead();
    void staysAtWhatWasGoneTo();
    void followsTheEnd();
    void everythingStaysEverything();
    void placesAreRemembered_data();
    void placesAreRemembered();
    void aPlaceIsKeptThroughSizes();
    void aTimeframeChosenWhileAllIsShownIsSeen();
    void aGlanceAtMonthsKeepsTheZoom();
    void everythingIsRememberedForEverySize();
    void aPlaceLongerThanEverythingHasTheEnd();
    void statesComeBack();
    void anotherSourceShowsTheChosenTimeframe();
};

void TestChartViewport::beginsAtTheEnd()
{
    const ChartViewport viewport = viewportOf(makeSeries(10, 120));
    QVERIFY(isNear(viewport.range().length(), usual));
    QVERIFY(isNear(viewport.range().end, viewport.limits().reach(usual).end));
    QCOMPARE(viewport.place(), ChartPlace());
}

void TestChartViewport::zoomingKeepsWhatIsFixed()
{
    ChartViewport viewport = viewportOf(makeSeries(100, 120));
    viewport.setRange({5000, 5100});
    for (const double factor : {0.7, 1.2, 1.3, 0.5}) {
        const double share = (5030 - viewport.range().begin) / viewport.range().length();
        viewport.zoom(5030, factor);
        QVERIFY(isNear((5030 - viewport.range().begin) / viewport.range().length(), share));
    }
    QVERIFY(isNear(viewport.range().length(), 100 * 0.7 * 1.2 * 1.3 * 0.5));
}

void TestChartViewport::zoomingGoesThroughTheTimeframes()
{
    ChartViewport viewport = viewportOf(makeSeries(2000, 120));
    viewport.setRange({120'000, 120'100});
    const double time = viewport.axis().timeAt(120'040);
    std::vector<Timeframe> seen;
    for (int i = 0; i < 80; ++i) {
        viewport.zoom(viewport.axis().slotOf(time), 1.25);
        if (seen.empty() || seen.back() != viewport.shownTimeframe())
            seen.push_back(viewport.shownTimeframe());
        QVERIFY(viewport.range().length() <= most || viewport.shownTimeframe() == Timeframe::Month);
        QVERIFY(viewport.range().begin < viewport.axis().slotOf(time));
        QVERIFY(viewport.range().end > viewport.axis().slotOf(time));
    }
    QVERIFY(std::is_sorted(seen.begin(), seen.end()));
    QCOMPARE(seen.front(), Timeframe::Minute);
    QCOMPARE(seen.back(), Timeframe::Month);
    QVERIFY(seen.size() >= 5);
    QVERIFY(isNear(viewport.range(), viewport.limits().all()));
    QCOMPARE(viewport.timeframe(), Timeframe::Minute);
}

void TestChartViewport::theChosenTimeframeComesBack()
{
    ChartViewport viewport = viewportOf(makeSeries(2000, 120));
    viewport.showAll();
    QVERIFY(viewport.shownTimeframe() > Timeframe::Day);
    const double time = static_cast<double>(wallTime(firstDay.addDays(700), QTime(11, 0)));
    for (int i = 0; i < 100; ++i)
        viewport.zoom(viewport.axis().slotOf(time), 0.8);
    QCOMPARE(viewport.shownTimeframe(), Timeframe::Minute);
    QVERIFY(viewport.range().begin < viewport.axis().slotOf(time));
    QVERIFY(viewport.range().end > viewport.axis().slotOf(time));
    QVERIFY(isNear(viewport.range().length(), 20)); // the widest candles
}

void TestChartViewport::notShorterThanWhatIsStored()
{
    ChartViewport viewport = viewportOf(makeSeries(50, 20, 300));
    QCOMPARE(viewport.timeframe(), Timeframe::Minute);
    QCOMPARE(viewport.shownTimeframe(), Timeframe::Minutes5);
    viewport.setTimeframe(Timeframe::Second);
    QCOMPARE(viewport.shownTimeframe(), Timeframe::Minutes5);
    viewport.setTimeframe(Timeframe::Minutes30);
    QCOMPARE(viewport.shownTimeframe(), Timeframe::Minutes30);
    // Of minutes in threes nothing is made but half hours and longer ones.
    QCOMPARE(viewportOf(makeSeries(50, 20, 180)).shownTimeframe(), Timeframe::Minutes30);
}

void TestChartViewport::aTimeframeKeepsTheRightEdge()
{
    ChartViewport viewport = viewportOf(makeSeries(100, 120));
    viewport.setRange({6000, 6060}); // to the middle of a day
    const double end = viewport.axis().timeUpTo(viewport.range().end);
    viewport.setTimeframe(Timeframe::Minutes5);
    QVERIFY(isNear(viewport.axis().timeUpTo(viewport.range().end), end));
    QVERIFY(isNear(viewport.range().length(), 60));
    viewport.setTimeframe(Timeframe::Minute, viewport.axis().timeAt(viewport.range().middle()));
    QVERIFY(isNear(viewport.range().length(), 60));
    QVERIFY(viewport.axis().timeUpTo(viewport.range().end) < end);
}

void TestChartViewport::nightsKeepTheRightEdge()
{
    ChartViewport viewport = viewportOf(makeSeries(100, 120));
    viewport.setRange({6000, 6060});
    const double end = viewport.axis().timeUpTo(viewport.range().end);
    viewport.setNightsShown(true);
    QVERIFY(isNear(viewport.axis().timeUpTo(viewport.range().end), end));
    viewport.setNightsShown(false);
    QVERIFY(isNear(viewport.range(), {6000, 6060}));
}

void TestChartViewport::staysWhileDaysAreRead()
{
    const SeriesPointer series = makeSeries(100, 120);
    for (const qint64 bytes : {1000, 20'000}) { // fewer and more than there are
        ChartViewport viewport = viewportOf(unreadSeries(series, bytes));
        const double middle = static_cast<double>(viewport.axis().size()) / 2;
        viewport.setRange({middle, middle + 80});
        const double end = viewport.axis().timeUpTo(viewport.range().end);
        std::vector<vexdesk::SeriesDay> days = unreadSeries(series, bytes)->days();
        for (const size_t read : {99U, 30U, 3U, 60U, 49U, 51U}) {
            days[read] = series->days()[read];
            viewport.updateSeries(std::make_shared<const BarSeries>(60, days));
            QVERIFY(isNear(viewport.axis().slotOf(end), viewport.range().end));
            QVERIFY(isNear(viewport.range().length(), 80));
        }
        viewport.updateSeries(series);
        QVERIFY(isNear(viewport.axis().slotOf(end), viewport.range().end));
    }
}

void TestChartViewport::staysAtWhatWasGoneTo()
{
    const SeriesPointer series = makeSeries(100, 120);
    ChartViewport viewport = viewportOf(unreadSeries(series, 3000));
    const double time = static_cast<double>(wallTime(firstDay.addDays(60), QTime(11, 0)));
    viewport.goTo(time);
    QVERIFY(isNear(viewport.axis().slotOf(time), viewport.range().middle()));
    viewport.updateSeries(series);
    QVERIFY(isNear(viewport.axis().slotOf(time), viewport.range().middle()));
}

void TestChartViewport::followsTheEnd()
{
    ChartViewport viewport = viewportOf(makeSeries(10, 120));
    viewport.zoom(1200, 0.8);
    const SlotRange before = viewport.range();
    viewport.updateSeries(makeSeries(11, 120));
    QVERIFY(isNear(viewport.range(), {before.begin + 120, before.end + 120}));
    viewport.move(-200); // away from it
    const SlotRange away = viewport.range();
    viewport.updateSeries(makeSeries(12, 120));
    QVERIFY(isNear(viewport.range(), away));
    QVERIFY(viewport.place().end != 0);
}

void TestChartViewport::everythingStaysEverything()
{
    ChartViewport viewport = viewportOf(makeSeries(10, 120));
    viewport.showAll();
    QCOMPARE(viewport.shownTimeframe(), Timeframe::Minutes10);
    viewport.updateSeries(makeSeries(300, 120));
    QVERIFY(isNear(viewport.range(), viewport.limits().all()));
    QVERIFY(viewport.range().length() <= most);
    // A short series that is all in view was not asked for: it grows at its end.
    ChartViewport shown = viewportOf(makeSeries(1, 50));
    shown.updateSeries(makeSeries(10, 120));
    QCOMPARE(shown.shownTimeframe(), Timeframe::Minute);
    QVERIFY(isNear(shown.range().length(), usual));
}

void TestChartViewport::placesAreRemembered_data()
{
    QTest::addColumn<double>("factor");
    QTest::addColumn<bool>("areNightsShown");
    QTest::newRow("close") << 0.5 << false;
    QTest::newRow("far") << 30.0 << false;
    QTest::newRow("with nights") << 0.5 << true;
}

void TestChartViewport::placesAreRemembered()
{
    QFETCH(const double, factor);
    QFETCH(const bool, areNightsShown);
    const SeriesPointer series = makeSeries(200, 120);
    ChartViewport viewport = viewportOf(series);
    viewport.setNightsShown(areNightsShown);
    viewport.goTo(static_cast<double>(wallTime(firstDay.addDays(100), QTime(11, 0))));
    viewport.zoom(viewport.range().middle(), factor);
    const ChartPlace place = viewport.place();
    QVERIFY(place.end > 0 && place.slots > 0);

    ChartViewport other;
    other.setRoom(most, usual);
    other.setNightsShown(areNightsShown);
    other.showSeries(std::make_shared<const BarSeries>());
    other.setPlace(place);
    QCOMPARE(other.place(), place);
    other.updateSeries(series);
    QCOMPARE(other.shownTimeframe(), viewport.shownTimeframe());
    QVERIFY(isNear(other.range().end, viewport.range().end, 0.05));
    QVERIFY(isNear(other.range().length(), viewport.range().length(), 0.05));
}

void TestChartViewport::aPlaceIsKeptThroughSizes()
{
    ChartViewport viewport;
    viewport.setRoom(20, 10);
    viewport.showSeries(makeSeries(100, 120));
    const ChartPlace place{wallTime(firstDay.addDays(50), QTime(11, 0)), 150};
    viewport.setPlace(place);
    QVERIFY(viewport.shownTimeframe() > Timeframe::Minute);
    viewport.setRoom(most, usual); // the window has come to its size
    QCOMPARE(viewport.shownTimeframe(), Timeframe::Minute);
    QVERIFY(isNear(viewport.range().length(), 150));
    QCOMPARE(viewport.place(), place);
}

void TestChartViewport::aTimeframeChosenWhileAllIsShownIsSeen()
{
    ChartViewport viewport = viewportOf(makeSeries(10, 120));
    viewport.showAll();
    QCOMPARE(viewport.shownTimeframe(), Timeframe::Minutes10);
    // 240 candles have no room: the last ones are shown.
    viewport.setTimeframe(Timeframe::Minutes5);
    QCOMPARE(viewport.shownTimeframe(), Timeframe::Minutes5);
    QVERIFY(viewport.range().length() <= most);
    QVERIFY(viewport.range().end >= static_cast<double>(viewport.axis().size()));
    // Where all has room, all is still shown.
    viewport.showAll();
    viewport.setTimeframe(Timeframe::Hour);
    QCOMPARE(viewport.shownTimeframe(), Timeframe::Hour);
    QVERIFY(isNear(viewport.range(), viewport.limits().all()));
    // The one that was chosen before comes when it is chosen again.
    viewport.setTimeframe(Timeframe::Minute);
    viewport.showAll();
    QVERIFY(viewport.shownTimeframe() > Timeframe::Minute);
    viewport.setTimeframe(Timeframe::Minute);
    QCOMPARE(viewport.shownTimeframe(), Timeframe::Minute);
    // And stays when more is read.
    viewport.updateSeries(makeSeries(11, 120));
    QCOMPARE(viewport.shownTimeframe(), Timeframe::Minute);
}

void TestChartViewport::aGlanceAtMonthsKeepsTheZoom()
{
    for (const bool isAtEnd : {true, false}) {
        ChartViewport viewport = viewportOf(makeSeries(40, 120));
        viewport.setRange({1000, 1060});
        if (isAtEnd)
            viewport.move(100'000);
        const SlotRange before = viewport.range();
        viewport.setTimeframe(Timeframe::Month);
        QVERIFY(viewport.range().length() < before.length());
        viewport.setTimeframe(Timeframe::Minute);
        QVERIFY(isNear(viewport.range(), before));
    }
}

void TestChartViewport::everythingIsRememberedForEverySize()
{
    for (const double room : {40.0, 100.0, 640.0}) {
        ChartViewport viewport = viewportOf(makeSeries(100, 120));
        viewport.showAll();
        const ChartPlace place = viewport.place();
        QVERIFY(place.isAll);
        ChartViewport other;
        other.setRoom(room, room / 2);
        other.showSeries(std::make_shared<const BarSeries>());
        other.setPlace(place);
        other.updateSeries(makeSeries(105, 120)); // more has come meanwhile
        QVERIFY(isNear(other.range(), other.limits().all()));
        QVERIFY(other.range().end >= static_cast<double>(other.axis().size()));
        QVERIFY(other.range().length() <= room);
        QVERIFY(other.place().isAll);
        other.setRange({10, 20});
        QVERIFY(!other.place().isAll);
    }
}

void TestChartViewport::aPlaceLongerThanEverythingHasTheEnd()
{
    for (const double room : {40.0, 100.0, 200.0, 640.0}) {
        ChartViewport viewport;
        viewport.setRoom(room, room / 2);
        viewport.showSeries(makeSeries(100, 120));
        viewport.setPlace({0, 15'000});
        QVERIFY(viewport.range().end >= static_cast<double>(viewport.axis().size()));
        QVERIFY(viewport.range().length() <= room);
    }
}

void TestChartViewport::statesComeBack()
{
    ChartViewport viewport = viewportOf(makeSeries(200, 120));
    viewport.setRange({5000, 5060});
    const ChartViewport::State state = viewport.state();
    viewport.setTimeframe(Timeframe::Hour);
    viewport.setNightsShown(true);
    viewport.showAll();
    const ChartViewport::State all = viewport.state();
    viewport.restore(state);
    QVERIFY(isNear(viewport.range(), {5000, 5060}));
    QCOMPARE(viewport.timeframe(), Timeframe::Minute);
    QVERIFY(!viewport.areNightsShown());
    QCOMPARE(viewport.state(), state);
    viewport.restore(all);
    QVERIFY(viewport.areNightsShown());
    QVERIFY(isNear(viewport.range(), viewport.limits().all()));
}

void TestChartViewport::anotherSourceShowsTheChosenTimeframe()
{
    ChartViewport viewport = viewportOf(makeSeries(20, 120));
    viewport.setRange({1000, 1060});
    const double end = viewport.axis().timeUpTo(viewport.range().end);
    viewport.setTimeframe(Timeframe::Second); // which minutes do not have
    QCOMPARE(viewport.shownTimeframe(), Timeframe::Minute);
    viewport.updateSeries(makeSeries(20, 7200, 1));
    QCOMPARE(viewport.shownTimeframe(), Timeframe::Second);
    QVERIFY(isNear(viewport.axis().timeUpTo(viewport.range().end), end));
    QVERIFY(isNear(viewport.range().length(), 60));
}

QTEST_GUILESS_MAIN(TestChartViewport)
#include "tst_chartviewport.moc"
