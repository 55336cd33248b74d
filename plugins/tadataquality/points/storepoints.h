// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/restorepoint.h>

#include <QtCore/QDir>
#include <QtCore/QSet>

namespace tadata {

/// The restore points of a store, and those whose command did not end by itself.
struct StorePoints
{
    vexdesk::RestorePlace place;
    vexdesk::RestorePoints found;
    QSet<QString> running; ///< ids of those whose command is at work
    QSet<QString> putBack; ///< ids of those that are put back, by an undo that was not itself
    /// Of those whose command was interrupted. One that was put back since, or all of whose files
    /// later commands have changed, is not among them. The newest first.
    QList<vexdesk::RestorePointRecord> interrupted;
};

/// Any thread; reads the points of the store with this root.
vexdesk::Result<StorePoints> storePoints(const QDir& root);

} // namespace tadata
