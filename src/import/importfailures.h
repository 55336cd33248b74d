// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/outcome.h>

/// Why imports end, as the user is told. Any thread.
namespace tadata {

/// What the system says against reading a file, now; null where it says nothing.
QString whyNotOpened(const QString& path);
/// The texts of these two are what the terminal's plug-in shows; the reason is kept beside them.
/// Without a reason that of whyNotOpened().
vexdesk::Failure cannotOpen(const QString& path, const QString& reason = {});
vexdesk::Failure cannotWrite(const QString& path, const QString& reason);
/// With the reason, which says what went wrong without the file's name.
vexdesk::Failure cannotRead(const QString& path, const QString& reason);
/// Somebody has written into the file while it was read.
vexdesk::Failure hasChanged(const QString& path);
vexdesk::Failure cannotReadDir(const QString& path);
vexdesk::Failure cannotMakeDir(const QString& path, const QString& reason);
/// The input, or the file for rejected lines, is a file of the store that the import writes.
vexdesk::Failure wouldWipe(const QString& path);
/// What is wrong with a line of the input, from 1.
vexdesk::Failure wrongLine(qint64 number, const QString& what);
/// Replacing, a file comes back in this line to a ticker that it had left.
vexdesk::Failure tickerComesAgain(qint64 number, const QString& ticker);
/// A line of a day file, from 1, is no bar.
vexdesk::Failure wrongStoredLine(const QString& path, qint64 number);
vexdesk::Failure interrupted();

} // namespace tadata
