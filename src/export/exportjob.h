#pragma once

#include "export/exportdetails.h"
#include "store/job.h"

namespace tadata {

/// What an export takes from the moment and the place in which it begins.
struct ExportStart
{
    QDate today;      ///< days before it are read from the store, it itself from the day's deals
    int progress = 0; ///< what the progress shows before the job's first value
};

/// Writes the bars of one series and an interval of days as a text file with a byte order mark.
///
/// Past days are read from their day files; for each line that was read the bar is written as it
/// stands then, and once more when it is finished: a reader sees the bar grow, and takes the last
/// line of each time for the finished bar. The deals of today are bars of their own, written when
/// they are finished. The file at the output's path is replaced.
///
/// Null text on success, otherwise the message for the user; what was written by then stays. A deal
/// of which a field has an unexpected type throws the host's Exception. Any thread; one line is in
/// memory at a time.
QString exportBars(const ExportDetails& details, const ExportStart& start,
                   const SeriesDir& seriesDir, const ProgressSink& progress);

} // namespace tadata
