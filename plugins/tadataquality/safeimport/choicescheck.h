// SPDX-License-Identifier: MIT
#pragma once

#include "daystamps.h"
#include "filelayout.h"
#include "importcheck.h"
#include "importchoices.h"
#include "seriespattern.h"

#include <vexdesk/history/filestate.h>
#include <vexdesk/outcome.h>

#include <optional>

/// What an import would do with all of the files that were chosen, said beforehand. Plain values;
/// any thread.
namespace tadata {

/// A file with what is known of its lines.
struct LaidOutFile
{
    QString path;
    std::optional<vexdesk::FileState> state = {}; ///< when its layout was found
    bool mayBeRead = false;                       ///< likewise
    FileLayout layout = {};
    QString refusal = {}; ///< why it cannot be read, a whole text; null where it can

    /// Whether the file is what it was then, as far as the file system tells.
    bool isUnchanged(const LaidOutFile& since) const;
};

/// Whether the rights of a file let it be read. Any thread.
bool mayBeRead(const QString& path);

/// Finds the layouts of all files, or of the first of them once `stop` is set.
std::vector<LaidOutFile> layOutFiles(const QStringList& files, const GivenLayout& given,
                                     const std::atomic<bool>& stop);

/// The details with which a file is imported: a column of tickers counts only where the series has
/// a place for them.
ImportDetails detailsFor(const LaidOutFile& file, const ImportChoices& choices);
/// The series of a file, or of a ticker of it; none where the name makes no three codes.
std::optional<SeriesCodes> seriesOf(const ImportChoices& choices, const QString& file,
                                    const QString& ticker);
/// What is to be told of a series that the terminal does not know: its prices would be rounded to
/// nothing.
QString unknownSeries(const SeriesCodes& codes);
QString notAName(const QString& ticker);
/// Why the lines of a ticker are refused, or make the whole import impossible; null where they do
/// not. Any thread.
QString faultOfTicker(const ImportChoices& choices, const QString& file, const QString& ticker);
/// Why a file cannot be imported, whatever its lines are: a whole text; null where it can.
QString whyNot(const LaidOutFile& file, const ImportChoices& choices);

/// What a file would do to one series.
struct SeriesOutlook
{
    QString series; ///< "VENUE/BOARD/SECURITY"
    ImportCheck check = {};
};

struct FileOutlook
{
    QString path;
    QString refusal = {}; ///< null where the file was checked
    std::vector<SeriesOutlook> series = {};
    DayStamps stamps = {}; ///< of the series, taken before their days were read
    ImportMode mode = ImportMode::Merge;
    int timeframe = 0;         ///< in seconds
    QStringList unused = {};   ///< of its layout
    QStringList warnings = {}; ///< of its layout and of its lines
};

/// Checks one file after the other against what the store holds now. Fails once `stop` is set.
/// Lists so many problems of each file at most.
vexdesk::Result<std::vector<FileOutlook>>
checkChoices(const ImportChoices& choices, const std::vector<LaidOutFile>& files, const QDir& root,
             qint64 maxProblems, const ProgressSink& progress, const std::atomic<bool>& stop);

/// Tells only what is another percentage than the one before, for those who queue it: a file may go
/// to another day with every line. One thread.
ProgressSink tellingChanges(const ProgressSink& sink);

/// Shares the progress of one after the other by their sizes.
class SharedProgress final
{
public:
    SharedProgress(const std::vector<LaidOutFile>& files, const ProgressSink& sink);

    /// Of the next file, from its beginning on.
    ProgressSink next();

private:
    const ProgressSink& m_sink;
    std::vector<qint64> m_sizes;
    size_t m_next = 0;
    qint64 m_done = 0;
    qint64 m_all = 0;
};

} // namespace tadata
