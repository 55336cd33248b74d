// SPDX-License-Identifier: MIT
// Where everything on the chart stands, at every size.

#include "chartseries.h"
#include "desk/chart/chartlayout.h"
#include "desk/chart/movingaverage.h"
#include "desk/chart/volumebyprice.h"
#include "support/strictlog.h"

#include <QtCore/QLocale>
#include <QtCore/QRegularExpression>
#include <QtGui/QFontMetricsF>
#include <QtGui/QGuiApplication>
#include <QtTest/QTest>

#include <algorithm>
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
using vexdesk::ChartMark;
using vexdesk::ChartPane;
using vexdesk::Crosshair;
using vexdesk::PlacedCandle;
using vexdesk::SlotRange;
using vexdesk::Timeframe;

namespace {

constexpr QSizeF usual(800, 400);

using testsupport::SeriesPointer;

ChartLayout layOut(const SeriesPointer& series, const SlotRange& range, const QSizeF& size = usual,
                   Timeframe timeframe = Timeframe::Minute, const QFont& font = {})
{
    return vexdesk::layOutChart({testsupport::axisOf(series, timeframe), range, {}, {}, {}}, size,
                                font);
}

ChartLayout layOutAll(const SeriesPointer& series, const QSizeF& size = usual)
{
    const auto axis = testsupport::axisOf(series, Timeframe::Minute);
    return layOut(series, vexdesk::SlotLimits(axis.size()).all(), size);
}

ChartLayout layOutOne(qint64 volume)
{
    Bar bar = makeBar(firstDay, {10, 1}, 1);
    bar.volume = volume;
    return layOutAll(testsupport::seriesOf({{bar}}));
}

QStringList volumeLabels(const ChartLayout& chart)
{
    QStringList labels;
    for (const AxisLine& line : chart.volumes.lines)
        labels.append(QString(line.label.text).replace(QChar::Nbsp, u' '));
    return labels;
}

// Bars of this price, one a minute.
SeriesPointer rising(int count)
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
    // Texts as they are anywhere.
    void initTestCase() { QLocale::setDefault(QLocale::c()); }
    void init() { testsupport::failOnStrayWarnings(); }

    void bothPanesShareTheTimes();
    void everythingFits_data();
    void everythingFits();
    void linesStandAtTheirValues();
    void linesStandAtTheirTimes();
    void noTimeStandsTwiceWithoutADate();
    void noVolumeIsSaid();
    void asManyDatesAsHaveRoom();
    void aboveADateStandTimesOfItsDay();
    void pricesFollowWhatIsShown();
    void anEmptyStretchKeepsThePricesBeforeIt();
    void pricesOfAllSizesHaveARange();
    void aLowPaneHasALabelBesideTheZero();
    void volumesStandWithTheirThousandsApart();
    void withoutVolumesThereIsNoAxisOfThem();
    void withoutVolumesTheyHaveNoPane();
    void inALowChartThePricesHaveTheRoom();
    void aDateIsAlwaysShown();
    void columnsHaveAMiddle();
    void theCrosshairStandsAtTheNearestCandle();
    void theCrosshairReadsTheAxes();
    void nothingIsPointedAtBesideThePanes();
    void theLastPriceHasItsLine();
    void marksStandBelowTheirBars();
    void unreadStretchesAreKnown();
    void theCrosshairOfKeysStandsAtTheClose();

private:
    static void everythingFitsIn(const ChartLayout& chart);
};

void TestChartLayout::bothPanesShareTheTimes()
{
    const ChartLayout chart = layOutAll(makeSeries(1, 120));
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
    const QList<ChartMark> marks{{ChartMark::Kind::Note, firstDay, {}, {}, QStringLiteral("!")}};
    for (const Timeframe timeframe : vexdesk::allTimeframes) {
        const auto axis = testsupport::axisOf(series, timeframe);
        const double end = static_cast<double>(axis.size()) + 2;
        const double most = vexdesk::usualPaneWidth(size, font) / 4;
        for (double length = std::min(most, end + 2); length > 3; length *= 0.8) {
            everythingFitsIn(vexdesk::layOutChart({axis,
                                                   {end - length, end},
                                                   QStringLiteral("VEGA — MAIN — NORD"),
                                                   {std::make_shared<vexdesk::MovingAverage>(20)},
                                                   marks},
                                                  size, font));
            if (QTest::currentTestFailed())
                return;
        }
    }
}

