// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/restorepoint.h>

#include <QtCore/QDate>
#include <QtCore/QSet>

#include <vector>

namespace tadata {

/// A file of a restore point: what the command did to it, and what putting the point back would do.
struct PointFile
{
    enum class Done { Changed, Removed, Created };

    QString path;   ///< below the store's root
    QString series; ///< "VENUE/BOARD/SECURITY"
    QString name;
    QDate day;         ///< not valid where the name tells none
    int timeframe = 0; ///< in seconds; 0 for a derived minute file
    Done done = Done::Changed;

    /// Whether putting the point back brings content back; otherwise the file goes.
    bool returns() const { return done != Done::Created; }
};

/// The files of a point, by path. Of a command that did not end by itself it is not known what it
/// removed: these count as changed.
std::vector<PointFile> filesOf(const vexdesk::RestorePointRecord& point);

/// The paths of UndoCheck and UndoResult, below the root.
QSet<QString> belowRoot(const vexdesk::RestorePlace& place, const QStringList& paths);

} // namespace tadata
