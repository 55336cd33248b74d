// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

class QLocale;

namespace tadata {

/// How a date is shown and typed where the terminal speaks this language: the numbers of day, month
/// and year, each with all its digits, since files go back further than a hundred years. Any
/// thread.
QString shownDateFormat(const QLocale& locale);
/// The same of a date and a time to the second.
QString shownMomentFormat(const QLocale& locale);

} // namespace tadata
