// SPDX-License-Identifier: MIT
#include <vexdesk/terminal/database.h>

#include <vexdesk/database/masterindex.h>

#include <QtCore/QCoreApplication>

IDatabase::~IDatabase() = default;

namespace vexdesk {

Database::Database() = default;

Database::~Database() = default;

Table* Database::createTable(const QString& name, const QList<Table::Column>& columns)
{
    const std::lock_guard lock(m_mutex);
    if (find(name))
        throw Exception(
            QCoreApplication::translate("vexdesk::Database", "Таблица %1 уже есть").arg(name));
    return add(name, columns);
}

Table* Database::tableOf(const QString& name, const QList<Table::Column>& columns)
{
    const std::lock_guard lock(m_mutex);
    Table* const table = find(name);
    return table ? table : add(name, columns);
}

Table* Database::table(const QString& name) const
{
    const std::lock_guard lock(m_mutex);
    return find(name);
}

Table* Database::add(const QString& name, const QList<Table::Column>& columns)
{
    return m_tables.emplace_back(std::make_unique<Table>(name, columns)).get();
}

Table* Database::find(const QString& name) const
{
    for (const std::unique_ptr<Table>& table : m_tables) {
        if (table->name() == name)
            return table.get();
    }
    return nullptr;
}

} // namespace vexdesk
