// SPDX-License-Identifier: MIT
#include "desk/chart/calendarslots.h"

#include "desk/chart/wallclock.h"

#include <cmath>

namespace vexdesk {

namespace {

constexpr qint64 monthsPerYear = 12;

qint64 monthOf(const QDate& day)
{
    return day.year() * monthsPerYear + day.month() - 1;
}

QDate firstOfMonth(qint64 month)
{
    const qint64 year = floorDivided(month, monthsPerYear);
    return {static_cast<int>(year), static_cast<int>(month - year * monthsPerYear) + 1, 1};
}

} // namespace

CalendarSlots::CalendarSlots(Timeframe timeframe, const QDate& first)
    : m_timeframe(timeframe)
    , m_origin(timeframe == Timeframe::Month ? monthOf(first)
                                             : wallTime(periodBegin(first, timeframe)))
{}

double CalendarSlots::slotLength() const
{
    constexpr double meanMonth = 365.2425 / monthsPerYear * secondsPerDay;
    constexpr qint64 week = 7 * secondsPerDay;
    if (m_timeframe == Timeframe::Month)
        return meanMonth;
    return static_cast<double>(m_timeframe == Timeframe::Week ? week : secondsOf(m_timeframe));
}

double CalendarSlots::slotOf(double time) const
{
    if (m_timeframe != Timeframe::Month)
        return (time - static_cast<double>(m_origin)) / slotLength();
    const QDate day = wallDate(static_cast<qint64>(std::floor(time)));
    const double begin = static_cast<double>(wallTime(periodBegin(day, m_timeframe)));
    const double end = static_cast<double>(wallTime(periodEnd(day, m_timeframe)));
    return static_cast<double>(monthOf(day) - m_origin) + (time - begin) / (end - begin);
}

double CalendarSlots::timeAt(double slot) const
{
    if (m_timeframe != Timeframe::Month)
        return static_cast<double>(m_origin) + slot * slotLength();
    const double whole = std::floor(slot);
    const QDate day = firstOfMonth(m_origin + static_cast<qint64>(whole));
    const double begin = static_cast<double>(wallTime(day));
    const double end = static_cast<double>(wallTime(periodEnd(day, m_timeframe)));
    return begin + (slot - whole) * (end - begin);
}

qint64 CalendarSlots::slotFrom(qint64 begin) const
{
    return std::llround(slotOf(static_cast<double>(begin)));
}

} // namespace vexdesk
