// SPDX-License-Identifier: MIT
#pragma once

#include "commandline.h"

#include "formatguess.h"
#include "importdetails.h"
#include "importways.h"

#include <vexdesk/outcome.h>

#include <optional>

/// The options that the commands share that read a file to import. Every function that parses
/// throws UsageError.
namespace tadata::cli {

/// --series with places for the name of a file and for tickers, see SeriesPattern.
Option seriesPatternOption();

/// What the lines of the file look like: --columns and those of formOptions().
QList<Option> layoutOptions();
/// --timeframe, --separator, --date-format, --time-format and --no-header.
QList<Option> formOptions();
/// What of these was given: a guess goes by it.
GuessHints parseHints(const CommandLine& line);

/// The layout of one file.
struct FileLayout
{
    ImportDetails details; ///< without its series
    /// What a guess has found, for series that the reference data do not know; none with --columns.
    std::optional<int> decimals = {};
    QString note = {}; ///< what was guessed, for standard error; null where nothing was
};

/// As the options have it. Without --columns it is guessed, and so fails for a file that cannot be
/// read; throws UsageError with the alternatives where the file leaves any. A column of tickers
/// counts only where the series (--series) has a place for them.
vexdesk::Result<FileLayout> layoutOf(const CommandLine& line, const QString& file);

/// How the file comes into the store: --mode, --stamp, --from-zone, --to-zone, --shift, --skip-bad
/// and --rejects.
QList<Option> wayOptions();
ImportWays parseWays(const CommandLine& line);

/// --undo-on-error and --no-restore-point.
QList<Option> safetyOptions();

/// Whether the values of the options that were given are right, whatever else is missing.
void checkOptions(const CommandLine& line);

/// --profile, which CommandLine itself understands.
Option profileOption();

/// --decimals.
Option decimalsOption();
/// None where it was not given.
std::optional<int> parseDecimals(const CommandLine& line);

} // namespace tadata::cli
