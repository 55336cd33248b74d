// SPDX-License-Identifier: MIT
#include "desk/dealsfeed.h"
#include "desk/dealsreplay.h"
#include "support/child.h"
#include "support/strictlog.h"

#include <vexdesk/database/irawqueue.h>
#include <vexdesk/terminal/core.h>
#include <vexdesk/terminal/database.h>
#include <vexdesk/terminal/rawqueue.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QSet>
#include <QtTest/QTest>

#include <optional>

using vexdesk::Deal;
using vexdesk::DealsFeed;
using vexdesk::ReferenceData;
using vexdesk::ReplayedSecurity;

namespace {

constexpr int wholeDay = 24 * 60 * 60 * 1000;
const QDate day(2026, 11, 20);

ReplayedSecurity share()
{
    return {1, 2, 103, 2, false};
}

ReplayedSecurity future()
{
    return {5, 1, 101, 0, true};
}

std::vector<Deal> wholeDayOf(const ReplayedSecurity& security, QDate date = day)
{
    return vexdesk::replayDeals(security, date, 0, wholeDay);
}

// "2026-11-20 10:00:00.123": the moment as the database prints it.
QString momentText(QDate date, QTime time)
{
    return date.toString("yyyy-MM-dd ") + time.toString(time.msec() ? "HH:mm:ss.zzz" : "HH:mm:ss");
}

struct Row
{
    int stockId = 0;
    long long securityId = 0;
    QString moment;

    friend bool operator==(const Row&, const Row&) = default;
};

std::vector<Row> rows(const vexdesk::Core& core)
{
    const Table* const table = core.database()->table("all_deals");
    const std::lock_guard lock(*table);
    std::vector<Row> result;
    for (const Record& row : table->masterIndex())
        result.push_back({row.field(0).toString().toInt(), row.field(2).toString().toLongLong(),
                          row.field(3).toString()});
    return result;
}

} // namespace

class TestDealsFeed : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void aReplayIsTheSameEveryTime();
    void aReplayIsTheSameInPieces();
    void dealsComeAtTheirPace();
    void dealsLieWithinTheirDay();
    void pricesAreTheSecuritys_data();
    void pricesAreTheSecuritys();
    void quantitiesAndValuesFit();
    void onlyDerivativesHaveOpenInterest();
    void securitiesAndDatesDiffer();
    void theSecuritiesAreThoseOfTheReferenceData();
    void thereAreNotMoreThanMemoryHolds();

    void fillsTheDayAtOnce();
    void theFirstMinuteHasDeals();
    void momentsAreTheLocalWallClock();
    void goesOnWithTheClock();
    void theTimerLooks();
    void rowsStandInTheOrderOfTheirMoments();
    void aLateStartMakesNoDifference();
    void aClockSetBackAnHourRepeatsNothing();
    void aNewDayReplacesTheOldOne();
    void theNotifierTellsANewDay();
    void aDateSetBackReplacesToo();
    void aBlockerHoldsTheTableStill();
    void aBlockerHoldsTheNewDayBack();
    void rowsOfOthersStay();
    void goesWithItsRows();
    void aBlockerHoldsItsRowsToo();
};

void TestDealsFeed::init()
{
    testsupport::failOnStrayWarnings();
    ReferenceData::install(ReferenceData::demonstration());
}

void TestDealsFeed::aReplayIsTheSameEveryTime()
{
    QVERIFY(!wholeDayOf(share()).empty());
    QVERIFY(wholeDayOf(share()) == wholeDayOf(share()));
    // On every machine and in every release: people compare their exports.
    const std::vector<Deal> deals = wholeDayOf(share());
    const auto told = [](const Deal& deal) {
        return QStringList{deal.moment->toString(), deal.price->toString(),
                           QString::number(*deal.quantity), deal.value->toString()}
            .join(u' ');
    };
    QCOMPARE(told(deals.front()), QStringLiteral("2026-11-20 00:00:07.007 658.47 152 100087.44"));
    QCOMPARE(told(deals.back()), QStringLiteral("2026-11-20 23:59:36.836 644.35 21 13531.35"));
}

