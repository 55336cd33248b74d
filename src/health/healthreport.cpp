// SPDX-License-Identifier: MIT
#include "healthreport.h"

#include <algorithm>

namespace tadata {

namespace {

Json gapReport(const Gap& gap)
{
    return Json::object({{QStringLiteral("bars"), gap.bars},
                         {QStringLiteral("from"), timeOfSecond(gap.from)},
                         {QStringLiteral("to"), timeOfSecond(gap.to)}});
}

Json gapsReport(std::vector<Gap> gaps, bool areQuiet)
{
    gaps.erase(std::remove_if(gaps.begin(), gaps.end(),
                              [areQuiet](const Gap& gap) { return gap.isQuiet != areQuiet; }),
               gaps.end());
    return Json::list(gaps, gapReport);
}

Json dayReport(const DayHealth& day)
{
    return Json::object({{QStringLiteral("badLines"), Json::list(day.badLines)},
                         {QStringLiteral("bars"), day.bars},
                         {QStringLiteral("coverage"), coverageOf(day)},
                         {QStringLiteral("day"), day.day},
                         {QStringLiteral("duplicates"), day.duplicates},
                         {QStringLiteral("edited"), day.edited},
                         {QStringLiteral("expected"), day.expected},
                         {QStringLiteral("gaps"), gapsReport(day.gaps, false)},
                         {QStringLiteral("jumps"), Json::list(day.jumps, timeOfSecond)},
                         {QStringLiteral("missing"), day.missing},
                         {QStringLiteral("outOfOrder"), day.outOfOrder},
                         {QStringLiteral("prices"), day.prices},
                         {QStringLiteral("quiet"), gapsReport(day.gaps, true)},
                         {QStringLiteral("volume"), day.volume}});
}

} // namespace

Json healthReport(const SeriesHealth& health)
{
    return Json::object({{QStringLiteral("bars"), health.bars()},
                         {QStringLiteral("closed"), Json::list(health.closed)},
                         {QStringLiteral("coverage"), coverageOf(health)},
                         {QStringLiteral("days"), Json::list(health.days, dayReport)},
                         {QStringLiteral("first"), health.first},
                         {QStringLiteral("last"), health.last},
                         {QStringLiteral("missingDays"), Json::list(health.missingDays)},
                         {QStringLiteral("series"), health.series},
                         {QStringLiteral("timeframe"), health.timeframe},
                         {QStringLiteral("unproven"), Json::list(health.unproven)}});
}

QList<QDate> daysToAskFor(const SeriesHealth& health)
{
    QList<QDate> days = health.missingDays;
    for (const DayHealth& day : health.days) {
        if (day.hasGap())
            days.append(day.day);
    }
    std::sort(days.begin(), days.end());
    return days;
}

QTime timeOfSecond(int second)
{
    constexpr int perSecond = 1000;
    return QTime::fromMSecsSinceStartOfDay(second * perSecond);
}

} // namespace tadata
