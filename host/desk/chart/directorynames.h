// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/outcome.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

/// Looks into directories of the store for those who tell the user what cannot be read. Throws
/// nothing; any thread.
namespace vexdesk {

/// The names of all that is in a directory, in no order. One that is not there has none; of one
/// that cannot be read to its end, or whose files cannot be reached, the failure says why and names
/// it, or the directory above it that lets nobody through.
Result<QStringList> namesInDirectory(const QString& directory);

/// Why a directory could not be read that is known to be such a one, as far as can be found out.
Failure unreadableDirectory(const QString& directory);

} // namespace vexdesk
