// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>
#include <vexdesk/outcome.h>

#include <QtCore/QDir>
#include <QtCore/QString>

namespace vexdesk {

/// A store and the directory beside it that has its locks and restore points. One store has one
/// place, by whatever path or link it is named. A plain value; any thread.
struct VEXDESK_HISTORY_EXPORT RestorePlace
{
    QString root; ///< canonical; of one that is not there yet as it will be
    QString path;

    /// Whether all users of the store have this place; else it is one user's own.
    bool isBesideStore() const;
};

/// Where the place is, or would be: nothing is made. It is "<root>-restore" and, while that is not
/// there, "restore/<SHA-256 of the root>" in the terminal's data directory if that is. Fails where
/// the system does not say what the root is: its locks would be in another place than everybody's.
VEXDESK_HISTORY_EXPORT Result<RestorePlace> restorePlace(const QDir& root);

/// The same, made when it is missing: beside the store or, where that cannot be, in the terminal's
/// data directory.
VEXDESK_HISTORY_EXPORT Result<RestorePlace> makeRestorePlace(const QDir& root);

} // namespace vexdesk