void TestDealsFeed::aReplayIsTheSameInPieces()
{
    const std::vector<Deal> whole = wholeDayOf(future());
    for (const int length : {1000, 7919, 60 * 1000, 3600 * 1000, wholeDay - 1}) {
        vexdesk::DealsReplay replay(future(), day);
        std::vector<Deal> taken;
        for (int end = length; end < wholeDay + length; end += length) {
            replay.takeBefore(end, &taken);
            replay.takeBefore(end - length, &taken); // nothing is left there
        }
        QVERIFY(taken == whole);
    }
    for (const int length : {3600 * 1000, 7 * 3600 * 1000 + 1}) {
        std::vector<Deal> made;
        for (int from = 0; from < wholeDay; from += length) {
            const std::vector<Deal> piece =
                vexdesk::replayDeals(future(), day, from, from + length);
            made.insert(made.end(), piece.begin(), piece.end());
        }
        QVERIFY(made == whole);
    }
    // The end of a piece is the start of the next one.
    const auto second =
        static_cast<int>(whole.at(1).moment->msecsSinceEpoch() - vexdesk::startOfDay(day));
    QCOMPARE(vexdesk::replayDeals(future(), day, 0, second).size(), std::size_t(1));
    QVERIFY(vexdesk::replayDeals(future(), day, second, second + 1).at(0) == whole.at(1));
    QVERIFY(vexdesk::replayDeals(future(), day, second, second).empty());
    QVERIFY(vexdesk::replayDeals(future(), day, second, 0).empty());
}

void TestDealsFeed::dealsComeAtTheirPace()
{
    const std::vector<Deal> deals = wholeDayOf(share());
    qint64 before = vexdesk::startOfDay(day);
    QVERIFY(deals.front().moment->msecsSinceEpoch() < before + 20000);
    for (std::size_t i = 1; i < deals.size(); ++i) {
        before = deals.at(i - 1).moment->msecsSinceEpoch();
        const qint64 gap = deals.at(i).moment->msecsSinceEpoch() - before;
        QVERIFY(gap >= 20000 && gap <= 40000);
    }
}

void TestDealsFeed::dealsLieWithinTheirDay()
{
    for (const QDate date : {day, QDate(1969, 12, 31), QDate(2024, 2, 29), QDate(9999, 12, 31)}) {
        const std::vector<Deal> deals = wholeDayOf(share(), date);
        QVERIFY(deals.size() > 2000);
        for (const Deal& deal : {deals.front(), deals.back()})
            QCOMPARE(deal.moment->toString().left(10), date.toString("yyyy-MM-dd"));
        QVERIFY(deals.back().moment->toString() >= date.toString("yyyy-MM-dd 23:59:19"));
    }
}

void TestDealsFeed::pricesAreTheSecuritys_data()
{
    QTest::addColumn<int>("decimals");
    for (const int decimals : {0, 1, 2, 4, 5, 15})
        QTest::addRow("%d", decimals) << decimals;
}

void TestDealsFeed::pricesAreTheSecuritys()
{
    QFETCH(int, decimals);
    ReplayedSecurity security = share();
    security.decimals = decimals;
    QSet<QString> prices;
    std::optional<double> before;
    for (const Deal& deal : wholeDayOf(security)) {
        QCOMPARE(deal.price->scale(), decimals);
        const double price = deal.price->toString().toDouble();
        QVERIFY(price > 0);
        // A step is a part of a percent.
        if (before)
            QVERIFY(qAbs(price / *before - 1) < 0.002);
        before = price;
        prices.insert(deal.price->toString());
    }
    QVERIFY(prices.size() > 100);
}

void TestDealsFeed::quantitiesAndValuesFit()
{
    for (const ReplayedSecurity& security : {share(), future()}) {
        for (const Deal& deal : wholeDayOf(security)) {
            QCOMPARE(*deal.stockId, security.stockId);
            QCOMPARE(*deal.boardId, security.boardId);
            QCOMPARE(*deal.securityId, security.securityId);
            QVERIFY(*deal.quantity >= 1);
            QCOMPARE(deal.value->mantissa(), deal.price->mantissa() * *deal.quantity);
            QCOMPARE(deal.value->scale(), deal.price->scale());
        }
    }
}

void TestDealsFeed::onlyDerivativesHaveOpenInterest()
{
    for (const Deal& deal : wholeDayOf(share()))
        QVERIFY(!deal.openInterest);
    QSet<long long> values;
    for (const Deal& deal : wholeDayOf(future())) {
        QVERIFY(deal.openInterest && *deal.openInterest >= 0);
        values.insert(*deal.openInterest);
    }
    QVERIFY(values.size() > 100);
}

