// SPDX-License-Identifier: MIT
#include <vexdesk/database/indexsort.h>
#include <vexdesk/database/masterindex.h>
#include <vexdesk/securitydirectory.h>
#include <vexdesk/terminal/referencedata.h>

#include "support/strictlog.h"

#include <QtTest/QTest>

#include <array>
#include <thread>

using vexdesk::ReferenceData;

namespace {

using Key = MasterKey_Struct<int, int, long long>;
using Order = MasterIndex_Struct<int, int, long long>;

Record find(int stockId, int boardId, long long securityId)
{
    const QPointer<Table> table = SecurityDirectory::i().table();
    return IndexSort::findBinary(table->masterIndex(), Key(stockId, boardId, securityId), -1,
                                 Order::CompareKey(table));
}

QString text(const Record& row, const char* column)
{
    return row.field(SecurityDirectory::i().table()->columnIndex(column)).toString();
}

ReferenceData oneSecurity(int stockId, int decimals)
{
    ReferenceData data;
    data.stocks = {{stockId, "EAST", "Восток"}};
    data.boards = {{"EAST", 2, "SPOT", "Спот", 4}};
    data.securities = {{"EAST", "SPOT", 3, "AAA", "Первая", decimals}};
    return data;
}

} // namespace

class SecurityRegisterTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void holdsEverySecurity();
    void standsInTheOrderOfItsKey();
    void findsNothingThatIsNotThere();
    void theFifthVenueIsRegisteredUnderTheFirst();
    void newReferenceDataComeAsANewTable();
    void isEmptyWithoutSecurities();
    void isTheSameForAllThreads();
};

void SecurityRegisterTest::init()
{
    testsupport::failOnStrayWarnings();
    ReferenceData::install(ReferenceData::demonstration());
}

void SecurityRegisterTest::holdsEverySecurity()
{
    const ReferenceData data = ReferenceData::demonstration();
    QCOMPARE(SecurityDirectory::i().table()->masterIndex().count(), data.securities.size());
    const Record row = find(1, 1, 104);
    QVERIFY(!row.isNull());
    QCOMPARE(text(row, "stock_id"), QStringLiteral("1"));
    QCOMPARE(text(row, "board_id"), QStringLiteral("1"));
    QCOMPARE(text(row, "sec_id"), QStringLiteral("104"));
    QCOMPARE(text(row, "code"), QStringLiteral("BORA"));
    QCOMPARE(text(row, "title"), QStringLiteral("Бора Энерго"));
    QCOMPARE(text(row, "decimals"), QStringLiteral("4"));
    QVERIFY(!find(2, 1, 105).isNull());
}

void SecurityRegisterTest::standsInTheOrderOfItsKey()
{
    const QPointer<Table> table = SecurityDirectory::i().table();
    const Order order(table, {0, 1, 2});
    const Record* before = nullptr;
    for (const Record& row : table->masterIndex()) {
        QVERIFY(!before || order.compare(*before, row) <= 0);
        before = &row;
    }
    QVERIFY(before);
}

void SecurityRegisterTest::findsNothingThatIsNotThere()
{
    QVERIFY(find(1, 1, 999).isNull());
    QVERIFY(find(1, 9, 101).isNull());
    QVERIFY(find(3, 1, 101).isNull());
    QVERIFY(find(0, 0, 0).isNull());
    QVERIFY(find(-1, 0, 0).isNull());
}

void SecurityRegisterTest::theFifthVenueIsRegisteredUnderTheFirst()
{
    ReferenceData::install(oneSecurity(5, 2));
    QVERIFY(find(5, 2, 3).isNull());
    const Record row = find(1, 2, 3);
    QVERIFY(!row.isNull());
    QCOMPARE(text(row, "stock_id"), QStringLiteral("1"));
    // The directory's look-ups know the section by its own id.
    QCOMPARE(SecurityDirectory::i().decimalsById(5, 2, 3), 2);
    QCOMPARE(SecurityDirectory::i().decimalsById(1, 2, 3), 0);

    ReferenceData::install(oneSecurity(6, 2));
    QVERIFY(!find(6, 2, 3).isNull());
    QVERIFY(find(1, 2, 3).isNull());
}

void SecurityRegisterTest::newReferenceDataComeAsANewTable()
{
    ReferenceData::install(oneSecurity(1, 2));
    const QPointer<Table> before = SecurityDirectory::i().table();
    const Record row = find(1, 2, 3);
    ReferenceData::install(oneSecurity(1, 4));
    QVERIFY(before);
    QVERIFY(SecurityDirectory::i().table() != before);
    QCOMPARE(text(row, "decimals"), QStringLiteral("2"));
    QCOMPARE(text(find(1, 2, 3), "decimals"), QStringLiteral("4"));
    QCOMPARE(before->masterIndex().count(), 1);
}

void SecurityRegisterTest::isEmptyWithoutSecurities()
{
    ReferenceData::install(ReferenceData());
    QVERIFY(!SecurityDirectory::i().table());
    ReferenceData data = oneSecurity(1, 2);
    data.securities.clear();
    ReferenceData::install(data);
    QVERIFY(!SecurityDirectory::i().table());
}

void SecurityRegisterTest::isTheSameForAllThreads()
{
    for (int round = 0; round < 50; ++round) {
        ReferenceData::install(oneSecurity(1, 2));
        std::array<Table*, 4> seen{};
        std::vector<std::thread> threads;
        threads.reserve(seen.size());
        for (Table*& table : seen) {
            threads.emplace_back([&table] {
                if (!find(1, 2, 3).isNull())
                    table = SecurityDirectory::i().table();
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        for (const Table* table : seen)
            QVERIFY(table && table == seen.front());
    }
}

QTEST_GUILESS_MAIN(SecurityRegisterTest)
#include "tst_securityregister.moc"
