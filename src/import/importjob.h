// SPDX-License-Identifier: MIT
#pragma once

#include "importdetails.h"
#include "importseries.h"
#include "importways.h"
#include "job.h"

#include <vexdesk/outcome.h>

#include <QtCore/QStringList>

class QFile;
class QTextStream;

namespace tadata {

/// What came of an import.
struct ImportResult
{
    vexdesk::Outcome outcome;
    qint64 bars = 0;     ///< that were taken from the input
    qint64 days = 0;     ///< of series, that were written
    qint64 badLines = 0; ///< that were passed over
    /// Paths of the file's days that merging and filling have left as they were.
    QStringList unchanged = {};
};

/// Imports a text file into the day files of one series, whose directory is asked for once the
/// input has been opened.
///
/// A day file is replaced each time the input comes to its day, never appended to or merged: it
/// holds the bars of the input's last run of lines of that day, in the order of the input. An
/// import of second bars (timeframe 1) also derives minute bars into a file of their own beside
/// each day file. The first wrong line ends the import, and so does a part of the input that cannot
/// be read; the bars before it stay stored. An input that is itself a day file of the series, by
/// whatever name, is refused before anything is opened for writing.
///
/// Every write to a day file hands over whole lines. Two imports into one series at a time mix its
/// days: who gives the directory sees to it that there is one. Any thread; one line is in memory at
/// a time.
ImportResult importBars(const QString& fileName, const ImportDetails& details,
                        const WritableSeriesDir& seriesDir, const ProgressSink& progress,
                        const Surroundings& surroundings = {});

/// Imports a text file in one of several ways into one series, or into one for each of its tickers.
///
/// Bad lines may be passed over, and written into a file of their own; what cannot be added up ends
/// the import in any case. Replacing is what importBars() does; the bars of a ticker then stand
/// together in the file, and one that comes back ends the import. A file that somebody has written
/// into meanwhile is told at the end, with all that was read of it stored. Merging and filling are
/// described with mergeBars(). Each ticker is imported as a file of its lines alone would be: the
/// minute that is open at the end of a ticker's bars is dropped, and no other. Any thread; memory
/// holds a day of one series at most.
ImportResult importByWays(const QString& fileName, const ImportDetails& details,
                          const ImportWays& ways, const ImportSeries& series,
                          const ProgressSink& progress, const Surroundings& surroundings = {});

} // namespace tadata

/// Switches an output to another file: flushes the stream, closes the file and opens it under the
/// new name, with nothing left of what it held. False when it cannot be opened; the stream then
/// keeps its old device, which is closed.
bool changeOutput(QFile& file, QTextStream& stream, QString fileName);
