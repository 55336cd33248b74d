// SPDX-License-Identifier: MIT
// The chart as text and as a picture for other programs.

#include "chartseries.h"
#include "desk/chart/chartcolors.h"
#include "desk/chart/chartfiles.h"
#include "desk/chart/movingaverage.h"
#include "desk/chart/volumebyprice.h"
#include "support/filesizelimit.h"
#include "support/strictlog.h"

#include <QtCore/QFile>
#include <QtCore/QLocale>
#include <QtCore/QScopeGuard>
#include <QtCore/QTemporaryDir>
#include <QtCore/QXmlStreamReader>
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPalette>
#include <QtSvg/QSvgRenderer>
#include <QtTest/QTest>

#include <algorithm>
#include <cerrno>
#include <cmath>

using testsupport::axisOf;
using testsupport::firstDay;
using testsupport::makeSeries;
using vexdesk::Candle;
using vexdesk::ChartColors;
using vexdesk::ChartLayout;
using vexdesk::PlacedCandle;
using vexdesk::Timeframe;

namespace {

ChartLayout layOut()
{
    return vexdesk::layOutChart({axisOf(makeSeries(2, 100), Timeframe::Minute),
                                 {120, 200},
                                 QStringLiteral("VEGA & Co"),
                                 {},
                                 {}},
                                {640, 400}, QFont());
}

// With half a candle at each side, rows, and a line that comes from far above.
ChartLayout layOutHalves()
{
    std::vector<vexdesk::Bar> bars = testsupport::makeBars(firstDay, 200);
    for (size_t i = 0; i < 120; ++i) {
        for (double* const price : {&bars[i].open, &bars[i].high, &bars[i].low, &bars[i].close})
            *price += 500;
    }
    return vexdesk::layOutChart({axisOf(testsupport::seriesOf({bars}), Timeframe::Minute),
                                 {120.5, 150.5},
                                 {},
                                 {std::make_shared<vexdesk::MovingAverage>(20),
                                  std::make_shared<vexdesk::VolumeByPrice>(24)},
                                 {}},
                                {640, 400}, QFont());
}

std::vector<Candle> candlesOf(const testsupport::SeriesPointer& series, Timeframe timeframe,
                              const vexdesk::SlotRange& range)
{
    std::vector<Candle> candles;
    for (const PlacedCandle& placed : axisOf(series, timeframe).candles(range))
        candles.push_back(placed.candle);
    return candles;
}

ChartColors colors()
{
    return ChartColors::of(QPalette());
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestChartFiles final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Texts as they are anywhere.
    void initTestCase() { QLocale::setDefault(QLocale::c()); }
    void init() { testsupport::failOnStrayWarnings(); }

    void barsAreLinesWithTabs();
    void moneyAndInterestWhereThereAreAny();
    void moneyIsNotRounded_data();
    void moneyIsNotRounded();
    void numbersAreThoseOfTheLanguage();
    void daysHaveNoTime_data();
    void daysHaveNoTime();
    void aPictureHasThePixelsOfItsScale();
    void aVectorPictureHasTheTexts();
    void aVectorPictureHasNothingBesideThePanes();
    void otherSuffixesAreRefused();
    void whatCannotBeWrittenIsTold();
    void aFullDiskIsTheReason();
};

void TestChartFiles::barsAreLinesWithTabs()
{
    const auto candles = candlesOf(makeSeries(1, 3), Timeframe::Minute, {0, 2});
    QCOMPARE(vexdesk::candlesAsText(candles, {Timeframe::Minute, 60}, 2),
             QStringLiteral("Дата\tВремя\tОткр.\tМакс.\tМин.\tЗакр.\tОбъём\n"
                            "15.01.2024\t10:01:00\t100.25\t100.50\t99.75\t100.25\t101\n"
                            "15.01.2024\t10:02:00\t100.50\t100.75\t100.00\t100.50\t102\n"));
}

void TestChartFiles::moneyAndInterestWhereThereAreAny()
{
    auto candles = candlesOf(makeSeries(1, 3), Timeframe::Minute, {0, 2});
    candles[1].bar.value = 12.5;
    candles[0].bar.openInterest = 7;
    const QStringList lines =
        vexdesk::candlesAsText(candles, {Timeframe::Minute, 60}, 2).split(u'\n');
    QVERIFY(lines[0].endsWith(QStringLiteral("Объём\tОбъём в деньгах\tОткр. интерес")));
    QVERIFY(lines[1].endsWith(QStringLiteral("\t101\t0.00\t7")));
    QVERIFY(lines[2].endsWith(QStringLiteral("\t102\t12.50\t0")));
}

void TestChartFiles::moneyIsNotRounded_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("few digits") << 12.5 << 1 << 0 << "12.50"
                                << "1.25";
    QTest::newRow("those of the prices") << 12.5 << 1 << 5 << "12.50000"
                                         << "1.25000";
    QTest::newRow("more than prices") << 12.3456 << 1 << 2 << "12.3456"
                                      << "1.2500";
    QTest::newRow("very many") << 0.123456789012345 << 1 << 2 << "0.123456789012345"
                               << "1.250000000000000";
    QTest::newRow("large") << 12345678901.2345 << 1 << 2 << "12345678901.2345"
                           << "1.2500";
    QTest::newRow("more than a double has") << 36028797018963.97 << 1 << 2 << "36028797018963.97"
                                            << "1.25";
    QTest::newRow("below zero") << -0.0625 << 1 << 2 << "-0.0625"
                                << "1.2500";
    QTest::newRow("a sum") << 0.1 + 0.2 << 2 << 2 << "0.30"
                           << "1.25";
    QTest::newRow("a sum of more digits") << 0.0001 + 0.0002 << 2 << 2 << "0.0003"
                                          << "1.2500";
}

