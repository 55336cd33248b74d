// SPDX-License-Identifier: MIT
// How far the chart can be zoomed and moved, and what it shows when its bars have changed.

#include "desk/chart/timerange.h"
#include "support/strictlog.h"

#include <QtCore/QRandomGenerator>
#include <QtTest/QTest>

#include <cmath>

using vexdesk::TimeLimits;
using vexdesk::TimeRange;

namespace {

constexpr double first = 1000000;
constexpr double last = 2000000;
constexpr double minute = 60;

TimeLimits limits()
{
    return TimeLimits(first, last, minute);
}

bool isNear(double left, double right)
{
    return std::abs(left - right) < 1e-3;
}

} // namespace

class TestTimeRange final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void everythingHasAMargin();
    void theMarginIsAShareOfTheView();
    void oneBarFillsNoView();
    void zoomingKeepsTheTimeBelowTheMouse();
    void zoomingStopsAtAFewBarsAndAtEverything();
    void movingStopsAtTheEnds();
    void whateverIsWantedFits();
    void theSamePlaceWhenBarsChange();
    void newBarsAreFollowedAtTheRightEnd();
    void theRightEndIsNotFollowedBack();
    void everythingStaysEverything();
};

void TestTimeRange::everythingHasAMargin()
{
    const TimeRange all = limits().all();
    QVERIFY(all.begin < first - minute);
    QVERIFY(all.end > last);
    QVERIFY(all.length() < (last - first) * 1.1);
}

void TestTimeRange::theMarginIsAShareOfTheView()
{
    for (const double length : {600.0, 50000.0, 900000.0}) {
        const TimeRange ends = limits().reach(length);
        for (const double side : {first - minute - ends.begin, ends.end - last})
            QVERIFY2(side > 0 && side <= std::max(0.05 * length, 3 * minute) + 1e-3,
                     qPrintable(QString::number(side)));
        // No view goes beyond.
        QVERIFY(isNear(limits().fitted({-1e9, -1e9 + length}).begin, ends.begin));
        QVERIFY(isNear(limits().fitted({1e9, 1e9 + length}).end, ends.end));
    }
    const TimeRange all = limits().reach(limits().all().length());
    QVERIFY(isNear(all.begin, limits().all().begin) && isNear(all.end, limits().all().end));
    QCOMPARE(limits().fitted(limits().all()), limits().all());
}

void TestTimeRange::oneBarFillsNoView()
{
    const TimeRange all = TimeLimits(first, first, minute).all();
    QVERIFY(all.length() >= 7 * minute);
    QVERIFY(all.begin < first - minute && all.end > first);
    QCOMPARE(TimeLimits(first, first, minute).fitted({0, 1e9}), all);
}

void TestTimeRange::zoomingKeepsTheTimeBelowTheMouse()
{
    const TimeRange range{1400000, 1500000};
    const double mouse = 1425000;
    const TimeRange zoomed = limits().zoomed(range, mouse, 0.8);
    QVERIFY(isNear(zoomed.length(), 80000));
    QVERIFY(isNear((mouse - zoomed.begin) / zoomed.length(), 0.25));
    const TimeRange back = limits().zoomed(zoomed, mouse, 1.25);
    QVERIFY(isNear(back.begin, range.begin) && isNear(back.end, range.end));
}

void TestTimeRange::zoomingStopsAtAFewBarsAndAtEverything()
{
    TimeRange range{1400000, 1500000};
    for (int i = 0; i < 100; ++i)
        range = limits().zoomed(range, 1450000, 0.8);
    QVERIFY(isNear(range.length(), 10 * minute));
    QVERIFY(range.begin < 1450000 && range.end > 1450000);
    for (int i = 0; i < 100; ++i)
        range = limits().zoomed(range, 1450000, 1.25);
    QCOMPARE(range, limits().all());
}

void TestTimeRange::movingStopsAtTheEnds()
{
    const TimeRange range{1400000, 1500000};
    const TimeRange ends = limits().reach(range.length());
    QVERIFY(isNear(limits().moved(range, -1e9).begin, ends.begin));
    QVERIFY(isNear(limits().moved(range, 1e9).end, ends.end));
    QVERIFY(isNear(limits().moved(range, 1e9).length(), range.length()));
    QCOMPARE(limits().moved(range, 500), (TimeRange{1400500, 1500500}));
}

void TestTimeRange::whateverIsWantedFits()
{
    QRandomGenerator random(1);
    for (int i = 0; i < 20000; ++i) {
        const double begin = random.bounded(4e9) - 2e9;
        const double end = begin + random.bounded(4e6);
        const double firstTime = random.bounded(2e9);
        const TimeLimits some(firstTime, firstTime + random.bounded(1e8), 1 + random.bounded(60));
        const TimeRange range = some.fitted({begin, end});
        QVERIFY(range.begin >= some.all().begin);
        QVERIFY(range.end <= some.all().end + 1e-3);
        QVERIFY(range.length() > 0);
    }
}

void TestTimeRange::theSamePlaceWhenBarsChange()
{
    const TimeRange range{1400000, 1500000};
    QCOMPARE(limits().followed(range, TimeLimits(first, last + 50000, minute)), range);
    QCOMPARE(limits().followed(range, TimeLimits(first + 50000, last, minute)), range);
}

void TestTimeRange::newBarsAreFollowedAtTheRightEnd()
{
    const TimeRange range{1950000, 2000100};
    const TimeRange followed = limits().followed(range, TimeLimits(first, last + 5000, minute));
    QCOMPARE(followed, (TimeRange{1955000, 2005100}));
}

void TestTimeRange::theRightEndIsNotFollowedBack()
{
    const TimeRange range{1950000, 2000100};
    QCOMPARE(limits().followed(range, TimeLimits(first, last - 600, minute)), range);
}

void TestTimeRange::everythingStaysEverything()
{
    const TimeLimits now(first - 50000, last + 50000, minute);
    QCOMPARE(limits().followed(limits().all(), now), now.all());
    const TimeLimits fewer(first + 50000, last - 50000, minute);
    QCOMPARE(limits().followed(limits().all(), fewer), fewer.all());
}

QTEST_GUILESS_MAIN(TestTimeRange)
#include "tst_timerange.moc"
