// SPDX-License-Identifier: MIT
// Where everything on the chart stands, at every size.

#include "chartsupport.h"
#include "desk/chart/axisticks.h"
#include "desk/chart/wallclock.h"
#include "support/strictlog.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QFontMetricsF>
#include <QtGui/QGuiApplication>
#include <QtTest/QTest>

#include <cmath>

using testsupport::firstDay;
using testsupport::makeBar;
using testsupport::makeSeries;
using testsupport::minute;
using vexdesk::AxisLine;
using vexdesk::Bar;
using vexdesk::BarSeries;
using vexdesk::ChartLabel;
using vexdesk::ChartLayout;
using vexdesk::ChartPane;
using vexdesk::Crosshair;
using vexdesk::TimeLimits;
using vexdesk::TimeRange;
using vexdesk::wallTime;

namespace {

constexpr QSizeF usual(800, 400);

TimeRange allOf(const BarSeries& series, int timeframe)
{
    return TimeLimits(double(series.firstTime()), double(series.lastTime()), timeframe).all();
}

ChartLayout layOutAll(const BarSeries& series, const QSizeF& size = usual, int timeframe = minute)
{
    return vexdesk::layOutChart(series, timeframe, allOf(series, timeframe), size, QFont());
}

ChartLayout layOutOne(qint64 volume)
{
    Bar bar = makeBar(firstDay, {10, 1}, 1);
    bar.volume = volume;
    return layOutAll(*testsupport::seriesOf({{bar}}));
}

QStringList volumeLabels(const ChartLayout& chart)
{
    QStringList labels;
    for (const AxisLine& line : chart.volumes.lines)
        labels.append(QString(line.label.text).replace(QChar::Nbsp, u' '));
    return labels;
}

// Bars of this price, one a minute.
std::shared_ptr<const BarSeries> rising(int count)
{
    std::vector<Bar> bars;
    for (int i = 1; i <= count; ++i) {
        Bar bar = makeBar(firstDay, QTime(10, 0).addSecs(i * minute), 1);
        bar.open = bar.close = bar.high = bar.low = i;
        bars.push_back(bar);
    }
    return testsupport::seriesOf({bars}, 0);
}

} // namespace

class TestChartLayout final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void bothPanesShareTheTimes();
    void everythingFits_data();
    void everythingFits();
    void linesStandAtTheirValues();
    void linesStandAtTheirTimes();
    void pricesFollowWhatIsShown();
    void anEmptyStretchKeepsThePricesBeforeIt();
    void pricesOfAllSizesHaveARange();
    void aLowPaneHasALabelBesideTheZero();
    void volumesStandWithTheirThousandsApart();
    void withoutVolumesThereIsNoAxisOfThem();
    void aDateIsAlwaysShown_data();
    void aDateIsAlwaysShown();
    void candlesNeverStandCloserThanTheyCanBeSeen();
    void columnsHaveAMiddle();
    void theCrosshairStandsAtTheNearestCandle();
    void theCrosshairReadsTheAxes();
    void nothingIsPointedAtBesideThePanes();
};

void TestChartLayout::bothPanesShareTheTimes()
{
    const ChartLayout chart = layOutAll(*makeSeries(1, 120));
    QCOMPARE(chart.prices.place.left(), chart.volumes.place.left());
    QCOMPARE(chart.prices.place.right(), chart.volumes.place.right());
    QVERIFY(chart.prices.place.bottom() < chart.volumes.place.top());
    const double ratio = chart.prices.place.height() / chart.volumes.place.height();
    QVERIFY2(ratio > 3.8 && ratio < 4.3, qPrintable(QString::number(ratio)));
}

void TestChartLayout::everythingFits_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<double>("pointSize");
    const double points = QFont().pointSizeF();
    QTest::newRow("smallest") << QSizeF(320, 180) << points;
    QTest::newRow("in a dock") << QSizeF(400, 300) << points;
    QTest::newRow("usual") << usual << points;
    QTest::newRow("wide") << QSizeF(1900, 250) << points;
    QTest::newRow("tall") << QSizeF(400, 1100) << points;
    QTest::newRow("large letters") << QSizeF(1000, 700) << 2 * points;
}

