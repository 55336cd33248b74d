// SPDX-License-Identifier: MIT
// The bars of a day in little room: each comes out as it went in.

#include "desk/chart/daybars.h"
#include "desk/chart/wallclock.h"
#include "seriesdays.h"
#include "support/strictlog.h"

#include <QtTest/QTest>

#include <cmath>
#include <limits>

using testsupport::randomBar;
using vexdesk::Bar;
using vexdesk::DayBars;
using vexdesk::DayBarsMaker;

namespace {

const qint64 midnight = vexdesk::wallTime(QDate(2024, 1, 15));

Bar barAt(int second, double price)
{
    Bar bar;
    bar.time = midnight + second;
    bar.open = bar.high = bar.low = bar.close = price;
    return bar;
}

// A price with so many digits after the point, as a file has it.
double price(qint64 units, int decimals)
{
    return static_cast<double>(units) / std::pow(10.0, decimals);
}

Bar plainSum(const std::vector<Bar>& bars, size_t first, size_t last)
{
    Bar sum = bars[first];
    for (size_t i = first + 1; i < last; ++i) {
        const Bar& bar = bars[i];
        sum.time = bar.time;
        sum.high = std::max(sum.high, bar.high);
        sum.low = std::min(sum.low, bar.low);
        sum.close = bar.close;
        sum.volume += bar.volume;
        sum.value += bar.value;
        sum.openInterest = bar.openInterest;
    }
    return sum;
}

} // namespace

class TestDayBars final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void givesBackTheVeryBars_data();
    void givesBackTheVeryBars();
    void takesLittleRoom_data();
    void takesLittleRoom();
    void blocksTakeNoRoomForOthers();
    void zerosAtTheEndTakeNoRoom();
    void moneyThatSharesItsRoomIsNearlyKept();
    void takesBarsOneAfterTheOther();
    void putsBarsInOrder();
    void sumsUpAsALoopDoes_data();
    void sumsUpAsALoopDoes();
    void findsTheFirstBarAfterASecond();
};

void TestDayBars::givesBackTheVeryBars_data()
{
    QTest::addColumn<int>("decimals");
    QTest::addColumn<qint64>("lowest"); // in units of the last digit
    QTest::addColumn<qint64>("spread");
    QTest::addColumn<double>("money"); // the largest
    const double huge = 1e18 / 3;
    const double cents = 7e11 - 0.25; // what has room beside the time
    QTest::newRow("whole") << 0 << qint64(100) << qint64(50) << huge;
    QTest::newRow("cents") << 2 << qint64(12000) << qint64(500) << huge;
    QTest::newRow("below nothing") << 2 << qint64(-500) << qint64(1000) << huge;
    QTest::newRow("as wide as 32 bits") << 4 << qint64(-5) << qint64(0xffffffff) << huge;
    QTest::newRow("wider than 32 bits") << 4 << qint64(-5) << qint64(0x100000000) << cents;
    QTest::newRow("a dear coin") << 8 << qint64(6000000000000) << qint64(1000000) << huge;
    QTest::newRow("a cheap coin") << 12 << qint64(1) << qint64(4000000) << huge;
    QTest::newRow("fifteen digits") << 15 << qint64(1) << qint64(4000000) << huge;
    QTest::newRow("many digits") << 15 << qint64(9007199254700000) << qint64(40000) << cents;
    QTest::newRow("too many digits") << 3 << qint64(36028797018960000) << qint64(3000) << cents;
}

