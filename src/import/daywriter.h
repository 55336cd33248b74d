// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/filestate.h>
#include <vexdesk/outcome.h>

#include <QtCore/QByteArray>
#include <QtCore/QDate>
#include <QtCore/QDir>

#include <optional>

namespace vexdesk {
class FileKeeper;
}

namespace tadata {

/// The lines of the minutes that the bars of a day make, in the order of the day.
struct DerivedMinutes
{
    QByteArray whole;
    QByteArray open; ///< the one that is open at the end
};

/// From the content of a day file of second bars; lines that are no bars count for nothing. Throws
/// the host's message when a sum does not fit. Any thread.
DerivedMinutes derivedMinutes(const QByteArray& content);

/// Writes days of one series, each whole or not at all, in ascending order, and the minute files of
/// second bars beside them. Makes the directory for the first of them, but not again: where it has
/// gone by the next one, so has the disk. One thread at a time.
class DayWriter final
{
public:
    /// The keeper, which may be null, is told of a day's files before one of them is touched.
    DayWriter(const QDir& directory, int timeframe, vexdesk::FileKeeper* keeper);

    /// Writes a day whose file was in this state when it was read.
    vexdesk::Outcome write(const QDate& day, const QByteArray& content,
                           const std::optional<vexdesk::FileState>& asRead);
    /// Ends the series: the open minute of its last day is dropped.
    vexdesk::Outcome finish();

private:
    /// A minute file waits for the next day: only then it is known that its last minute is whole.
    struct Waiting
    {
        QString path;
        std::optional<vexdesk::FileState> asRead;
        DerivedMinutes minutes;
    };

    vexdesk::Outcome writeWaiting(bool isLast);

    QDir m_directory;
    int m_timeframe;
    vexdesk::FileKeeper* m_keeper;
    bool m_hasDirectory = false;
    std::optional<Waiting> m_waiting;
};

} // namespace tadata
