// SPDX-License-Identifier: MIT
#pragma once

#include "importjob.h"
#include "importseries.h"

namespace tadata {

class FileBars;

/// What is merged. A plain value that refers to the import's.
struct MergeOrder
{
    const ImportDetails& details;
    const ImportWays& ways; ///< merge or fill
    const SeriesDirectories& series;
    const SeriesOfTicker& describe;
};

/// Brings the bars of a file into the day files of its series: a day becomes what mergedDay() makes
/// of it. The file's order does not matter.
///
/// The input is read twice. First all of it is parsed and every day that it has bars of is read and
/// checked; what is wrong there ends the job before anything is changed: a bad line of the input
/// first, then the earliest of the days, in the series' order, with a line that is no bar. Sums of
/// minutes that do not fit are found there too, for which an input with amounts so large is read
/// once more. Then each day is written once, ascending, whole or not at all; one whose bytes stay
/// the same is not touched.
///
/// An import of second bars also derives the minute file of each written day from the day's bars as
/// they became. The minute that is open at a day's end is part of it, except on the last day that
/// is written of the series: more of its seconds may come with the next file. Each series of a file
/// with tickers has its own last day, so that it comes out as from a file of its lines alone.
///
/// `file` is the open input, nothing of it read. Any thread; one day is in memory at a time, and
/// the lines that are out of order are in a temporary file.
ImportResult mergeBars(FileBars& file, const MergeOrder& order, const ProgressSink& progress,
                       const Surroundings& surroundings);

} // namespace tadata
