// SPDX-License-Identifier: MIT
#include "timeofdayrange.h"

namespace tadata {

namespace {

constexpr qint64 msPerSecond = 1000;
constexpr qint64 msPerDay = msPerSecond * 24 * 60 * 60;

qint64 sinceMidnight(const QDate& day, const QDateTime& time)
{
    // A local time stays as it is, even one that the clock skips and that is no moment therefore.
    const QDateTime local = time.timeSpec() == Qt::LocalTime ? time : time.toLocalTime();
    return day.daysTo(local.date()) * msPerDay + local.time().msecsSinceStartOfDay();
}

} // namespace

TimeOfDayRange::TimeOfDayRange(const QDate& day, const QDateTime& from, const QDateTime& to)
    : m_from(sinceMidnight(day, from))
    , m_to(sinceMidnight(day, to))
{}

TimeOfDayRange::Place TimeOfDayRange::place(int secondOfDay) const
{
    const qint64 time = secondOfDay * msPerSecond;
    if (time < m_from)
        return Place::Before;
    return m_to < time ? Place::After : Place::Inside;
}

bool TimeOfDayRange::isWholeDay() const
{
    return m_from <= 0 && m_to >= msPerDay - msPerSecond;
}

} // namespace tadata
