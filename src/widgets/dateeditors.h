// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

class QDateTimeEdit;
class QLocale;

namespace tadata {

/// How a date is shown and typed where the terminal speaks this language: the numbers of day, month
/// and year, each with all its digits, since files go back further than a hundred years. Any
/// thread.
QString shownDateFormat(const QLocale& locale);
/// The same of a date and a time to the second.
QString shownMomentFormat(const QLocale& locale);

/// Gives an editor of dates, or of moments, the notation of the terminal's language, and its
/// calendar the first day of the week that the system has. User-interface thread.
void setUpDateEditor(QDateTimeEdit& editor);

} // namespace tadata
