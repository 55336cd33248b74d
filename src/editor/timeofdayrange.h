// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>
#include <QtCore/QDateTime>

namespace tadata {

/// Tells on which side of a range of local date-times the times of one day lie. Times are compared
/// as the clock shows them: where it is not changed that is what comparing moments tells, a time
/// that it skips has its place between its neighbours, and one that it shows twice is one time.
/// Any thread.
class TimeOfDayRange final
{
public:
    enum class Place { Before, Inside, After };

    /// Both ends belong to the range, and have a date.
    TimeOfDayRange(const QDate& day, const QDateTime& from, const QDateTime& to);

    /// Where a time lies, given in seconds since the day's midnight as the clock shows it.
    Place place(int secondOfDay) const;
    /// Whether every time of the day lies inside.
    bool isWholeDay() const;

private:
    // Since the day's midnight, in milliseconds.
    qint64 m_from = 0;
    qint64 m_to = 0;
};

} // namespace tadata
