// SPDX-License-Identifier: MIT
#pragma once

#include "output.h"
#include "series.h"

#include "importdetails.h"
#include "importways.h"

#include <vexdesk/history/storejob.h>

#include <optional>

/// The work of the command "import", for one file and for many.
namespace tadata::cli {

/// One of the command's files.
struct FileToImport
{
    QString path;
    ImportDetails details; ///< without its series
    /// Of series that the reference data do not know. Without it there must be none.
    std::optional<int> decimals;
    QString note;    ///< what is to be said before it is imported
    QString refusal; ///< why it cannot be imported; null where it can
};

/// What the command line says of all files.
struct ImportRequest
{
    SeriesPattern series;
    ImportWays ways;
    std::optional<int> decimals; ///< of all series, whatever the reference data say
    std::optional<QString> store;
    vexdesk::StoreJobSettings settings; ///< the names of all files are the source
    int jobs = 1;
    bool stopsAtFailure = false;
};

/// Imports them with one restore point, under the locks of all their series, and says what came of
/// it. Throws UsageError, before anything is made, for a series that nobody knows the decimals of.
ExitCode importFiles(QList<FileToImport> files, const ImportRequest& request);

} // namespace tadata::cli
