// SPDX-License-Identifier: MIT
#include "desk/chart/slotrange.h"
#include "support/strictlog.h"

#include <QtCore/QRandomGenerator>
#include <QtTest/QTest>

using vexdesk::SlotLimits;
using vexdesk::SlotRange;

class TestSlotRange final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void everythingHasAMarginOnBothSides();
    void fewSlotsStandInTheMiddle();
    void aRangeIsMovedInside();
    void aRangeIsNeitherTooShortNorTooLong();
    void movingKeepsTheLength();
};

void TestSlotRange::everythingHasAMarginOnBothSides()
{
    const SlotRange all = SlotLimits(1000).all();
    QVERIFY(all.begin < -10 && all.begin > -30);
    QCOMPARE(all.end, 1000 - all.begin);
    // Of a short view a few candles' width at least.
    const SlotRange reach = SlotLimits(1000).reach(10);
    QVERIFY(reach.begin <= -1 && reach.begin >= -3);
}

void TestSlotRange::fewSlotsStandInTheMiddle()
{
    for (const int count : {0, 1, 5}) {
        const SlotRange all = SlotLimits(count, 40).all();
        QCOMPARE(all.length(), 40.0);
        QCOMPARE(all.middle(), count / 2.0);
    }
}

void TestSlotRange::aRangeIsMovedInside()
{
    const SlotLimits limits(1000);
    const SlotRange reach = limits.reach(100);
    QCOMPARE(limits.fitted({-500, -400}), (SlotRange{reach.begin, reach.begin + 100}));
    QCOMPARE(limits.fitted({5000, 5100}), (SlotRange{reach.end - 100, reach.end}));
    QCOMPARE(limits.fitted({300, 400}), (SlotRange{300, 400}));
}

void TestSlotRange::aRangeIsNeitherTooShortNorTooLong()
{
    const SlotLimits limits(1000, 20);
    QCOMPARE(limits.fitted({500, 501}).length(), 20.0);
    QCOMPARE(limits.fitted({-5000, 5000}), limits.all());
}

void TestSlotRange::movingKeepsTheLength()
{
    QRandomGenerator random(1);
    for (int i = 0; i < 5000; ++i) {
        const SlotLimits limits(random.bounded(1, 5000));
        const SlotRange range = limits.fitted({double(random.bounded(5000)) - 500, 5000});
        const SlotRange moved = limits.moved(range, random.bounded(20000.0) - 10000);
        QVERIFY(std::abs(moved.length() - range.length()) < 1e-6);
        const SlotRange reach = limits.reach(moved.length());
        QVERIFY(moved.begin >= reach.begin - 1e-6 && moved.end <= reach.end + 1e-6);
    }
}

QTEST_GUILESS_MAIN(TestSlotRange)
#include "tst_slotrange.moc"
