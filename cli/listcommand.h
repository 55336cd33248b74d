// SPDX-License-Identifier: MIT
#pragma once

#include "commandline.h"

namespace tadata::cli {

/// "tadata list": what a store holds. Throws UsageError.
ExitCode runList(const QStringList& words);

/// The text that "tadata list --help" prints.
QString listHelp();

} // namespace tadata::cli
