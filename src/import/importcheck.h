// SPDX-License-Identifier: MIT
#pragma once

#include "importdetails.h"
#include "importseries.h"
#include "importways.h"
#include "job.h"

#include <vexdesk/outcome.h>

#include <QtCore/QDate>
#include <QtCore/QDir>
#include <QtCore/QString>
#include <QtCore/QTime>

#include <array>
#include <optional>
#include <vector>

/// What an import would do, and what is wrong or odd in its file, said beforehand. Plain values.
namespace tadata {

/// In the order in which those of one line are reported.
enum class ProblemKind {
    BadLine,    ///< that an import refuses
    DayAgain,   ///< the file comes back to a day, and what it had of it before is replaced
    OutOfOrder, ///< earlier than the bar before it
    Duplicate,  ///< the file has had a bar of that time
    Prices,     ///< the high is not the highest, or the low not the lowest
    Rounded,    ///< digits are lost
    Volume,     ///< more than 32 bits, which the export and the charts read as 0
    Midnight,   ///< closes the day before
    Spacing,    ///< of the file: its bars are not of the timeframe
    DateOrder,  ///< of the file: day and month, or day and year, are in each other's place
};
constexpr size_t problemKinds = static_cast<size_t>(ProblemKind::DateOrder) + 1;

struct FileProblem
{
    ProblemKind kind = ProblemKind::BadLine;
    std::optional<qint64> line = {}; ///< none where it is one of the file
    QDate day = {};                  ///< not valid for a bad line and for the file
    QString text = {};               ///< of a bad line: what is wrong with it
};

/// A day that an import would come to.
struct CheckedDay
{
    enum class Outcome { New, Same, Replaced, Merged };

    QDate day = {};
    qint64 bars = 0;  ///< the file's, up to where the import ends
    int stored = 0;   ///< times with a bar now
    int result = 0;   ///< times with a bar afterwards
    int added = 0;    ///< times that had no bar and get one; see CheckedSeries::countsBars
    int replaced = 0; ///< times whose bar gets other values; likewise
    int lost = 0;     ///< times of the stored bars and the file's that are not among those
    /// Lines of the file that it replaces itself, since it comes back to the day; and times that
    /// are lost with them, without those of stored bars; likewise.
    qint64 wiped = 0;
    int lostOfFile = 0;
    Outcome outcome = Outcome::New;
};

/// Where an import ends before the end of its file, and with what.
struct ImportStop
{
    std::optional<qint64> line = {}; ///< none where it does not even begin
    QString message = {};
    bool isOfStoredLine = false; ///< a line of a stored day is no bar
};

struct ImportCheck
{
    /// When a bar's interval ends.
    struct Moment
    {
        QDate day;
        QTime time;
    };

    qint64 lines = 0; ///< of the whole file, as all numbers here that are not those of a day
    qint64 bars = 0;
    qint64 badLines = 0;
    std::optional<Moment> first = {};
    std::optional<Moment> last = {};
    std::optional<int> spacing = {}; ///< the usual distance of bars, in seconds
    bool wouldImport = true;
    std::optional<ImportStop> stop = {};
    std::vector<CheckedDay> days = {}; ///< ascending; those up to the stop
    std::vector<FileProblem> problems = {};
    std::array<qint64, problemKinds> counts = {}; ///< of all, by the kind

    qint64 count(ProblemKind kind) const { return counts[static_cast<size_t>(kind)]; }
};

/// Reads a file as an import into this directory, which need not exist, would, and the day files
/// that it would come to. Lists so many problems at most and counts all. Writes nothing. Fails
/// where the file or a stored one cannot be read. Any thread; one line of the file and one stored
/// day are in memory at a time, and a bit for each second, or whole minute, of the file's days.
vexdesk::Result<ImportCheck> checkImport(const QString& fileName, const ImportDetails& details,
                                         const ImportWays& ways, const QDir& seriesDir,
                                         qint64 maxProblems, const ProgressSink& progress);

/// What is found of a ticker of a file.
struct TickerCheck
{
    QString ticker; ///< null where the details have no column for it
    ImportCheck check;
};

/// Where the series of a file that is checked are. Both are asked once for each ticker at most.
struct CheckedSeries
{
    std::function<QDir(const QString& ticker)> directory;
    SeriesOfTicker describe = {}; ///< see ImportSeries
    /// Whether `added` and `replaced` are wanted of each day: all its bars are then compared.
    bool countsBars = false;
};

/// The same for a file whose details may have a column for tickers, each of which has a series of
/// its own; they come in the order of the file, at least one. So many problems are listed of each.
/// One that has nothing but bad lines which are passed over is told without days: the import does
/// not come to its series, and neither is asked for it. Some kilobytes are in memory of a ticker.
/// Once `stop`, which may be null, is set it fails, between two lines.
vexdesk::Result<std::vector<TickerCheck>>
checkTickers(const QString& fileName, const ImportDetails& details, const ImportWays& ways,
             const CheckedSeries& series, qint64 maxProblems, const ProgressSink& progress,
             const std::atomic<bool>* stop);

} // namespace tadata
