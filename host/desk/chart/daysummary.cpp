// SPDX-License-Identifier: MIT
#include "desk/chart/daysummary.h"

#include "desk/chart/daybars.h"

#include <vexdesk/history/barinterval.h>

namespace vexdesk {

namespace {

constexpr int msecs = 1000; // of a second

// A bar that begins no candle of a timeframe begins none of a longer one: its interval is in that.
void countCandles(DaySummary& summary, const DayBars& bars)
{
    std::array<int, timeframesBelowDay> ends{};
    for (qsizetype i = summary.midnightCount; i < bars.size(); ++i) {
        const int second = bars.secondOf(i);
        for (size_t t = 0; t < ends.size() && second > ends[t]; ++t) {
            ends[t] = intervalEnd(second * msecs, secondsOf(allTimeframes[t]));
            ++summary.candles[t];
        }
    }
}

} // namespace

Bar DaySummary::whole() const
{
    if (!midnight)
        return *rest;
    Bar bar = *midnight;
    if (rest)
        extendBar(bar, *rest);
    return bar;
}

DaySummary summaryOf(const DayBars& bars)
{
    DaySummary summary;
    summary.count = bars.size();
    summary.midnightCount = bars.firstAfter(0);
    if (summary.midnightCount > 0)
        summary.midnight = bars.sum(0, summary.midnightCount);
    if (summary.midnightCount < summary.count)
        summary.rest = bars.sum(summary.midnightCount, summary.count);
    summary.firstSecond = bars.secondOf(0);
    summary.lastSecond = bars.secondOf(summary.count - 1);
    summary.decimals = bars.decimals();
    countCandles(summary, bars);
    return summary;
}

} // namespace vexdesk
