// SPDX-License-Identifier: MIT
// Candles on a line of slots, with nights and without, of days that were read and of others.

#include "chartseries.h"
#include "desk/chart/wallclock.h"
#include "support/strictlog.h"

#include <QtTest/QTest>

#include <cmath>

using testsupport::axisOf;
using testsupport::firstDay;
using testsupport::makeBar;
using testsupport::makeBars;
using testsupport::makeSeries;
using testsupport::minute;
using testsupport::SeriesPointer;
using vexdesk::BarSeries;
using vexdesk::PlacedCandle;
using vexdesk::SeriesDay;
using vexdesk::SlotRange;
using vexdesk::TimeAxis;
using vexdesk::Timeframe;
using vexdesk::wallTime;

namespace {

double at(const QDate& day, const QTime& time)
{
    return static_cast<double>(wallTime(day, time));
}

SeriesPointer seriesOfDays(std::vector<SeriesDay> days, int timeframe = minute)
{
    return std::make_shared<const BarSeries>(timeframe, std::move(days));
}

// Three weekdays of ten minutes, the one in the middle not read, with as many slots by its size.
SeriesPointer withUnread()
{
    return seriesOfDays(
        {testsupport::readDay(firstDay, makeBars(firstDay, 10)),
         testsupport::unreadDay(firstDay.addDays(1), 480),
         testsupport::readDay(firstDay.addDays(2), makeBars(firstDay.addDays(2), 10))});
}

} // namespace

class TestTimeAxis final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void nightsTakeNoRoom();
    void aNightIsThePositionOfTheNextMorning();
    void missingBarsTakeNoRoom();
    void timesGoThereAndBack_data();
    void timesGoThereAndBack();
    void outsideThePaceIsThatOfTheClock();
    void nightsAreShownOnDemand();
    void aBarAtMidnightStandsWithItsDay();
    void aStoredDayAtMidnightIsFoundAtItsDay_data();
    void aStoredDayAtMidnightIsFoundAtItsDay();
    void whatEndsAMissingDayStandsThere();
    void whatEndsAMissingWeekStandsThere();
    void aLoneBarAtMidnightIsDrawnWhereAPartOfItIsSeen();
    void theFirstSlotOfADayIsFound();
    void weeksAndMonthsAreMadeOfDays();
    void givesTheCandlesInARange();
    void givesCandlesBeforeTheRange();
    void unreadDaysHaveSlots();
    void whatFollowsOnAGapIsMarked();
    void summariesAreEnoughForDays();
    void tellsWhereSlotsBegin();
    void tellsTheDaysInARange();
    void theNextCandleIsFound();
    void anEmptySeriesHasNoSlots();
};

void TestTimeAxis::nightsTakeNoRoom()
{
    const TimeAxis axis = axisOf(makeSeries(6, 10), Timeframe::Minute); // over a weekend
    QCOMPARE(axis.size(), 60);
    QCOMPARE(axis.slotOf(at(firstDay, {10, 0})), 0.0);
    QCOMPARE(axis.slotOf(at(firstDay, {10, 2, 30})), 2.5);
    QCOMPARE(axis.slotOf(at(firstDay.addDays(1), {10, 0})), 10.0);
    QCOMPARE(axis.slotOf(at(firstDay.addDays(7), {10, 1})), 51.0); // the next Monday
    QCOMPARE(axis.timeAt(50.5), at(firstDay.addDays(7), {10, 0, 30}));
}

void TestTimeAxis::aNightIsThePositionOfTheNextMorning()
{
    const TimeAxis axis = axisOf(makeSeries(6, 10), Timeframe::Minute);
    QCOMPARE(axis.slotOf(at(firstDay, {10, 10})), 10.0);
    QCOMPARE(axis.slotOf(at(firstDay, {20, 0})), 10.0);
    QCOMPARE(axis.slotOf(at(firstDay.addDays(1), {7, 0})), 10.0);
    QCOMPARE(axis.slotOf(at(firstDay.addDays(5), {12, 0})), 50.0); // a Saturday
    // Between two candles there are two times.
    QCOMPARE(axis.timeAt(10), at(firstDay.addDays(1), {10, 0}));
    QCOMPARE(axis.timeUpTo(10), at(firstDay, {10, 10}));
}