void TestDealsFeed::securitiesAndDatesDiffer()
{
    QSet<QString> starts;
    int count = 0;
    const auto add = [&](const ReplayedSecurity& security, QDate date) {
        QString start;
        const std::vector<Deal> deals = wholeDayOf(security, date);
        for (std::size_t i = 0; i < 3; ++i)
            start +=
                deals.at(i).price->toString() +
                QString::number(deals.at(i).moment->msecsSinceEpoch() - vexdesk::startOfDay(date)) +
                u' ';
        starts.insert(start);
        ++count;
    };
    add({1, 1, 101, 2, false}, day);
    add({1, 1, 102, 2, false}, day);
    add({1, 2, 101, 2, false}, day);
    add({2, 1, 101, 2, false}, day);
    add({1, 1, 101, 2, false}, day.addDays(1));
    add({1, 1, 101, 2, false}, day.addYears(1));
    QCOMPARE(starts.size(), count);
}

void TestDealsFeed::theSecuritiesAreThoseOfTheReferenceData()
{
    const ReferenceData reference = ReferenceData::demonstration();
    const QList<ReplayedSecurity> securities = vexdesk::replayedSecurities(reference);
    QCOMPARE(securities.size(), reference.securities.size());
    int derivatives = 0;
    for (qsizetype i = 0; i < securities.size(); ++i) {
        const ReplayedSecurity& security = securities.at(i);
        QCOMPARE(security.securityId, reference.securities.at(i).id);
        QCOMPARE(security.decimals, reference.securities.at(i).decimals);
        QVERIFY(security.stockId > 0 && security.boardId > 0);
        QCOMPARE(security.hasOpenInterest, security.stockId == 5);
        derivatives += security.hasOpenInterest;
    }
    QVERIFY(derivatives > 0);
    QVERIFY(vexdesk::replayedSecurities(ReferenceData()).isEmpty());
}

void TestDealsFeed::thereAreNotMoreThanMemoryHolds()
{
    ReferenceData reference = ReferenceData::demonstration();
    for (int i = 0; i < 5000; ++i)
        reference.securities.append(
            {"NORD", "MAIN", 1000 + i, QStringLiteral("S%1").arg(i), "", 2});
    const QList<ReplayedSecurity> securities = vexdesk::replayedSecurities(reference);
    QVERIFY(securities.size() >= 200 && securities.size() <= 1000);
    QCOMPARE(securities.front().securityId, 101);
}

void TestDealsFeed::fillsTheDayAtOnce()
{
    vexdesk::Core core;
    QVERIFY(!core.database()->table("all_deals"));
    const QTime now(12, 0);
    const DealsFeed feed(core, [now] { return QDateTime(day, now); });
    std::size_t expected = 0;
    const QList<ReplayedSecurity> securities =
        vexdesk::replayedSecurities(ReferenceData::installed());
    for (const ReplayedSecurity& security : securities)
        expected += vexdesk::replayDeals(security, day, 0, now.msecsSinceStartOfDay() + 1).size();
    QCOMPARE(rows(core).size(), expected);
    QSet<long long> traded;
    for (const Row& row : rows(core))
        traded.insert(row.stockId * 1000000LL + row.securityId);
    QVERIFY(traded.size() > 35);
}

void TestDealsFeed::theFirstMinuteHasDeals()
{
    vexdesk::Core core;
    const DealsFeed feed(core, [] { return QDateTime(day, QTime(0, 0, 20)); });
    QCOMPARE(rows(core).size(),
             static_cast<std::size_t>(ReferenceData::installed().securities.size()));
}

void TestDealsFeed::momentsAreTheLocalWallClock()
{
    vexdesk::Core core;
    const QTime now(9, 30, 0, 500);
    const DealsFeed feed(core, [now] { return QDateTime(day, now); });
    const std::vector<Row> all = rows(core);
    QVERIFY(all.front().moment >= momentText(day, QTime(0, 0)));
    QVERIFY(all.front().moment < momentText(day, QTime(0, 0, 20)));
    QVERIFY(all.back().moment <= momentText(day, now));
    QVERIFY(all.back().moment > momentText(day, QTime(9, 29)));
}

