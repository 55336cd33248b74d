// SPDX-License-Identifier: MIT
#include "chartseries.h"
#include "desk/chart/axisticks.h"
#include "desk/chart/wallclock.h"
#include "support/strictlog.h"

#include <QtCore/QLocale>
#include <QtCore/QRandomGenerator>
#include <QtCore/QScopeGuard>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>

using testsupport::makeSeries;
using vexdesk::Timeframe;
using vexdesk::wallTime;

namespace {

// What is seen of the ticks.
struct Shown
{
    QStringList labels;
    QStringList headings;
    QList<int> slotNumbers;
    QList<bool> begins;
    QString first;
};

vexdesk::TickRoom everyLine(double slotCount)
{
    return {slotCount, slotCount, slotCount};
}

Shown ticksOf(const testsupport::SeriesPointer& series, Timeframe timeframe,
              const vexdesk::SlotRange& range, double slotsPerLabel, bool areNightsShown = false)
{
    const auto axis = testsupport::axisOf(series, timeframe, areNightsShown);
    const auto found =
        vexdesk::timeTicks(axis.begins(range), range, everyLine(slotsPerLabel), timeframe);
    Shown shown;
    shown.first = found.first;
    for (const vexdesk::TimeTick& tick : found.ticks) {
        shown.labels.append(tick.label);
        shown.headings.append(tick.heading);
        shown.slotNumbers.append(static_cast<int>(tick.slot));
        shown.begins.append(tick.isBegin);
    }
    return shown;
}

} // namespace

class TestAxisTicks final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Texts as they are anywhere.
    void initTestCase() { QLocale::setDefault(QLocale::c()); }
    void init() { testsupport::failOnStrayWarnings(); }

    void datesFollowTheLanguage_data();
    void datesFollowTheLanguage();

    void pricesStandAtRoundNumbers_data();
    void pricesStandAtRoundNumbers();
    void neverMoreLinesThanRoom();
    void timesStandAtRoundTimes();
    void aNewDayIsMarkedWithItsDate();
    void secondsAreSeenWhereTheyDiffer();
    void daysStandForThemselvesAndYearsBelow();
    void monthsAndYears();
    void roundSecondsStandBetweenBars();
    void aFewBarsHaveTheirLabels_data();
    void aFewBarsHaveTheirLabels();
    void aDayHasTheTimeOfItsFirstBar();
    void aRoundTimeInAGapStandsBehindIt();
    void midnightIsOfItsDay();
    void nightsHaveTheirTimes();
    void neverMoreTimesThanRoom();
    void intervalsAreNamed_data();
    void intervalsAreNamed();
    void numbersHaveAllTheirDecimals();
    void thousandsStandApart();
    void timesGoThereAndBack();
};

void TestAxisTicks::pricesStandAtRoundNumbers_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::addColumn<int>("most");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<double>("step");
    QTest::newRow("hundredths") << 119.98 << 120.10 << 6 << 2 << 0.02;
    QTest::newRow("units") << 100.0 << 140.0 << 5 << 2 << 10.0;
    QTest::newRow("exactly as many") << 0.0 << 50.0 << 5 << 0 << 10.0;
    QTest::newRow("two") << 0.0 << 51.0 << 3 << 0 << 20.0;
    QTest::newRow("five") << 0.0 << 26.0 << 6 << 0 << 5.0;
    QTest::newRow("not below the last decimal") << 120.0 << 120.02 << 10 << 2 << 0.01;
    QTest::newRow("whole numbers") << 0.0 << 1.0 << 5 << 0 << 1.0;
    QTest::newRow("large") << 0.0 << 33e6 << 3 << 0 << 2e7;
    QTest::newRow("no room") << 0.0 << 10.0 << 0 << 0 << 10.0;
}

void TestAxisTicks::pricesStandAtRoundNumbers()
{
    QFETCH(const double, low);
    QFETCH(const double, high);
    QFETCH(const int, most);
    QFETCH(const int, decimals);
    QFETCH(const double, step);
    const double found = vexdesk::valueStep(low, high, most, decimals);
    QVERIFY2(std::abs(found - step) < step * 1e-9, qPrintable(QString::number(found)));
}

