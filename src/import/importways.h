// SPDX-License-Identifier: MIT
#pragma once

#include "fileclock.h"

#include <QtCore/QString>

/// What becomes of the bars that are stored already.
enum class ImportMode {
    Replace, ///< a day's are replaced by the file's
    Merge,   ///< the file's come in, and replace those of their times
    Fill,    ///< the file's come in where none is stored
};

/// How a file comes into the store, beside its layout. A plain value.
struct ImportWays
{
    ImportMode mode = ImportMode::Replace;
    FileClock clock = {};
    bool skipsBad = false; ///< bad lines are passed over; with rejects they are in any case
    QString rejects = {};  ///< a file that does not exist, for the bad lines; empty for none

    bool passesOverBad() const { return skipsBad || !rejects.isEmpty(); }
};
