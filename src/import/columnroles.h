// SPDX-License-Identifier: MIT
#pragma once

#include "importdetails.h"

#include <QtCore/QString>

#include <optional>

/// The words for what a column carries. Any thread.
namespace tadata {

/// As command lines and reports have it: "date", "oi". Null for a role that has no word.
QString roleWord(ColumnRole role);

/// What a column of this name in a file's header carries, in English or Russian. Case, and angle
/// brackets, quotes and blanks around the name, do not matter.
std::optional<ColumnRole> roleOfColumnName(const QString& name);

} // namespace tadata
