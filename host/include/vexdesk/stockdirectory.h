// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QString>

/// The trading venues that the terminal knows. Safe to call from any thread.
class VEXDESK_CORE_EXPORT StockDirectory
{
public:
    static const StockDirectory& i();

    /// The venue's id, positive for a venue of the reference data. A code that they do not hold
    /// gets a negative id of its own, the same for the life of the process.
    int idByCode(const QString& code) const;

    /// The venue's title for people, empty for an unknown code.
    QString nameByCode(const QString& code) const;

private:
    StockDirectory() = default;
};
