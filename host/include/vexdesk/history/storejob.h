// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/restorepoint.h>
#include <vexdesk/history/serieslock.h>

namespace vexdesk {

/// How a command works on a store.
struct StoreJobSettings
{
    QString by = {};         ///< see RestorePointRecord
    QStringList source = {}; ///< likewise
    RestoreLimits limits = {};
    std::chrono::milliseconds wait = usualWait; ///< for the locks
    bool makesPoint = true;
    bool needsPoint = false;                 ///< for itself: it is made whatever the limits are
    const std::atomic<bool>* stop = nullptr; ///< ends the wait; or null
};

/// What surrounds a command that changes series of a store: their locks and one restore point.
/// begin(), then the work with keeper(), then end() or takeBack(). A command that was not ended has
/// left its point as a killed one. One thread at a time; it may be another for each call.
class VEXDESK_HISTORY_EXPORT StoreJob final
{
public:
    explicit StoreJob(const StoreJobSettings& settings);
    ~StoreJob();
    Q_DISABLE_COPY_MOVE(StoreJob)

    /// Makes the place beside the store and takes the locks of these series; nothing else of the
    /// store is touched. Where it fails the command must not go on.
    Outcome begin(const QDir& root, const QStringList& series);

    /// For the work, once begin() has succeeded; it keeps nothing where no point is made. Lives as
    /// long as the job.
    FileKeeper* keeper();
    /// Of its restore point, so that the user can be offered to put it back; null until something
    /// was kept. Only before end().
    QString pointId() const;

    /// Ends the point, removes points beyond the limits and gives the locks back. Without begin()
    /// it does nothing.
    Outcome end();
    /// The same, after everything that the work has touched was put back; nothing of it is kept.
    /// Only where a point is made.
    Outcome takeBack();

private:
    class Private;
    const std::unique_ptr<Private> m_d;
};

} // namespace vexdesk
