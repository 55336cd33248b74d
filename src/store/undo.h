// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/restorepoint.h>
#include <vexdesk/history/storejob.h>

#include <QtCore/QStringList>

/// Putting a restore point back as a command of its own. Any thread.
namespace tadata {

/// What would come of putting a point back. Nothing is touched.
struct UndoCheck
{
    vexdesk::Outcome outcome;    ///< whether its files are whole and could be looked at
    QStringList forbidding = {}; ///< paths of files that have changed since

    bool isAllowed() const { return outcome && forbidding.isEmpty(); }
};

/// With force nobody looks for files that have changed.
UndoCheck checkUndo(const vexdesk::RestorePlace& place, const vexdesk::RestorePointRecord& point,
                    bool isForced = false);

/// The series of its files, and those to which it says it belongs.
QStringList seriesOf(const vexdesk::RestorePointRecord& point);

/// What putting a point back came to.
struct UndoResult
{
    vexdesk::Outcome work;       ///< fails: nothing has changed
    vexdesk::Outcome end;        ///< of the point that it has made itself
    QStringList forbidding = {}; ///< these have changed since, and therefore nothing was touched
    qsizetype returned = 0;      ///< files
    qsizetype removed = 0;

    bool isDone() const { return work && end && forbidding.isEmpty(); }
};

/// Puts the point back, with the locks of its series and a point of its own. With force also files
/// that have changed since. Of the settings those count that any command has: limits, wait and
/// stop.
UndoResult undo(const QDir& root, const QString& id, bool isForced,
                vexdesk::StoreJobSettings settings);

} // namespace tadata
