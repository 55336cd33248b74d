// SPDX-License-Identifier: MIT
#pragma once

#include "commandline.h"

#include "importdetails.h"
#include "importways.h"

#include <optional>

/// The options that the commands share that read a file to import. Every function that parses
/// throws UsageError.
namespace tadata::cli {

/// --series with places for the name of a file and for tickers, see SeriesPattern.
Option seriesPatternOption();

/// What the lines of the file look like: --columns, --timeframe, --separator, --date-format,
/// --time-format and --no-header.
QList<Option> layoutOptions();
/// The settings of an import without its series. A column of tickers counts only where the series
/// (--series) has a place for them.
ImportDetails parseLayout(const CommandLine& line);

/// The same without the columns: the separator, the forms and the header.
ImportDetails parseForms(const CommandLine& line);

/// A pattern with the title that the wizard shows for it, otherwise with itself as its title.
void setDateFormat(ImportDetails& details, const QString& pattern);
void setTimeFormat(ImportDetails& details, const QString& pattern);

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

/// As --columns calls it; null for none.
QString nameOf(ColumnRole role);

/// --decimals.
Option decimalsOption();
/// None where it was not given.
std::optional<int> parseDecimals(const CommandLine& line);

} // namespace tadata::cli