void TestChartFiles::moneyIsNotRounded()
{
    QFETCH(const double, value);
    QFETCH(const int, count);
    QFETCH(const int, decimals);
    QFETCH(const QString, first);
    QFETCH(const QString, second);
    auto candles = candlesOf(makeSeries(1, 3), Timeframe::Minute, {0, 2});
    candles[0].bar.value = value;
    candles[0].count = count;
    candles[1].bar.value = 1.25;
    const QStringList lines =
        vexdesk::candlesAsText(candles, {Timeframe::Minute, 60}, decimals).split(u'\n');
    QCOMPARE(lines[1].section(u'\t', -1), first);
    QCOMPARE(lines[2].section(u'\t', -1), second);
}

void TestChartFiles::numbersAreThoseOfTheLanguage()
{
    const QLocale before;
    const auto restore = qScopeGuard([&before] { QLocale::setDefault(before); });
    QLocale::setDefault(QLocale(QStringLiteral("ru_RU")));
    const auto candles = candlesOf(makeSeries(1, 3), Timeframe::Minute, {0, 1});
    QVERIFY(vexdesk::candlesAsText(candles, {Timeframe::Minute, 60}, 2)
                .contains(QStringLiteral("\t100,25\t100,50\t99,75\t100,25\t101\n")));
}

void TestChartFiles::daysHaveNoTime_data()
{
    QTest::addColumn<Timeframe>("timeframe");
    QTest::addColumn<QString>("begin");
    QTest::newRow("day") << Timeframe::Day << "16.01.2024\t\t";
    QTest::newRow("week") << Timeframe::Week << "22.01.2024\t\t";
    QTest::newRow("month") << Timeframe::Month << "01.02.2024\t\t";
    QTest::newRow("hour") << Timeframe::Hour << "16.01.2024\t11:00:00\t";
}

void TestChartFiles::daysHaveNoTime()
{
    QFETCH(const Timeframe, timeframe);
    QFETCH(const QString, begin);
    const auto candles = candlesOf(makeSeries(30, 3), timeframe, {1, 2});
    const QString text = vexdesk::candlesAsText(candles, {timeframe, 60}, 2);
    QVERIFY2(text.section(u'\n', 1).startsWith(begin), qPrintable(text));
}

void TestChartFiles::aPictureHasThePixelsOfItsScale()
{
    const ChartLayout chart = layOut();
    QCOMPARE(vexdesk::chartImage(chart, colors(), 1).size(), QSize(640, 400));
    QCOMPARE(vexdesk::chartImage(chart, colors(), 1.5).size(), QSize(960, 600));
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("chart.PNG"));
    QCOMPARE(vexdesk::saveChart(chart, colors(), 2, path), vexdesk::Outcome());
    const QImage saved(path);
    QCOMPARE(saved.size(), QSize(1280, 800));
    // A falling bar is filled in it.
    const QRgb falling = colors().falling.rgb();
    bool isFound = false;
    for (const PlacedCandle& placed : chart.candles) {
        const vexdesk::Bar& bar = placed.candle.bar;
        const double y = chart.prices.yOf((bar.open + bar.close) / 2);
        if (bar.close < bar.open && chart.columnOf(placed).left > chart.prices.place.left())
            isFound |= saved.pixel(int(2 * chart.columnOf(placed).middle()), int(2 * y)) == falling;
    }
    QVERIFY(isFound);
}

