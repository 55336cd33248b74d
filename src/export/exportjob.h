// SPDX-License-Identifier: MIT
#pragma once

#include "exportdetails.h"
#include "job.h"

#include <vexdesk/history/filestate.h>
#include <vexdesk/outcome.h>

#include <QtCore/QStringList>

#include <utility>
#include <vector>

namespace tadata {

/// What an export takes from the moment and the place in which it begins.
struct ExportStart
{
    QDate today;      ///< days before it are read from the store, it itself from the day's deals
    int progress = 0; ///< what the progress shows before the job's first value
};

/// What came of an export.
struct ExportResult
{
    vexdesk::Outcome outcome;
    /// The day files of the interval that are there and could not be opened: their bars are not in
    /// the output.
    QStringList unopened = {};
    /// The day files that were read, as they were then.
    std::vector<std::pair<QString, vexdesk::FileState>> read = {};

    /// Those that are not the same any more: an import that replaced them meanwhile may have left
    /// the output without some of their bars.
    QStringList changed() const;
};

/// Whether an export may write to its output: not where that is a day file of the store with this
/// root, reached by its own path, through a link or by another name of it. Nothing is opened or
/// made. Any thread.
vexdesk::Outcome mayWriteOutput(const ExportDetails& details, const QDir& root);

/// Writes the bars of one series and an interval of days as a text file with a byte order mark.
///
/// Past days are read from their day files; for each line that was read the bar is written as it
/// stands then, and once more when it is finished: a reader sees the bar grow, and takes the last
/// line of each time for the finished bar. The deals of today are bars of their own, written when
/// they are finished. The file at the output's path is replaced. An interval of which an end is no
/// date has no days.
///
/// A day file that cannot be opened has no bars. One that cannot be read to its end, or whose sums
/// do not fit, ends the export; what was written by then stays. A deal of which a field has an
/// unexpected type throws the host's Exception. Any thread; one line is in memory at a time.
ExportResult exportBars(const ExportDetails& details, const ExportStart& start,
                        const SeriesDir& seriesDir, const ProgressSink& progress);

} // namespace tadata
