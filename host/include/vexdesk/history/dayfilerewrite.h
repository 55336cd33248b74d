// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>
#include <vexdesk/history/filestate.h>
#include <vexdesk/outcome.h>

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QString>

#include <optional>

/// Day files as the editor writes them back, and as merging writes them. Any thread.
namespace vexdesk {

/// Gives a day file that is still what it was when it was read another content, or makes it go when
/// that is empty. The message of a failure is a sentence for the user that names the file, the
/// reason and what to do; the file is then as it was, unless the sentence says that it is broken.
///
/// Where the directory may be written to, the file is replaced whole or not at all, by a temporary
/// file beside it, with its permissions, owner and group. Where it may not, or where these cannot
/// be kept, the file is written in place: by whole lines, and the old content is put back when
/// that fails half-way. A file that may not be written to is left alone, though its directory would
/// allow more. Missing files are not made; pipes and devices are never waited for.
///
/// Through a symbolic link its target is rewritten, and the link stays one. A file with several
/// hard links that is replaced leaves its other names with the old content, as those want it who
/// keep copies by links; where it is written in place, all its names have the new content.
///
/// A file without bars is removed: its other hard links keep their content. Through a symbolic link
/// the target is emptied, under all its names, and the link is removed. Where the directory does
/// not allow that, the file is emptied and stays.
VEXDESK_HISTORY_EXPORT Outcome rewriteDayFile(const QDir& dir, const QString& name,
                                              const QByteArray& content, const FileState& asRead);

/// Gives a day file, or a derived one, this content in the same way, or makes it where there was
/// none when it was read; its directory must be there. One that is no longer what it was then is
/// left alone. Empty content makes an empty file. The message of a failure is such a sentence too.
VEXDESK_HISTORY_EXPORT Outcome writeDayFile(const QString& path, const QByteArray& content,
                                            const std::optional<FileState>& asRead);

} // namespace vexdesk
