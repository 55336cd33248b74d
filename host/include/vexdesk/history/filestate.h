// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QString>

#include <optional>

namespace vexdesk {

/// What a file is at a moment: which one, how large and when it was changed last. Two states that
/// are equal are the same file with the same content, as far as the file system tells.
struct FileState
{
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;     ///< in bytes
    qint64 modified = 0; ///< nanoseconds since the epoch
    quint64 links = 0;   ///< names that the file has

    /// Whether both are one file, under whatever names and whatever it holds.
    bool isSameFile(const FileState& other) const
    {
        return device == other.device && inode == other.inode;
    }
    /// Whether the file is what it was; another name of it makes no difference.
    bool isUnchanged(const FileState& since) const
    {
        return isSameFile(since) && size == since.size && modified == since.modified;
    }
};

/// The state of the file that a path leads to, through links too. No value for what is missing and
/// for what is no file: a directory, a pipe, a socket, a device. Any thread.
VEXDESK_HISTORY_EXPORT std::optional<FileState> fileState(const QString& path);

/// Whether a path leads to nothing, as the system knows for sure. What cannot be looked at may be
/// there, and must not be taken for a day that is not stored. Any thread.
VEXDESK_HISTORY_EXPORT bool isMissing(const QString& path);

} // namespace vexdesk
