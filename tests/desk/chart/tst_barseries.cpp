// SPDX-License-Identifier: MIT
// The bars of the chart in memory: what is found and summed up fast is what a loop over all bars
// finds and sums up.

#include "desk/chart/barseries.h"
#include "desk/chart/candles.h"
#include "desk/chart/wallclock.h"
#include "support/strictlog.h"

#include <QtCore/QRandomGenerator>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>

using vexdesk::Bar;
using vexdesk::BarSeries;
using vexdesk::Candle;
using vexdesk::DayBars;
using vexdesk::secondsPerDay;

namespace {

// Prices and sums are multiples of a quarter: every order of adding gives the same double.
Bar randomBar(QRandomGenerator& random, qint64 time)
{
    const auto quarters = [&random](int count) { return random.bounded(count) / 4.0; };
    Bar bar;
    bar.time = time;
    bar.open = quarters(1000) - 100;
    bar.close = quarters(1000) - 100;
    bar.high = std::max(bar.open, bar.close) + quarters(50);
    bar.low = std::min(bar.open, bar.close) - quarters(50);
    bar.volume = random.bounded(100000) - 5;
    bar.value = quarters(1000000);
    bar.openInterest = random.bounded(1000);
    return bar;
}

struct RandomSeries
{
    std::vector<Bar> bars; // all of them, in a row
    BarSeries series;
};

RandomSeries makeSeries(QRandomGenerator& random, int days, int mostBars, int timeframe)
{
    RandomSeries result;
    std::vector<BarSeries::Day> parts;
    qint64 day = random.bounded(-400, 400); // 1970 is no boundary
    for (int d = 0; d < days; ++d, day += 1 + random.bounded(4)) {
        std::vector<Bar> bars;
        qint64 time = qint64(random.bounded(0, 40)) * timeframe;
        const int count = 1 + random.bounded(mostBars);
        for (int i = 0; i < count && time < secondsPerDay; ++i) {
            bars.push_back(randomBar(random, day * secondsPerDay + time));
            // Often the next one, sometimes after a gap, sometimes at the same time.
            const int step = random.bounded(10);
            const qint64 skipped = step == 0 ? 0 : (step < 8 ? 1 : random.bounded(500));
            time += skipped * timeframe;
        }
        result.bars.insert(result.bars.end(), bars.begin(), bars.end());
        parts.push_back(std::make_shared<const DayBars>(std::move(bars), random.bounded(3)));
    }
    result.series = BarSeries(std::move(parts));
    return result;
}

Bar plainSum(const std::vector<Bar>& bars, qsizetype first, qsizetype last)
{
    Bar sum = bars[first];
    for (qsizetype i = first + 1; i < last; ++i) {
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

// One bar after the other: each belongs to the interval that begins before it and ends at it or
// after it.
std::vector<Candle> plainCandles(const std::vector<Bar>& bars, qint64 interval, double from,
                                 double to)
{
    const qint64 origin = interval % (7 * secondsPerDay) == 0 ? -3 * secondsPerDay : 0;
    std::vector<Candle> candles;
    for (const Bar& bar : bars) {
        const auto number =
            std::ceil(static_cast<double>(bar.time - origin) / static_cast<double>(interval));
        const qint64 end = static_cast<qint64>(number) * interval + origin;
        if (static_cast<double>(end) <= from || static_cast<double>(end - interval) >= to)
            continue;
        if (candles.empty() || candles.back().end != end) {
            candles.push_back({end - interval, end, bar, 1});
        } else {
            candles.back().bar = plainSum({candles.back().bar, bar}, 0, 2);
            ++candles.back().count;
        }
    }
    return candles;
}

bool areSame(const Candle& left, const Candle& right)
{
    return left.begin == right.begin && left.end == right.end && left.count == right.count &&
           left.bar == right.bar;
}

} // namespace

class TestBarSeries final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void anEmptySeriesHasNothing();
    void findsBarsAsALoopDoes();
    void sumsUpAsALoopDoes();
    void makesTheCandlesOfALoop();
    void aBarEndsItsInterval();
    void weeksBeginOnMonday();
    void anIntervalIsTheTimeframeOrLonger_data();
    void anIntervalIsTheTimeframeOrLonger();
    void noMoreCandlesThanRoom();
    void candlesStayTheSameWhenTheViewIsMoved();
    void decimalsAreThoseOfThePriceWithMost();
};

void TestBarSeries::anEmptySeriesHasNothing()
{
    const BarSeries series;
    QVERIFY(series.isEmpty());
    QCOMPARE(series.size(), 0);
    QCOMPARE(series.firstAfter(0), 0);
    QVERIFY(vexdesk::candlesOf(series, 60, -1e9, 1e9).empty());
}

void TestBarSeries::findsBarsAsALoopDoes()
{
    QRandomGenerator random(1);
    for (int round = 0; round < 300; ++round) {
        const RandomSeries made = makeSeries(random, 1 + random.bounded(12), 300, 60);
        QCOMPARE(made.series.size(), static_cast<qsizetype>(made.bars.size()));
        for (int i = 0; i < 50; ++i) {
            const Bar& near = made.bars[random.bounded(int(made.bars.size()))];
            const qint64 time = near.time + random.bounded(-70, 71);
            const auto found = std::find_if(made.bars.begin(), made.bars.end(),
                                            [time](const Bar& bar) { return bar.time > time; });
            QCOMPARE(made.series.firstAfter(time), found - made.bars.begin());
            const int index = random.bounded(int(made.bars.size()));
            QVERIFY(made.series.at(index) == made.bars[index]);
        }
        QCOMPARE(made.series.firstTime(), made.bars.front().time);
        QCOMPARE(made.series.lastTime(), made.bars.back().time);
    }
}

void TestBarSeries::sumsUpAsALoopDoes()
{
    QRandomGenerator random(2);
    for (int round = 0; round < 200; ++round) {
        // Now and then so many days and bars that the sums have several levels.
        const bool isLarge = round % 20 == 0;
        const RandomSeries made =
            makeSeries(random, 1 + random.bounded(isLarge ? 400 : 20), isLarge ? 40 : 700, 60);
        const int size = static_cast<int>(made.bars.size());
        for (int i = 0; i < 60; ++i) {
            const int first = random.bounded(size);
            const int last = i == 0 ? size : first + 1 + random.bounded(size - first);
            QVERIFY2(made.series.sum(first, last) == plainSum(made.bars, first, last),
                     qPrintable(QStringLiteral("%1: %2 to %3").arg(round).arg(first).arg(last)));
        }
    }
}

void TestBarSeries::makesTheCandlesOfALoop()
{
    QRandomGenerator random(3);
    const std::vector<int> timeframes{1, 60, 60, 300};
    qsizetype compared = 0;
    for (int round = 0; round < 2000; ++round) {
        const int timeframe = timeframes[random.bounded(int(timeframes.size()))];
        const RandomSeries made =
            makeSeries(random, 1 + random.bounded(15), 1 + random.bounded(400), timeframe);
        const auto first = static_cast<double>(made.bars.front().time);
        const auto last = static_cast<double>(made.bars.back().time);
        for (int i = 0; i < 5; ++i) {
            const double from =
                first + (last - first + 2000) * std::pow(random.generateDouble(), 2) - 1000;
            // From more than everything to a thousandth of it.
            const double length =
                (last - first + 5000) * 1.5 * std::pow(random.generateDouble(), 3);
            const double to = from + length;
            const qint64 interval =
                vexdesk::candleInterval(length / (1 + random.bounded(300)), timeframe);
            // Ends of the view on the ends of intervals are a case of their own.
            const double begin =
                i == 0 ? double(vexdesk::intervalEnd(qint64(from), interval)) : from;
            const auto candles = vexdesk::candlesOf(made.series, interval, begin, to);
            const auto wanted = plainCandles(made.bars, interval, begin, to);
            QVERIFY2(
                std::equal(candles.begin(), candles.end(), wanted.begin(), wanted.end(), areSame),
                qPrintable(QStringLiteral("round %1, view %2, interval %3: %4 and %5 candles")
                               .arg(round)
                               .arg(i)
                               .arg(interval)
                               .arg(candles.size())
                               .arg(wanted.size())));
            compared += static_cast<qsizetype>(candles.size());
        }
    }
    QVERIFY2(compared > 50000, qPrintable(QString::number(compared)));
}

void TestBarSeries::aBarEndsItsInterval()
{
    QCOMPARE(vexdesk::intervalEnd(600, 300), 600);
    QCOMPARE(vexdesk::intervalEnd(601, 300), 900);
    QCOMPARE(vexdesk::intervalEnd(0, 300), 0);
    QCOMPARE(vexdesk::intervalEnd(-1, 300), 0);
    QCOMPARE(vexdesk::intervalEnd(-300, 300), -300);
    // A bar that ends at midnight belongs to the day before it.
    QCOMPARE(vexdesk::intervalEnd(10 * secondsPerDay, secondsPerDay), 10 * secondsPerDay);
}

void TestBarSeries::weeksBeginOnMonday()
{
    constexpr qint64 week = 7 * secondsPerDay;
    const qint64 wednesday = vexdesk::wallTime(QDate(2024, 1, 17), QTime(12, 0));
    QCOMPARE(vexdesk::wallDate(vexdesk::intervalEnd(wednesday, week)), QDate(2024, 1, 22));
    QCOMPARE(QDate(2024, 1, 22).dayOfWeek(), int(Qt::Monday));
}

void TestBarSeries::anIntervalIsTheTimeframeOrLonger_data()
{
    QTest::addColumn<double>("shortest");
    QTest::addColumn<int>("timeframe");
    QTest::addColumn<qint64>("interval");
    QTest::newRow("room for every bar") << 0.5 << 60 << qint64(60);
    QTest::newRow("just room") << 60.0 << 60 << qint64(60);
    QTest::newRow("two minutes") << 60.1 << 60 << qint64(120);
    QTest::newRow("seconds") << 1.5 << 1 << qint64(2);
    QTest::newRow("no usual timeframe") << 8.0 << 7 << qint64(10);
    QTest::newRow("a day") << 43201.0 << 60 << qint64(86400);
    QTest::newRow("beyond the usual") << 86400.0 * 50 << 60 << qint64(86400 * 56);
}

void TestBarSeries::anIntervalIsTheTimeframeOrLonger()
{
    QFETCH(const double, shortest);
    QFETCH(const int, timeframe);
    QTEST(vexdesk::candleInterval(shortest, timeframe), "interval");
}

void TestBarSeries::noMoreCandlesThanRoom()
{
    QRandomGenerator random(4);
    const RandomSeries made = makeSeries(random, 250, 520, 60);
    const auto first = static_cast<double>(made.series.firstTime());
    const double length = static_cast<double>(made.series.lastTime()) - first;
    for (const double share : {1.0, 0.3, 0.1, 0.01, 0.001}) {
        constexpr int room = 300;
        const qint64 interval = vexdesk::candleInterval(length * share / room, 60);
        const auto candles =
            vexdesk::candlesOf(made.series, interval, first, first + length * share);
        QVERIFY(!candles.empty());
        // One more at each end, of which only a part is seen.
        QVERIFY2(candles.size() <= room + 2, qPrintable(QString::number(candles.size())));
    }
}

void TestBarSeries::candlesStayTheSameWhenTheViewIsMoved()
{
    QRandomGenerator random(5);
    const RandomSeries made = makeSeries(random, 30, 400, 60);
    const auto first = static_cast<double>(made.series.firstTime());
    const double length = 10 * static_cast<double>(secondsPerDay);
    const auto before = vexdesk::candlesOf(made.series, 900, first, first + length);
    const auto after =
        vexdesk::candlesOf(made.series, 900, first + 1234.5, first + length + 1234.5);
    int common = 0;
    for (const Candle& candle : after) {
        for (const Candle& other : before) {
            if (candle.begin == other.begin) {
                QVERIFY(areSame(candle, other));
                ++common;
            }
        }
    }
    QVERIFY(common > 20);
}

void TestBarSeries::decimalsAreThoseOfThePriceWithMost()
{
    const Bar bar;
    const auto day = [&bar](int decimals) {
        return std::make_shared<const DayBars>(std::vector<Bar>{bar}, decimals);
    };
    QCOMPARE(BarSeries({day(2), day(4), day(0)}).decimals(), 4);
}

QTEST_GUILESS_MAIN(TestBarSeries)
#include "tst_barseries.moc"