void TestDayBars::givesBackTheVeryBars()
{
    QFETCH(const int, decimals);
    QFETCH(const qint64, lowest);
    QFETCH(const qint64, spread);
    QFETCH(const double, money);
    QRandomGenerator random(1);
    constexpr int count = 2 * DayBars::blockSize + 100;
    std::vector<Bar> bars;
    for (int i = 0; i < count; ++i) {
        Bar bar = randomBar(random, midnight + i * 40);
        for (double* const one : {&bar.open, &bar.high, &bar.low, &bar.close})
            *one = price(lowest + static_cast<qint64>(random.generateDouble() * double(spread)),
                         decimals);
        bars.push_back(bar);
    }
    bars[3].open = price(lowest, decimals);
    bars[4].close = price(lowest + spread, decimals);
    bars[5].openInterest = std::numeric_limits<qint32>::min();
    bars[6].openInterest = std::numeric_limits<qint32>::max();
    bars[7].volume = std::numeric_limits<qint32>::min();
    bars[8].volume = std::numeric_limits<qint32>::max();
    bars[9].value = -money;
    bars[10].value = money;
    const DayBars day(bars, decimals);
    QCOMPARE(day.size(), qsizetype(count));
    QCOMPARE(day.decimals(), decimals);
    for (qsizetype i = 0; i < day.size(); ++i) {
        QVERIFY2(day.at(i) == bars[static_cast<size_t>(i)], qPrintable(QString::number(i)));
        QCOMPARE(day.secondOf(i), static_cast<int>(i * 40));
    }
}

void TestDayBars::takesLittleRoom_data()
{
    QTest::addColumn<double>("highest");
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("openInterest");
    QTest::addColumn<int>("most"); // bytes a bar
    QTest::newRow("prices and volume") << 120.5 << 0.0 << 0 << 24;
    QTest::newRow("open interest") << 120.5 << 0.0 << 7 << 28;
    QTest::newRow("money") << 120.5 << 0.5 << 0 << 32;
    QTest::newRow("everything") << 120.5 << 0.5 << 7 << 36;
    QTest::newRow("wide prices") << 1e9 << 0.0 << 0 << 40;
    QTest::newRow("wide prices and open interest") << 1e9 << 0.0 << 7 << 44;
    QTest::newRow("wide prices and money") << 1e9 << 0.5 << 0 << 48;
    QTest::newRow("wide everything") << 1e9 << 0.5 << 7 << 48;
}

void TestDayBars::takesLittleRoom()
{
    QFETCH(const double, highest);
    QFETCH(const double, value);
    QFETCH(const int, openInterest);
    QFETCH(const int, most);
    std::vector<Bar> bars;
    for (int i = 0; i < 1000; ++i)
        bars.push_back(barAt(i, 1.25));
    bars[1].high = highest;
    bars[1].value = value;
    bars[1].openInterest = openInterest;
    const DayBars day(bars, 2);
    QCOMPARE(day.at(1).high, highest);
    constexpr int beside = 40 + 80; // of the day and of its only block
    QVERIFY2(day.bytes() <= 1000 * most + beside, qPrintable(QString::number(day.bytes())));
    QVERIFY2(day.bytes() > 1000 * most, qPrintable(QString::number(day.bytes())));
}

void TestDayBars::blocksTakeNoRoomForOthers()
{
    vexdesk::DayBarsMaker maker;
    constexpr int count = 2 * DayBars::blockSize + 1;
    for (int i = 0; i < count; ++i)
        maker.add(barAt(i, 1.25), 2);
    const auto day = maker.finish();
    QCOMPARE(day->bytes(), qsizetype(count * 24 + 3 * 80 + 40));
}

void TestDayBars::zerosAtTheEndTakeNoRoom()
{
    // As in a file with "60050.12000000": in units of the eighth digit the day is wide.
    std::vector<Bar> bars;
    for (int i = 0; i < 1000; ++i)
        bars.push_back(barAt(i, 60000 + price(i * 7, 2)));
    const DayBars day(bars, 8);
    QCOMPARE(day.decimals(), 8);
    QVERIFY2(day.bytes() <= 1000 * 24 + 200, qPrintable(QString::number(day.bytes())));
    QVERIFY(day.at(999) == bars[999]);
}