void TestAxisTicks::neverMoreLinesThanRoom()
{
    QRandomGenerator random(1);
    for (int round = 0; round < 20000; ++round) {
        const int decimals = random.bounded(6);
        const double low = (random.generateDouble() - 0.5) * std::pow(10, random.bounded(7));
        const double high = low + random.generateDouble() * std::pow(10, random.bounded(-5, 7));
        const int most = 1 + random.bounded(20);
        const double step = vexdesk::valueStep(low, high, most, decimals);
        QVERIFY(step > 0);
        QVERIFY((high - low) / step <= most * (1 + 1e-6));
        // Not coarser than it must be either, where decimals leave the choice.
        if (step > 1.5 * std::pow(10, -decimals))
            QVERIFY2((high - low) / step > most / 2.6, qPrintable(QString::number(step)));
        const double digit = step / std::pow(10, std::floor(std::log10(step * (1 + 1e-9))));
        QVERIFY2(std::abs(digit - 1) < 1e-6 || std::abs(digit - 2) < 1e-6 ||
                     std::abs(digit - 5) < 1e-6,
                 qPrintable(QString::number(step, 'g', 17)));
    }
}

void TestAxisTicks::timesStandAtRoundTimes()
{
    const Shown shown = ticksOf(makeSeries(1, 120), Timeframe::Minute, {5.5, 63}, 8);
    QCOMPARE(shown.labels, QStringList({"10:10", "10:20", "10:30", "10:40", "10:50", "11:00"}));
    QCOMPARE(shown.slotNumbers, QList<int>({10, 20, 30, 40, 50, 60}));
    QCOMPARE(shown.first, QStringLiteral("15.01.2024"));
    QCOMPARE(shown.headings.join(QString()), QString());
}

void TestAxisTicks::aNewDayIsMarkedWithItsDate()
{
    const Shown shown = ticksOf(makeSeries(3, 120), Timeframe::Minute, {60, 250}, 40);
    QCOMPARE(shown.labels, QStringList({"11:00", "10:00", "11:00", "10:00"}));
    QCOMPARE(shown.headings, QStringList({"", "16.01.2024", "", "17.01.2024"}));
    QCOMPARE(shown.slotNumbers, QList<int>({60, 120, 180, 240}));
    QCOMPARE(shown.begins, QList<bool>({false, true, false, true}));
    QCOMPARE(shown.first, QStringLiteral("15.01.2024"));
    // The first day of all has its date at its line.
    const Shown first = ticksOf(makeSeries(3, 120), Timeframe::Minute, {-5, 100}, 20);
    QVERIFY(first.first.isEmpty());
    QCOMPARE(first.headings.value(0), QStringLiteral("15.01.2024"));
}

// As a rule at no round time.
void TestAxisTicks::aDayHasTheTimeOfItsFirstBar()
{
    std::vector<std::vector<vexdesk::Bar>> days;
    for (const int offset : {0, 1}) {
        const QDate day = testsupport::firstDay.addDays(offset);
        days.push_back(testsupport::makeBars(day, 120));
        days.back().erase(days.back().begin(), days.back().begin() + 7);
    }
    const Shown shown = ticksOf(testsupport::seriesOf(days), Timeframe::Minute, {5, 190}, 30);
    QCOMPARE(shown.labels, QStringList({"10:30", "11:00", "11:30", "10:07", "10:30", "11:00"}));
    QCOMPARE(shown.headings.value(3), QStringLiteral("16.01.2024"));
}

void TestAxisTicks::aRoundTimeInAGapStandsBehindIt()
{
    std::vector<vexdesk::Bar> bars = testsupport::makeBars(testsupport::firstDay, 120);
    bars.erase(bars.begin() + 25, bars.begin() + 35); // from 10:25 to 10:35
    const Shown shown = ticksOf(testsupport::seriesOf({bars}), Timeframe::Minute, {10.5, 80}, 8);
    QCOMPARE(shown.labels.mid(0, 3), QStringList({"10:20", "10:30", "10:40"}));
    QCOMPARE(shown.slotNumbers.mid(0, 3), QList<int>({20, 25, 30}));
}

