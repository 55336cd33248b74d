// SPDX-License-Identifier: MIT
#include "chartseries.h"
#include "desk/chart/foldeddays.h"
#include "support/strictlog.h"

#include <QtTest/QTest>

using testsupport::firstDay;
using testsupport::makeBars;
using testsupport::makeSeries;
using vexdesk::BarSeries;
using vexdesk::FoldedDays;
using vexdesk::Timeframe;

class TestFoldedDays final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void foldsAsItIsAsked();
    void takesOverWhatIsTheSame();
    void whatHasChangedIsFoldedAnew();
    void letsManyCandlesGo();
    void holdsNoBars();
};

void TestFoldedDays::foldsAsItIsAsked()
{
    const auto series = makeSeries(3, 10);
    FoldedDays folded(series, Timeframe::Minutes5);
    QCOMPARE(folded.daysKept(), 0U);
    QCOMPARE(folded.of(1), vexdesk::foldDay(*series, 1, Timeframe::Minutes5));
    QCOMPARE(folded.of(1).size(), 2U);
    QCOMPARE(folded.daysKept(), 1U);
    QCOMPARE(folded.candlesKept(), 2U);
}

void TestFoldedDays::takesOverWhatIsTheSame()
{
    const auto series = makeSeries(3, 10);
    FoldedDays before(series, Timeframe::Minute);
    const auto* const first = before.of(0).data();
    before.of(2);
    // A day before them: the same days have other places.
    std::vector<vexdesk::SeriesDay> days = series->days();
    days.insert(days.begin(),
                testsupport::readDay(firstDay.addDays(-3), makeBars(firstDay.addDays(-3), 7)));
    FoldedDays now(std::make_shared<const BarSeries>(60, days), Timeframe::Minute, &before);
    QCOMPARE(now.daysKept(), 1U); // the last one; what is before the first one has changed
    QVERIFY(now.of(1).data() != first);
    QCOMPARE(now.of(3), before.of(2));
    QCOMPARE(now.of(3).data(), before.of(2).data());
    const FoldedDays other(series, Timeframe::Minutes5, &before);
    QCOMPARE(other.daysKept(), 0U);
}

void TestFoldedDays::whatHasChangedIsFoldedAnew()
{
    const auto series = makeSeries(3, 10);
    FoldedDays before(series, Timeframe::Minute);
    for (int day = 0; day < 3; ++day)
        before.of(day);
    std::vector<vexdesk::SeriesDay> days = series->days();
    days[2] = testsupport::readDay(days[2].day, makeBars(days[2].day, 4));
    FoldedDays now(std::make_shared<const BarSeries>(60, days), Timeframe::Minute, &before);
    QCOMPARE(now.of(2).size(), 4U);
    QCOMPARE(now.of(0).size(), 10U);
    // Bars that were let go have no candles, and those that have come have them.
    days[2].bars.reset();
    FoldedDays without(std::make_shared<const BarSeries>(60, days), Timeframe::Minute, &now);
    QVERIFY(without.of(2).empty());
    FoldedDays again(now.sharedSeries(), Timeframe::Minute, &without);
    QCOMPARE(again.of(2).size(), 4U);
    // Weeks are made of days that their source does not tell of.
    FoldedDays week(series, Timeframe::Week);
    QCOMPARE(week.of(0).front().count, 30);
    FoldedDays changed(now.sharedSeries(), Timeframe::Week, &week);
    QCOMPARE(changed.of(0).front().count, 24);
}

void TestFoldedDays::letsManyCandlesGo()
{
    constexpr int perDay = 20'000;
    FoldedDays folded(makeSeries(14, perDay, 1), Timeframe::Second);
    for (int day = 0; day < 14; ++day) {
        QCOMPARE(folded.of(day).size(), size_t(perDay));
        folded.letGo();
        QVERIFY(folded.candlesKept() <= 200'000);
        QVERIFY(folded.daysKept() > 0);
    }
    // What was asked for since is kept.
    for (int day = 0; day < 14; ++day)
        folded.of(day);
    folded.letGo();
    QCOMPARE(folded.daysKept(), 14U);
    folded.letGo();
    QCOMPARE(folded.daysKept(), 0U);
}

void TestFoldedDays::holdsNoBars()
{
    auto series = makeSeries(2, 10);
    const std::weak_ptr<const vexdesk::DayBars> bars = series->days()[0].bars;
    std::vector<vexdesk::SeriesDay> days = series->days();
    auto before = std::make_unique<FoldedDays>(series, Timeframe::Minute);
    before->of(0);
    days[0].bars.reset();
    FoldedDays now(std::make_shared<const BarSeries>(60, days), Timeframe::Minute, before.get());
    before.reset();
    series.reset();
    QVERIFY(bars.expired());
}

QTEST_GUILESS_MAIN(TestFoldedDays)
#include "tst_foldeddays.moc"
