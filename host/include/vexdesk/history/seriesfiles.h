// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>
#include <vexdesk/outcome.h>

#include <QtCore/QDate>
#include <QtCore/QDir>
#include <QtCore/QStringList>

#include <optional>

/// The files of a series as a whole: day files and the minute files that were derived beside them.
/// Who changes them holds the locks of the series. Any thread.
namespace vexdesk {

class FileKeeper;

/// Which of them.
struct BarFileRange
{
    QDate from = {};                   ///< not valid: from the first one
    QDate to = {};                     ///< not valid: up to the last one
    std::optional<int> timeframe = {}; ///< in seconds; derived files are of the seconds'
};

/// Their names in a series' directory, in ascending order; through links, and of links that lead
/// nowhere. Fails where the directory cannot be read: who changes a series changes all of it.
VEXDESK_HISTORY_EXPORT Result<QStringList> barFiles(const QDir& seriesDir,
                                                    const BarFileRange& range = {});

/// Whether something has the name of one of them, whatever it is. Fails likewise.
VEXDESK_HISTORY_EXPORT Result<bool> hasBarFiles(const QDir& seriesDir);

// The keeper, which may be null, is told of all files before the first is touched. Each file is
// changed whole or not at all; the first that cannot be ends the work. The message names it.

VEXDESK_HISTORY_EXPORT Outcome removeBarFiles(const QDir& seriesDir, const QStringList& names,
                                              FileKeeper* keeper);
/// Into a series that has none of them; its directory is made.
VEXDESK_HISTORY_EXPORT Outcome copyBarFiles(const QDir& from, const QDir& to,
                                            const QStringList& names, FileKeeper* keeper);
/// Likewise. The emptied directory stays.
VEXDESK_HISTORY_EXPORT Outcome moveBarFiles(const QDir& from, const QDir& to,
                                            const QStringList& names, FileKeeper* keeper);

} // namespace vexdesk
