// SPDX-License-Identifier: MIT
#pragma once

#include "choicescheck.h"

#include <vexdesk/history/storejob.h>

#include <algorithm>
#include <functional>

/// The import of the window, and its undoing. Any thread.
namespace tadata {

/// Is told, at once, for whom a series is waited for: a sentence. It may be empty.
using WaitSink = std::function<void(const QString& sentence)>;

struct SafeImportOrder
{
    ImportChoices choices;
    /// As they were checked: a file that is no longer what it was ends the import.
    std::vector<LaidOutFile> files;
    QDir root; ///< of the store
    /// Of the series as they were checked: one that has changed since ends the import.
    DayStamps stamps = {};
    /// Of the outlook, which is true of the same files and the same store.
    qint64 wiped = 0;
    qint64 lostOfFile = 0;
    vexdesk::RestoreLimits limits = {};                  ///< of restore points
    std::chrono::milliseconds wait = vexdesk::usualWait; ///< for the locks
};

struct SafeImportResult
{
    enum class End {
        Done,
        TakenBack, ///< by cancel or because of an error: the store is what it was
        Failed,    ///< nothing was to be taken back, or it could not be
    };

    End end = End::Failed;
    bool isCancelled = false;
    QString message = {}; ///< why it did not come to its end, or what went wrong behind it; or null
    qint64 bars = 0;      ///< of the files
    qint64 days = 0;      ///< of series, that have another content now
    qint64 sameDays = 0;  ///< of series, that the files have and that are what they were
    /// What has become of the bars of the store, as it is before and after.
    qint64 added = 0;
    qint64 replaced = 0; ///< have other values
    qint64 lost = 0;     ///< also of the files, see ImportOutlook::lostOfFile
    qint64 wiped = 0;    ///< bars of the files, see ImportOutlook
    qint64 badLines = 0;
    /// Of the restore point with which it can be undone; null where none stays.
    QString point = {};

    /// Bars of the files that have changed nothing: the store had them, or their times were taken.
    qint64 idle() const { return std::max<qint64>(0, bars - added - replaced - wiped); }
};

/// Imports all files, under the locks of all their series, and changes nothing at all unless all of
/// it comes to its end: when `stop` is set, or at an error, everything goes back to what it was,
/// and directories that were made for it go. For that it makes a restore point even where none are
/// to be kept.
SafeImportResult runSafeImport(const SafeImportOrder& order, const ProgressSink& progress,
                               const std::atomic<bool>& stop, const WaitSink& waits = {});

/// Puts back what an import has changed, unless its files have changed since. The undoing can be
/// undone in turn, as every restore point can.
vexdesk::Outcome undoSafeImport(const QDir& root, const QString& point,
                                const vexdesk::RestoreLimits& limits, const std::atomic<bool>& stop,
                                const WaitSink& waits = {});

} // namespace tadata
