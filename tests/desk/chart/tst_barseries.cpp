// SPDX-License-Identifier: MIT
// What is known of a series of which not all was read.

#include "desk/chart/barseries.h"
#include "desk/chart/wallclock.h"
#include "seriesdays.h"
#include "support/strictlog.h"

#include <QtTest/QTest>

#include <memory>

using testsupport::readDay;
using testsupport::unreadDay;
using vexdesk::Bar;
using vexdesk::BarSeries;
using vexdesk::SeriesDay;
using vexdesk::Timeframe;

namespace {

const QDate monday(2024, 1, 15);

// Bars of a minute, the first at 10:01.
std::vector<Bar> minutes(const QDate& day, int count)
{
    QRandomGenerator random(1);
    std::vector<Bar> bars;
    for (int i = 1; i <= count; ++i)
        bars.push_back(
            testsupport::randomBar(random, vexdesk::wallTime(day, QTime(10, 0)) + i * 60));
    return bars;
}

} // namespace

class TestBarSeries final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void anEmptySeriesHasNothing();
    void isEmptyWhenNoBarsCanCome();
    void findsTheDayFromADateOn();
    void countsCandlesOfADayThatWasRead();
    void guessesByTheSizeOfTheFile_data();
    void guessesByTheSizeOfTheFile();
    void guessesAsTheDaysThatWereRead();
    void anUnreadDayBeginsItsWeek();
    void decimalsAreThoseOfThePriceWithMost();
    void whatIsTakenOverIsWhatIsRead();
};

void TestBarSeries::anEmptySeriesHasNothing()
{
    const BarSeries series;
    QVERIFY(series.isEmpty());
    QVERIFY(series.days().empty());
    QCOMPARE(series.indexFrom(monday), qsizetype(0));
}

void TestBarSeries::isEmptyWhenNoBarsCanCome()
{
    QVERIFY(BarSeries(60, {readDay(monday, {})}).isEmpty());
    QVERIFY(BarSeries(60, {unreadDay(monday, 0)}).isEmpty());
    QVERIFY(!BarSeries(60, {unreadDay(monday, 1)}).isEmpty());
    QVERIFY(!BarSeries(60, {readDay(monday, minutes(monday, 1))}).isEmpty());
    QVERIFY(!BarSeries(60, {unreadDay(monday, 5), readDay(monday.addDays(1), {})}).isEmpty());
}

void TestBarSeries::findsTheDayFromADateOn()
{
    const BarSeries series(60, {unreadDay(monday, 1), unreadDay(monday.addDays(4), 1)});
    QCOMPARE(series.indexFrom(monday.addDays(-1)), qsizetype(0));
    QCOMPARE(series.indexFrom(monday), qsizetype(0));
    QCOMPARE(series.indexFrom(monday.addDays(1)), qsizetype(1));
    QCOMPARE(series.indexFrom(monday.addDays(4)), qsizetype(1));
    QCOMPARE(series.indexFrom(monday.addDays(5)), qsizetype(2));
}

void TestBarSeries::countsCandlesOfADayThatWasRead()
{
    const BarSeries series(60,
                           {readDay(monday, minutes(monday, 121)), readDay(monday.addDays(1), {})});
    QCOMPARE(series.candlesOf(0, Timeframe::Minute), 121);
    QCOMPARE(series.candlesOf(0, Timeframe::Minutes5), 25);
    QCOMPARE(series.candlesOf(0, Timeframe::Minutes30), 5);
    QCOMPARE(series.candlesOf(0, Timeframe::Hour), 3);
    QCOMPARE(series.candlesOf(0, Timeframe::Day), 1);
    QCOMPARE(series.candlesOf(1, Timeframe::Minute), 0);
    QCOMPARE(series.candlesOf(1, Timeframe::Day), 0);
}

void TestBarSeries::guessesByTheSizeOfTheFile_data()
{
    QTest::addColumn<int>("stored");
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<Timeframe>("timeframe");
    QTest::addColumn<int>("candles");
    QTest::newRow("minutes") << 60 << qint64(48 * 520) << Timeframe::Minute << 520;
    QTest::newRow("hours of minutes") << 60 << qint64(48 * 540) << Timeframe::Hour << 9;
    QTest::newRow("a single bar") << 60 << qint64(40) << Timeframe::Hour << 1;
    QTest::newRow("seconds") << 1 << qint64(48 * 30000) << Timeframe::Second << 30000;
    QTest::newRow("minutes of seconds") << 1 << qint64(48 * 30000) << Timeframe::Minute << 500;
    QTest::newRow("no more than a day has") << 1 << qint64(48 * 999999) << Timeframe::Hour << 24;
    QTest::newRow("a day") << 60 << qint64(48 * 520) << Timeframe::Day << 1;
    QTest::newRow("an empty file") << 60 << qint64(0) << Timeframe::Minute << 0;
    QTest::newRow("no day") << 60 << qint64(0) << Timeframe::Day << 0;
}

