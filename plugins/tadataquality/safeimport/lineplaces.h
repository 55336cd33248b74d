// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/filestate.h>
#include <vexdesk/outcome.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringConverter>

#include <atomic>
#include <functional>
#include <optional>
#include <vector>

/// Finds lines of a text file by their numbers, however large it is. Any thread.
namespace tadata {

/// Where some of the lines of a file begin, so that any other is found by reading little. A plain
/// value, a few kilobytes for a file of a hundred megabytes.
struct LinePlaces
{
    struct Place
    {
        qint64 line = 0;   ///< from 0
        qint64 offset = 0; ///< in bytes
    };

    vexdesk::FileState state = {}; ///< of the file, when it was opened
    /// By the mark at the file's start, none without one.
    std::optional<QStringConverter::Encoding> encoding = {};
    std::vector<Place> places = {}; ///< ascending; the first is that of the line 0
    qint64 lines = 0;               ///< that were found
    bool isWhole = false;           ///< whether these are all lines of the file

    /// The last place that is not behind the line. There must be one.
    const Place& placeBefore(qint64 line) const;
    /// Bytes of the smallest character.
    qsizetype unit() const;
};

/// Reads the whole file. `more` is told of what was found so far: soon after the beginning, then
/// each time that twice as much was read, and at the end. Fails where the file cannot be read, and
/// once `stop` is set.
vexdesk::Outcome findLines(const QString& path, const std::function<void(const LinePlaces&)>& more,
                           const std::atomic<bool>& stop);

/// A line as it is shown.
struct ShownLine
{
    QString text;       ///< without its line end
    bool isCut = false; ///< it is longer
};

/// Reads so many lines from this one (from 0) on; fewer at the end of the file. Of a line no more
/// than 4096 bytes are given. Fails where the file cannot be read, and where it is not any more
/// what it was when its lines were found.
vexdesk::Result<std::vector<ShownLine>> readLines(const QString& path, const LinePlaces& places,
                                                  qint64 first, qint64 count);

} // namespace tadata
