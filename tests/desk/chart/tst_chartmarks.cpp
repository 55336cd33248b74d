// SPDX-License-Identifier: MIT
#include "chartseries.h"
#include "desk/chart/chartmarks.h"
#include "support/strictlog.h"

#include <QtTest/QTest>

using testsupport::axisOf;
using testsupport::firstDay;
using testsupport::makeSeries;
using vexdesk::CandleMark;
using vexdesk::ChartMark;
using vexdesk::Timeframe;

namespace {

const QString text = QStringLiteral("Что-то не так");

ChartMark mark(const QDate& day, const QTime& from = {}, const QTime& to = {},
               ChartMark::Kind kind = ChartMark::Kind::Warning)
{
    return {kind, day, from, to, text};
}

// Of three days of ten minutes.
std::vector<CandleMark> marked(const QList<ChartMark>& marks,
                               Timeframe timeframe = Timeframe::Minute)
{
    return vexdesk::marksOfCandles(marks, axisOf(makeSeries(3, 10), timeframe).candles({0, 1000}));
}

} // namespace

class TestChartMarks final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void aDayIsMarkedAtItsFirstBar();
    void aStretchIsMarkedAtItsFirstBar_data();
    void aStretchIsMarkedAtItsFirstBar();
    void whatHasNoBarIsMarkedAtTheNext();
    void whatIsOutOfViewIsLeftOut();
    void theWorstMarkOfACandleIsSeen();
    void longerTimeframesTakeTheirDaysMarks();
    void candlesOfSeveralDaysSayWhichOneIsMarked();
    void barsAtMidnightAreMarkedAtTheirDay();
    void barsAtMidnightInACandleOfTheDayBeforeAreMarkedThere();
    void aStretchFromMidnightBeginsAfterTheBarsAtMidnight();
    void nothingIsMarkedWithoutCandles();
};

void TestChartMarks::aDayIsMarkedAtItsFirstBar()
{
    QCOMPARE(marked({mark(firstDay.addDays(1))}),
             (std::vector<CandleMark>{{10, ChartMark::Kind::Warning, text}}));
}

void TestChartMarks::aStretchIsMarkedAtItsFirstBar_data()
{
    QTest::addColumn<QTime>("from");
    QTest::addColumn<QTime>("to");
    QTest::addColumn<int>("candle");
    QTest::newRow("one bar") << QTime(10, 4) << QTime(10, 5) << 4;
    QTest::newRow("several") << QTime(10, 4) << QTime(10, 8) << 4;
    QTest::newRow("within a bar") << QTime(10, 4, 10) << QTime(10, 4, 20) << 4;
    QTest::newRow("from the night") << QTime(3, 0) << QTime(10, 1) << 0;
    QTest::newRow("to midnight") << QTime(10, 9) << QTime(0, 0) << 9;
    QTest::newRow("without an end") << QTime(10, 9) << QTime() << 9;
}

void TestChartMarks::aStretchIsMarkedAtItsFirstBar()
{
    QFETCH(const QTime, from);
    QFETCH(const QTime, to);
    QFETCH(const int, candle);
    const auto found = marked({mark(firstDay, from, to)});
    QCOMPARE(found.size(), 1U);
    QCOMPARE(found[0].candle, size_t(candle));
    QCOMPARE(found[0].text, text);
}

void TestChartMarks::whatHasNoBarIsMarkedAtTheNext()
{
    // With its day, since that is another one than the bar's.
    const auto found = marked({mark(firstDay, QTime(15, 0), QTime(16, 0))});
    QCOMPARE(found.size(), 1U);
    QCOMPARE(found[0].candle, 10U);
    QCOMPARE(found[0].text, QStringLiteral("15.01.2024: ") + text);
}

void TestChartMarks::whatIsOutOfViewIsLeftOut()
{
    QVERIFY(marked({mark(firstDay.addDays(-1))}).empty());
    QVERIFY(marked({mark(firstDay.addDays(3))}).empty());
    QVERIFY(marked({mark(firstDay, QTime(8, 0), QTime(9, 0))}).empty());
    QVERIFY(marked({mark(firstDay.addDays(2), QTime(10, 10), QTime(11, 0))}).empty());
}

void TestChartMarks::theWorstMarkOfACandleIsSeen()
{
    const QTime from(10, 4);
    const QTime to(10, 5);
    const auto found = marked({mark(firstDay, from, to, ChartMark::Kind::Note),
                               mark(firstDay, from, to, ChartMark::Kind::Fault),
                               mark(firstDay, from, to, ChartMark::Kind::Warning),
                               mark(firstDay, QTime(10, 0), QTime(10, 1))});
    QCOMPARE(found.size(), 2U);
    QCOMPARE(found[0].candle, 0U);
    QCOMPARE(found[1].kind, ChartMark::Kind::Fault);
    QCOMPARE(found[1].text, QStringList({text, text, text}).join(u'\n'));
}

