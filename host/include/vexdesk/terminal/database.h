// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/database/idatabase.h>
#include <vexdesk/database/table.h>
#include <vexdesk/export.h>

#include <QtCore/QList>

#include <memory>

namespace vexdesk {

/// The in-memory database of a process, owned by the core. Any thread.
class VEXDESK_CORE_EXPORT Database final : public IDatabase
{
public:
    Database();
    ~Database() override;

    /// Adds a table. Throws Exception when there is one of that name. A table lives as long as the
    /// database: readers hold plain pointers to it.
    Table* createTable(const QString& name, const QList<Table::Column>& columns);

    /// The table of that name; made with these columns when it is not there yet.
    Table* tableOf(const QString& name, const QList<Table::Column>& columns);

    Table* table(const QString& name) const override;

private:
    struct Private;
    const std::unique_ptr<Private> m_d;
};

} // namespace vexdesk
