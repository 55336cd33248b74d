// SPDX-License-Identifier: MIT
#include <vexdesk/terminal/core.h>
#include <vexdesk/terminal/database.h>
#include <vexdesk/terminal/deals.h>
#include <vexdesk/terminal/rawqueue.h>

#include "support/strictlog.h"

#include <QtTest/QTest>

using vexdesk::Deal;
using vexdesk::DealWriter;
using vexdesk::FieldType;

namespace {

Deal fullDeal()
{
    return {5,
            1,
            101,
            datetime(QStringLiteral("2026-11-20 10:00:00.500")),
            decimal(12345, 2),
            7,
            900,
            decimal(86415, 2)};
}

QStringList texts(const Record& row, const Table& table)
{
    QStringList result;
    for (int column = 0; column < table.columnCount(); ++column) {
        const Field field = row.field(column);
        result.append(field.isPresent() ? field.toString() : QStringLiteral("absent"));
    }
    return result;
}

} // namespace

class DealsTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void theTableHasItsSchema();
    void theTableIsMadeOnce();
    void writesEveryValue();
    void leavesOutWhatIsAbsent();
    void convertsToOtherColumns();
    void leavesOutColumnsThatAreNotThere();
    void anImpossibleConversionIsTold();
    void reachTheTableThroughTheQueueInTheirOrder();
};

void DealsTest::theTableHasItsSchema()
{
    vexdesk::Core core;
    QVERIFY(!core.database()->table("all_deals"));
    const Table* const table = vexdesk::dealsTable(*core.database());
    QCOMPARE(vexdesk::dealsTableName(), QStringLiteral("all_deals"));
    QCOMPARE(core.database()->table("all_deals"), table);
    const QMap<QString, FieldType> expected = {
        {"stock_id", FieldType::Int32},      {"board_id", FieldType::Int32},
        {"sec_id", FieldType::Int64},        {"moment", FieldType::DateTime},
        {"price", FieldType::Decimal},       {"quantity", FieldType::Int64},
        {"open_interest", FieldType::Int64}, {"value", FieldType::Decimal}};
    QCOMPARE(table->columnCount(), expected.size());
    for (auto it = expected.begin(); it != expected.end(); ++it) {
        const int column = table->columnIndex(it.key());
        QVERIFY2(column >= 0, qPrintable(it.key()));
        QCOMPARE(table->columns().at(column).type, it.value());
    }
    QVERIFY(!table->order());
}

void DealsTest::theTableIsMadeOnce()
{
    vexdesk::Database database;
    Table* const table = vexdesk::dealsTable(database);
    table->insert(DealWriter(table).row(fullDeal()));
    QCOMPARE(vexdesk::dealsTable(database), table);
    QCOMPARE(table->masterIndex().count(), 1);
}

void DealsTest::writesEveryValue()
{
    vexdesk::Database database;
    Table* const table = vexdesk::dealsTable(database);
    const DealWriter writer(table);
    QCOMPARE(writer.table(), table);
    QCOMPARE(
        texts(writer.row(fullDeal()), *table),
        (QStringList{"5", "1", "101", "2026-11-20 10:00:00.500", "123.45", "7", "900", "864.15"}));
    QVERIFY(table->masterIndex().isEmpty());
}

void DealsTest::leavesOutWhatIsAbsent()
{
    vexdesk::Database database;
    Table* const table = vexdesk::dealsTable(database);
    Deal deal = fullDeal();
    deal.openInterest.reset();
    deal.moment.reset();
    const QStringList row = texts(DealWriter(table).row(deal), *table);
    QCOMPARE(row.count("absent"), 2);
    QCOMPARE(row.at(table->columnIndex("open_interest")), QStringLiteral("absent"));
    QCOMPARE(row.at(table->columnIndex("moment")), QStringLiteral("absent"));
    QCOMPARE(texts(DealWriter(table).row(Deal()), *table).count("absent"), 8);
}

void DealsTest::convertsToOtherColumns()
{
    Table table("all_deals", {{"value", FieldType::XDecimal},
                              {"moment", FieldType::Text},
                              {"quantity", FieldType::Int32},
                              {"stock_id", FieldType::Code},
                              {"price", FieldType::Double}});
    QCOMPARE(texts(DealWriter(&table).row(fullDeal()), table),
             (QStringList{"864.15", "2026-11-20 10:00:00.500", "7", "5", "123.45"}));
}

void DealsTest::leavesOutColumnsThatAreNotThere()
{
    Table table("all_deals", {{"price", FieldType::Decimal}, {"other", FieldType::Text}});
    QCOMPARE(texts(DealWriter(&table).row(fullDeal()), table), (QStringList{"123.45", "absent"}));
}

void DealsTest::anImpossibleConversionIsTold()
{
    Table table("all_deals", {{"moment", FieldType::Int64}});
    QVERIFY_EXCEPTION_THROWN(DealWriter(&table).row(fullDeal()), Exception);
    QCOMPARE(table.liveRowCount(), 0);
}

void DealsTest::reachTheTableThroughTheQueueInTheirOrder()
{
    vexdesk::Core core;
    Table* const table = vexdesk::dealsTable(*core.database());
    const DealWriter writer(table);
    // Later moments first: the table keeps the order of arrival.
    for (int i = 0; i < 10; ++i) {
        Deal deal = fullDeal();
        deal.moment = datetime(1000 - i);
        core.rawQueue()->post(table, writer.row(deal));
    }
    const std::lock_guard lock(*table);
    const int moment = table->columnIndex("moment");
    int i = 0;
    for (const Record& row : table->masterIndex())
        QCOMPARE(table->dataPtr(row.data(), moment).as<datetime>().msecsSinceEpoch(), 1000 - i++);
    QCOMPARE(i, 10);
}

QTEST_GUILESS_MAIN(DealsTest)
#include "tst_deals.moc"
