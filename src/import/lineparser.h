// SPDX-License-Identifier: MIT
#pragma once

#include "importdetails.h"

#include <QtCore/QDate>
#include <QtCore/QString>
#include <QtCore/QStringView>

#include <optional>

namespace tadata {

/// The date that BarDescription::init() takes a field for; an invalid one for a field that does not
/// fit the pattern. Any thread.
QDate dateOfField(QStringView text, const QString& pattern);

/// The text of the field that carries a role, which has a column, as BarDescription::init() splits
/// lines; no value where the line has too few columns. Any thread.
std::optional<QString> fieldOfLine(const QString& line, const ImportDetails& details,
                                   ColumnRole role);

} // namespace tadata