void TestBarSeries::guessesByTheSizeOfTheFile()
{
    QFETCH(const int, stored);
    QFETCH(const qint64, bytes);
    QFETCH(const Timeframe, timeframe);
    QTEST(BarSeries(stored, {unreadDay(monday, bytes)}).candlesOf(0, timeframe), "candles");
}

void TestBarSeries::guessesAsTheDaysThatWereRead()
{
    SeriesDay read = readDay(monday, minutes(monday, 100));
    read.bytes = 2000; // 20 a line
    const BarSeries series(
        60, {read, readDay(monday.addDays(1), {}), unreadDay(monday.addDays(2), 3000)});
    QCOMPARE(series.candlesOf(2, Timeframe::Minute), 150);
    QCOMPARE(series.candlesOf(2, Timeframe::Minutes5), 30);
}

void TestBarSeries::anUnreadDayBeginsItsWeek()
{
    const BarSeries series(60, {unreadDay(monday, 0), unreadDay(monday.addDays(1), 50),
                                readDay(monday.addDays(2), minutes(monday.addDays(2), 5)),
                                unreadDay(monday.addDays(7), 50)});
    QList<int> weeks;
    for (int i = 0; i < 4; ++i)
        weeks.append(series.candlesOf(i, Timeframe::Week));
    QCOMPARE(weeks, (QList<int>{0, 1, 0, 1}));
}

void TestBarSeries::decimalsAreThoseOfThePriceWithMost()
{
    const auto day = [](int offset, int decimals) {
        return readDay(monday.addDays(offset), minutes(monday.addDays(offset), 1), decimals);
    };
    QCOMPARE(BarSeries(60, {day(0, 2), day(1, 4), day(2, 0)}).decimals(), 4);
}

// Days come, go, are read and change: what was known of the same ones gives the same series.
void TestBarSeries::whatIsTakenOverIsWhatIsRead()
{
    QRandomGenerator random(7);
    std::vector<SeriesDay> days;
    auto before = std::make_unique<BarSeries>();
    for (int round = 0; round < 100; ++round) {
        const QDate date = monday.addDays(random.bounded(40));
        const auto at = std::partition_point(
            days.begin(), days.end(), [date](const SeriesDay& day) { return day.day < date; });
        const bool isThere = at != days.end() && at->day == date;
        std::vector<Bar> bars = minutes(date, random.bounded(5));
        if (random.bounded(3) == 0)
            bars.insert(bars.begin(), testsupport::randomBar(random, vexdesk::wallTime(date)));
        const SeriesDay now =
            random.bounded(3) == 0 ? unreadDay(date, 500) : readDay(date, bars, round % 7);
        if (!isThere)
            days.insert(at, now);
        else if (random.bounded(4) == 0)
            days.erase(at);
        else
            *at = now;
        const BarSeries anew(60, days);
        auto next = std::make_unique<BarSeries>(60, days, before.get());
        QCOMPARE(next->decimals(), anew.decimals());
        QCOMPARE(next->isEmpty(), anew.isEmpty());
        for (const Timeframe one : vexdesk::allTimeframes) {
            const std::vector<qint64> counts = next->candlesBefore(one);
            QCOMPARE(counts.size(), days.size() + 1);
            QCOMPARE(counts[0], 0);
            for (qsizetype i = 0; i < qsizetype(days.size()); ++i) {
                QCOMPARE(counts[size_t(i) + 1] - counts[size_t(i)], next->candlesOf(i, one));
                QCOMPARE(next->candlesOf(i, one), anew.candlesOf(i, one));
                QCOMPARE(next->endsDayBefore(i, one), anew.endsDayBefore(i, one));
            }
        }
        before = std::move(next);
    }
}

QTEST_GUILESS_MAIN(TestBarSeries)
#include "tst_barseries.moc"