void TestDealsFeed::goesOnWithTheClock()
{
    vexdesk::Core core;
    QDateTime now(day, QTime(10, 0));
    DealsFeed feed(core, [&now] { return now; });
    const std::vector<Row> before = rows(core);
    feed.advance();
    QCOMPARE(rows(core).size(), before.size());
    now = QDateTime(day, QTime(10, 1));
    feed.advance();
    const std::vector<Row> after = rows(core);
    QVERIFY(after.size() > before.size());
    QVERIFY(std::equal(before.begin(), before.end(), after.begin()));
    for (std::size_t i = before.size(); i < after.size(); ++i)
        QVERIFY(after.at(i).moment > momentText(day, QTime(10, 0)) &&
                after.at(i).moment <= momentText(day, QTime(10, 1)));
}

void TestDealsFeed::theTimerLooks()
{
    vexdesk::Core core;
    QDateTime now(day, QTime(10, 0));
    const DealsFeed feed(core, [&now] { return now; });
    QVERIFY(feed.interval() > 0 && feed.interval() <= 5000);
    auto* const timer = testsupport::child<QTimer>(&feed);
    QVERIFY(timer->isActive());
    const std::size_t before = rows(core).size();
    now = QDateTime(day, QTime(10, 1));
    timer->setInterval(1);
    QTRY_VERIFY(rows(core).size() > before);
}

void TestDealsFeed::rowsStandInTheOrderOfTheirMoments()
{
    vexdesk::Core core;
    QDateTime now(day, QTime(1, 0));
    DealsFeed feed(core, [&now] { return now; });
    for (int minute = 1; minute < 10; ++minute) {
        now = QDateTime(day, QTime(1, minute));
        feed.advance();
    }
    QString before;
    for (const Row& row : rows(core)) {
        // A point comes before every digit: the texts compare as the moments do.
        QVERIFY(before <= row.moment);
        before = row.moment;
    }
}

void TestDealsFeed::aLateStartMakesNoDifference()
{
    const auto rowsAfter = [](const QList<QTime>& looks) {
        vexdesk::Core core;
        QDateTime now(day, looks.front());
        DealsFeed feed(core, [&now] { return now; });
        for (const QTime look : looks) {
            now = QDateTime(day, look);
            feed.advance();
        }
        return rows(core);
    };
    const std::vector<Row> late = rowsAfter({QTime(2, 0)});
    QVERIFY(rowsAfter({QTime(0, 0), QTime(0, 0, 1), QTime(0, 30), QTime(2, 0)}) == late);
    QVERIFY(rowsAfter({QTime(1, 59, 59, 999), QTime(2, 0)}) == late);
}

void TestDealsFeed::aClockSetBackAnHourRepeatsNothing()
{
    vexdesk::Core core;
    QDateTime now(day, QTime(3, 0));
    DealsFeed feed(core, [&now] { return now; });
    const std::vector<Row> before = rows(core);
    for (const QTime time : {QTime(2, 0), QTime(2, 30), QTime(3, 0)}) {
        now = QDateTime(day, time);
        feed.advance();
        QCOMPARE(rows(core).size(), before.size());
    }
    now = QDateTime(day, QTime(3, 1));
    feed.advance();
    QVERIFY(rows(core).size() > before.size());
}

void TestDealsFeed::aNewDayReplacesTheOldOne()
{
    vexdesk::Core core;
    QDateTime now(day, QTime(23, 59, 59, 999));
    DealsFeed feed(core, [&now] { return now; });
    QVERIFY(rows(core).size() > 80000);
    now = QDateTime(day.addDays(1), QTime(0, 0, 20));
    feed.advance();
    const std::vector<Row> after = rows(core);
    QCOMPARE(after.size(), static_cast<std::size_t>(ReferenceData::installed().securities.size()));
    for (const Row& row : after)
        QVERIFY(row.moment.startsWith(day.addDays(1).toString("yyyy-MM-dd ")));
}

void TestDealsFeed::theNotifierTellsANewDay()
{
    vexdesk::Core core;
    QDateTime now(day, QTime(10, 0));
    const DealsFeed feed(core, [&now] { return now; });
    now = QDateTime(day.addDays(1), QTime(0, 1));
    Q_EMIT core.notifier()->aNewDay();
    QVERIFY(!rows(core).empty());
    QVERIFY(rows(core).front().moment.startsWith(day.addDays(1).toString("yyyy-MM-dd ")));
}

void TestDealsFeed::aDateSetBackReplacesToo()
{
    vexdesk::Core core;
    QDateTime now(day, QTime(0, 10));
    DealsFeed feed(core, [&now] { return now; });
    const std::vector<Row> first = rows(core);
    now = QDateTime(day.addDays(-1), QTime(0, 10));
    feed.advance();
    for (const Row& row : rows(core))
        QVERIFY(row.moment.startsWith(day.addDays(-1).toString("yyyy-MM-dd ")));
    now = QDateTime(day, QTime(0, 10));
    feed.advance();
    QVERIFY(rows(core) == first);
}

