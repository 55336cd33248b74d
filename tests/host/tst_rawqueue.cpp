// SPDX-License-Identifier: MIT
#include <vexdesk/database/irawqueue.h>
#include <vexdesk/database/masterindex.h>
#include <vexdesk/terminal/core.h>
#include <vexdesk/terminal/database.h>
#include <vexdesk/terminal/rawqueue.h>

#include "support/strictlog.h"

#include <QtTest/QTest>

#include <array>
#include <atomic>
#include <numeric>
#include <optional>
#include <thread>

using vexdesk::FieldType;
using vexdesk::RawQueue;

namespace {

enum Column { Poster, Number };

QList<Table::Column> columns()
{
    return {{"poster", FieldType::Int32}, {"number", FieldType::Int64}};
}

Record makeRow(const Table& table, int poster, long long number)
{
    Record row(&table);
    row.field(Poster) = poster;
    row.field(Number) = number;
    return row;
}

qsizetype rowCount(const Table& table)
{
    const std::lock_guard lock(table);
    return table.masterIndex().count();
}

// The numbers of one poster, in the order of the table.
std::vector<qint64> numbers(const Table& table, int poster)
{
    const std::lock_guard lock(table);
    std::vector<qint64> result;
    for (const Record& row : table.masterIndex()) {
        if (table.dataPtr(row.data(), Poster).as<qint32>() == poster)
            result.push_back(table.dataPtr(row.data(), Number).as<qint64>());
    }
    return result;
}

std::vector<qint64> upTo(int count)
{
    std::vector<qint64> result(count);
    std::iota(result.begin(), result.end(), 0);
    return result;
}

// An order in which a comparison takes as long as the test wants: a row is under way.
class SlowOrder final : public MasterIndex
{
public:
    SlowOrder(const Table* table, std::atomic<bool>* entered, const std::atomic<bool>* leave,
              std::atomic<bool>* left)
        : MasterIndex(table, {Poster})
        , m_entered(entered)
        , m_leave(leave)
        , m_left(left)
    {}
    int compare(const Record& /*left*/, const Record& /*right*/) const override
    {
        *m_entered = true;
        while (!*m_leave)
            std::this_thread::yield();
        *m_left = true;
        return 0;
    }

private:
    std::atomic<bool>* m_entered;
    const std::atomic<bool>* m_leave;
    std::atomic<bool>* m_left;
};

// Posts rows until there were enough scans beside it, and says how many; the bound only ends a run
// without.
int postWhileScanned(RawQueue& queue, Table* table, int poster, const std::atomic<int>& scans)
{
    constexpr int leastRows = 1000;
    constexpr int mostRows = 50000;
    constexpr int enoughScans = 20;
    int i = 0;
    for (; i < leastRows || (scans < enoughScans && i < mostRows); ++i)
        queue.post(table, makeRow(*table, poster, i));
    return i;
}

// Keeps some of the rows.
qint64 sumOfNumbers(const Table& table, std::vector<Record>& held)
{
    const std::lock_guard lock(table);
    qint64 sum = 0;
    for (const Record& row : table.masterIndex()) {
        sum += table.dataPtr(row.data(), Number).as<qint64>();
        if (sum % 1000 == 0)
            held.push_back(row);
    }
    return sum;
}

} // namespace

class RawQueueTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void appliesAtOnce();
    void keepsWhileSuspended();
    void setSuspendedTellsWhatWas();
    void keepsTheOrderAcrossTables();
    void listsStayTogether();
    void removesInItsTurn();
    void foreignRowsAreRefused();
    void dropsItsBacklogWithItself();
    void blockerSuspends();
    void blockersNest();
    void blockerKeepsAnEarlierSuspension();
    void blockerWithoutCore();
    void blockerThatOutlivesTheCore();
    void suspensionWaitsForWhatIsUnderWay();
    void drainWaits();
    void manyPostersBesideAScan();
};

void RawQueueTest::appliesAtOnce()
{
    Table table("t", columns());
    RawQueue queue;
    QVERIFY(!queue.isSuspended());
    for (int i = 0; i < 100; ++i) {
        queue.post(&table, makeRow(table, 0, i));
        QCOMPARE(rowCount(table), i + 1);
    }
    QVERIFY(numbers(table, 0) == upTo(100));
}

void RawQueueTest::keepsWhileSuspended()
{
    Table table("t", columns());
    RawQueue queue;
    queue.post(&table, makeRow(table, 0, 0));
    queue.setSuspended(true);
    for (int i = 1; i < 100; ++i)
        queue.post(&table, makeRow(table, 0, i));
    QCOMPARE(rowCount(table), 1);
    QCOMPARE(table.liveRowCount(), 100);
    queue.setSuspended(false);
    QVERIFY(numbers(table, 0) == upTo(100));
    queue.post(&table, makeRow(table, 0, 100));
    QVERIFY(numbers(table, 0) == upTo(101));
}

