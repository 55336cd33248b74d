// SPDX-License-Identifier: MIT
#include "desk/chart/calendarslots.h"
#include "desk/chart/wallclock.h"
#include "support/strictlog.h"

#include <QtCore/QRandomGenerator>
#include <QtTest/QTest>

#include <cmath>

using vexdesk::CalendarSlots;
using vexdesk::Timeframe;
using vexdesk::wallTime;

class TestCalendarSlots final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void countsFromTheFirstDay_data();
    void countsFromTheFirstDay();
    void positionsGoThereAndBack();
    void monthsAreSlotsOfOneWidth();
};

void TestCalendarSlots::countsFromTheFirstDay_data()
{
    QTest::addColumn<Timeframe>("timeframe");
    QTest::addColumn<QDate>("day");
    QTest::addColumn<QTime>("time");
    QTest::addColumn<qint64>("slot");
    const QDate first(2024, 1, 17); // a Wednesday
    const QTime midnight(0, 0);
    QTest::newRow("seconds") << Timeframe::Second << first << QTime(0, 0, 7) << qint64(7);
    QTest::newRow("minutes") << Timeframe::Minute << first.addDays(1) << QTime(0, 2)
                             << qint64(1442);
    QTest::newRow("before") << Timeframe::Hour << first.addDays(-1) << QTime(22, 0) << qint64(-2);
    QTest::newRow("days") << Timeframe::Day << QDate(2024, 3, 1) << midnight << qint64(44);
    QTest::newRow("its week") << Timeframe::Week << QDate(2024, 1, 15) << midnight << qint64(0);
    QTest::newRow("weeks") << Timeframe::Week << QDate(2024, 1, 29) << midnight << qint64(2);
    QTest::newRow("its month") << Timeframe::Month << QDate(2024, 1, 1) << midnight << qint64(0);
    QTest::newRow("months") << Timeframe::Month << QDate(2025, 3, 1) << midnight << qint64(14);
    QTest::newRow("back") << Timeframe::Month << QDate(2023, 12, 1) << midnight << qint64(-1);
}

void TestCalendarSlots::countsFromTheFirstDay()
{
    QFETCH(const Timeframe, timeframe);
    QFETCH(const QDate, day);
    QFETCH(const QTime, time);
    QFETCH(const qint64, slot);
    const CalendarSlots calendar(timeframe, QDate(2024, 1, 17));
    QCOMPARE(calendar.slotFrom(wallTime(day, time)), slot);
    QCOMPARE(calendar.timeAt(static_cast<double>(slot)), static_cast<double>(wallTime(day, time)));
}

void TestCalendarSlots::positionsGoThereAndBack()
{
    QRandomGenerator random(1);
    for (const Timeframe timeframe : vexdesk::allTimeframes) {
        const CalendarSlots calendar(timeframe, QDate(2024, 1, 17));
        for (int i = 0; i < 1000; ++i) {
            const double slot = random.generateDouble() * 4000 - 500;
            const double off = std::abs(calendar.slotOf(calendar.timeAt(slot)) - slot);
            QVERIFY2(off < 1e-5, qPrintable(QString::number(off)));
        }
    }
}

void TestCalendarSlots::monthsAreSlotsOfOneWidth()
{
    const CalendarSlots calendar(Timeframe::Month, QDate(2024, 1, 17));
    // The middle of February of a leap year is the begin of its 15th and a half day.
    QCOMPARE(calendar.slotOf(static_cast<double>(wallTime(QDate(2024, 2, 15), QTime(12, 0)))), 1.5);
    QVERIFY(calendar.slotLength() > 30 * 86400 && calendar.slotLength() < 31 * 86400);
}

QTEST_GUILESS_MAIN(TestCalendarSlots)
#include "tst_calendarslots.moc"
