// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// Patterns of dates and times, as Qt takes them.
namespace tadata {

/// Whether it says which day is meant: a day of the month, a month, and a year of two or four
/// letters. Other letters than Qt's would be plain text, which no date tells apart.
bool namesADay(const QString& pattern);

bool hasHours(const QString& pattern);
bool hasMinutes(const QString& pattern);

} // namespace tadata