void TestChartLayout::everythingFitsIn(const ChartLayout& chart)
{
    const QSizeF size = chart.size;
    {
        QVERIFY(chart.prices.lines.size() >= 2);
        std::vector<ChartLabel> labels = chart.headings;
        labels.push_back(chart.title);
        for (const vexdesk::PlacedStudy& study : chart.studies)
            labels.push_back(study.name);
        for (const auto* const lines : {&chart.prices.lines, &chart.volumes.lines, &chart.times}) {
            for (const AxisLine& line : *lines)
                labels.push_back(line.label);
        }
        for (size_t i = 0; i < labels.size(); ++i) {
            if (labels[i].text.isEmpty()) // a day line without a time
                continue;
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
        const ChartLayout chart = layOutAll(makeSeries(1, 120), size);
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
    const ChartLayout chart = layOutAll(makeSeries(1, 120));
    QVERIFY(chart.times.size() > 2);
    for (const AxisLine& line : chart.times) {
        const QTime time = QTime::fromString(line.label.text, QStringLiteral("hh:mm"));
        QVERIFY2(time.isValid(), qPrintable(line.label.text));
        const double slot = QTime(10, 0).secsTo(time) / 60.0;
        QVERIFY(std::abs(chart.xOf(slot) - line.at) <= 0.5);
        QVERIFY(std::abs(line.label.place.center().x() - line.at) <= 1);
        QVERIFY(line.label.place.top() > chart.volumes.place.bottom());
    }
}

// Of days of one bar each, which have no room for all dates.
void TestChartLayout::noTimeStandsTwiceWithoutADate()
{
    const auto series = makeSeries(60, 1);
    bool isAnyLeftOut = false;
    for (int days = 2; days <= 60; ++days) {
        const ChartLayout chart = layOut(series, {0, double(days)});
        QString before;
        for (const AxisLine& line : chart.times) {
            isAnyLeftOut = isAnyLeftOut || line.label.text.isEmpty();
            if (line.label.text.isEmpty())
                continue;
            const auto isBelow = [&line](const ChartLabel& heading) {
                return std::abs(heading.place.center().x() - line.at) <= heading.place.width();
            };
            const bool isDated = std::any_of(chart.headings.begin(), chart.headings.end(), isBelow);
            QVERIFY2(line.label.text != before || isDated, qPrintable(line.label.text));
            before = line.label.text;
        }
    }
    QVERIFY(isAnyLeftOut);
}

void TestChartLayout::noVolumeIsSaid()
{
    const QString none = QStringLiteral("нет объёма");
    std::vector<std::vector<Bar>> days{testsupport::makeBars(firstDay, 60),
                                       testsupport::makeBars(firstDay.addDays(1), 60)};
    for (Bar& bar : days.front())
        bar.volume = 0;
    const auto layOutWith = [](const SeriesPointer& series, const SlotRange& range) {
        return vexdesk::layOutChart({testsupport::axisOf(series, Timeframe::Minute),
                                     range,
                                     {},
                                     {std::make_shared<vexdesk::VolumeByPrice>(24)},
                                     {}},
                                    usual, QFont());
    };
    // Of a part without volumes the pane says so.
    const SeriesPointer series = testsupport::seriesOf(days);
    const ChartLayout without = layOutWith(series, {0, 60});
    QVERIFY(without.hasVolumes());
    QCOMPARE(without.volumesNote.text, none);
    QVERIFY(without.volumes.place.contains(without.volumesNote.place));
    QCOMPARE(without.studies[0].name.text, QStringLiteral("Объём по ценам: %1").arg(none));
    const ChartLayout with = layOutWith(series, {0, 61});
    QCOMPARE(with.volumesNote.text, QString());
    QCOMPARE(with.studies[0].name.text, QStringLiteral("Объём по ценам"));
    // Of a series without them there is no pane.
    days.pop_back();
    const ChartLayout never = layOutWith(testsupport::seriesOf(days), {0, 60});
    QVERIFY(!never.hasVolumes());
    QCOMPARE(never.volumesNote.text, QString());
    QVERIFY(never.studies[0].name.text.endsWith(none));
}

void TestChartLayout::asManyDatesAsHaveRoom()
{
    QLocale::setDefault(QLocale::c());
    constexpr int days = 15;
    constexpr int perDay = 9;
    const auto series = makeSeries(days, perDay, 3600);
    for (const bool areHours : {true, false}) {
        const vexdesk::TimeAxis axis =
            testsupport::axisOf(series, areHours ? Timeframe::Hour : Timeframe::Day);
        const SlotRange all{0, double(axis.size())};
        for (const double dayWidth : {60.0, 25.0}) {
            ChartLayout chart =
                vexdesk::layOutChart({axis, all, {}, {}, {}}, {days * dayWidth + 90, 400}, QFont());
            QVERIFY(chart.prices.place.width() / days > dayWidth - 4);
            QCOMPARE(chart.times.size(), size_t(days));
            const auto dates =
                std::count_if(chart.times.begin(), chart.times.end(), [](const AxisLine& line) {
                    return line.label.text.size() == 5; // "18.01"
                });
            QVERIFY2(dates >= (dayWidth > 50 ? days : 5), qPrintable(QString::number(dates)));
            QVERIFY(!chart.headings.empty());
            QCOMPARE(chart.headings.front().text, QStringLiteral("2024"));
        }
    }
}

// The last time of a day may be right beside the first one of the next.
void TestChartLayout::aboveADateStandTimesOfItsDay()
{
    QLocale::setDefault(QLocale::c());
    const auto series = makeSeries(3, 53, 600); // 10:00 to 18:50
    bool isAnyDated = false;
    for (int slot = 0; slot < 60; ++slot) {
        const ChartLayout chart =
            vexdesk::layOutChart({testsupport::axisOf(series, Timeframe::Minutes10),
                                  {double(slot), slot + 60.0 + slot},
                                  {},
                                  {},
                                  {}},
                                 {700, 400}, QFont());
        for (const AxisLine& day : chart.times) {
            if (!day.isBegin || day.label.text.isEmpty())
                continue;
            QCOMPARE(day.label.text, QStringLiteral("10:00"));
            const auto date = std::find_if(
                chart.headings.begin(), chart.headings.end(), [&day](const ChartLabel& heading) {
                    return std::abs(heading.place.center().x() - day.at) <= 1;
                });
            if (date == chart.headings.end())
                continue;
            isAnyDated = true;
            for (const AxisLine& line : chart.times)
                QVERIFY2(line.label.text.isEmpty() || line.at >= day.at ||
                             line.label.place.right() <= date->place.left(),
                         qPrintable(line.label.text));
        }
    }
    QVERIFY(isAnyDated);
}

void TestChartLayout::pricesFollowWhatIsShown()
{
    const auto series = rising(100);
    for (const int first : {20, 60}) {
        const ChartPane prices = layOut(series, {double(first), first + 20.0}).prices;
        QVERIFY(prices.low < first + 1 && prices.low > first - 5);
        QVERIFY(prices.high > first + 20 && prices.high < first + 25);
    }
}

void TestChartLayout::anEmptyStretchKeepsThePricesBeforeIt()
{
    const auto series = rising(100);
    const ChartLayout chart = layOut(series, {160, 220});
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
            const ChartLayout chart = layOutAll(testsupport::seriesOf({{bar}}, decimals));
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

void TestChartLayout::withoutVolumesTheyHaveNoPane()
{
    const ChartLayout with = layOutOne(7);
    const ChartLayout without = layOutOne(0);
    QVERIFY(with.hasVolumes() && !without.hasVolumes());
    // The prices have the room, down to the times.
    QCOMPARE(without.prices.place.bottom(), with.volumes.place.bottom());
    QVERIFY(without.times.front().label.place.top() > without.prices.place.bottom());
    const std::optional<Crosshair> found =
        without.crosshairAt(without.prices.place.center() + QPointF(0, 100));
    QVERIFY(found && !found->value.text.isEmpty());
    // A stretch without trades is none of a series without them, and of days that were not read
    // nothing is known.
    auto days = makeSeries(2, 20)->days();
    std::vector<Bar> idle = testsupport::makeBars(days[1].day, 20);
    for (Bar& bar : idle)
        bar.volume = 0;
    days[1] = testsupport::readDay(days[1].day, idle);
    QVERIFY(layOut(std::make_shared<const BarSeries>(60, days), {20, 40}).hasVolumes());
    days[0] = testsupport::readDay(days[0].day, idle);
    QVERIFY(!layOut(std::make_shared<const BarSeries>(60, days), {20, 40}).hasVolumes());
    for (auto& day : days)
        day = testsupport::unreadDay(day.day, 1000);
    QVERIFY(layOut(std::make_shared<const BarSeries>(60, days), {0, 40}).hasVolumes());
}

void TestChartLayout::inALowChartThePricesHaveTheRoom()
{
    const ChartLayout low = layOutAll(makeSeries(1, 120), {240, 110});
    QVERIFY(!low.hasVolumes());
    QVERIFY(low.prices.place.height() > 30);
    QVERIFY(low.volumes.lines.empty());
    everythingFitsIn(low);
    QVERIFY(layOutAll(makeSeries(1, 120), {320, 180}).hasVolumes());
}

// Wherever the view is, with everything in it and with little.
void TestChartLayout::aDateIsAlwaysShown()
{
    // Below the days and months of a longer range stands their year.
    const QRegularExpression date(QStringLiteral("^(\\d\\d\\.\\d\\d\\.|[A-Z][a-z]+ )?\\d{4}$"));
    const auto isDate = [&date](const ChartLabel& label) {
        return date.match(label.text).hasMatch();
    };
    const auto hasDate = [&isDate](const ChartLayout& chart) {
        return std::any_of(chart.headings.begin(), chart.headings.end(), isDate) ||
               std::any_of(chart.times.begin(), chart.times.end(),
                           [&isDate](const AxisLine& line) { return isDate(line.label); });
    };
    for (const int count : {1, 2, 30, 240}) {
        const auto series = makeSeries(count, 120);
        for (const Timeframe timeframe : vexdesk::allTimeframes) {
            const auto axis = testsupport::axisOf(series, timeframe);
            const auto size = static_cast<double>(axis.size());
            for (int width = 330; width < 1900; width += 137) {
                const double length =
                    std::min(vexdesk::SlotLimits(axis.size()).all().length(), width / 5.0);
                for (const double begin : {-2.0, size / 2, size + 2 - length}) {
                    const ChartLayout chart = vexdesk::layOutChart(
                        {axis, {begin, begin + length}, {}, {}, {}}, QSizeF(width, 300), QFont());
                    QVERIFY2(hasDate(chart), qPrintable(QStringLiteral("%1 days, %2 wide, %3")
                                                            .arg(count)
                                                            .arg(width)
                                                            .arg(int(timeframe))));
                }
            }
        }
    }
}

void TestChartLayout::columnsHaveAMiddle()
{
    const auto series = makeSeries(1, 120);
    for (const double width : {320.0, 500.0, 801.0, 1234.0, 1900.0}) {
        const ChartLayout chart = layOutAll(series, {width, 300});
        double free = 0;
        for (const PlacedCandle& candle : chart.candles) {
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
    const ChartLayout chart = layOutAll(makeSeries(1, 120));
    for (double x = chart.prices.place.left(); x < chart.prices.place.right(); x += 3) {
        const std::optional<Crosshair> found = chart.crosshairAt({x, 100});
        QVERIFY(found);
        const auto distance = [&](const PlacedCandle& candle) {
            return std::abs(chart.xOf(candle.middle()) - x);
        };
        const double nearest = distance(chart.candles.at(*found->candle));
        for (const PlacedCandle& candle : chart.candles)
            QVERIFY(nearest <= distance(candle) + 1e-6);
        QCOMPARE(found->at, QPointF(chart.columnOf(chart.candles[*found->candle]).middle(), 100));
    }
}

void TestChartLayout::theCrosshairReadsTheAxes()
{
    const ChartLayout chart = layOutAll(makeSeries(1, 120));
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
    // Where there are none in view, nothing is measured by their axis.
    auto days = makeSeries(2, 20)->days();
    std::vector<Bar> idle = testsupport::makeBars(days[1].day, 20);
    for (Bar& bar : idle)
        bar.volume = 0;
    days[1] = testsupport::readDay(days[1].day, idle);
    const ChartLayout without = layOut(std::make_shared<const BarSeries>(60, days), {20, 40});
    const std::optional<Crosshair> found = without.crosshairAt(without.volumes.place.center());
    QVERIFY(found && found->value.text.isEmpty() && found->value.place.isNull());
}

void TestChartLayout::nothingIsPointedAtBesideThePanes()
{
    const ChartLayout chart = layOutAll(makeSeries(1, 120));
    const QRectF panes = chart.prices.place.united(chart.volumes.place);
    for (const QPointF place : {QPointF(1, 100), QPointF(panes.right() + 5, 100),
                                QPointF(100, panes.bottom() + 5), QPointF(100, 1)})
        QVERIFY(!chart.crosshairAt(place));
    QVERIFY(!ChartLayout().crosshairAt({0, 0}));
}

void TestChartLayout::theLastPriceHasItsLine()
{
    const auto series = rising(100);
    const ChartLayout chart = layOut(series, {50, 102});
    QVERIFY(chart.last);
    QCOMPARE(chart.last->label.text, QStringLiteral("100"));
    QVERIFY(std::abs(chart.prices.yOf(100) - chart.last->at) <= 0.5);
    QVERIFY(chart.last->label.place.left() > chart.prices.place.right());
    QVERIFY(std::abs(chart.last->label.place.center().y() - chart.last->at) <= 1);
    QVERIFY(chart.last->isRising);
    // Not where it is far from the prices in view, and not before it is known.
    QVERIFY(!layOut(series, {0, 20}).last);
    auto days = makeSeries(3, 20)->days();
    days.back() = testsupport::unreadDay(days.back().day, 1000);
    QVERIFY(!layOut(std::make_shared<const BarSeries>(60, days), {0, 40}).last);
    // In the colour of its candle.
    Bar bar = makeBar(firstDay, {10, 1}, 1);
    bar.close = bar.open - 0.25;
    QVERIFY(!layOutAll(testsupport::seriesOf({{bar}})).last->isRising);
}

void TestChartLayout::marksStandBelowTheirBars()
{
    const auto axis = testsupport::axisOf(makeSeries(1, 120), Timeframe::Minute);
    const ChartLayout chart = vexdesk::layOutChart(
        {axis,
         {0, 120},
         {},
         {},
         {{ChartMark::Kind::Fault, firstDay, QTime(10, 30), QTime(10, 31), QStringLiteral("!")}}},
        usual, QFont());
    QCOMPARE(chart.marks.size(), 1U);
    const vexdesk::MarkSign& sign = chart.marks.front();
    const PlacedCandle& placed = chart.candles[30];
    QCOMPARE(sign.mark.candle, 30U);
    QVERIFY(sign.place.top() > chart.prices.yOf(placed.candle.bar.low));
    QVERIFY(std::abs(sign.place.center().x() - chart.columnOf(placed).middle()) <= 1);
    QVERIFY(chart.prices.place.contains(sign.place));
    QCOMPARE(chart.markAt(sign.place.center()), &sign);
    QVERIFY(!chart.markAt(sign.place.bottomRight() + QPointF(2, 2)));
    QCOMPARE(chart.markOf(30), &sign);
    QVERIFY(!chart.markOf(31));
}

void TestChartLayout::unreadStretchesAreKnown()
{
    auto days = makeSeries(3, 20)->days();
    days[1] = testsupport::unreadDay(days[1].day, 1000);
    const auto series = std::make_shared<const BarSeries>(60, days);
    const auto size = static_cast<double>(testsupport::axisOf(series, Timeframe::Minute).size());
    const ChartLayout chart = layOut(series, {0, size});
    QCOMPARE(chart.unread, (std::vector<SlotRange>{{20, size - 20}}));
    const double y = chart.prices.place.center().y();
    QVERIFY(!chart.crosshairAt({chart.xOf(25), y}));
    QVERIFY(chart.crosshairAt({chart.xOf(10), y}));
    const auto crosshair = chart.crosshairOn(25);
    QVERIFY(crosshair && !crosshair->candle && crosshair->time.text.isEmpty());
}

void TestChartLayout::theCrosshairOfKeysStandsAtTheClose()
{
    const ChartLayout chart = layOut(makeSeries(1, 120), {20, 100});
    const auto crosshair = chart.crosshairOn(50);
    QVERIFY(crosshair && crosshair->candle);
    const PlacedCandle& placed = chart.candles[*crosshair->candle];
    QCOMPARE(placed.slot, 50);
    QCOMPARE(crosshair->slot, 50);
    const double close = placed.candle.bar.close;
    QVERIFY(std::abs(chart.prices.yOf(close) - crosshair->at.y()) <= 0.5);
    QCOMPARE(crosshair->value.text, chart.prices.textOf(close));
    QVERIFY(!chart.crosshairOn(10) && !chart.crosshairOn(110));
}

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv); // no widget is needed
    TestChartLayout test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_chartlayout.moc"
