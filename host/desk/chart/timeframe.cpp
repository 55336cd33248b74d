// SPDX-License-Identifier: MIT
#include "desk/chart/timeframe.h"

#include <algorithm>

namespace vexdesk {

std::optional<int> sourceOf(Timeframe timeframe, const QList<int>& stored)
{
    const int seconds = secondsOf(std::min(timeframe, Timeframe::Day));
    std::optional<int> longest;
    for (const int candidate : stored) {
        if (candidate > 0 && seconds % candidate == 0 && candidate > longest.value_or(0))
            longest = candidate;
    }
    return longest;
}

QDate periodBegin(const QDate& day, Timeframe timeframe)
{
    if (timeframe == Timeframe::Month)
        return {day.year(), day.month(), 1};
    return timeframe == Timeframe::Week ? day.addDays(1 - day.dayOfWeek()) : day;
}

QDate periodEnd(const QDate& day, Timeframe timeframe)
{
    const QDate begin = periodBegin(day, timeframe);
    if (timeframe == Timeframe::Month)
        return begin.addMonths(1);
    constexpr int week = 7;
    return begin.addDays(timeframe == Timeframe::Week ? week : 1);
}

} // namespace vexdesk
