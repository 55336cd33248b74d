// SPDX-License-Identifier: MIT
#pragma once

#include "importdetails.h"
#include "importways.h"

#include <vexdesk/outcome.h>

#include <QtCore/QDir>
#include <QtCore/QList>
#include <QtCore/QStringList>

#include <atomic>
#include <functional>

namespace tadata {

/// Fills in the codes and ids of a ticker's series, from which its decimals follow.
using SeriesOfTicker = std::function<void(const QString& ticker, TADataDescription* series)>;

/// Where the bars of a file go. A file whose details have no column for a ticker has one series,
/// that of the null ticker.
struct ImportSeries
{
    /// Gives the directory of each ticker, in their order. Asked once, when the input is open and
    /// before anything is made: who gives them takes the locks of all, and may refuse. Merging
    /// makes directories that are missing, once it has something to write; replacing does not.
    std::function<vexdesk::Result<QList<QDir>>(const QStringList& tickers)> directories;
    /// May be missing: all tickers then have the decimals of the details' series.
    SeriesOfTicker describe = {};
};

/// Makes the directory of a series, for those who replace bars in it. One that is there is left as
/// it is.
vexdesk::Outcome makeDirectory(const QDir& directory);

/// The series of a file, as they were given. A plain value.
struct SeriesDirectories
{
    QStringList tickers; ///< in the order in which the file has them
    QList<QDir> directories;
};

/// The tickers of the bars that the import comes to, in the order in which the file has them; the
/// details have a column for them. Decimals play no part: what a line of other decimals would be
/// refused for makes a series known that has no bars, at worst.
vexdesk::Result<QStringList> tickersOf(const QString& path, const ImportDetails& details,
                                       const ImportWays& ways, const std::atomic<bool>* stop);

/// Asks for the directories; a file with tickers is read for that. Refuses an input, and a file for
/// rejects, that is one of the files which the import writes, under whatever name.
vexdesk::Result<SeriesDirectories> findSeries(const QString& file, const ImportDetails& details,
                                              const ImportWays& ways, const ImportSeries& series,
                                              const std::atomic<bool>* stop);

} // namespace tadata