void TestTimeAxis::missingBarsTakeNoRoom()
{
    std::vector<vexdesk::Bar> bars = makeBars(firstDay, 10);
    bars.erase(bars.begin() + 3, bars.begin() + 6); // those that end from 10:04 to 10:06
    const TimeAxis axis = axisOf(testsupport::seriesOf({bars}), Timeframe::Minute);
    QCOMPARE(axis.size(), 7);
    QCOMPARE(axis.slotOf(at(firstDay, {10, 4, 30})), 3.0);
    QCOMPARE(axis.slotOf(at(firstDay, {10, 6, 30})), 3.5);
    QCOMPARE(axis.timeAt(3), at(firstDay, {10, 6}));
    QCOMPARE(axis.timeUpTo(3), at(firstDay, {10, 3}));
}

void TestTimeAxis::timesGoThereAndBack_data()
{
    QTest::addColumn<bool>("areNightsShown");
    QTest::addColumn<bool>("isRead");
    QTest::newRow("read") << false << true;
    QTest::newRow("partly read") << false << false;
    QTest::newRow("with nights") << true << false;
}

void TestTimeAxis::timesGoThereAndBack()
{
    QFETCH(const bool, areNightsShown);
    QFETCH(const bool, isRead);
    const SeriesPointer series = isRead ? makeSeries(30, 25) : withUnread();
    for (const Timeframe timeframe : vexdesk::allTimeframes) {
        const TimeAxis axis = axisOf(series, timeframe, areNightsShown);
        const auto size = static_cast<double>(axis.size());
        const double step = size / 300 + 0.01;
        const auto steps = static_cast<int>((size + 10) / step);
        for (int i = 0; i <= steps; ++i) {
            const double slot = -5 + i * step;
            const double there = axis.timeAt(slot);
            QVERIFY2(std::abs(axis.slotOf(there) - slot) < 1e-4,
                     qPrintable(QStringLiteral("%1 of %2").arg(slot).arg(int(timeframe))));
            QVERIFY(std::abs(axis.slotOf(axis.timeUpTo(slot)) - slot) < 1e-4);
            QVERIFY(axis.timeAt(slot + 0.01) >= there);
        }
    }
}

void TestTimeAxis::outsideThePaceIsThatOfTheClock()
{
    const TimeAxis axis = axisOf(makeSeries(1, 10), Timeframe::Minute);
    QCOMPARE(axis.slotOf(at(firstDay, {9, 55})), -5.0);
    QCOMPARE(axis.timeAt(-5), at(firstDay, {9, 55}));
    QCOMPARE(axis.slotOf(at(firstDay, {10, 13})), 13.0);
    QCOMPARE(axis.timeAt(13), at(firstDay, {10, 13}));
}

void TestTimeAxis::nightsAreShownOnDemand()
{
    const SeriesPointer series = makeSeries(6, 10);
    const TimeAxis axis = axisOf(series, Timeframe::Hour, true);
    QCOMPARE(axis.size(), 7 * 24 + 11); // no night behind the last bar
    QCOMPARE(axis.slotOf(at(firstDay.addDays(1), {1, 30})), 25.5);
    const std::vector<PlacedCandle> candles = axis.candles({0, 200});
    QCOMPARE(candles.size(), 6U);
    QCOMPARE(candles[0].slot, 10);
    QCOMPARE(candles[5].slot, 7 * 24 + 10);
    QCOMPARE(axisOf(series, Timeframe::Day, true).size(), 8);
    QCOMPARE(axisOf(series, Timeframe::Week, true).size(), 2);
    QCOMPARE(axisOf(series, Timeframe::Month, true).size(), 1);
}

void TestTimeAxis::aBarAtMidnightStandsWithItsDay()
{
    // Nothing of the day before is stored: an interval of its own, before the day.
    std::vector<vexdesk::Bar> bars{makeBar(firstDay, {0, 0}, 1), makeBar(firstDay, {10, 1}, 2)};
    for (const bool areNightsShown : {false, true}) {
        const TimeAxis axis =
            axisOf(testsupport::seriesOf({bars}), Timeframe::Minute, areNightsShown);
        const std::vector<PlacedCandle> candles = axis.candles({-10, 3000});
        QCOMPARE(candles.size(), 2U);
        QVERIFY(candles[0].slot >= 0 && candles[1].slot > candles[0].slot);
        QCOMPARE(candles[0].candle.end, wallTime(firstDay));
        const double middle = static_cast<double>(candles[0].slot) + 0.5;
        QCOMPARE(axis.timeAt(middle), at(firstDay, {0, 0}) - 30);
        QCOMPARE(axis.slotOf(at(firstDay, {0, 0}) - 30), middle);
    }
}

