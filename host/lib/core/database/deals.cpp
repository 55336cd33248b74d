// SPDX-License-Identifier: MIT
#include <vexdesk/terminal/deals.h>

#include <vexdesk/terminal/database.h>

namespace vexdesk {

namespace {

template <typename T>
void put(const Record& row, int column, const std::optional<T>& value)
{
    if (column >= 0 && value)
        row.field(column) = *value;
}

} // namespace

QString dealsTableName()
{
    return QStringLiteral("all_deals");
}

QList<Table::Column> dealsColumns()
{
    return {{QStringLiteral("stock_id"), FieldType::Int32},
            {QStringLiteral("board_id"), FieldType::Int32},
            {QStringLiteral("sec_id"), FieldType::Int64},
            {QStringLiteral("moment"), FieldType::DateTime},
            {QStringLiteral("price"), FieldType::Decimal},
            {QStringLiteral("quantity"), FieldType::Int64},
            {QStringLiteral("open_interest"), FieldType::Int64},
            {QStringLiteral("value"), FieldType::Decimal}};
}

Table* dealsTable(Database& database)
{
    return database.tableOf(dealsTableName(), dealsColumns());
}

DealWriter::DealWriter(Table* table)
    : m_table(table)
{
    const QList<Table::Column> columns = dealsColumns();
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        m_columns[i] = table->columnIndex(columns.at(static_cast<qsizetype>(i)).name);
}

Record DealWriter::row(const Deal& deal) const
{
    Record row(m_table);
    put(row, m_columns[0], deal.stockId);
    put(row, m_columns[1], deal.boardId);
    put(row, m_columns[2], deal.securityId);
    put(row, m_columns[3], deal.moment);
    put(row, m_columns[4], deal.price);
    put(row, m_columns[5], deal.quantity);
    put(row, m_columns[6], deal.openInterest);
    put(row, m_columns[7], deal.value);
    return row;
}

} // namespace vexdesk
