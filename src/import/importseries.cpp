// SPDX-License-Identifier: MIT
#include "importseries.h"

#include "filebars.h"
#include "importfailures.h"
#include "rejects.h"

#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QFile>
#include <QtCore/QSet>

#include <filesystem>

namespace tadata {

using vexdesk::Outcome;
using vexdesk::Result;

Outcome makeDirectory(const QDir& directory)
{
    std::error_code error;
    std::filesystem::create_directories(QFile::encodeName(directory.path()).constData(), error);
    return error ? cannotMakeDir(directory.path(), qt_error_string(error.value())) : Outcome();
}

Result<QStringList> tickersOf(const QString& path, const ImportDetails& details,
                              const ImportWays& ways, const std::atomic<bool>* stop)
{
    FileBars file(path, details, ways.clock);
    if (!file.open())
        return cannotOpen(path);
    file.leaveNumbers();
    QStringList tickers;
    QSet<QString> known;
    FileLine line;
    while (file.next(&line)) {
        if (stop && stop->load(std::memory_order_relaxed))
            return interrupted();
        if (line.isBad() && !ways.passesOverBad())
            break;
        const bool isNew = !line.isBad() && (tickers.isEmpty() || tickers.last() != line.ticker);
        if (isNew && !known.contains(line.ticker)) {
            known.insert(line.ticker);
            tickers.append(line.ticker);
        }
    }
    const Outcome read = file.outcome();
    return read ? Result<QStringList>(tickers) : read.failure();
}

Result<SeriesDirectories> findSeries(const QString& file, const ImportDetails& details,
                                     const ImportWays& ways, const ImportSeries& series,
                                     const std::atomic<bool>* stop)
{
    QStringList tickers{QString()};
    if (details.columns.contains(static_cast<qint32>(ColumnRole::Ticker))) {
        Result<QStringList> found = tickersOf(file, details, ways, stop);
        if (!found)
            return found.failure();
        tickers = *found;
    }
    const Result<QList<QDir>> directories = series.directories(tickers);
    if (!directories)
        return directories.failure();
    Q_ASSERT(directories->size() == tickers.size());
    for (const QDir& directory : *directories) {
        // Where the directory cannot be listed, an input that lies in it shows when its day is
        // read.
        const auto own = vexdesk::barFileThatIs(file, directory);
        if (own && !own->isEmpty())
            return wouldWipe(file);
    }
    if (const Outcome checked = checkRejectsPlace(ways.rejects, *directories); !checked)
        return checked.failure();
    return SeriesDirectories{tickers, *directories};
}

} // namespace tadata