void TestTimeAxis::aStoredDayAtMidnightIsFoundAtItsDay_data()
{
    QTest::addColumn<bool>("areNightsShown");
    QTest::newRow("without nights") << false;
    QTest::newRow("with nights") << true;
}

void TestTimeAxis::aStoredDayAtMidnightIsFoundAtItsDay()
{
    QFETCH(const bool, areNightsShown);
    std::vector<SeriesDay> days;
    for (const int offset : {0, 1, 4}) {
        const QDate day = firstDay.addDays(offset);
        days.push_back(testsupport::readDay(day, {makeBar(day, {0, 0}, offset)}));
    }
    const TimeAxis axis =
        axisOf(seriesOfDays(days, int(vexdesk::secondsPerDay)), Timeframe::Day, areNightsShown);
    QCOMPARE(axis.size(), areNightsShown ? 5 : 3);
    const std::vector<PlacedCandle> candles = axis.candles({-10, 10});
    QCOMPARE(candles.size(), 3U);
    for (size_t i = 0; i < 3; ++i) {
        const QDate day = days[i].day;
        const qint64 slot = areNightsShown ? firstDay.daysTo(day) : qint64(i);
        QCOMPARE(candles[i].slot, slot);
        QCOMPARE(candles[i].candle.day, day);
        QCOMPARE(axis.firstSlotFrom(day), std::optional<qint64>(slot));
        QCOMPARE(axis.slotOf(at(day, {0, 0})), double(slot));
        QCOMPARE(axis.slotOf(at(day, {12, 0})), double(slot) + 0.5);
    }
}

void TestTimeAxis::whatEndsAMissingDayStandsThere()
{
    const SeriesPointer series = testsupport::seriesOf(
        {{makeBar(firstDay, {0, 0}, 1), makeBar(firstDay, {10, 1}, 2)},
         {makeBar(firstDay.addDays(2), {0, 0}, 3), makeBar(firstDay.addDays(2), {9, 0}, 4)}});
    for (const bool areNightsShown : {false, true}) {
        const TimeAxis axis = axisOf(series, Timeframe::Day, areNightsShown);
        const std::vector<PlacedCandle> candles = axis.candles({-1, 10});
        QCOMPARE(candles.size(), 4U);
        for (int i = 0; i < 4; ++i) {
            const QDate date = firstDay.addDays(i - 1);
            const auto at = static_cast<size_t>(i);
            QCOMPARE(candles[at].slot, i);
            QCOMPARE(candles[at].candle.day, date);
            QCOMPARE(candles[at].candle.count, qsizetype(1));
            QCOMPARE(axis.firstSlotFrom(date), std::optional<qint64>(i));
            QCOMPARE(axis.timeAt(i + 0.5), double(wallTime(date, QTime(12, 0))));
            QCOMPARE(axis.slotOf(double(wallTime(date, QTime(12, 0)))), i + 0.5);
            if (i > 0) {
                QCOMPARE(axis.next(i - 1, true), std::optional<qint64>(i));
                QCOMPARE(axis.next(i, false), std::optional<qint64>(i - 1));
            }
        }
        QCOMPARE(axis.candles({1.2, 2.6}).size(), 2U);
        QCOMPARE(axis.begins({-1, 10}).size(), 4U);
    }
}

// Bars at midnight of Mondays, and others, with weeks between them of which there is nothing else.
void TestTimeAxis::whatEndsAMissingWeekStandsThere()
{
    const auto monday = [](int week) { return firstDay.addDays(qint64(7) * week); };
    const SeriesPointer series =
        testsupport::seriesOf({{makeBar(monday(0), {0, 0}, 1), makeBar(monday(0), {10, 1}, 2)},
                               {makeBar(monday(2), {0, 0}, 3)},
                               {makeBar(monday(2).addDays(2), {9, 0}, 4)},
                               {makeBar(monday(4), {0, 0}, 5), makeBar(monday(4), {9, 0}, 6)}});
    for (const bool areNightsShown : {false, true}) {
        const TimeAxis axis = axisOf(series, Timeframe::Week, areNightsShown);
        QCOMPARE(axis.size(), 6);
        const std::vector<PlacedCandle> candles = axis.candles({-1, 10});
        QCOMPARE(candles.size(), 6U);
        QVERIFY(axis.unread({-1, 10}).empty());
        for (int i = 0; i < 6; ++i) {
            const QDate week = monday(i - 1);
            const PlacedCandle& placed = candles[static_cast<size_t>(i)];
            QCOMPARE(placed.slot, i);
            QCOMPARE(placed.candle.begin, wallTime(week));
            QCOMPARE(placed.candle.count, qsizetype(1));
            QCOMPARE(axis.firstSlotFrom(week.addDays(3)), std::optional<qint64>(i));
            const double middle = at(week.addDays(3), QTime(12, 0));
            QCOMPARE(axis.slotOf(middle), i + 0.5);
            QCOMPARE(axis.timeAt(i + 0.5), middle);
            const std::vector<PlacedCandle> alone = axis.candles({i + 0.25, i + 0.75});
            QCOMPARE(alone.size(), 1U);
            QCOMPARE(alone[0].slot, i);
            if (i > 0) {
                QCOMPARE(axis.candles({double(i), i + 1.0}, 1).size(), 2U);
                QCOMPARE(axis.next(i - 1, true), std::optional<qint64>(i));
                QCOMPARE(axis.next(i, false), std::optional<qint64>(i - 1));
            }
        }
        QCOMPARE(axis.begins({-1, 10}).size(), 6U);
    }
}

