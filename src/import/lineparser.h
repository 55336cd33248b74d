// SPDX-License-Identifier: MIT
#pragma once

#include "importdetails.h"

#include <QtCore/QDate>
#include <QtCore/QString>
#include <QtCore/QStringView>

namespace tadata {

/// The date that BarDescription::init() takes a field for; an invalid one for a field that does not
/// fit the pattern. Any thread.
QDate dateOfField(QStringView text, const QString& pattern);

/// The text of the field that carries a role in a line that BarDescription::init() takes; the role
/// has a column. Any thread.
QString fieldOfLine(const QString& line, const ImportDetails& details, ColumnRole role);

} // namespace tadata
