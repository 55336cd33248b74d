// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>
#include <QtCore/QTime>

/// Points of time as the day files have them: the wall clock, counted in seconds from the beginning
/// of 1970 as if no clock were ever put forward or back. A bar in an hour that the local clock
/// skips has its place like any other, so nothing here knows a time zone. Any thread.
namespace vexdesk {

constexpr qint64 secondsPerDay = qint64(24) * 60 * 60;

/// The largest integer that is not above numerator / denominator.
constexpr qint64 floorDivided(qint64 numerator, qint64 denominator)
{
    return numerator / denominator - (numerator % denominator < 0 ? 1 : 0);
}

inline qint64 wallTime(const QDate& day, const QTime& time = QTime(0, 0))
{
    constexpr qint64 firstDay = 2440588; // 1 January 1970
    return (day.toJulianDay() - firstDay) * secondsPerDay + time.msecsSinceStartOfDay() / 1000;
}

inline QDate wallDate(qint64 time)
{
    return QDate(1970, 1, 1).addDays(floorDivided(time, secondsPerDay));
}

inline QTime wallClock(qint64 time)
{
    const qint64 second = time - floorDivided(time, secondsPerDay) * secondsPerDay;
    return QTime::fromMSecsSinceStartOfDay(static_cast<int>(second) * 1000);
}

} // namespace vexdesk
