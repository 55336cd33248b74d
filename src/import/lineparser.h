// SPDX-License-Identifier: MIT
#pragma once

#include "importdetails.h"

#include <QtCore/QString>

#include <optional>

namespace tadata {

/// The text of the field that carries a role, which has a column, as BarDescription::init() splits
/// lines; no value where the line has too few columns. Any thread.
std::optional<QString> fieldOfLine(const QString& line, const ImportDetails& details,
                                   ColumnRole role);

} // namespace tadata
