// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QString>

/// The boards (trading modes) of the venues. Safe to call from any thread.
class VEXDESK_CORE_EXPORT BoardDirectory
{
public:
    static const BoardDirectory& i();

    /// The board's id, unique within its venue; 0 for an unknown board.
    int idByCode(const QString& stockCode, const QString& boardCode) const;

    /// The board's title for people, empty for an unknown board.
    QString nameByCode(const QString& stockCode, const QString& boardCode) const;

private:
    BoardDirectory() = default;
};
