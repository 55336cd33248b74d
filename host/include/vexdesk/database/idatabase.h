// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QString>

class Table;

/// The in-memory database as a plug-in sees it: tables by their names.
class VEXDESK_CORE_EXPORT IDatabase
{
public:
    /// The table, null when there is none of that name. It stays the database's. Any thread.
    virtual Table* table(const QString& name) const = 0;

protected:
    IDatabase() = default;
    virtual ~IDatabase();

private:
    Q_DISABLE_COPY_MOVE(IDatabase)
};
