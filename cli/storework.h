// SPDX-License-Identifier: MIT
#pragma once

#include "series.h"

#include <vexdesk/history/storejob.h>

/// What the commands that change a store have in common.
namespace tadata::cli {

/// --wait, --keep and --keep-megabytes, with which storeJobSettings() works.
QList<Option> storeJobOptions();

/// From the settings and these options. Throws UsageError.
vexdesk::StoreJobSettings storeJobSettings(const CommandLine& line, const QString& by,
                                           const QStringList& source = {});

/// The root of the store of --store, or of the terminal's. Nothing is made. Throws UsageError.
QDir storeRootOf(const CommandLine& line);

/// A series that is a word of the command line. Throws UsageError as parseSeries() does.
SeriesCodes seriesWord(const CommandLine& line, qsizetype index);

QDir seriesDirIn(const QDir& root, const SeriesCodes& codes);

/// Prints what went wrong in the work, and at its end.
ExitCode tellOutcomes(const vexdesk::Outcome& work, const vexdesk::Outcome& end);

} // namespace tadata::cli
