// SPDX-License-Identifier: MIT
#pragma once

#include "commandline.h"

#include "importdetails.h"

#include <optional>

/// The options that the commands share that read a file to import. Every function that parses
/// throws UsageError.
namespace tadata::cli {

/// What the lines of the file look like: --columns, --timeframe, --separator, --date-format,
/// --time-format and --no-header.
QList<Option> layoutOptions();
/// The settings of an import without its series.
ImportDetails parseLayout(const CommandLine& line);

/// --decimals.
Option decimalsOption();
/// None where it was not given.
std::optional<int> parseDecimals(const CommandLine& line);

} // namespace tadata::cli
