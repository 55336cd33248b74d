// SPDX-License-Identifier: MIT
#pragma once

#include "commandline.h"

#include "seriespattern.h"

#include <vexdesk/outcome.h>

#include <QtCore/QDir>

#include <optional>

namespace tadata::cli {

/// The value of --series of a command that takes places in it. Throws UsageError.
SeriesPattern parseSeriesPattern(const CommandLine& line);

/// The value of --series. Throws UsageError for anything that would not be three directory names,
/// so that nothing can be written outside the store.
SeriesCodes parseSeries(const CommandLine& line);

/// The value of --store, none for the terminal's own store. Throws UsageError for an empty one.
std::optional<QString> parseStore(const CommandLine& line);

/// That no link on the way to the series' directory leads nowhere: what is stored of it would seem
/// to be nothing.
vexdesk::Outcome checkReached(const QDir& root, const SeriesCodes& codes);

/// The directory of the series in this store or the terminal's own, made when it is missing. One
/// that cannot be made shows when a file in it is opened.
QDir makeSeriesDirIn(const std::optional<QString>& store, const SeriesCodes& codes);

/// Makes the directories answer from the reference data of --reference, or from the terminal's.
vexdesk::Outcome installReferenceData(const CommandLine& line);

/// Makes the reference data hold the security, where they do not yet, or always with what was
/// given. Fails where there is neither that nor a guess.
vexdesk::Outcome makeKnown(const SeriesCodes& codes, std::optional<int> given,
                           std::optional<int> guessed);

/// Makes the security known with these decimals, see vexdesk::ReferenceData::setSeries.
void makeKnown(const SeriesCodes& codes, int decimals);

} // namespace tadata::cli
