// SPDX-License-Identifier: MIT
#include <vexdesk/terminal/deals.h>

#include <vexdesk/terminal/database.h>

#include <array>

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

struct DealWriter::Private
{
    explicit Private(Table* ofDeals)
        : table(ofDeals)
    {
        const QList<Table::Column> names = dealsColumns();
        for (std::size_t i = 0; i < columns.size(); ++i)
            columns[i] = table->columnIndex(names.at(static_cast<qsizetype>(i)).name);
    }

    Table* table;
    std::array<int, 8> columns{}; // in the order of dealsColumns()
};

DealWriter::DealWriter(Table* table)
    : m_d(std::make_unique<const Private>(table))
{}

DealWriter::~DealWriter() = default;

Table* DealWriter::table() const noexcept
{
    return m_d->table;
}

Record DealWriter::row(const Deal& deal) const
{
    const auto& columns = m_d->columns;
    Record row(m_d->table);
    put(row, columns[0], deal.stockId);
    put(row, columns[1], deal.boardId);
    put(row, columns[2], deal.securityId);
    put(row, columns[3], deal.moment);
    put(row, columns[4], deal.price);
    put(row, columns[5], deal.quantity);
    put(row, columns[6], deal.openInterest);
    put(row, columns[7], deal.value);
    return row;
}

} // namespace vexdesk
