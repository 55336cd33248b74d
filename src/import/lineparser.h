// SPDX-License-Identifier: MIT
#pragma once

#include "importdetails.h"

#include <QtCore/QString>

namespace tadata {

/// The text of the field that carries a role in a line that BarDescription::init() takes; the role
/// has a column. Any thread.
QString fieldOfLine(const QString& line, const ImportDetails& details, ColumnRole role);

} // namespace tadata
