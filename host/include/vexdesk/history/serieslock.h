// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/restoreplace.h>

#include <QtCore/QStringList>

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>

/// One writer of a series at a time, in whatever program: who changes its files holds its lock, a
/// file "locks/STOCK/BOARD/SECURITY.lock" in the place beside the store. Readers take none. A
/// series is named "STOCK/BOARD/SECURITY". Any thread.
namespace vexdesk {

/// How long a writer waits for a lock unless it is told otherwise.
constexpr std::chrono::seconds usualWait{5};

/// Locks that are held until the object goes. One thread at a time.
class VEXDESK_HISTORY_EXPORT SeriesLocks final
{
public:
    SeriesLocks();
    ~SeriesLocks();
    Q_DISABLE_COPY_MOVE(SeriesLocks)

    /// Takes the locks of all these series, in the order of code points, or none of them; then
    /// removes the temporary files that dead processes have left in their directories. Called once.
    /// The message says who holds a lock, and where it is. A wait also ends when `stop` is set.
    Outcome take(const RestorePlace& place, const QStringList& series,
                 std::chrono::milliseconds wait, const std::atomic<bool>* stop = nullptr);
    void release();

private:
    class Private;
    const std::unique_ptr<Private> m_d;
};

/// Who holds a lock, as its file says.
struct LockHolder
{
    qint64 process = 0; ///< 0 where the file does not tell
    QString program;
    QString host;
    bool runsHere = false; ///< or may do so
    qint64 since = 0;      ///< when it took the lock: nanoseconds since the epoch; 0 likewise
};

/// No value for a series that nobody has locked. What cannot be looked at may be a lock.
VEXDESK_HISTORY_EXPORT std::optional<LockHolder> lockHolder(const RestorePlace& place,
                                                            const QString& series);
/// Removes the lock whoever holds it.
VEXDESK_HISTORY_EXPORT Outcome removeLock(const RestorePlace& place, const QString& series);

/// Series in the order of code points, each once.
VEXDESK_HISTORY_EXPORT QStringList sortedByCodePoint(QStringList texts);

} // namespace vexdesk
