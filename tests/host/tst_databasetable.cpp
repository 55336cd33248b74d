// SPDX-License-Identifier: MIT
#include <vexdesk/database/masterindex.h>
#include <vexdesk/database/table.h>
#include <vexdesk/terminal/database.h>

#include "support/strictlog.h"

#include <QtCore/QPointer>
#include <QtTest/QTest>

#include <array>
#include <map>
#include <random>
#include <thread>

using vexdesk::FieldType;

namespace {

enum Column { Key, Number, Name };

QList<Table::Column> columns()
{
    return {{"key", FieldType::Int32}, {"number", FieldType::Int64}, {"name", FieldType::Text}};
}

Record makeRow(const Table& table, int key, long long number)
{
    Record row(&table);
    row.field(Key) = key;
    row.field(Number) = number;
    row.field(Name) = QStringLiteral("row %1 of a table with texts").arg(number);
    return row;
}

std::vector<std::pair<int, qint64>> contents(const Table& table)
{
    std::vector<std::pair<int, qint64>> result;
    for (const Record& row : table.masterIndex())
        result.emplace_back(table.dataPtr(row.data(), Key).as<qint32>(),
                            table.dataPtr(row.data(), Number).as<qint64>());
    return result;
}

std::unique_ptr<MasterIndex> byKey(const Table& table)
{
    return std::make_unique<MasterIndex_Struct<int>>(&table, QList<int>{Key});
}

template <typename Action>
bool throwsException(Action action)
{
    try {
        action();
    } catch (const Exception& error) {
        return !error.message().isEmpty();
    }
    return false;
}

} // namespace

class DatabaseTableTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void knowsItsColumns();
    void aColumnThatIsNotThere();
    void aRowOfNoTable();
    void recordsShareARow();
    void aRowGoesWithItsLastRecord();
    void freedRowsAreUsedAgainAndComeEmpty();
    void rowsOutliveTheirTable();
    void rowsStandInTheOrderOfInsertion();
    void foreignRowsAreRefused();
    void keepsKeyOrder();
    void setOrderSortsWhatIsThere();
    void removedRowsAreFreed();
    void locksExclusively();
    void recordsAreCountedFromSeveralThreads();
    void rowsAreMadeAndFreedOnSeveralThreads();
    void aPointerToTheTableIsGuarded();
    void aDatabaseFindsItsTables();
};

void DatabaseTableTest::knowsItsColumns()
{
    const Table table("deals", columns());
    QCOMPARE(table.name(), QStringLiteral("deals"));
    QCOMPARE(table.columnCount(), 3);
    QCOMPARE(table.columnIndex("key"), 0);
    QCOMPARE(table.columnIndex("number"), 1);
    QCOMPARE(table.columnIndex("name"), 2);
    QCOMPARE(table.columns().at(2).name, QStringLiteral("name"));
    QCOMPARE(table.columns().at(2).type, FieldType::Text);
    for (const char* other : {"", "Key", "key ", "4"})
        QCOMPARE(table.columnIndex(other), -1);
}

void DatabaseTableTest::aColumnThatIsNotThere()
{
    const Table table("t", columns());
    const Record row(&table);
    for (const int column : {-1, 3, 1000}) {
        QVERIFY(throwsException([&] { row.field(column); }));
        QVERIFY(throwsException([&] { table.layout(column); }));
        QVERIFY(!table.dataPtr(row.data(), column).present);
        QVERIFY(!table.dataPtr(row.data(), column).value);
    }
}

void DatabaseTableTest::aRowOfNoTable()
{
    const Record row(nullptr);
    QVERIFY(row.isNull());
    QVERIFY(!row.data());
    QVERIFY(row == Record::null);
    QVERIFY(row == Record());
    QVERIFY(throwsException([&] { row.field(0); }));
    const Table table("t", columns());
    QVERIFY(!table.dataPtr(nullptr, Key).present);
    QVERIFY(Record(&table) != Record::null);
}

void DatabaseTableTest::recordsShareARow()
{
    const Table table("t", columns());
    const Record row = makeRow(table, 1, 2);
    Record copy = row;
    QVERIFY(copy == row);
    copy.field(Number) = 3;
    QCOMPARE(row.field(Number).toString(), QStringLiteral("3"));
    QVERIFY(makeRow(table, 1, 3) != row);

    Record moved = std::move(copy);
    QVERIFY(copy.isNull()); // NOLINT(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
    QVERIFY(moved == row);
    Record& self = moved;
    moved = self;
    QVERIFY(moved == row);
    QCOMPARE(table.liveRowCount(), 1);
}

