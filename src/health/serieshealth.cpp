// SPDX-License-Identifier: MIT
#include "serieshealth.h"

#include <algorithm>
#include <numeric>

namespace tadata {

namespace {

QString coverage(Wide found, Wide expected)
{
    return expected == 0 ? ratioText(1, 1) : ratioText(found, expected);
}

} // namespace

bool DayHealth::hasGap() const
{
    return std::any_of(gaps.begin(), gaps.end(), [](const Gap& gap) { return !gap.isQuiet; });
}

int DayHealth::lacking() const
{
    return std::accumulate(gaps.begin(), gaps.end(), missing, [](int sum, const Gap& gap) {
        return sum - (gap.isQuiet ? gap.bars : 0);
    });
}

bool DayHealth::isWrong() const
{
    return !badLines.empty() || duplicates > 0 || prices > 0 || !jumps.empty() || hasGap();
}

qint64 SeriesHealth::bars() const
{
    return std::accumulate(days.begin(), days.end(), qint64(0),
                           [](qint64 sum, const DayHealth& day) { return sum + day.bars; });
}

bool SeriesHealth::isWrong() const
{
    return !missingDays.isEmpty() ||
           std::any_of(days.begin(), days.end(),
                       [](const DayHealth& day) { return day.isWrong(); });
}

QString coverageOf(const DayHealth& day)
{
    return coverage(day.expected - day.lacking(), day.expected);
}

QString coverageOf(const SeriesHealth& series)
{
    qint64 expected = 0;
    qint64 found = 0;
    for (const DayHealth& day : series.days) {
        expected += day.expected;
        found += day.expected - day.lacking();
    }
    return coverage(found * series.missedParts, expected * series.missedParts + series.missedBars);
}

} // namespace tadata
