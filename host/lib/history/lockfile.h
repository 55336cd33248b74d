// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/serieslock.h>

#include <QtCore/QLockFile>

namespace vexdesk {

// What came of waiting for a lock.
enum class LockWait { Taken, Held, Stopped, CannotBeMade };

/// Takes a lock whose directory is there. One of a process that runs no more does not count, nor
/// does a file that one left before it had written into it who it is.
LockWait waitForLock(QLockFile& lock, std::chrono::milliseconds wait,
                     const std::atomic<bool>* stop = nullptr);

} // namespace vexdesk