// Its interval is the last one of the day before, and its file is of the next.
void TestTimeAxis::aLoneBarAtMidnightIsDrawnWhereAPartOfItIsSeen()
{
    const QDate day = firstDay.addDays(1);
    const TimeAxis axis =
        axisOf(testsupport::seriesOf({{makeBar(firstDay, {10, 0}, 1)}, {makeBar(day, {0, 0}, 2)}}),
               Timeframe::Minute, true);
    constexpr int minutes = 24 * 60;
    for (const double end : {minutes - 0.9, minutes - 0.5, minutes + 0.0, minutes + 0.5}) {
        const std::vector<PlacedCandle> candles = axis.candles({end - 10, end});
        QCOMPARE(candles.size(), 1U);
        QCOMPARE(candles[0].slot, minutes - 1);
    }
    QVERIFY(axis.candles({minutes - 10, minutes - 1}).empty());
    QVERIFY(axis.candles({minutes + 0.0, minutes + 10}).empty());
}

void TestTimeAxis::theFirstSlotOfADayIsFound()
{
    using Slot = std::optional<qint64>;
    const SeriesPointer series = makeSeries(6, 10); // over a weekend
    const TimeAxis axis = axisOf(series, Timeframe::Minute);
    QCOMPARE(axis.firstSlotFrom(firstDay.addDays(-3)), Slot(0));
    QCOMPARE(axis.firstSlotFrom(firstDay.addDays(1)), Slot(10));
    QCOMPARE(axis.firstSlotFrom(firstDay.addDays(5)), Slot(50)); // a Saturday
    QCOMPARE(axis.firstSlotFrom(firstDay.addDays(8)), Slot());
    QCOMPARE(axisOf(series, Timeframe::Hour, true).firstSlotFrom(firstDay.addDays(5)),
             Slot(7 * 24 + 10));
    QCOMPARE(axisOf(series, Timeframe::Week).firstSlotFrom(firstDay.addDays(3)), Slot(0));
    QCOMPARE(axisOf(series, Timeframe::Month).firstSlotFrom(firstDay.addDays(3)), Slot(0));
    // Of a day that was not read the first of those that it may have.
    QCOMPARE(axisOf(withUnread(), Timeframe::Minute).firstSlotFrom(firstDay.addDays(1)), Slot(10));
    QCOMPARE(axisOf(withUnread(), Timeframe::Hour, true).firstSlotFrom(firstDay.addDays(1)),
             Slot(24));
    // Bars at midnight that end nothing stored are the first ones of their day.
    const TimeAxis midnight =
        axisOf(testsupport::seriesOf({{makeBar(firstDay, {10, 0}, 1)},
                                      {makeBar(firstDay.addDays(1), {0, 0}, 2),
                                       makeBar(firstDay.addDays(1), {10, 0}, 3)}}),
               Timeframe::Minute);
    QCOMPARE(midnight.firstSlotFrom(firstDay.addDays(1)), Slot(1));
}

void TestTimeAxis::weeksAndMonthsAreMadeOfDays()
{
    const SeriesPointer series = makeSeries(25, 10); // to 16 February
    const TimeAxis weeks = axisOf(series, Timeframe::Week);
    QCOMPARE(weeks.size(), 5);
    QCOMPARE(weeks.slotOf(at(firstDay.addDays(10), {12, 0})), 1.5);
    QCOMPARE(weeks.timeAt(1), at(firstDay.addDays(7), {0, 0}));
    const TimeAxis months = axisOf(series, Timeframe::Month);
    QCOMPARE(months.size(), 2);
    const std::vector<PlacedCandle> candles = months.candles({0, 2});
    QCOMPARE(candles.size(), 2U);
    QCOMPARE(candles[0].candle.count, 13 * 10);
    QCOMPARE(candles[1].candle.begin, wallTime(QDate(2024, 2, 1)));
}

