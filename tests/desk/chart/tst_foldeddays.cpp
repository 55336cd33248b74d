// SPDX-License-Identifier: MIT
#include "chartseries.h"
#include "desk/chart/foldeddays.h"
#include "support/strictlog.h"

#include <QtTest/QTest>

#include <array>
#include <memory>

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
    void anUnreadDayThatIsNotEmptyAnyMoreIsFoldedAnew();
    void letsManyCandlesGo();
    void holdsNoBars();
    void whatIsTakenOverIsWhatIsFolded();
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

// It is shown with the bars at midnight of the next day as soon as it may have bars.
void TestFoldedDays::anUnreadDayThatIsNotEmptyAnyMoreIsFoldedAnew()
{
    const QDate next = firstDay.addDays(1);
    const std::vector<vexdesk::SeriesDay> days{
        testsupport::unreadDay(firstDay, 0),
        testsupport::readDay(next, {testsupport::makeBar(next, QTime(0, 0), 1),
                                    testsupport::makeBar(next, QTime(10, 0), 2)})};
    std::vector<vexdesk::SeriesDay> grown = days;
    grown[0].bytes = 48;
    FoldedDays before(std::make_shared<const BarSeries>(60, days), Timeframe::Day);
    QCOMPARE(before.of(0).size(), 0U);
    QCOMPARE(before.of(1).size(), 2U);
    FoldedDays now(std::make_shared<const BarSeries>(60, grown), Timeframe::Day, &before);
    QCOMPARE(now.of(0).size(), 1U);
    QCOMPARE(now.of(1).size(), 1U);
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

// Days come, go, change, and lose their bars, while all of a long series is folded.
void TestFoldedDays::whatIsTakenOverIsWhatIsFolded()
{
    QRandomGenerator random(9);
    std::vector<vexdesk::SeriesDay> days = makeSeries(400, 3)->days();
    std::array<std::unique_ptr<FoldedDays>, vexdesk::allTimeframes.size()> folded;
    for (int round = 0; round < 40; ++round) {
        const auto at = static_cast<size_t>(random.bounded(int(days.size())));
        const QDate day = days[at].day;
        std::vector<vexdesk::Bar> bars = makeBars(day, 1 + random.bounded(5));
        if (random.bounded(2) == 0)
            bars.insert(bars.begin(), testsupport::makeBar(day, QTime(0, 0), round));
        if (round % 4 == 0) // at the end, as most of them come
            days.push_back(testsupport::readDay(days.back().day.addDays(1),
                                                makeBars(days.back().day.addDays(1), 3)));
        else if (round % 4 == 1)
            days.erase(days.begin() + qsizetype(at));
        else if (round % 4 == 2)
            days[at].bars.reset();
        else
            days[at] = testsupport::readDay(day, bars);
        const auto series = std::make_shared<const BarSeries>(60, days);
        for (const Timeframe one : vexdesk::allTimeframes) {
            auto& before = folded[static_cast<size_t>(one)];
            auto now = std::make_unique<FoldedDays>(series, one, before.get());
            size_t count = 0;
            for (qsizetype i = 0; i < qsizetype(days.size()); ++i) {
                QCOMPARE(now->of(i), vexdesk::foldDay(*series, i, one));
                count += now->of(i).size();
            }
            QCOMPARE(now->candlesKept(), count);
            QCOMPARE(now->daysKept(), days.size());
            before = std::move(now);
        }
    }
}

QTEST_GUILESS_MAIN(TestFoldedDays)
#include "tst_foldeddays.moc"
