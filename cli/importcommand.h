// SPDX-License-Identifier: MIT
#pragma once

#include "commandline.h"

namespace tadata::cli {

/// "tadata import": a text file becomes day files of a series. Throws UsageError.
ExitCode runImport(const QStringList& words);

/// The text that "tadata import --help" prints.
QString importHelp();

} // namespace tadata::cli
