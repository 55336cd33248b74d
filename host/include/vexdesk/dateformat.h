// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QString>

class QDate;
class QDateTime;
class QLocale;

/// How dates are shown and typed where the terminal speaks a language: the numbers of day, month
/// and year, each with all its digits, since files go back further than a hundred years. Formats of
/// QDate::toString. Any thread.
namespace vexdesk {

VEXDESK_CORE_EXPORT QString shownDateFormat(const QLocale& locale);
/// The same of a date and a time to the second.
VEXDESK_CORE_EXPORT QString shownMomentFormat(const QLocale& locale);

/// A date, and a date with its time, in these formats of the default locale.
VEXDESK_CORE_EXPORT QString shownDate(const QDate& date);
VEXDESK_CORE_EXPORT QString shownMoment(const QDateTime& moment);

} // namespace vexdesk
