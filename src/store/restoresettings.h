// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/restorepoint.h>

namespace tadata {

/// How many restore points the user wants to stay: the settings "keep" and "megabytes" of the group
/// "TADataManager/RestorePoints". What is no number there, or is missing, is the usual one. Any
/// thread.
vexdesk::RestoreLimits restoreLimits();

/// In bytes.
qint64 fromMegabytes(qint64 megabytes);

} // namespace tadata