// Wide prices with open interest leave 46 bits for it.
void TestDayBars::moneyThatSharesItsRoomIsNearlyKept()
{
    for (const double largest : {1e12 / 3, 1e16 / 3, 1e30 / 7}) {
        std::vector<Bar> bars;
        for (int i = 0; i < 100; ++i) {
            bars.push_back(barAt(i * 800, i % 2 == 0 ? 1.25 : 1e9));
            bars.back().openInterest = i;
            bars.back().value = (i % 3 - 1) * largest / (1 + i);
        }
        const DayBars day(bars, 2);
        QVERIFY(day.bytes() <= 100 * 48 + 200);
        for (qsizetype i = 0; i < 100; ++i) {
            const Bar& bar = bars[static_cast<size_t>(i)];
            QCOMPARE(day.at(i).time, bar.time);
            QCOMPARE(day.at(i).openInterest, bar.openInterest);
            QVERIFY(std::abs(day.at(i).value - bar.value) <= largest * 1e-12);
        }
    }
}

void TestDayBars::takesBarsOneAfterTheOther()
{
    QRandomGenerator random(5);
    for (const int count : {1, 1023, 1024, 1025, 5000}) {
        std::vector<Bar> bars;
        DayBarsMaker maker;
        for (int i = 0; i < count; ++i) {
            bars.push_back(randomBar(random, midnight + i * 17));
            maker.add(bars.back(), i == count / 2 ? 2 : 1);
        }
        const auto day = maker.finish();
        QCOMPARE(day->size(), qsizetype(count));
        QCOMPARE(day->decimals(), 2);
        for (qsizetype i = 0; i < day->size(); ++i)
            QVERIFY(day->at(i) == bars[static_cast<size_t>(i)]);
        QCOMPARE(day->firstAfter(17 * (count - 1)), qsizetype(count));
        QCOMPARE(day->firstAfter(17 * (count - 1) - 1), qsizetype(count - 1));
        QVERIFY(!maker.finish());
    }
}

void TestDayBars::putsBarsInOrder()
{
    constexpr int count = 3000;
    DayBarsMaker maker;
    for (int i = 0; i < count; ++i) // the last two first, and each second twice
        maker.add(barAt((count - 1 - i) / 2, i), 0);
    const auto day = maker.finish();
    QCOMPARE(day->size(), qsizetype(count));
    for (int i = 0; i < count; ++i) {
        QCOMPARE(day->secondOf(i), i / 2);
        // Of the same time, the one that came first is the first.
        QCOMPARE(day->at(i).open, double(count - 2 - (i - i % 2) + i % 2));
    }
}

void TestDayBars::sumsUpAsALoopDoes_data()
{
    QTest::addColumn<double>("highest");
    QTest::newRow("units") << 500.0;
    QTest::newRow("doubles") << 1e12;
}

void TestDayBars::sumsUpAsALoopDoes()
{
    QFETCH(const double, highest);
    QRandomGenerator random(2);
    for (int round = 0; round < 200; ++round) {
        std::vector<Bar> bars;
        const int count = 1 + random.bounded(round % 10 == 0 ? 4000 : 100);
        for (int i = 0; i < count; ++i)
            bars.push_back(randomBar(random, midnight + i * 20));
        bars.back().high = highest;
        const DayBars day(bars, 2);
        for (int i = 0; i < 30; ++i) {
            const int first = random.bounded(count);
            const int last = first + 1 + random.bounded(count - first);
            QVERIFY2(day.sum(first, last) == plainSum(bars, first, last),
                     qPrintable(QStringLiteral("%1: %2 to %3").arg(round).arg(first).arg(last)));
        }
    }
}

void TestDayBars::findsTheFirstBarAfterASecond()
{
    const DayBars day({barAt(0, 1), barAt(0, 2), barAt(60, 3), barAt(60, 4), barAt(86399, 5)}, 2);
    QCOMPARE(day.firstAfter(-1), qsizetype(0));
    QCOMPARE(day.firstAfter(0), qsizetype(2));
    QCOMPARE(day.firstAfter(59), qsizetype(2));
    QCOMPARE(day.firstAfter(60), qsizetype(4));
    QCOMPARE(day.firstAfter(86399), qsizetype(5));
    QCOMPARE(day.firstAfter(0, 3), qsizetype(3));
}

QTEST_GUILESS_MAIN(TestDayBars)
#include "tst_daybars.moc"