// Most seconds have no bar: a round time stands between those beside it.
void TestAxisTicks::roundSecondsStandBetweenBars()
{
    std::vector<vexdesk::Bar> bars;
    for (const int second : {7, 50, 61, 62, 130, 185, 199, 244})
        bars.push_back(
            testsupport::makeBar(testsupport::firstDay, QTime(10, 0).addSecs(second), second));
    const auto series = std::make_shared<const vexdesk::BarSeries>(
        1, std::vector{testsupport::readDay(testsupport::firstDay, bars)});
    const Shown shown = ticksOf(series, Timeframe::Second, {-1, 9}, 2.2);
    QCOMPARE(shown.labels,
             QStringList({"10:00:06", "10:00:30", "10:01:00", "10:02:00", "10:03:00", "10:04:00"}));
    QCOMPARE(shown.slotNumbers, QList<int>({0, 1, 2, 4, 5, 7}));
    QCOMPARE(shown.headings.value(0), QStringLiteral("15.01.2024"));
}

void TestAxisTicks::aFewBarsHaveTheirLabels_data()
{
    QTest::addColumn<Timeframe>("timeframe");
    QTest::addColumn<QStringList>("labels");
    QTest::newRow("minutes") << Timeframe::Minute
                             << QStringList({"10:00", "10:01", "10:02", "10:03", "10:04"});
    QTest::newRow("days") << Timeframe::Day
                          << QStringList({"15.01", "16.01", "17.01", "18.01", "19.01"});
    QTest::newRow("weeks") << Timeframe::Week
                           << QStringList({"15.01", "22.01", "29.01", "05.02", "12.02"});
    QTest::newRow("months") << Timeframe::Month << QStringList({"Jan", "Feb", "Mar", "Apr", "May"});
}

void TestAxisTicks::aFewBarsHaveTheirLabels()
{
    QFETCH(const Timeframe, timeframe);
    QFETCH(const QStringList, labels);
    const int perPeriod = timeframe == Timeframe::Week ? 5 : timeframe == Timeframe::Month ? 22 : 1;
    for (int count = 1; count <= labels.size(); ++count) {
        const auto series = timeframe == Timeframe::Minute
                                ? makeSeries(1, count)
                                : makeSeries((count - 1) * perPeriod + 1, 1);
        const Shown shown = ticksOf(series, timeframe, {-20, 23}, 1.5);
        QCOMPARE(shown.labels, labels.mid(0, count));
        QVERIFY2(shown.headings.value(0).endsWith(QStringLiteral("2024")),
                 qPrintable(shown.headings.value(0)));
    }
}

void TestAxisTicks::secondsAreSeenWhereTheyDiffer()
{
    const Shown shown = ticksOf(makeSeries(1, 100, 1), Timeframe::Second, {0.5, 21}, 5);
    QCOMPARE(shown.labels, QStringList({"10:00:05", "10:00:10", "10:00:15", "10:00:20"}));
    // Never finer than the candles.
    const Shown minutes = ticksOf(makeSeries(1, 100), Timeframe::Minute, {0.5, 4}, 0.1);
    QCOMPARE(minutes.labels, QStringList({"10:01", "10:02", "10:03", "10:04"}));
}

void TestAxisTicks::daysStandForThemselvesAndYearsBelow()
{
    const Shown days = ticksOf(makeSeries(20, 4, 3600), Timeframe::Hour, {1, 79}, 4);
    QCOMPARE(days.labels.mid(0, 5), QStringList({"16.01", "17.01", "18.01", "19.01", "22.01"}));
    QCOMPARE(days.first, QStringLiteral("2024"));
    const Shown weeks = ticksOf(makeSeries(20, 4, 3600), Timeframe::Hour, {1, 79}, 15);
    QCOMPARE(weeks.labels, QStringList({"22.01", "29.01", "05.02"})); // Mondays
    const Shown year = ticksOf(makeSeries(270, 1), Timeframe::Day, {230, 270}, 8);
    QVERIFY(year.headings.contains(QStringLiteral("2025")));
    QCOMPARE(year.begins.count(true), 1);
}

