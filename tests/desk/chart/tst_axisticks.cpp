// SPDX-License-Identifier: MIT
#include "desk/chart/axisticks.h"
#include "desk/chart/wallclock.h"
#include "support/localzone.h"
#include "support/strictlog.h"

#include <QtCore/QLocale>
#include <QtCore/QRandomGenerator>
#include <QtCore/QScopeGuard>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>

using vexdesk::TimeRange;
using vexdesk::TimeTick;
using vexdesk::wallTime;

namespace {

TimeRange rangeOf(const QDate& from, const QTime& begin, const QDate& to, const QTime& end)
{
    return {static_cast<double>(wallTime(from, begin)), static_cast<double>(wallTime(to, end))};
}

QStringList labels(const std::vector<TimeTick>& ticks)
{
    QStringList texts;
    for (const TimeTick& tick : ticks)
        texts.append(tick.label);
    return texts;
}

QStringList headings(const std::vector<TimeTick>& ticks)
{
    QStringList texts;
    for (const TimeTick& tick : ticks)
        texts.append(tick.heading);
    return texts;
}

} // namespace

class TestAxisTicks final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
    void anHourThatTheClockSkipsIsOnTheAxis();
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
    const auto ticks =
        vexdesk::timeTicks(rangeOf({2024, 1, 15}, {9, 58}, {2024, 1, 15}, {11, 3}), 8);
    QCOMPARE(labels(ticks),
             QStringList({"10:00", "10:10", "10:20", "10:30", "10:40", "10:50", "11:00"}));
    QCOMPARE(headings(ticks), QStringList({"15.01.2024", "", "", "", "", "", ""}));
    for (const TimeTick& tick : ticks)
        QVERIFY(!tick.isBegin);
}

void TestAxisTicks::aNewDayIsMarkedWithItsDate()
{
    const auto ticks =
        vexdesk::timeTicks(rangeOf({2024, 2, 28}, {18, 30}, {2024, 2, 29}, {18, 30}), 5);
    QCOMPARE(labels(ticks), QStringList({"00:00", "06:00", "12:00", "18:00"}));
    QCOMPARE(headings(ticks), QStringList({"29.02.2024", "", "", ""}));
    QVERIFY(ticks.front().isBegin);
    QVERIFY(!ticks.back().isBegin);
}

void TestAxisTicks::secondsAreSeenWhereTheyDiffer()
{
    const auto ticks =
        vexdesk::timeTicks(rangeOf({2024, 1, 15}, {10, 0, 1}, {2024, 1, 15}, {10, 0, 21}), 4);
    QCOMPARE(labels(ticks), QStringList({"10:00:05", "10:00:10", "10:00:15", "10:00:20"}));
}

void TestAxisTicks::daysStandForThemselvesAndYearsBelow()
{
    const auto ticks =
        vexdesk::timeTicks(rangeOf({2023, 12, 28}, {12, 0}, {2024, 1, 3}, {12, 0}), 7);
    QCOMPARE(labels(ticks), QStringList({"29.12", "30.12", "31.12", "01.01", "02.01", "03.01"}));
    QCOMPARE(headings(ticks), QStringList({"2023", "", "", "2024", "", ""}));
    QVERIFY(ticks[3].isBegin);
    const auto weeks = vexdesk::timeTicks(rangeOf({2024, 1, 2}, {0, 0}, {2024, 1, 24}, {0, 0}), 4);
    QCOMPARE(labels(weeks), QStringList({"08.01", "15.01", "22.01"})); // Mondays
}

void TestAxisTicks::monthsAndYears()
{
    const auto months =
        vexdesk::timeTicks(rangeOf({2023, 11, 10}, {0, 0}, {2024, 3, 10}, {0, 0}), 5);
    QCOMPARE(labels(months), QStringList({"12.2023", "01.2024", "02.2024", "03.2024"}));
    const auto years = vexdesk::timeTicks(rangeOf({1999, 6, 1}, {0, 0}, {2024, 6, 1}, {0, 0}), 6);
    QCOMPARE(labels(years), QStringList({"2000", "2005", "2010", "2015", "2020"}));
}

void TestAxisTicks::anHourThatTheClockSkipsIsOnTheAxis()
{
    const testsupport::LocalZone zone("Europe/Berlin");
    QVERIFY(!QDateTime(QDate(2024, 3, 31), QTime(2, 30)).isValid() ||
            QDateTime(QDate(2024, 3, 31), QTime(2, 30)).time() != QTime(2, 30));
    const auto ticks = vexdesk::timeTicks(rangeOf({2024, 3, 31}, {1, 0}, {2024, 3, 31}, {4, 0}), 7);
    QCOMPARE(labels(ticks),
             QStringList({"01:00", "01:30", "02:00", "02:30", "03:00", "03:30", "04:00"}));
    QCOMPARE(ticks.back().time - ticks.front().time, 3 * 3600);
}

void TestAxisTicks::neverMoreTimesThanRoom()
{
    QRandomGenerator random(2);
    for (int round = 0; round < 5000; ++round) {
        const double begin =
            static_cast<double>(wallTime(QDate(2024, 1, 1))) + random.bounded(1e9) - 5e8;
        const double length = std::pow(10, 1 + random.bounded(8.0));
        const int most = 1 + random.bounded(20);
        const auto ticks = vexdesk::timeTicks({begin, begin + length}, most);
        // Months are not of one length.
        QVERIFY2(
            ticks.size() <= size_t(most) + 2,
            qPrintable(
                QStringLiteral("%1 s, room for %2: %3").arg(length).arg(most).arg(ticks.size())));
        for (size_t i = 0; i < ticks.size(); ++i) {
            QVERIFY(static_cast<double>(ticks[i].time) >= begin);
            QVERIFY(static_cast<double>(ticks[i].time) <= begin + length);
            QVERIFY(i == 0 || ticks[i - 1].time < ticks[i].time);
        }
    }
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
    constexpr qint64 secondsOfDay = 24 * 60 * 60;
    const vexdesk::TimeRange week{double(begin), double(begin + 7 * secondsOfDay)};
    const auto ticks = vexdesk::timeTicks(week, 8);
    QVERIFY(std::any_of(ticks.begin(), ticks.end(),
                        [&day](const vexdesk::TimeTick& tick) { return tick.label == day; }));
}

QTEST_GUILESS_MAIN(TestAxisTicks)
#include "tst_axisticks.moc"
