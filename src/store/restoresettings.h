// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/restorepoint.h>

namespace tadata {

/// How many restore points the user wants to stay: the settings "keep" and "megabytes" of the group
/// "TADataManager/RestorePoints". What is no number there, or is missing, is the usual one. Any
/// thread.
vexdesk::RestoreLimits restoreLimits();
/// Remembers what the user wants; of the bytes whole megabytes.
void setRestoreLimits(const vexdesk::RestoreLimits& limits);

/// In bytes.
qint64 fromMegabytes(qint64 megabytes);
/// Whole ones.
qint64 toMegabytes(qint64 bytes);

} // namespace tadata