void TestAxisTicks::monthsAndYears()
{
    const Shown months = ticksOf(makeSeries(100, 1), Timeframe::Day, {1, 80}, 15);
    QCOMPARE(months.labels, QStringList({"Feb", "Mar", "Apr", "May"}));
    QCOMPARE(months.first, QStringLiteral("2024"));
    // A year is seen to begin among its months.
    const Shown over = ticksOf(makeSeries(400, 1), Timeframe::Day, {150, 350}, 15);
    QCOMPARE(over.first, QStringLiteral("2024"));
    const auto january = over.labels.indexOf(QStringLiteral("Jan"));
    QVERIFY(january > 0);
    QCOMPARE(over.headings.value(january), QStringLiteral("2025"));
    QCOMPARE(over.begins.count(true), 1);
    const Shown years = ticksOf(makeSeries(1300, 1), Timeframe::Week, {1, 250}, 50);
    QCOMPARE(years.labels, QStringList({"2025", "2026", "2027", "2028"}));
    // Of weeks and months there are no days.
    const Shown wide = ticksOf(makeSeries(100, 1), Timeframe::Month, {0, 4}, 0.1);
    QCOMPARE(wide.labels.value(1), QStringLiteral("Feb"));
    // Nothing begins in view, but what it is is said.
    QCOMPARE(ticksOf(makeSeries(100, 1), Timeframe::Month, {1.2, 1.8}, 0.1).first,
             QStringLiteral("February 2024"));
}

// A day's first bar, whose interval lies in a day that is not stored.
void TestAxisTicks::midnightIsOfItsDay()
{
    using testsupport::firstDay;
    const auto series = testsupport::seriesOf({{testsupport::makeBar(firstDay, QTime(0, 0), 1),
                                                testsupport::makeBar(firstDay, QTime(3, 0), 2),
                                                testsupport::makeBar(firstDay, QTime(5, 0), 3)}});
    const Shown shown = ticksOf(series, Timeframe::Hour, {-10, 13}, 1);
    QCOMPARE(shown.labels, QStringList({"00:00", "02:00", "04:00"}));
    QCOMPARE(shown.headings.value(0), QStringLiteral("15.01.2024"));
}

void TestAxisTicks::nightsHaveTheirTimes()
{
    const Shown shown = ticksOf(makeSeries(3, 10), Timeframe::Hour, {0, 48}, 8, true);
    QCOMPARE(shown.labels, QStringList({"00:00", "12:00", "00:00", "12:00", "00:00"}));
    QCOMPARE(shown.headings.value(2), QStringLiteral("16.01.2024"));
}

void TestAxisTicks::neverMoreTimesThanRoom()
{
    QRandomGenerator random(2);
    const auto series = makeSeries(300, 60);
    for (const Timeframe timeframe : vexdesk::allTimeframes) {
        if (timeframe == Timeframe::Second)
            continue;
        const auto axis = testsupport::axisOf(series, timeframe);
        const auto size = static_cast<double>(axis.size());
        for (int round = 0; round < 300; ++round) {
            const double begin = random.generateDouble() * size - 5;
            const vexdesk::SlotRange range{begin, begin + 10 + random.bounded(200)};
            const double room = 1 + random.bounded(50.0);
            const auto found =
                vexdesk::timeTicks(axis.begins(range), range, everyLine(room), timeframe);
            QVERIFY(double(found.ticks.size()) <= std::max(5.0, range.length() / room) + 2);
            for (size_t i = 0; i < found.ticks.size(); ++i) {
                QVERIFY(double(found.ticks[i].slot) >= range.begin);
                QVERIFY(double(found.ticks[i].slot) <= range.end);
                QVERIFY(i == 0 || found.ticks[i - 1].slot < found.ticks[i].slot);
            }
        }
    }
    QVERIFY(vexdesk::timeTicks({}, {0, 10}, everyLine(5), Timeframe::Day).ticks.empty());
}