void TestChartMarks::longerTimeframesTakeTheirDaysMarks()
{
    QCOMPARE(marked({mark(firstDay.addDays(1), QTime(10, 4), QTime(10, 5))}, Timeframe::Day)
                 .at(0)
                 .candle,
             1U);
    QCOMPARE(marked({mark(firstDay.addDays(2))}, Timeframe::Week).at(0).candle, 0U);
}

void TestChartMarks::candlesOfSeveralDaysSayWhichOneIsMarked()
{
    const QList<ChartMark> marks{mark(firstDay), mark(firstDay.addDays(2), QTime(10, 4))};
    for (const Timeframe timeframe : {Timeframe::Week, Timeframe::Month}) {
        const auto found = marked(marks, timeframe);
        QCOMPARE(found.size(), 1U);
        QCOMPARE(found[0].text, QStringLiteral("15.01.2024: %1\n17.01.2024: %1").arg(text));
    }
    const auto ofDays = marked(marks, Timeframe::Day);
    QCOMPARE(ofDays.size(), 2U);
    QCOMPARE(ofDays[0].text, text);
    QCOMPARE(ofDays[1].text, text);
}

void TestChartMarks::barsAtMidnightAreMarkedAtTheirDay()
{
    std::vector<std::vector<vexdesk::Bar>> days;
    for (const int offset : {0, 1, 2})
        days.push_back({testsupport::makeBar(firstDay.addDays(offset), QTime(0, 0), offset)});
    const auto series = testsupport::seriesOf(days);
    const auto candles = axisOf(series, Timeframe::Minute).candles({-10, 10});
    for (const int offset : {0, 1, 2}) {
        const auto found = vexdesk::marksOfCandles({mark(firstDay.addDays(offset))}, candles);
        QCOMPARE(found,
                 (std::vector<CandleMark>{{size_t(offset), ChartMark::Kind::Warning, text}}));
    }
    // As candles of days they end the days before; the day is marked where its date is.
    const auto ofDays = axisOf(series, Timeframe::Day).candles({-10, 10});
    for (const int offset : {0, 1}) {
        const QDate day = firstDay.addDays(offset);
        const auto found = vexdesk::marksOfCandles({mark(day)}, ofDays);
        QCOMPARE(found.size(), 1U);
        QCOMPARE(ofDays[found[0].candle].candle.day, day);
    }
    QCOMPARE(vexdesk::marksOfCandles({mark(firstDay.addDays(2))}, ofDays).size(), 1U);
}

// Where they are all that the day has.
void TestChartMarks::barsAtMidnightInACandleOfTheDayBeforeAreMarkedThere()
{
    const QDate day = firstDay.addDays(1);
    const auto series = testsupport::seriesOf({{testsupport::makeBar(firstDay, QTime(23, 50), 1)},
                                               {testsupport::makeBar(day, QTime(0, 0), 2)}});
    for (const Timeframe timeframe : {Timeframe::Hour, Timeframe::Day}) {
        const auto candles = axisOf(series, timeframe).candles({-10, 10});
        QCOMPARE(candles.size(), 1U);
        const auto found = vexdesk::marksOfCandles({mark(day)}, candles);
        QCOMPARE(found, (std::vector<CandleMark>{{0, ChartMark::Kind::Warning, text}}));
        // What is later on that day is behind the candle.
        for (const QTime& from : {QTime(0, 0), QTime(0, 1)})
            QVERIFY(vexdesk::marksOfCandles({mark(day, from)}, candles).empty());
    }
}

// Where their interval ends, among minutes that follow on them and among days.
void TestChartMarks::aStretchFromMidnightBeginsAfterTheBarsAtMidnight()
{
    using testsupport::makeBar;
    const auto series = testsupport::seriesOf(
        {{makeBar(firstDay, QTime(0, 0), 1), makeBar(firstDay, QTime(2, 10), 2)}});
    const auto minutes = axisOf(series, Timeframe::Minute).candles({-10, 10});
    QCOMPARE(minutes.size(), 2U);
    const ChartMark gap = mark(firstDay, QTime(0, 0), QTime(2, 9));
    const auto found = vexdesk::marksOfCandles({gap}, minutes);
    QCOMPARE(found.size(), 1U);
    QCOMPARE(found[0].candle, 1U);
    QCOMPARE(found[0].text, QStringLiteral("15.01.2024: ") + text);
    const auto days = axisOf(series, Timeframe::Day).candles({-10, 10});
    QCOMPARE(days.size(), 2U);
    QCOMPARE(vexdesk::marksOfCandles({gap}, days),
             (std::vector<CandleMark>{{1, ChartMark::Kind::Warning, text}}));
}

void TestChartMarks::nothingIsMarkedWithoutCandles()
{
    QVERIFY(vexdesk::marksOfCandles({mark(firstDay)}, {}).empty());
}

QTEST_GUILESS_MAIN(TestChartMarks)
#include "tst_chartmarks.moc"