void TestChartLayout::everythingFits()
{
    QFETCH(const QSizeF, size);
    QFETCH(const double, pointSize);
    QFont font;
    font.setPointSizeF(pointSize);
    const auto series = makeSeries(90, 500);
    const TimeRange all = allOf(*series, minute);
    for (double length = all.length(); length > 10 * minute; length *= 0.8) {
        const ChartLayout chart =
            vexdesk::layOutChart(*series, minute, {all.end - length, all.end}, size, font);
        QVERIFY(chart.prices.lines.size() >= 2);
        QVERIFY(!chart.times.empty());
        std::vector<ChartLabel> labels = chart.headings;
        for (const auto* const lines : {&chart.prices.lines, &chart.volumes.lines, &chart.times}) {
            for (const AxisLine& line : *lines)
                labels.push_back(line.label);
        }
        for (size_t i = 0; i < labels.size(); ++i) {
            QVERIFY2(QRectF(QPointF(), size).contains(labels[i].place), qPrintable(labels[i].text));
            // But for the blank above and below the letters.
            constexpr double blank = 2;
            const QRectF letters = labels[i].place.adjusted(0, blank, 0, -blank);
            for (size_t other = 0; other < i; ++other)
                QVERIFY2(!letters.intersects(labels[other].place.adjusted(0, blank, 0, -blank)),
                         qPrintable(labels[i].text + u'|' + labels[other].text));
        }
    }
}

void TestChartLayout::linesStandAtTheirValues()
{
    for (const QSizeF& size : {usual, QSizeF(400, 300), QSizeF(1500, 900)}) {
        const ChartLayout chart = layOutAll(*makeSeries(1, 120), size);
        for (const ChartPane* const pane : {&chart.prices, &chart.volumes}) {
            QVERIFY(!pane->lines.empty());
            for (const AxisLine& line : pane->lines) {
                const double value = QString(line.label.text).remove(QChar::Nbsp).toDouble();
                QVERIFY(std::abs(pane->yOf(value) - line.at) <= 0.5);
                QVERIFY(std::abs(pane->valueAt(pane->yOf(value)) - value) < 1e-6);
                QVERIFY(std::abs(line.label.place.center().y() - line.at) <= 1);
                QVERIFY(line.label.place.left() > pane->place.right());
                QVERIFY(pane->place.top() <= line.at && line.at <= pane->place.bottom());
            }
        }
    }
}

void TestChartLayout::linesStandAtTheirTimes()
{
    const ChartLayout chart = layOutAll(*makeSeries(1, 120));
    QVERIFY(chart.times.size() > 2);
    for (const AxisLine& line : chart.times) {
        const QTime time = QTime::fromString(line.label.text, QStringLiteral("hh:mm"));
        QVERIFY2(time.isValid(), qPrintable(line.label.text));
        QVERIFY(std::abs(chart.xOf(double(wallTime(firstDay, time))) - line.at) <= 0.5);
        QVERIFY(std::abs(line.label.place.center().x() - line.at) <= 1);
        QVERIFY(line.label.place.top() > chart.volumes.place.bottom());
    }
}

void TestChartLayout::pricesFollowWhatIsShown()
{
    const auto series = rising(100);
    for (const int first : {20, 60}) {
        const double begin = double(wallTime(firstDay, QTime(10, 0).addSecs(first * minute)));
        const ChartPane prices =
            vexdesk::layOutChart(*series, minute, {begin, begin + 20 * minute}, usual, QFont())
                .prices;
        QVERIFY(prices.low < first + 1 && prices.low > first - 5);
        QVERIFY(prices.high > first + 20 && prices.high < first + 25);
    }
}

void TestChartLayout::anEmptyStretchKeepsThePricesBeforeIt()
{
    const auto series = rising(100);
    const double begin = double(series->lastTime()) + 3600;
    const ChartLayout chart =
        vexdesk::layOutChart(*series, minute, {begin, begin + 3600}, usual, QFont());
    QVERIFY(chart.candles.empty());
    QVERIFY(chart.prices.low < 100 && chart.prices.high > 100);
    QVERIFY(chart.prices.high - chart.prices.low < 10);
    QVERIFY(!chart.prices.lines.empty());
    QVERIFY(!chart.crosshairAt(chart.prices.place.center()));
}