void RawQueueTest::setSuspendedTellsWhatWas()
{
    RawQueue queue;
    QCOMPARE(queue.setSuspended(false), false);
    QCOMPARE(queue.setSuspended(true), false);
    QCOMPARE(queue.setSuspended(true), true);
    QVERIFY(queue.isSuspended());
    QCOMPARE(queue.setSuspended(false), true);
    QVERIFY(!queue.isSuspended());
}

void RawQueueTest::keepsTheOrderAcrossTables()
{
    Table first("first", columns());
    Table second("second", columns());
    RawQueue queue;
    queue.setSuspended(true);
    for (int i = 0; i < 100; ++i) {
        queue.post(&first, makeRow(first, 0, i));
        queue.post(&second, makeRow(second, 0, i));
    }
    queue.setSuspended(false);
    QVERIFY(numbers(first, 0) == upTo(100));
    QVERIFY(numbers(second, 0) == upTo(100));
}

void RawQueueTest::listsStayTogether()
{
    constexpr int lists = 200;
    constexpr int length = 20;
    Table table("t", columns());
    RawQueue queue;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int poster = 0; poster < 4; ++poster) {
        threads.emplace_back([&, poster] {
            for (int list = 0; list < lists; ++list) {
                std::vector<Record> rows;
                rows.reserve(length);
                for (int i = 0; i < length; ++i)
                    rows.push_back(makeRow(table, poster, list * length + i));
                queue.post(&table, rows);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    queue.post(&table, std::vector<Record>());
    queue.drain();
    QCOMPARE(rowCount(table), 4 * lists * length);
    int at = 0;
    qint64 before = 0;
    for (const Record& row : table.masterIndex()) {
        const qint64 number = table.dataPtr(row.data(), Number).as<qint64>();
        QCOMPARE(number % length, at % length);
        QVERIFY(at % length == 0 || number == before + 1);
        before = number;
        ++at;
    }
}

void RawQueueTest::removesInItsTurn()
{
    Table table("t", columns());
    RawQueue queue;
    const auto isPosterZero = [&table](const Record& row) {
        return table.dataPtr(row.data(), Poster).as<qint32>() == 0;
    };
    queue.post(&table, makeRow(table, 0, 0));
    queue.post(&table, makeRow(table, 1, 0));
    queue.setSuspended(true);
    queue.post(&table, makeRow(table, 0, 1));
    queue.postRemoval(&table, isPosterZero);
    queue.post(&table, makeRow(table, 0, 2));
    QCOMPARE(rowCount(table), 2);
    queue.setSuspended(false);
    QVERIFY(numbers(table, 0) == std::vector<qint64>{2});
    QVERIFY(numbers(table, 1) == std::vector<qint64>{0});
    queue.postRemoval(&table, isPosterZero);
    QVERIFY(numbers(table, 0).empty());
    QCOMPARE(table.liveRowCount(), 1);
}

void RawQueueTest::foreignRowsAreRefused()
{
    Table table("t", columns());
    const Table other("other", columns());
    RawQueue queue;
    const std::vector<Record> rows = {makeRow(table, 0, 0), makeRow(other, 0, 1)};
    QVERIFY_EXCEPTION_THROWN(queue.post(&table, rows), Exception);
    QVERIFY_EXCEPTION_THROWN(queue.post(&table, makeRow(other, 0, 0)), Exception);
    QVERIFY_EXCEPTION_THROWN(queue.post(&table, Record::null), Exception);
    QCOMPARE(rowCount(table), 0);
    queue.post(&table, makeRow(table, 0, 0));
    QCOMPARE(rowCount(table), 1);
}

void RawQueueTest::dropsItsBacklogWithItself()
{
    const auto table = std::make_unique<Table>("t", columns());
    {
        RawQueue queue;
        queue.setSuspended(true);
        queue.post(table.get(), makeRow(*table, 0, 0));
        QCOMPARE(table->liveRowCount(), 1);
    }
    QCOMPARE(table->liveRowCount(), 0);
    QCOMPARE(rowCount(*table), 0);
}

void RawQueueTest::blockerSuspends()
{
    vexdesk::Core core;
    Table* const table = core.database()->createTable("t", columns());
    QVERIFY(!core.rawQueue()->isSuspended());
    {
        const IRawQueue::ProcessingBlocker blocker;
        QVERIFY(core.rawQueue()->isSuspended());
        core.rawQueue()->post(table, makeRow(*table, 0, 0));
        QCOMPARE(rowCount(*table), 0);
    }
    QVERIFY(!core.rawQueue()->isSuspended());
    QCOMPARE(rowCount(*table), 1);
}

void RawQueueTest::blockersNest()
{
    vexdesk::Core core;
    {
        const IRawQueue::ProcessingBlocker outer;
        {
            const IRawQueue::ProcessingBlocker inner;
            QVERIFY(core.rawQueue()->isSuspended());
        }
        QVERIFY(core.rawQueue()->isSuspended());
    }
    QVERIFY(!core.rawQueue()->isSuspended());
}

void RawQueueTest::blockerKeepsAnEarlierSuspension()
{
    vexdesk::Core core;
    core.rawQueue()->setSuspended(true);
    {
        const IRawQueue::ProcessingBlocker blocker;
    }
    QVERIFY(core.rawQueue()->isSuspended());
}

void RawQueueTest::blockerWithoutCore()
{
    QVERIFY(!ICore::instance());
    const IRawQueue::ProcessingBlocker blocker;

    // A core without a database and a queue, as a terminal that has no market data is.
    class BareCore final : public ICore
    {
    public:
        void addOptionsPage(IOptionsPage* /*page*/) override {}
        QObject* notifier() const override { return nullptr; }
        IDatabase* database() const override { return nullptr; }
        IRawQueue* rawQueue() const override { return nullptr; }
    };
    const BareCore core;
    const IRawQueue::ProcessingBlocker ofBareCore;
    QVERIFY(ICore::instance());
}

void RawQueueTest::blockerThatOutlivesTheCore()
{
    auto core = std::make_unique<vexdesk::Core>();
    std::optional<IRawQueue::ProcessingBlocker> blocker;
    blocker.emplace();
    core.reset();
    blocker.reset();

    // Another core's queue is none of its business.
    core = std::make_unique<vexdesk::Core>();
    blocker.emplace();
    core.reset();
    core = std::make_unique<vexdesk::Core>();
    QVERIFY(!core->rawQueue()->isSuspended());
    blocker.reset();
    QVERIFY(!core->rawQueue()->isSuspended());
}

void RawQueueTest::suspensionWaitsForWhatIsUnderWay()
{
    std::atomic<bool> entered = false;
    std::atomic<bool> leave = false;
    std::atomic<bool> left = false;
    Table table("t", columns());
    table.setOrder(std::make_unique<SlowOrder>(&table, &entered, &leave, &left));
    RawQueue queue;
    queue.post(&table, makeRow(table, 0, 0));
    std::thread poster([&] { queue.post(&table, makeRow(table, 0, 1)); });
    while (!entered)
        std::this_thread::yield();

    std::atomic<bool> suspended = false;
    bool leftBefore = false;
    std::thread suspender([&] {
        queue.setSuspended(true);
        leftBefore = left;
        suspended = true;
    });
    while (!queue.isSuspended())
        std::this_thread::yield();
    // Time for one that does not wait to say so.
    for (int i = 0; i < 1000 && !suspended; ++i)
        std::this_thread::yield();
    leave = true;
    poster.join();
    suspender.join();
    QVERIFY(leftBefore);
    QCOMPARE(rowCount(table), 2);
    // What comes now is kept.
    queue.post(&table, makeRow(table, 0, 2));
    QCOMPARE(rowCount(table), 2);
}

void RawQueueTest::drainWaits()
{
    constexpr int count = 5000;
    Table table("t", columns());
    RawQueue queue;
    std::atomic<int> posted = 0;
    std::vector<std::thread> threads;
    threads.reserve(3);
    for (int poster = 0; poster < 3; ++poster) {
        threads.emplace_back([&, poster] {
            for (int i = 0; i < count; ++i) {
                queue.post(&table, makeRow(table, poster, i));
                ++posted;
            }
        });
    }
    for (int i = 0; i < 50; ++i) {
        const int before = posted;
        queue.drain();
        QVERIFY(rowCount(table) >= before);
    }
    for (std::thread& thread : threads)
        thread.join();
    queue.drain();
    QCOMPARE(rowCount(table), 3 * count);
}

void RawQueueTest::manyPostersBesideAScan()
{
    constexpr int posters = 4;
    vexdesk::Core core;
    RawQueue& queue = *core.rawQueue();
    Table* const table = core.database()->createTable("t", columns());
    std::atomic<int> scans = 0;
    std::atomic<int> running = posters;
    std::array<int, posters> counts{};
    std::vector<std::thread> threads;
    threads.reserve(posters);
    for (int poster = 0; poster < posters; ++poster) {
        threads.emplace_back([&, poster] {
            counts.at(poster) = postWhileScanned(queue, table, poster, scans);
            --running;
        });
    }
    // Half of the scans halt the queue and must find the table as they left it.
    std::vector<Record> held;
    while (running > 0) {
        std::optional<IRawQueue::ProcessingBlocker> blocker;
        if (scans % 2)
            blocker.emplace();
        const qsizetype before = rowCount(*table);
        QVERIFY(sumOfNumbers(*table, held) >= 0);
        if (blocker)
            QCOMPARE(rowCount(*table), before);
        else
            QVERIFY(rowCount(*table) >= before);
        ++scans;
    }
    for (std::thread& thread : threads)
        thread.join();
    queue.drain();
    int total = 0;
    for (int poster = 0; poster < posters; ++poster) {
        QVERIFY(numbers(*table, poster) == upTo(counts.at(poster)));
        total += counts.at(poster);
    }
    QCOMPARE(rowCount(*table), total);
    QCOMPARE(table->liveRowCount(), total);
}

QTEST_GUILESS_MAIN(RawQueueTest)
#include "tst_rawqueue.moc"