void TestChartFiles::aVectorPictureHasTheTexts()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("chart.svg"));
    QCOMPARE(vexdesk::saveChart(layOut(), colors(), 1, path), vexdesk::Outcome());
    const QString text = QString::fromUtf8(contentOf(path));
    QVERIFY(text.contains(QStringLiteral("<svg")));
    QVERIFY(text.contains(QStringLiteral("viewBox=\"0 0 640 400\"")));
    QVERIFY(text.contains(QStringLiteral("VEGA &amp; Co")));
    QXmlStreamReader reader(text);
    while (!reader.atEnd())
        reader.readNext();
    QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
    const ChartLayout chart = layOut();
    QStringList titles;
    QXmlStreamReader again(text);
    while (!again.atEnd()) {
        if (again.readNext() == QXmlStreamReader::StartElement && again.name() == u"title")
            titles.append(again.readElementText());
    }
    QCOMPARE(titles, QStringList{chart.fullTitle});
    QVERIFY(chart.fullTitle.contains(QStringLiteral("VEGA & Co")));
    QVERIFY(chart.last && text.contains(u'>' + chart.last->label.text));
    for (const vexdesk::AxisLine& line : chart.times)
        QVERIFY2(text.contains(u'>' + line.label.text), qPrintable(line.label.text));
}

// Whoever draws it shows every shape that is in it: a picture of it has the background where
// nothing belongs, with half a candle at each side, rows and a line that comes from far above.
void TestChartFiles::aVectorPictureHasNothingBesideThePanes()
{
    const ChartLayout chart = layOutHalves();
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("chart.svg"));
    QCOMPARE(vexdesk::saveChart(chart, colors(), 1, path), vexdesk::Outcome());
    QImage drawn(640, 400, QImage::Format_RGB32);
    drawn.fill(Qt::white);
    QSvgRenderer renderer(path);
    QVERIFY(renderer.isValid());
    QPainter painter(&drawn);
    renderer.render(&painter);
    painter.end();
    const QRect panes = chart.prices.place.united(chart.volumes.place).toRect();
    const auto isGround = [&drawn](int x, int y) {
        return drawn.pixelColor(x, y) == colors().background;
    };
    const auto belongsRightOf = [&](int x, int y) {
        const auto isTick = [y](const vexdesk::AxisLine& line) {
            return std::abs(line.at - y) < 2;
        };
        return chart.last->label.place.adjusted(-1, -1, 1, 1).contains(x, y) ||
               std::any_of(chart.prices.lines.begin(), chart.prices.lines.end(), isTick) ||
               std::any_of(chart.volumes.lines.begin(), chart.volumes.lines.end(), isTick);
    };
    for (int y = panes.top(); y <= panes.bottom(); ++y) {
        QVERIFY2(isGround(panes.left() - 2, y), qPrintable(QString::number(y)));
        const int right = panes.right() + 3;
        QVERIFY2(isGround(right, y) || belongsRightOf(right, y), qPrintable(QString::number(y)));
    }
    const int between = static_cast<int>(chart.prices.place.bottom()) + 3;
    for (int x = panes.left(); x < panes.right(); ++x) {
        QVERIFY2(isGround(x, between), qPrintable(QString::number(x)));
        QVERIFY2(isGround(x, panes.top() - 2), qPrintable(QString::number(x)));
    }
}

void TestChartFiles::otherSuffixesAreRefused()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("chart.bmp"));
    const vexdesk::Outcome outcome = vexdesk::saveChart(layOut(), colors(), 1, path);
    QVERIFY(outcome.message().contains(QStringLiteral(".png или .svg")));
    QVERIFY(!QFile::exists(path));
}

void TestChartFiles::whatCannotBeWrittenIsTold()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("none/chart.png"));
    const vexdesk::Outcome outcome = vexdesk::saveChart(layOut(), colors(), 1, path);
    QVERIFY(outcome.message().startsWith(QStringLiteral("Не удалось записать файл")));
    QVERIFY(outcome.message().contains(QStringLiteral("chart.png")));
}

void TestChartFiles::aFullDiskIsTheReason()
{
    const QTemporaryDir directory;
    for (const char* name : {"chart.png", "chart.svg"}) {
        const QString path = directory.filePath(QLatin1String(name));
        for (const rlim_t bytes : {0, 500}) {
            vexdesk::Outcome outcome;
            {
                const testsupport::FileSizeLimit limit(bytes);
                outcome = vexdesk::saveChart(layOut(), colors(), 2, path);
            }
            QVERIFY(!outcome);
            QVERIFY2(outcome.message().contains(QLatin1String(name)) &&
                         outcome.message().endsWith(qt_error_string(EFBIG)),
                     qPrintable(outcome.message()));
            QVERIFY(!QFile::exists(path));
        }
    }
}

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv); // no widget is needed
    TestChartFiles test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_chartfiles.moc"
