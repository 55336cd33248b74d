// SPDX-License-Identifier: MIT
#include "healthreport.h"
#include "healthsums.h"

#include "support/strictlog.h"

#include <QtTest/QTest>

#include <functional>

using tadata::DayHealth;
using tadata::Gap;
using tadata::HealthSums;
using tadata::SeriesHealth;

using Change = std::function<void(DayHealth& day)>;
Q_DECLARE_METATYPE(Change)

class TestSeriesHealth final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void eachFaultAloneIsWrong_data();
    void eachFaultAloneIsWrong();
    void aMissingDayAloneIsWrong();
    void quietGapsAreNotLacking();
    void coverageIsOfAllDays();
    void addsUpWhatTheDaysHave();
    void asksForMissingDaysAndThoseWithGaps();
    void tellsTheTimeOfASecond();
};

namespace {

const QDate day(2024, 1, 15);

Gap gapOf(int bars, bool isQuiet)
{
    Gap gap{bars, 36000, 36000 + 60 * (bars - 1)};
    gap.isQuiet = isQuiet;
    return gap;
}

SeriesHealth healthOf(const std::vector<DayHealth>& days)
{
    SeriesHealth health;
    health.days = days;
    return health;
}

} // namespace

void TestSeriesHealth::eachFaultAloneIsWrong_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<bool>("isWrong");
    const auto row = [](const char* name, const Change& change, bool isWrong) {
        QTest::newRow(name) << change << isWrong;
    };
    row(
        "nothing", [](DayHealth&) {}, false);
    row(
        "a bad line", [](DayHealth& health) { health.badLines = {1}; }, true);
    row(
        "a bar twice", [](DayHealth& health) { health.duplicates = 1; }, true);
    row(
        "wrong prices", [](DayHealth& health) { health.prices = 1; }, true);
    row(
        "a jump", [](DayHealth& health) { health.jumps = {0}; }, true);
    row(
        "a gap", [](DayHealth& health) { health.gaps = {gapOf(5, false)}; }, true);
    row(
        "a quiet gap and one more",
        [](DayHealth& health) {
            health.gaps = {gapOf(5, true), gapOf(5, false)};
        },
        true);
    row(
        "a quiet gap", [](DayHealth& health) { health.gaps = {gapOf(5, true)}; }, false);
    row(
        "an edited bar", [](DayHealth& health) { health.edited = 1; }, false);
    row(
        "a bar out of order", [](DayHealth& health) { health.outOfOrder = 1; }, false);
    row(
        "a large volume", [](DayHealth& health) { health.volume = 1; }, false);
    row(
        "bars that are missing here and there", [](DayHealth& health) { health.missing = 1; },
        false);
}

void TestSeriesHealth::eachFaultAloneIsWrong()
{
    QFETCH(const Change, change);
    QFETCH(const bool, isWrong);
    DayHealth health;
    change(health);
    QCOMPARE(health.isWrong(), isWrong);
    QCOMPARE(healthOf({DayHealth(), health}).isWrong(), isWrong);
}

void TestSeriesHealth::aMissingDayAloneIsWrong()
{
    SeriesHealth health;
    QVERIFY(!health.isWrong());
    health.closed = {day};
    health.unproven = {day};
    QVERIFY(!health.isWrong());
    health.missingDays = {day};
    QVERIFY(health.isWrong());
}

void TestSeriesHealth::quietGapsAreNotLacking()
{
    DayHealth health;
    health.expected = 60;
    health.missing = 17;
    health.gaps = {gapOf(5, true), gapOf(6, false), gapOf(4, true)};
    QCOMPARE(health.lacking(), 8);
    QCOMPARE(coverageOf(health), QStringLiteral("0.8667"));
}

void TestSeriesHealth::coverageIsOfAllDays()
{
    DayHealth whole;
    whole.expected = 60;
    whole.bars = 61;
    DayHealth half;
    half.expected = 40;
    half.missing = 20;
    half.bars = 20;
    SeriesHealth health = healthOf({whole, half});
    QCOMPARE(health.bars(), 81);
    QCOMPARE(coverageOf(health), QStringLiteral("0.8000"));
    // A third of a bar, which is 0.33 of a hundred.
    health.missedBars = 1;
    health.missedParts = 3;
    QCOMPARE(coverageOf(health), QStringLiteral("0.7973"));
    QCOMPARE(coverageOf(SeriesHealth()), QStringLiteral("1.0000"));
}

void TestSeriesHealth::addsUpWhatTheDaysHave()
{
    DayHealth health;
    health.gaps = {gapOf(5, true), gapOf(6, false), gapOf(7, false), gapOf(9, true),
                   gapOf(1, true)};
    health.badLines = {3, 4};
    health.duplicates = 4;
    health.outOfOrder = 5;
    health.prices = 6;
    health.jumps = {1, 2, 3};
    health.volume = 8;
    health.edited = 9;
    const HealthSums sums = sumsOf(healthOf({health, DayHealth(), health}));
    QCOMPARE(sums.quiet, 6);
    QCOMPARE(sums.gaps, 4);
    QCOMPARE(sums.gapBars, 26);
    QCOMPARE(sums.badLines, 4);
    QCOMPARE(sums.duplicates, 8);
    QCOMPARE(sums.outOfOrder, 10);
    QCOMPARE(sums.prices, 12);
    QCOMPARE(sums.jumps, 6);
    QCOMPARE(sums.volume, 16);
    QCOMPARE(sums.edited, 18);
}

void TestSeriesHealth::asksForMissingDaysAndThoseWithGaps()
{
    DayHealth gap;
    gap.day = day;
    gap.gaps = {gapOf(5, false)};
    DayHealth quiet;
    quiet.day = day.addDays(1);
    quiet.gaps = {gapOf(5, true)};
    SeriesHealth health = healthOf({gap, quiet});
    health.missingDays = {day.addDays(-1), day.addDays(2)};
    health.closed = {day.addDays(3)};
    QCOMPARE(daysToAskFor(health), (QList<QDate>{day.addDays(-1), day, day.addDays(2)}));
}

void TestSeriesHealth::tellsTheTimeOfASecond()
{
    QCOMPARE(tadata::timeOfSecond(0), QTime(0, 0));
    QCOMPARE(tadata::timeOfSecond(36061), QTime(10, 1, 1));
    QCOMPARE(tadata::timeOfSecond(86399), QTime(23, 59, 59));
}

QTEST_APPLESS_MAIN(TestSeriesHealth)

#include "tst_serieshealth.moc"
