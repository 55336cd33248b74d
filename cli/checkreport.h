// SPDX-License-Identifier: MIT
#pragma once

#include "importcheck.h"
#include "json.h"

#include <QtCore/QString>

/// What a check has found, for programs and for people.
namespace tadata::cli {

/// What was checked.
struct CheckedImport
{
    QString file; ///< as it was given
    QString series;
    int timeframe = 0; ///< in seconds
    ImportMode mode = ImportMode::Replace;
};

Json checkReport(const CheckedImport& import, const ImportCheck& check);

/// In the user's language: whether it would be imported, what would become of the days, and what is
/// wrong or odd in the file, with the first lines of each kind.
QString checkText(const CheckedImport& import, const ImportCheck& check);

} // namespace tadata::cli