void DatabaseTableTest::aRowGoesWithItsLastRecord()
{
    Table table("t", columns());
    QCOMPARE(table.liveRowCount(), 0);
    {
        const Record row = makeRow(table, 1, 1);
        const std::vector<Record> copies(5, row);
        QCOMPARE(table.liveRowCount(), 1);
        const Record other = makeRow(table, 2, 2);
        QCOMPARE(table.liveRowCount(), 2);
        table.insert(row);
    }
    QCOMPARE(table.liveRowCount(), 1);
    Record held = *table.masterIndex().begin();
    table.clear();
    QCOMPARE(table.liveRowCount(), 1);
    QCOMPARE(held.field(Number).toString(), QStringLiteral("1"));
    held = Record::null;
    QCOMPARE(table.liveRowCount(), 0);
}

void DatabaseTableTest::freedRowsAreUsedAgainAndComeEmpty()
{
    const Table table("t", columns());
    const unsigned char* const first = makeRow(table, 1, 1).data();
    for (int i = 0; i < 1000; ++i) {
        const Record row(&table);
        QVERIFY(row.data() == first);
        for (const int column : {Key, Number, Name})
            QVERIFY(!row.field(column).isPresent());
        QVERIFY(table.dataPtr(row.data(), Name).as<QString>().isNull());
        QCOMPARE(table.dataPtr(row.data(), Number).as<qint64>(), 0);
        row.field(Key) = i;
        row.field(Number) = i;
        row.field(Name) = QStringLiteral("text %1").arg(i);
    }
}

void DatabaseTableTest::rowsOutliveTheirTable()
{
    std::vector<Record> rows;
    {
        Table table("t", columns());
        for (int i = 0; i < 10000; ++i) {
            rows.push_back(makeRow(table, i, i));
            table.insert(rows.back());
        }
        // A part of them is the table's alone.
        rows.resize(5000);
    }
    for (int i = 0; i < static_cast<int>(rows.size()); ++i)
        QCOMPARE(rows.at(i).field(Name).toString(),
                 QStringLiteral("row %1 of a table with texts").arg(i));
}

void DatabaseTableTest::rowsStandInTheOrderOfInsertion()
{
    Table table("t", columns());
    std::vector<std::pair<int, qint64>> expected;
    for (int i = 0; i < 5000; ++i) {
        const int key = i * 7919 % 100;
        table.insert(makeRow(table, key, i));
        expected.emplace_back(key, i);
    }
    QCOMPARE(table.masterIndex().count(), 5000);
    QVERIFY(contents(table) == expected);
    QVERIFY(!table.order());
}

void DatabaseTableTest::foreignRowsAreRefused()
{
    Table table("t", columns());
    const Table other("t", columns());
    const Record foreign(&other);
    QVERIFY(table.owns(Record(&table)));
    QVERIFY(!table.owns(foreign));
    QVERIFY(!table.owns(Record::null));
    QVERIFY(throwsException([&] { table.insert(foreign); }));
    QVERIFY(throwsException([&] { table.insert(Record::null); }));
    QVERIFY(table.masterIndex().isEmpty());
}

void DatabaseTableTest::keepsKeyOrder()
{
    Table table("t", columns());
    table.setOrder(byKey(table));
    std::multimap<int, qint64> expected;
    std::mt19937 random(11);
    for (int i = 0; i < 50000; ++i) {
        const int key = static_cast<int>(random() % 20000) - 10000;
        table.insert(makeRow(table, key, i));
        expected.emplace(key, i);
        if (random() % 5000 == 0) {
            const int gone = static_cast<int>(random() % 10);
            const auto isGone = [gone](int other) { return (other + 10000) % 10 == gone; };
            table.removeIf([&](const Record& row) {
                return isGone(table.dataPtr(row.data(), Key).as<qint32>());
            });
            std::erase_if(expected, [&](const auto& item) { return isGone(item.first); });
        }
    }
    QVERIFY(expected.size() > 10000);
    QVERIFY(
        (contents(table) == std::vector<std::pair<int, qint64>>(expected.begin(), expected.end())));
    QCOMPARE(table.liveRowCount(), static_cast<qsizetype>(expected.size()));
}

