// SPDX-License-Identifier: MIT
#include "desk/chart/timeframe.h"
#include "support/strictlog.h"

#include <QtTest/QTest>

using vexdesk::sourceOf;
using vexdesk::Timeframe;

class TestTimeframe final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void eachUpToTheDayIsAPartOfTheNext();
    void theSourceIsTheLongestThatDivides_data();
    void theSourceIsTheLongestThatDivides();
    void periodsOfDays_data();
    void periodsOfDays();
};

void TestTimeframe::eachUpToTheDayIsAPartOfTheNext()
{
    for (int i = 1; i <= vexdesk::timeframesBelowDay; ++i) {
        const auto index = static_cast<size_t>(i);
        QCOMPARE(static_cast<int>(vexdesk::allTimeframes[index]), i);
        const int shorter = secondsOf(vexdesk::allTimeframes[index - 1]);
        const int longer = secondsOf(vexdesk::allTimeframes[index]);
        QVERIFY(longer > shorter);
        QCOMPARE(longer % shorter, 0);
    }
    QCOMPARE(secondsOf(Timeframe::Second), 1);
    QCOMPARE(secondsOf(Timeframe::Minutes30), 1800);
    QCOMPARE(secondsOf(Timeframe::Day), 86400);
    QVERIFY(vexdesk::isBelowDay(Timeframe::Hour));
    QVERIFY(!vexdesk::isBelowDay(Timeframe::Day));
}

void TestTimeframe::theSourceIsTheLongestThatDivides_data()
{
    QTest::addColumn<Timeframe>("timeframe");
    QTest::addColumn<QList<int>>("stored");
    QTest::addColumn<int>("source"); // 0 for none
    QTest::newRow("seconds of seconds") << Timeframe::Second << QList<int>{60, 1} << 1;
    QTest::newRow("no seconds") << Timeframe::Second << QList<int>{60} << 0;
    QTest::newRow("minutes before seconds") << Timeframe::Minute << QList<int>{1, 60} << 60;
    QTest::newRow("in any order") << Timeframe::Minutes5 << QList<int>{60, 1} << 60;
    QTest::newRow("not what is longer") << Timeframe::Minutes5 << QList<int>{600, 1} << 1;
    QTest::newRow("not what does not divide") << Timeframe::Minutes5 << QList<int>{120, 100} << 100;
    QTest::newRow("a day of odd parts") << Timeframe::Day << QList<int>{7} << 0;
    QTest::newRow("days of days") << Timeframe::Day << QList<int>{60, 86400} << 86400;
    QTest::newRow("weeks as days") << Timeframe::Week << QList<int>{1, 60, 7} << 60;
    QTest::newRow("months as days") << Timeframe::Month << QList<int>{7, 1} << 1;
    QTest::newRow("nothing stored") << Timeframe::Day << QList<int>() << 0;
    QTest::newRow("no timeframe") << Timeframe::Day << QList<int>{0, -60} << 0;
}

void TestTimeframe::theSourceIsTheLongestThatDivides()
{
    QFETCH(const Timeframe, timeframe);
    QFETCH(const QList<int>, stored);
    QTEST(sourceOf(timeframe, stored).value_or(0), "source");
}

void TestTimeframe::periodsOfDays_data()
{
    QTest::addColumn<QDate>("day");
    QTest::addColumn<Timeframe>("timeframe");
    QTest::addColumn<QDate>("begin");
    QTest::addColumn<QDate>("end");
    const QDate monday(2024, 1, 15);
    QTest::newRow("day") << monday << Timeframe::Day << monday << monday.addDays(1);
    QTest::newRow("Monday") << monday << Timeframe::Week << monday << monday.addDays(7);
    QTest::newRow("Sunday") << monday.addDays(6) << Timeframe::Week << monday << monday.addDays(7);
    QTest::newRow("next Monday") << monday.addDays(7) << Timeframe::Week << monday.addDays(7)
                                 << monday.addDays(14);
    QTest::newRow("over the year's end")
        << QDate(2025, 1, 1) << Timeframe::Week << QDate(2024, 12, 30) << QDate(2025, 1, 6);
    QTest::newRow("leap February")
        << QDate(2024, 2, 29) << Timeframe::Month << QDate(2024, 2, 1) << QDate(2024, 3, 1);
    QTest::newRow("December") << QDate(2024, 12, 31) << Timeframe::Month << QDate(2024, 12, 1)
                              << QDate(2025, 1, 1);
}

void TestTimeframe::periodsOfDays()
{
    QFETCH(const QDate, day);
    QFETCH(const Timeframe, timeframe);
    QTEST(vexdesk::periodBegin(day, timeframe), "begin");
    QTEST(vexdesk::periodEnd(day, timeframe), "end");
}

QTEST_GUILESS_MAIN(TestTimeframe)
#include "tst_timeframe.moc"
