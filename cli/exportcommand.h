// SPDX-License-Identifier: MIT
#pragma once

#include "commandline.h"

namespace tadata::cli {

/// tadata export: stored bars and the deals of a day become a text file. Throws UsageError.
ExitCode runExport(const QStringList& words);

QString exportHelp();

} // namespace tadata::cli