void TestChartLayout::pricesOfAllSizesHaveARange()
{
    for (const double price : {0.0, -5.0, 1e-15, 0.00001, 1e9, 3.6e16}) {
        for (const int decimals : {0, 15}) {
            Bar bar = makeBar(firstDay, {10, 1}, 1);
            bar.open = bar.close = bar.high = bar.low = price;
            const ChartLayout chart = layOutAll(*testsupport::seriesOf({{bar}}, decimals));
            QVERIFY(chart.prices.low < price && price < chart.prices.high);
            QVERIFY(chart.prices.place.contains(chart.prices.place.left() + 1,
                                                chart.prices.yOf(price)));
            QVERIFY(chart.prices.lines.size() < 50);
        }
    }
}

void TestChartLayout::aLowPaneHasALabelBesideTheZero()
{
    for (const int volume : {1, 9, 1700, 1800, 1999, 2000, 2001, 5300}) {
        const QStringList labels = volumeLabels(layOutOne(volume));
        QVERIFY2(labels.size() > 1, qPrintable(QString::number(volume)));
        QCOMPARE(labels.first(), QStringLiteral("0"));
        QVERIFY(QString(labels.last()).remove(u' ').toInt() <= 1.1 * volume);
    }
    // Volumes below nothing have room too.
    QVERIFY(volumeLabels(layOutOne(-700)).last() == QStringLiteral("0"));
}

void TestChartLayout::volumesStandWithTheirThousandsApart()
{
    const QStringList labels = volumeLabels(layOutOne(40000000));
    QVERIFY2(labels.contains(QStringLiteral("40 000 000")), qPrintable(labels.join(u'|')));
}

void TestChartLayout::withoutVolumesThereIsNoAxisOfThem()
{
    QCOMPARE(volumeLabels(layOutOne(0)), QStringList());
    QVERIFY(!volumeLabels(layOutOne(7)).isEmpty());
}

void TestChartLayout::aDateIsAlwaysShown_data()
{
    QTest::addColumn<int>("timeframe");
    for (const int timeframe : {1, 15, 60, 300, 900, 3600, 14400, 86400})
        QTest::addRow("%d seconds", timeframe) << timeframe;
}

// At both ends, and with everything in view.
void TestChartLayout::aDateIsAlwaysShown()
{
    QFETCH(const int, timeframe);
    // Below the days of a longer range stands their year; months stand with it.
    const QRegularExpression date(QStringLiteral("^((\\d\\d\\.)?\\d\\d\\.)?\\d{4}$"));
    const auto isDate = [&date](const ChartLabel& label) {
        return date.match(label.text).hasMatch();
    };
    const auto hasDate = [&isDate](const ChartLayout& chart) {
        return std::any_of(chart.headings.begin(), chart.headings.end(), isDate) ||
               std::any_of(chart.times.begin(), chart.times.end(),
                           [&isDate](const AxisLine& line) { return isDate(line.label); });
    };
    for (const int count : {1, 2, 5, 30, 240}) {
        std::vector<std::vector<Bar>> days;
        for (int d = 0; d < count; ++d) {
            const QDate day = firstDay.addDays(d);
            days.push_back({makeBar(day, QTime(10, 0), d)});
            if (timeframe == 86400) // the bar of a day ends with it
                days.back().front().time = wallTime(day.addDays(1));
            else
                days.back().push_back(makeBar(day, QTime(18, 40), d));
        }
        const auto series = testsupport::seriesOf(days);
        const TimeLimits limits(double(series->firstTime()), double(series->lastTime()), timeframe);
        const double length = std::min(10 * 3600.0, limits.all().length());
        const double begin = limits.all().begin;
        for (const TimeRange& range : {limits.fitted({begin, begin + length}),
                                       limits.fitted({1e10, 1e10 + length}), limits.all()}) {
            for (int width = 330; width < 1900; width += 37) {
                const ChartLayout chart =
                    vexdesk::layOutChart(*series, timeframe, range, QSizeF(width, 300), QFont());
                QVERIFY2(hasDate(chart),
                         qPrintable(QStringLiteral("%1 days, %2 wide").arg(count).arg(width)));
            }
        }
    }
}

