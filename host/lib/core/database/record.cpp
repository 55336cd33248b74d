// SPDX-License-Identifier: MIT
#include <vexdesk/database/record.h>

#include <vexdesk/database/table.h>

#include "rowstore.h"

#include <QtCore/QCoreApplication>

constinit const Record Record::null;

Record::Record(const Table* table)
    : m_row(table ? table->newRow() : nullptr)
{}

Field Record::field(int column) const
{
    if (!m_row)
        throw Exception(QCoreApplication::translate("Record", "Строки нет"));
    const std::vector<vexdesk::ColumnLayout>& layout = header()->store->layout();
    if (column < 0 || column >= static_cast<int>(layout.size()))
        throw Exception(
            QCoreApplication::translate("Record", "В строке нет колонки %1").arg(column));
    return Field(m_row, layout[static_cast<std::size_t>(column)]);
}

void Record::free() noexcept
{
    Table::freeRow(m_row);
}
