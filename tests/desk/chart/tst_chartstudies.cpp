// SPDX-License-Identifier: MIT
#include "desk/chart/movingaverage.h"
#include "desk/chart/volumebyprice.h"
#include "support/strictlog.h"

#include <QtTest/QTest>

#include <cmath>

using vexdesk::MovingAverage;
using vexdesk::PlacedCandle;
using vexdesk::StudyShapes;
using vexdesk::VolumeByPrice;

namespace {

PlacedCandle candle(qint64 slot, double low, double high, qint64 volume, bool isFalling = false)
{
    PlacedCandle placed;
    placed.slot = slot;
    placed.candle.bar.low = low;
    placed.candle.bar.high = high;
    placed.candle.bar.open = isFalling ? high : low;
    placed.candle.bar.close = isFalling ? low : high;
    placed.candle.bar.volume = volume;
    return placed;
}

std::vector<PlacedCandle> closes(const std::vector<double>& prices)
{
    std::vector<PlacedCandle> candles;
    for (const double price : prices)
        candles.push_back(candle(static_cast<qint64>(candles.size()), price, price, 1));
    return candles;
}

} // namespace

class TestChartStudies final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void theMeanOfTheLastCloses();
    void theMeanBeginsAnewBehindAGap();
    void aMeanNeedsCandlesBefore();
    void volumesLieAtTheirPrices();
    void aCandleSpreadsItsVolume();
    void onlyWhatIsInViewCounts();
    void rowsAreNotFinerThanThePrices();
    void withoutVolumeThereAreNoRows();
};

void TestChartStudies::theMeanOfTheLastCloses()
{
    const auto candles = closes({1, 2, 6, 4, 8});
    const StudyShapes shapes = MovingAverage(3).shapes({candles, {0, 5}, 2});
    QCOMPARE(shapes.lines.size(), 1U);
    QCOMPARE(shapes.lines[0].points, (std::vector<QPointF>{{2.5, 3}, {3.5, 4}, {4.5, 6}}));
    QVERIFY(shapes.rows.empty());
    QVERIFY(MovingAverage(6).shapes({candles, {0, 5}, 2}).lines[0].points.empty());
    QCOMPARE(MovingAverage(1).shapes({candles, {0, 5}, 2}).lines[0].points.size(), 5U);
}

void TestChartStudies::theMeanBeginsAnewBehindAGap()
{
    auto candles = closes({1, 3, 100, 104, 108});
    candles[2].isAfterGap = true;
    const StudyShapes shapes = MovingAverage(2).shapes({candles, {0, 5}, 2});
    QCOMPARE(shapes.lines.size(), 2U);
    QCOMPARE(shapes.lines[0].points, (std::vector<QPointF>{{1.5, 2}}));
    QCOMPARE(shapes.lines[1].points, (std::vector<QPointF>{{3.5, 102}, {4.5, 106}}));
}

void TestChartStudies::aMeanNeedsCandlesBefore()
{
    QCOMPARE(MovingAverage(20).candlesBefore(), 19);
    QCOMPARE(MovingAverage(0).candlesBefore(), 0);
    QCOMPARE(VolumeByPrice(10).candlesBefore(), 0);
    QCOMPARE(MovingAverage(20).name(), QStringLiteral("Скользящее среднее (20)"));
}

void TestChartStudies::volumesLieAtTheirPrices()
{
    const std::vector<PlacedCandle> candles{candle(0, 10, 10.5, 30), candle(1, 10, 10.5, 10, true),
                                            candle(2, 13.5, 14, 20)};
    const auto rows = VolumeByPrice(4).shapes({candles, {0, 3}, 2}).rows;
    QCOMPARE(rows.size(), 4U);
    QCOMPARE(rows[0].low, 10.0);
    QCOMPARE(rows[3].high, 14.0);
    QCOMPARE(rows[0].rising, 0.75); // of the longest, itself
    QCOMPARE(rows[0].falling, 0.25);
    QCOMPARE(rows[1].rising + rows[2].rising, 0.0);
    QCOMPARE(rows[3].rising, 0.5);
}

void TestChartStudies::aCandleSpreadsItsVolume()
{
    const std::vector<PlacedCandle> candles{candle(0, 10, 14, 40), candle(1, 11, 12, 10)};
    const auto rows = VolumeByPrice(4).shapes({candles, {0, 2}, 2}).rows;
    QCOMPARE(rows[0].rising, 0.5);
    QCOMPARE(rows[1].rising, 1.0);
    QCOMPARE(rows[2].rising, 0.5);
    QCOMPARE(rows[3].rising, 0.5);
}

void TestChartStudies::onlyWhatIsInViewCounts()
{
    const std::vector<PlacedCandle> candles{candle(0, 10, 10, 30), candle(1, 20, 20, 30),
                                            candle(2, 21, 21, 30), candle(3, 40, 40, 30)};
    const auto rows = VolumeByPrice(10).shapes({candles, {1.2, 3}, 0}).rows;
    QCOMPARE(rows.front().low, 20.0);
    QVERIFY(rows.back().high <= 21.1);
}

void TestChartStudies::rowsAreNotFinerThanThePrices()
{
    const std::vector<PlacedCandle> candles{candle(0, 10, 10.03, 30)};
    QCOMPARE(VolumeByPrice(50).shapes({candles, {0, 1}, 2}).rows.size(), 3U);
    const std::vector<PlacedCandle> one{candle(0, 10, 10, 30)};
    const auto rows = VolumeByPrice(50).shapes({one, {0, 1}, 2}).rows;
    QCOMPARE(rows.size(), 1U);
    QCOMPARE(rows[0].rising, 1.0);
}

void TestChartStudies::withoutVolumeThereAreNoRows()
{
    const std::vector<PlacedCandle> candles{candle(0, 10, 11, 0), candle(1, 10, 11, -5)};
    QVERIFY(VolumeByPrice(5).shapes({candles, {0, 2}, 2}).rows.empty());
    QVERIFY(VolumeByPrice(5).shapes({{}, {0, 2}, 2}).rows.empty());
}

QTEST_GUILESS_MAIN(TestChartStudies)
#include "tst_chartstudies.moc"