void TestAxisTicks::intervalsAreNamed_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("seconds") << 15 << QStringLiteral("15 с");
    QTest::newRow("minutes") << 300 << QStringLiteral("5 мин");
    QTest::newRow("hours") << 7200 << QStringLiteral("2 ч");
    QTest::newRow("days") << 7 * 86400 << QStringLiteral("7 д");
    QTest::newRow("not round") << 90 << QStringLiteral("90 с");
}

void TestAxisTicks::intervalsAreNamed()
{
    QFETCH(const int, seconds);
    QTEST(vexdesk::intervalText(seconds), "text");
}

void TestAxisTicks::numbersHaveAllTheirDecimals()
{
    QCOMPARE(vexdesk::numberText(120.5, 2), QStringLiteral("120.50"));
    QCOMPARE(vexdesk::numberText(-0.001, 2), QStringLiteral("0.00"));
    QCOMPARE(vexdesk::numberText(-1.25, 2), QStringLiteral("-1.25"));
    QCOMPARE(vexdesk::numberText(1e15, 0), QStringLiteral("1000000000000000"));
}

void TestAxisTicks::thousandsStandApart()
{
    const auto grouped = [](const char* text) {
        return vexdesk::groupedText(QLatin1String(text)).replace(QChar::Nbsp, u'_');
    };
    for (const char* text : {"0", "7", "999", "-999", "-12.345678", "0.50"})
        QCOMPARE(grouped(text), QLatin1String(text));
    QCOMPARE(grouped("1000"), QStringLiteral("1_000"));
    QCOMPARE(grouped("-1000"), QStringLiteral("-1_000"));
    QCOMPARE(grouped("40000000"), QStringLiteral("40_000_000"));
    QCOMPARE(grouped("-123456.7891"), QStringLiteral("-123_456.7891"));
}

void TestAxisTicks::timesGoThereAndBack()
{
    QRandomGenerator random(3);
    for (int i = 0; i < 20000; ++i) {
        const QDate day = QDate(1900, 1, 1).addDays(random.bounded(100000));
        const QTime time = QTime(0, 0).addSecs(random.bounded(86400));
        const qint64 seconds = wallTime(day, time);
        QCOMPARE(vexdesk::wallDate(seconds), day);
        QCOMPARE(vexdesk::wallClock(seconds), time);
    }
    QCOMPARE(wallTime(QDate(1970, 1, 1)), 0);
    QCOMPARE(wallTime(QDate(1969, 12, 31), QTime(23, 59, 59)), -1);
    QCOMPARE(wallTime(QDate(2024, 1, 15), QTime(10, 0)) - wallTime(QDate(2024, 1, 14)), 122400);
}

void TestAxisTicks::datesFollowTheLanguage_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("date");
    QTest::addColumn<QString>("day");
    QTest::newRow("none") << "C"
                          << "05.03.2024"
                          << "05.03";
    QTest::newRow("Russian") << "ru_RU"
                             << "05.03.2024"
                             << "05.03";
    QTest::newRow("English") << "en_US"
                             << "03/05/2024"
                             << "03/05";
    QTest::newRow("Swedish") << "sv_SE"
                             << "2024-03-05"
                             << "03-05";
}

void TestAxisTicks::datesFollowTheLanguage()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, date);
    QFETCH(const QString, day);
    const QLocale before;
    const auto restore = qScopeGuard([&before] { QLocale::setDefault(before); });
    QLocale::setDefault(QLocale(locale));
    const qint64 begin = wallTime(QDate(2024, 3, 5));
    QCOMPARE(vexdesk::dateText(begin), date);
    const Shown days = ticksOf(makeSeries(50, 4, 3600), Timeframe::Hour, {1, 190}, 4);
    QVERIFY(days.labels.contains(day));
}

QTEST_GUILESS_MAIN(TestAxisTicks)
#include "tst_axisticks.moc"
