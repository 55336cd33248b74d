// SPDX-License-Identifier: MIT
#include "localdays.h"

#include "support/localzone.h"
#include "support/strictlog.h"

#include <QtTest/QTest>

class TestLocalDays final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void knowsADayThatIsAskedForOften();
    void knowsEachDayOfAYearByItself();
    void knowsAClockThatChangesAtMidnight();
    void knowsTwoDaysAtATime();
};

namespace {

bool isEvenAtLast(tadata::LocalDays& days, const QDate& day)
{
    bool isEven = false;
    for (int i = 0; i < 10; ++i)
        isEven = days.isKnownAsEven(day);
    return isEven;
}

} // namespace

void TestLocalDays::knowsADayThatIsAskedForOften()
{
    const testsupport::LocalZone zone("Europe/Berlin");
    tadata::LocalDays days;
    const QDate day(2024, 3, 10);
    QVERIFY(!days.isKnownAsEven(day)); // not worth a look yet
    QVERIFY(isEvenAtLast(days, day));
}

// Summer time begins on 31 March and ends on 27 October.
void TestLocalDays::knowsEachDayOfAYearByItself()
{
    const testsupport::LocalZone zone("Europe/Berlin");
    tadata::LocalDays days;
    for (const QDate& change : {QDate(2024, 3, 31), QDate(2024, 10, 27)}) {
        QVERIFY(isEvenAtLast(days, change.addDays(-10)));
        for (int near = -1; near <= 1; ++near)
            QVERIFY(!isEvenAtLast(days, change.addDays(near)));
        for (const int further : {-2, 2})
            QVERIFY(isEvenAtLast(days, change.addDays(further)));
        QVERIFY(isEvenAtLast(days, change.addDays(10)));
    }
}

// Until 2011 it was changed at one minute past midnight there.
void TestLocalDays::knowsAClockThatChangesAtMidnight()
{
    const testsupport::LocalZone zone("America/St_Johns");
    tadata::LocalDays days;
    const QDate change(2010, 3, 14);
    for (int near = -1; near <= 1; ++near)
        QVERIFY(!isEvenAtLast(days, change.addDays(near)));
    for (const int further : {-2, 2})
        QVERIFY(isEvenAtLast(days, change.addDays(further)));
}

// The day that is read and the one to which its last bar belongs.
void TestLocalDays::knowsTwoDaysAtATime()
{
    const testsupport::LocalZone zone("Europe/Berlin");
    tadata::LocalDays days;
    const QDate day(2024, 6, 3);
    for (int round = 0; round < 10; ++round) {
        days.isKnownAsEven(day);
        days.isKnownAsEven(day.addDays(1));
    }
    QVERIFY(days.isKnownAsEven(day));
    QVERIFY(days.isKnownAsEven(day.addDays(1)));
    // A third one takes the place of the first.
    QVERIFY(isEvenAtLast(days, day.addDays(2)));
    QVERIFY(days.isKnownAsEven(day.addDays(1)));
    QVERIFY(!days.isKnownAsEven(day));
}

QTEST_GUILESS_MAIN(TestLocalDays)
#include "tst_localdays.moc"