void TestChartLayout::candlesNeverStandCloserThanTheyCanBeSeen()
{
    const auto series = makeSeries(60, 480);
    const TimeRange all = allOf(*series, minute);
    qint64 interval = 0;
    for (double length = all.length(); length > 20 * minute; length *= 0.7) {
        const ChartLayout chart =
            vexdesk::layOutChart(*series, minute, {all.begin, all.begin + length}, usual, QFont());
        QVERIFY(chart.candles.size() <= size_t(chart.prices.place.width() / 3) + 2);
        QVERIFY(chart.xOf(double(chart.interval)) - chart.xOf(0) >= 3);
        interval = chart.interval;
    }
    QCOMPARE(interval, minute);
}

void TestChartLayout::columnsHaveAMiddle()
{
    const auto series = makeSeries(1, 120);
    for (const double width : {320.0, 500.0, 801.0, 1234.0, 1900.0}) {
        const ChartLayout chart = layOutAll(*series, {width, 300});
        double free = 0;
        for (const vexdesk::Candle& candle : chart.candles) {
            const vexdesk::CandleColumn column = chart.columnOf(candle);
            QCOMPARE(column.left, std::round(column.left));
            QCOMPARE(column.middle(), std::round(column.middle()));
            QVERIFY(column.left > free);
            free = column.left + column.width - 1;
        }
    }
}

void TestChartLayout::theCrosshairStandsAtTheNearestCandle()
{
    const ChartLayout chart = layOutAll(*makeSeries(1, 120));
    for (double x = chart.prices.place.left(); x < chart.prices.place.right(); x += 3) {
        const std::optional<Crosshair> found = chart.crosshairAt({x, 100});
        QVERIFY(found);
        const auto distance = [&](const vexdesk::Candle& candle) {
            return std::abs(chart.xOf(candle.middle()) - x);
        };
        const double nearest = distance(chart.candles.at(found->candle));
        for (const vexdesk::Candle& candle : chart.candles)
            QVERIFY(nearest <= distance(candle) + 1e-6);
        QCOMPARE(found->at, QPointF(chart.columnOf(chart.candles[found->candle]).middle(), 100));
    }
}

void TestChartLayout::theCrosshairReadsTheAxes()
{
    const ChartLayout chart = layOutAll(*makeSeries(1, 120));
    const QRectF all(QPointF(), usual);
    for (const ChartPane* const pane : {&chart.prices, &chart.volumes}) {
        for (const QPointF place : {pane->place.topLeft(), pane->place.center(),
                                    QPointF(pane->place.right() - 1, pane->place.bottom() - 1)}) {
            const std::optional<Crosshair> found = chart.crosshairAt(place);
            QVERIFY(found);
            QCOMPARE(found->value.text, pane->textOf(pane->valueAt(place.y())));
            QVERIFY(std::abs(found->value.place.center().y() - place.y()) <= 1);
            QVERIFY(found->value.place.left() > pane->place.right());
            QVERIFY(all.contains(found->value.place) && all.contains(found->time.place));
            QVERIFY(found->time.place.top() > chart.volumes.place.bottom());
            QVERIFY(found->time.text.startsWith(QStringLiteral("15.01.2024 ")));
        }
    }
    // Where there are no volumes, nothing is measured by their axis.
    const ChartLayout without = layOutOne(0);
    const std::optional<Crosshair> found = without.crosshairAt(without.volumes.place.center());
    QVERIFY(found && found->value.text.isEmpty() && found->value.place.isNull());
}

void TestChartLayout::nothingIsPointedAtBesideThePanes()
{
    const ChartLayout chart = layOutAll(*makeSeries(1, 120));
    const QRectF panes = chart.prices.place.united(chart.volumes.place);
    for (const QPointF place : {QPointF(1, 100), QPointF(panes.right() + 5, 100),
                                QPointF(100, panes.bottom() + 5), QPointF(100, 1)})
        QVERIFY(!chart.crosshairAt(place));
    QVERIFY(!ChartLayout().crosshairAt({0, 0}));
}

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv); // no widget is needed
    TestChartLayout test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_chartlayout.moc"
