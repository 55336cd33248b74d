#pragma once

#include <QtCore/QDate>
#include <QtCore/QDateTime>

namespace tadata {

/// Tells on which side of a range of local date-times the times of one day lie, as comparing each as
/// a QDateTime would tell, but without making one for every bar of an ordinary day. A day on which
/// the clock is changed is left to QDateTime. Any thread.
class TimeOfDayRange final
{
public:
    enum class Place { Before, Inside, After };

    /// Both ends belong to the range.
    TimeOfDayRange(const QDate& day, const QDateTime& from, const QDateTime& to);

    /// Where a time lies, given in seconds since the day's midnight as the clock shows it.
    Place place(int secondOfDay) const;

private:
    bool clockIsChanged() const;

    QDate m_day;
    QDateTime m_from;
    QDateTime m_to;
    bool m_isOrdinary = false;
    // Relative to the day's midnight, in milliseconds.
    qint64 m_fromOffset = 0;
    qint64 m_toOffset = 0;
};

} // namespace tadata