void TestTimeAxis::givesTheCandlesInARange()
{
    const TimeAxis axis = axisOf(makeSeries(3, 10), Timeframe::Minute);
    const std::vector<PlacedCandle> candles = axis.candles({8.5, 12});
    QCOMPARE(candles.size(), 4U);
    QCOMPARE(candles.front().slot, 8);
    QCOMPARE(candles.back().slot, 11);
    QCOMPARE(candles[1].candle.end, wallTime(firstDay, {10, 10}));
    QCOMPARE(candles[2].candle.end, wallTime(firstDay.addDays(1), {10, 1}));
    // Only those of which something is seen.
    QCOMPARE(axis.candles({9, 10}).size(), 1U);
    QVERIFY(axis.candles({-10, -5}).empty());
    QVERIFY(axis.candles({30, 40}).empty());
}

void TestTimeAxis::givesCandlesBeforeTheRange()
{
    for (const bool areNightsShown : {false, true}) {
        const TimeAxis axis = axisOf(makeSeries(3, 10), Timeframe::Minute, areNightsShown);
        const double begin = axis.slotOf(at(firstDay.addDays(2), {10, 4}));
        const std::vector<PlacedCandle> candles = axis.candles({begin, begin + 3}, 17);
        QCOMPARE(candles.size(), 20U);
        QCOMPARE(candles.front().candle.end, wallTime(firstDay, {10, 8}));
        for (size_t i = 1; i < candles.size(); ++i)
            QVERIFY(candles[i - 1].slot < candles[i].slot);
        QCOMPARE(axis.candles({begin, begin + 3}, 100).size(), 27U); // all that there are
    }
}

void TestTimeAxis::unreadDaysHaveSlots()
{
    const TimeAxis axis = axisOf(withUnread(), Timeframe::Minute);
    const qint64 guessed = axis.size() - 20;
    QVERIFY(guessed > 0);
    const auto end = static_cast<double>(10 + guessed);
    QCOMPARE(axis.unread({0, 1000}), (std::vector<SlotRange>{{10, end}}));
    QCOMPARE(axis.unread({12, 14}), (std::vector<SlotRange>{{12, 14}}));
    QVERIFY(axis.unread({0, 10}).empty());
    QCOMPARE(axis.candles({0, 1000}).size(), 20U);
    QCOMPARE(axis.slotOf(at(firstDay.addDays(1), {0, 0})), 10.0);
    QCOMPARE(axis.slotOf(at(firstDay.addDays(1), {12, 0})), (10 + end) / 2);
    // With nights it is the whole day.
    const TimeAxis nights = axisOf(withUnread(), Timeframe::Hour, true);
    QCOMPARE(nights.unread({0, 100}), (std::vector<SlotRange>{{24, 48}}));
}

void TestTimeAxis::whatFollowsOnAGapIsMarked()
{
    const auto gaps = [](const TimeAxis& axis) {
        int count = 0;
        for (const PlacedCandle& placed : axis.candles({0, 10000}))
            count += placed.isAfterGap;
        return count;
    };
    QCOMPARE(gaps(axisOf(withUnread(), Timeframe::Minute)), 1);
    QCOMPARE(gaps(axisOf(withUnread(), Timeframe::Minute, true)), 1);
    QCOMPARE(gaps(axisOf(makeSeries(6, 10), Timeframe::Minute)), 0);
}

void TestTimeAxis::summariesAreEnoughForDays()
{
    const SeriesPointer series =
        seriesOfDays({testsupport::summedDay(firstDay, makeBars(firstDay, 10)),
                      testsupport::unreadDay(firstDay.addDays(1), 480)});
    const TimeAxis days = axisOf(series, Timeframe::Day);
    QCOMPARE(days.size(), 2);
    QCOMPARE(days.candles({0, 2}).size(), 1U);
    QCOMPARE(days.unread({0, 2}), (std::vector<SlotRange>{{1, 2}}));
    // A week is known when all of its days are.
    QCOMPARE(axisOf(series, Timeframe::Week).unread({0, 1}), (std::vector<SlotRange>{{0, 1}}));
    // Below the day there are as many slots as candles, and none of these.
    const TimeAxis minutes = axisOf(series, Timeframe::Minute);
    QVERIFY(minutes.candles({0, 1000}).empty());
    QCOMPARE(minutes.slotOf(at(firstDay, {10, 10})), 10.0);
    QCOMPARE(minutes.unread({0, 10}).size(), 1U);
}

