// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/barseries.h"

#include <vexdesk/outcome.h>

#include <QtCore/QDate>
#include <QtCore/QString>

#include <memory>
#include <vector>

/// Reads the day files of a series for the chart. Throws nothing; any thread.
namespace vexdesk {

/// By which a day file that has become another one is known without reading it.
struct DayStamp
{
    qint64 size = 0;
    qint64 modified = 0; ///< nanoseconds since 1970
    /// False for a file that was written so short a time before it was looked at that it may have
    /// been written once more since then, with the same size at the same time.
    bool isSettled = false;

    /// Whether a file with the stamp `now` surely holds what a file with this stamp held.
    bool isSameAs(const DayStamp& now) const
    {
        return isSettled && size == now.size && modified == now.modified;
    }
};

struct ListedDay
{
    QDate day;
    DayStamp stamp;
};

/// The day files of a directory at one timeframe, in the order of their days; also what has the
/// name of one and is none or cannot be looked at, with no size, for it may be a day that is
/// stored. None where there is no directory; a failure where it cannot be read to its end.
Result<std::vector<ListedDay>> listDays(const QString& directory, int timeframe);

/// A day that has more bars, which is more than one for every second twice over, is summed up and
/// not shown bar by bar: no file may take more memory than a chart has.
constexpr qsizetype mostBarsOfDay = 2 * 86400;

enum class DayPart {
    Summary, ///< the bars are not kept while they are read
    Bars     ///< with the summary
};

/// What a day file holds.
struct ReadDay
{
    /// Null where the file could not be read to its end.
    std::shared_ptr<const DaySummary> summary;
    /// Null where there are none, or too many, and where they were not asked for.
    std::shared_ptr<const DayBars> bars = {};
    qint64 bytes = 0; ///< what they take in memory, or about as much as they would
    /// Why the file could not be read, or that there is something in it and no bar; without the
    /// file's name.
    Outcome outcome = {};
};

/// The bars of a day file: none when there is no file, which is no failure, and when it could not
/// be read to its end, for half a day must not look like a whole one. Lines without a time or
/// without four prices are counted and passed over; a file whose lines are not in the order of
/// their times is put into order.
ReadDay readDay(const QString& path, const QDate& day, DayPart part = DayPart::Bars);

} // namespace vexdesk