void TestDealsFeed::aBlockerHoldsTheTableStill()
{
    vexdesk::Core core;
    QDateTime now(day, QTime(10, 0));
    DealsFeed feed(core, [&now] { return now; });
    const std::size_t before = rows(core).size();
    {
        const IRawQueue::ProcessingBlocker blocker;
        for (int minute = 1; minute <= 30; ++minute) {
            now = QDateTime(day, QTime(10, minute));
            feed.advance();
        }
        QCOMPARE(rows(core).size(), before);
    }
    const std::vector<Row> caughtUp = rows(core);
    std::size_t expected = 0;
    const QList<ReplayedSecurity> securities =
        vexdesk::replayedSecurities(ReferenceData::installed());
    for (const ReplayedSecurity& security : securities)
        expected +=
            vexdesk::replayDeals(security, day, 0, now.time().msecsSinceStartOfDay() + 1).size();
    QCOMPARE(caughtUp.size(), expected);
    QVERIFY(std::is_sorted(caughtUp.begin(), caughtUp.end(), [](const Row& left, const Row& right) {
        return left.moment < right.moment;
    }));
}

void TestDealsFeed::aBlockerHoldsTheNewDayBack()
{
    vexdesk::Core core;
    QDateTime now(day, QTime(23, 59));
    DealsFeed feed(core, [&now] { return now; });
    const std::vector<Row> before = rows(core);
    {
        const IRawQueue::ProcessingBlocker blocker;
        now = QDateTime(day.addDays(1), QTime(0, 1));
        feed.advance();
        QVERIFY(rows(core) == before);
    }
    const std::vector<Row> after = rows(core);
    QVERIFY(!after.empty() && after.size() < before.size());
    QVERIFY(after.front().moment.startsWith(day.addDays(1).toString("yyyy-MM-dd ")));
}

void TestDealsFeed::rowsOfOthersStay()
{
    vexdesk::Core core;
    Table* const table = vexdesk::dealsTable(*core.database());
    const vexdesk::DealWriter writer(table);
    Deal strange;
    strange.securityId = 7;
    Deal real = strange; // of the same day
    real.moment = datetime(momentText(day, QTime(0, 0, 30)));
    core.rawQueue()->post(table, writer.row(strange));
    core.rawQueue()->post(table, writer.row(real));
    const std::vector<Row> theirs = rows(core);
    QDateTime now(day, QTime(0, 1));
    DealsFeed feed(core, [&now] { return now; });
    now = QDateTime(day.addDays(1), QTime(0, 1));
    feed.advance();
    const std::vector<Row> all = rows(core);
    QVERIFY(all.size() > 2);
    QVERIFY(std::equal(theirs.begin(), theirs.end(), all.begin()));
}

void TestDealsFeed::goesWithItsRows()
{
    vexdesk::Core core;
    Table* const table = vexdesk::dealsTable(*core.database());
    const vexdesk::DealWriter writer(table);
    Deal real;
    real.securityId = 7;
    real.moment = datetime(momentText(day, QTime(9, 0)));
    core.rawQueue()->post(table, writer.row(real));
    const std::vector<Row> theirs = rows(core);
    {
        QDateTime now(day, QTime(10, 0));
        DealsFeed feed(core, [&now] { return now; });
        now = QDateTime(day, QTime(10, 1));
        feed.advance();
        QVERIFY(rows(core).size() > 1000);
    }
    QVERIFY(rows(core) == theirs);
    // The same again, as if it had never gone.
    const DealsFeed again(core, [] { return QDateTime(day, QTime(10, 1)); });
    QVERIFY(rows(core).size() > 1000);
}

void TestDealsFeed::aBlockerHoldsItsRowsToo()
{
    vexdesk::Core core;
    auto feed = std::make_unique<DealsFeed>(core, [] { return QDateTime(day, QTime(10, 0)); });
    const std::vector<Row> before = rows(core);
    {
        const IRawQueue::ProcessingBlocker blocker;
        feed.reset();
        QVERIFY(rows(core) == before);
    }
    QVERIFY(rows(core).empty());
}

QTEST_GUILESS_MAIN(TestDealsFeed)
#include "tst_dealsfeed.moc"