void DatabaseTableTest::setOrderSortsWhatIsThere()
{
    Table table("t", columns());
    for (int i = 0; i < 2000; ++i)
        table.insert(makeRow(table, -i / 3, i));
    table.setOrder(byKey(table));
    QCOMPARE(table.order()->columns(), QList<int>{Key});
    std::multimap<int, qint64> expected;
    for (int i = 0; i < 2000; ++i)
        expected.emplace(-i / 3, i);
    QVERIFY(
        (contents(table) == std::vector<std::pair<int, qint64>>(expected.begin(), expected.end())));
    QCOMPARE(table.liveRowCount(), 2000);
}

void DatabaseTableTest::removedRowsAreFreed()
{
    Table table("t", columns());
    for (int i = 0; i < 3000; ++i)
        table.insert(makeRow(table, i % 2, i));
    const Record held = *table.masterIndex().begin();
    const auto isEven = [&table](const Record& row) {
        return table.dataPtr(row.data(), Key).as<qint32>() == 0;
    };
    QCOMPARE(table.removeIf(isEven), 1500);
    QCOMPARE(table.masterIndex().count(), 1500);
    QCOMPARE(table.liveRowCount(), 1501);
    QCOMPARE(held.field(Number).toString(), QStringLiteral("0"));
    QCOMPARE(table.removeIf(isEven), 0);
}

void DatabaseTableTest::locksExclusively()
{
    const Table table("t", columns());
    {
        const std::lock_guard lock(table);
        bool taken = true;
        std::thread([&] { taken = table.try_lock(); }).join();
        QVERIFY(!taken);
    }
    QVERIFY(table.try_lock());
    table.unlock();
}

void DatabaseTableTest::recordsAreCountedFromSeveralThreads()
{
    const Table table("t", columns());
    {
        const Record row = makeRow(table, 1, 1);
        std::vector<std::thread> threads;
        threads.reserve(4);
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([row] {
                for (int n = 0; n < 20000; ++n) {
                    std::array<Record, 3> copies = {row, row, row};
                    copies.front() = Record::null;
                }
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        QCOMPARE(table.liveRowCount(), 1);
        QCOMPARE(row.field(Number).toString(), QStringLiteral("1"));
    }
    QCOMPARE(table.liveRowCount(), 0);
}

void DatabaseTableTest::rowsAreMadeAndFreedOnSeveralThreads()
{
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    {
        const Table table("t", columns());
        std::atomic<int> started = 0;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([&wrong, &table, &started, i] {
                std::vector<Record> rows;
                rows.push_back(makeRow(table, i, 0));
                for (int n = 1; n < 2000; ++n)
                    rows.push_back(makeRow(table, i, n));
                ++started;
                // From here on the table may be gone.
                for (int n = 0; n < 2000; ++n) {
                    wrong += rows.at(n).field(Number).toString() != QString::number(n);
                    rows.at(n) = Record::null;
                }
            });
        }
        while (started < 4)
            std::this_thread::yield();
    }
    for (std::thread& thread : threads)
        thread.join();
    QCOMPARE(wrong.load(), 0);
}

void DatabaseTableTest::aPointerToTheTableIsGuarded()
{
    QPointer<Table> guarded;
    {
        Table table("t", columns());
        guarded = &table;
        QVERIFY(guarded);
    }
    QVERIFY(!guarded);
}

void DatabaseTableTest::aDatabaseFindsItsTables()
{
    vexdesk::Database database;
    QVERIFY(!database.table("deals"));
    Table* const deals = database.createTable("deals", columns());
    Table* const orders = database.tableOf("orders", columns());
    QVERIFY(deals && orders && deals != orders);
    QCOMPARE(database.table("deals"), deals);
    QCOMPARE(database.table("orders"), orders);
    QCOMPARE(database.tableOf("deals", {}), deals);
    QCOMPARE(deals->columnCount(), 3);
    QVERIFY(!database.table("Deals"));
    QVERIFY(!database.table(QString()));
    QVERIFY(throwsException([&] { database.createTable("deals", columns()); }));
    QCOMPARE(database.table("deals"), deals);
}

QTEST_GUILESS_MAIN(DatabaseTableTest)
#include "tst_databasetable.moc"
