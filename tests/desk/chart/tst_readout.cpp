// SPDX-License-Identifier: MIT
#include "desk/chart/readout.h"
#include "desk/chart/wallclock.h"
#include "support/strictlog.h"

#include <QtTest/QTest>

using vexdesk::Candle;
using vexdesk::Timeframe;
using vexdesk::wallTime;

namespace {

Candle oneBar()
{
    Candle candle;
    candle.count = 1;
    candle.begin = wallTime(QDate(2024, 1, 15), QTime(10, 19));
    candle.end = wallTime(QDate(2024, 1, 15), QTime(10, 20));
    candle.bar.time = candle.end;
    candle.bar.open = 120.03;
    candle.bar.high = 120.1;
    candle.bar.low = 119.9;
    candle.bar.close = 120;
    candle.bar.volume = 180;
    return candle;
}

Candle between(const QDate& from, const QTime& begin, const QDate& to, const QTime& end)
{
    Candle candle = oneBar();
    candle.count = 5;
    candle.begin = wallTime(from, begin);
    candle.end = wallTime(to, end);
    candle.day = from;
    return candle;
}

} // namespace

class TestReadout final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void tellsABar();
    void tellsWhatIsNotZero();
    void tellsSecondsOfShortBars();
    void tellsTheIntervalOfSeveralBars_data();
    void tellsTheIntervalOfSeveralBars();
    void aSingleBarInALongIntervalIsToldByIt();
    void barsOfOneTimeAreToldByTheInterval();
};

void TestReadout::tellsABar()
{
    QCOMPARE(vexdesk::readoutText(oneBar(), {Timeframe::Minute, 60}, 2),
             QStringLiteral("15.01.2024 10:20   Откр. 120.03   Макс. 120.10   Мин. 119.90   "
                            "Закр. 120.00   Объём 180"));
}

void TestReadout::tellsWhatIsNotZero()
{
    Candle candle = oneBar();
    candle.bar.value = 21605.4;
    candle.bar.openInterest = -7;
    const QString text = vexdesk::readoutText(candle, {Timeframe::Minute, 60}, 2);
    QVERIFY2(
        text.endsWith(QStringLiteral("Объём 180   Объём в деньгах 21 605.40   Откр. интерес -7")),
        qPrintable(text));
}

void TestReadout::tellsSecondsOfShortBars()
{
    QVERIFY(vexdesk::readoutText(oneBar(), {Timeframe::Second, 1}, 2)
                .startsWith(QStringLiteral("15.01.2024 10:20:00 ")));
}

void TestReadout::tellsTheIntervalOfSeveralBars_data()
{
    QTest::addColumn<vexdesk::Candle>("candle");
    QTest::addColumn<Timeframe>("timeframe");
    QTest::addColumn<QString>("text");
    const QDate day(2024, 1, 15);
    QTest::newRow("minutes") << between(day, {10, 0}, day, {10, 10}) << Timeframe::Minutes10
                             << "15.01.2024 10:00 – 10:10 (10 мин)";
    QTest::newRow("to midnight") << between(day, {23, 0}, day.addDays(1), {0, 0}) << Timeframe::Hour
                                 << "15.01.2024 23:00 – 16.01.2024 00:00 (1 ч)";
    QTest::newRow("a day") << between(day, {0, 0}, day.addDays(1), {0, 0}) << Timeframe::Day
                           << "15.01.2024 (1 д)";
    QTest::newRow("a week") << between(day, {0, 0}, day.addDays(7), {0, 0}) << Timeframe::Week
                            << "15.01.2024 – 21.01.2024 (1 нед)";
    QTest::newRow("a month") << between({2024, 1, 1}, {0, 0}, {2024, 2, 1}, {0, 0})
                             << Timeframe::Month << "01.01.2024 – 31.01.2024 (1 мес)";
}

void TestReadout::tellsTheIntervalOfSeveralBars()
{
    QFETCH(const vexdesk::Candle, candle);
    QFETCH(const Timeframe, timeframe);
    QFETCH(const QString, text);
    const QString told = vexdesk::readoutText(candle, {timeframe, 1}, 2);
    QVERIFY2(told.startsWith(text + QStringLiteral("   ")), qPrintable(told));
}

void TestReadout::aSingleBarInALongIntervalIsToldByIt()
{
    QCOMPARE(vexdesk::candleTimeText(oneBar(), {Timeframe::Minute, 1}),
             QStringLiteral("15.01.2024 10:19 – 10:20"));
}

void TestReadout::barsOfOneTimeAreToldByTheInterval()
{
    Candle candle = oneBar();
    candle.count = 2;
    QCOMPARE(vexdesk::candleTimeText(candle, {Timeframe::Minute, 60}),
             QStringLiteral("15.01.2024 10:19 – 10:20"));
    QVERIFY(vexdesk::readoutText(candle, {Timeframe::Minute, 60}, 2)
                .contains(QStringLiteral("(1 мин)")));
}

QTEST_GUILESS_MAIN(TestReadout)
#include "tst_readout.moc"
