// SPDX-License-Identifier: MIT
#include <vexdesk/database/table.h>

#include <vexdesk/database/masterindex.h>

#include "rowstore.h"

#include <vector>

namespace {

QList<vexdesk::FieldType> typesOf(const QList<Table::Column>& columns)
{
    QList<vexdesk::FieldType> types;
    for (const Table::Column& column : columns)
        types.append(column.type);
    return types;
}

} // namespace

Table::Table(QString name, QList<Column> columns, QObject* parent)
    : QObject(parent)
    , m_name(std::move(name))
    , m_columns(std::move(columns))
    , m_store(vexdesk::RowStore::create(typesOf(m_columns)))
    , m_layout(m_store->layout().data())
    , m_layoutSize(static_cast<int>(m_columns.size()))
{
    for (int number = 0; number < m_layoutSize; ++number)
        m_numbers.insert(m_columns.at(number).name, number);
    Q_ASSERT_X(m_numbers.size() == m_columns.size(), "Table", "two columns of one name");
}

Table::~Table()
{
    m_rows.clear();
    m_store->release();
}

void Table::setOrder(std::unique_ptr<MasterIndex> order)
{
    m_order = std::move(order);
    const std::vector<Record> rows(m_rows.begin(), m_rows.end());
    m_rows.clear();
    for (const Record& row : rows)
        insert(row);
}

void Table::insert(Record row)
{
    if (!owns(row))
        throw Exception(tr("Строка не принадлежит таблице %1").arg(m_name));
    if (!m_order) {
        m_rows.append(std::move(row));
        return;
    }
    // Behind the rows with the same key: they stand in the order of their insertion.
    m_rows.insert(row,
                  [this, &row](const Record& other) { return m_order->compare(other, row) <= 0; });
}

qsizetype Table::removeIf(const std::function<bool(const Record&)>& predicate)
{
    return m_rows.removeIf(predicate);
}

void Table::clear()
{
    m_rows.clear();
}

bool Table::owns(const Record& row) const noexcept
{
    return row.data() && reinterpret_cast<const vexdesk::RowHeader*>(row.data())->store == m_store;
}

const vexdesk::ColumnLayout& Table::layout(int column) const
{
    if (column < 0 || column >= m_layoutSize)
        throw Exception(tr("В таблице %1 нет колонки %2").arg(m_name).arg(column));
    return m_layout[column];
}

qsizetype Table::liveRowCount() const
{
    return m_store->liveRowCount();
}

unsigned char* Table::newRow() const
{
    return m_store->newRow();
}

void Table::freeRow(unsigned char* row) noexcept
{
    vexdesk::RowStore::freeRow(row);
}