void TestTimeAxis::tellsWhereSlotsBegin()
{
    const TimeAxis axis = axisOf(withUnread(), Timeframe::Minute);
    const auto last = static_cast<double>(axis.size());
    const auto begins = axis.begins({8, last - 8});
    QCOMPARE(begins.front().slot, 7); // the one before
    QCOMPARE(begins[1].slot, 8);
    QCOMPARE(begins[1].time, wallTime(firstDay, {10, 8}));
    QCOMPARE(begins[3].slot, 10); // of the unread day the first alone
    QCOMPARE(begins[3].day, firstDay.addDays(1));
    QCOMPARE(begins[4].slot, axis.size() - 10);
    QCOMPARE(begins[4].day, firstDay.addDays(2));
    QCOMPARE(begins[4].time, wallTime(firstDay.addDays(2), {10, 0}));
    QCOMPARE(begins.back().slot, axis.size() - 8);
    const auto nights = axisOf(withUnread(), Timeframe::Hour, true).begins({22, 26});
    QCOMPARE(nights.size(), 6U);
    QCOMPARE(nights[3].time, wallTime(firstDay.addDays(1)));
}

void TestTimeAxis::tellsTheDaysInARange()
{
    using Days = std::pair<qsizetype, qsizetype>;
    const SeriesPointer series = makeSeries(25, 10);
    const TimeAxis axis = axisOf(series, Timeframe::Minute);
    QCOMPARE(axis.daysIn({0, 10}), Days(0, 1));
    QCOMPARE(axis.daysIn({9.5, 10.5}), Days(0, 2));
    QCOMPARE(axis.daysIn({-50, 10000}), Days(0, 25));
    // All days of a week, of which a part is in the range.
    QCOMPARE(axisOf(series, Timeframe::Week).daysIn({1.2, 1.4}), Days(5, 10));
    const TimeAxis nights = axisOf(series, Timeframe::Hour, true);
    QCOMPARE(nights.daysIn({30, 31}), Days(1, 2));
    QCOMPARE(nights.daysIn({5 * 24 + 2, 5 * 24 + 4}), Days(5, 5)); // a Saturday
}

void TestTimeAxis::theNextCandleIsFound()
{
    const TimeAxis axis = axisOf(makeSeries(2, 10), Timeframe::Minute);
    QCOMPARE(axis.next(3, true), std::optional<qint64>(4));
    QCOMPARE(axis.next(3, false), std::optional<qint64>(2));
    QVERIFY(!axis.next(0, false) && !axis.next(19, true));
    QCOMPARE(axis.next(-100, true), std::optional<qint64>(0));
    QCOMPARE(axis.next(100, false), std::optional<qint64>(19));
    // Nights are passed over, where they are shown too.
    const TimeAxis nights = axisOf(makeSeries(6, 10), Timeframe::Minute, true);
    const qint64 friday = 4 * 1440 + 609;
    const qint64 monday = 7 * 1440 + 600;
    QCOMPARE(nights.next(friday, true), std::optional<qint64>(monday));
    QCOMPARE(nights.next(monday, false), std::optional<qint64>(friday));
    QCOMPARE(nights.next(friday - 1, true), std::optional<qint64>(friday));
    QVERIFY(!nights.next(600, false) && !nights.next(monday + 9, true));
}

void TestTimeAxis::anEmptySeriesHasNoSlots()
{
    for (const bool areNightsShown : {false, true}) {
        const TimeAxis axis =
            axisOf(std::make_shared<const BarSeries>(), Timeframe::Minute, areNightsShown);
        QCOMPARE(axis.size(), 0);
        QVERIFY(axis.candles({-10, 10}, 5).empty() && axis.unread({-10, 10}).empty());
        QVERIFY(axis.begins({-10, 10}).empty());
        QVERIFY(!axis.next(0, true));
        QCOMPARE(axis.daysIn({0, 1}), (std::pair<qsizetype, qsizetype>(0, 0)));
    }
    QCOMPARE(TimeAxis().size(), 0);
}

QTEST_GUILESS_MAIN(TestTimeAxis)
#include "tst_timeaxis.moc"
