// SPDX-License-Identifier: MIT
#include <vexdesk/terminal/database.h>

#include <QtCore/QCoreApplication>

#include <mutex>
#include <vector>

IDatabase::~IDatabase() = default;

namespace vexdesk {

struct Database::Private
{
    std::mutex mutex;
    std::vector<std::unique_ptr<Table>> tables;

    Table* add(const QString& name, const QList<Table::Column>& columns)
    {
        return tables.emplace_back(std::make_unique<Table>(name, columns)).get();
    }

    Table* find(const QString& name) const
    {
        for (const std::unique_ptr<Table>& table : tables) {
            if (table->name() == name)
                return table.get();
        }
        return nullptr;
    }
};

Database::Database()
    : m_d(new Private)
{}

Database::~Database() = default;

Table* Database::createTable(const QString& name, const QList<Table::Column>& columns)
{
    const std::lock_guard lock(m_d->mutex);
    if (m_d->find(name))
        throw Exception(
            QCoreApplication::translate("vexdesk::Database", "Таблица %1 уже есть").arg(name));
    return m_d->add(name, columns);
}

Table* Database::tableOf(const QString& name, const QList<Table::Column>& columns)
{
    const std::lock_guard lock(m_d->mutex);
    Table* const table = m_d->find(name);
    return table ? table : m_d->add(name, columns);
}

Table* Database::table(const QString& name) const
{
    const std::lock_guard lock(m_d->mutex);
    return m_d->find(name);
}

} // namespace vexdesk
