// SPDX-License-Identifier: MIT
#pragma once

#include "choicescheck.h"

/// What of the lines of a file goes elsewhere, or nowhere, though nothing is wrong with them.
/// Sentences for the user; null where there is nothing to say. Any thread.
namespace tadata {

/// The first line is passed over as a header and is a bar.
QString warningOfHeader(const LaidOutFile& file, const ImportChoices& choices);

/// The file has a column of tickers, the series has no place for them, and bars of other securities
/// come into it. Reads the whole file, until `stop` is set.
QString warningOfTickers(const LaidOutFile& file, const ImportChoices& choices,
                         const ProgressSink& progress, const std::atomic<bool>& stop);

/// Whether warningOfTickers() has to read it.
bool leavesTickers(const LaidOutFile& file, const ImportChoices& choices);

} // namespace tadata
