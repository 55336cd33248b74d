// SPDX-License-Identifier: MIT
#include <vexdesk/database/table.h>

#include <vexdesk/database/masterindex.h>

#include "rowstore.h"

#include <QtCore/QHash>

#include <mutex>
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

struct Table::Private
{
    Private(QString tableName, QList<Column> tableColumns)
        : name(std::move(tableName))
        , columns(std::move(tableColumns))
        , store(vexdesk::RowStore::create(typesOf(columns)))
    {}

    QString name;
    QList<Column> columns;
    QHash<QString, int> numbers;
    vexdesk::RowStore* store; // ends itself when the table and the last row are gone
    std::unique_ptr<MasterIndex> order;
    PartitionList<Record> rows;
    std::mutex mutex;
};

Table::Table(QString name, QList<Column> columns, QObject* parent)
    : QObject(parent)
    , m_d(new Private(std::move(name), std::move(columns)))
    , m_layout(m_d->store->layout().data())
    , m_layoutSize(static_cast<int>(m_d->columns.size()))
{
    for (int number = 0; number < m_layoutSize; ++number)
        m_d->numbers.insert(m_d->columns.at(number).name, number);
    Q_ASSERT_X(m_d->numbers.size() == m_d->columns.size(), "Table", "two columns of one name");
}

Table::~Table()
{
    m_d->rows.clear();
    m_d->store->release();
}

QString Table::name() const
{
    return m_d->name;
}

QList<Table::Column> Table::columns() const
{
    return m_d->columns;
}

int Table::columnIndex(const QString& name) const
{
    return m_d->numbers.value(name, -1);
}

const MasterIndex* Table::order() const noexcept
{
    return m_d->order.get();
}

const PartitionList<Record>& Table::masterIndex() const noexcept
{
    return m_d->rows;
}

void Table::lock() const
{
    m_d->mutex.lock();
}

bool Table::try_lock() const
{
    return m_d->mutex.try_lock();
}

void Table::unlock() const
{
    m_d->mutex.unlock();
}

void Table::setOrder(std::unique_ptr<MasterIndex> order)
{
    m_d->order = std::move(order);
    const std::vector<Record> rows(m_d->rows.begin(), m_d->rows.end());
    m_d->rows.clear();
    for (const Record& row : rows)
        insert(row);
}

void Table::insert(Record row)
{
    if (!owns(row))
        throw Exception(tr("Строка не принадлежит таблице %1").arg(m_d->name));
    if (!m_d->order) {
        m_d->rows.append(std::move(row));
        return;
    }
    // Behind the rows with the same key: they stand in the order of their insertion.
    m_d->rows.insert(
        row, [this, &row](const Record& other) { return m_d->order->compare(other, row) <= 0; });
}

qsizetype Table::removeIf(const std::function<bool(const Record&)>& predicate)
{
    return m_d->rows.removeIf(predicate);
}

void Table::clear()
{
    m_d->rows.clear();
}

bool Table::owns(const Record& row) const noexcept
{
    return row.data() &&
           reinterpret_cast<const vexdesk::RowHeader*>(row.data())->store == m_d->store;
}

const vexdesk::ColumnLayout& Table::layout(int column) const
{
    if (column < 0 || column >= m_layoutSize)
        throw Exception(tr("В таблице %1 нет колонки %2").arg(m_d->name).arg(column));
    return m_layout[column];
}

qsizetype Table::liveRowCount() const
{
    return m_d->store->liveRowCount();
}

unsigned char* Table::newRow() const
{
    return m_d->store->newRow();
}

void Table::freeRow(unsigned char* row) noexcept
{
    vexdesk::RowStore::freeRow(row);
}
