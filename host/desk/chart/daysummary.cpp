// SPDX-License-Identifier: MIT
#include "desk/chart/daysummary.h"

#include "desk/chart/daybars.h"

#include <vexdesk/history/barinterval.h>

#include <algorithm>

namespace vexdesk {

namespace {

constexpr int msecs = 1000; // of a second

void extend(std::optional<Bar>& sum, const Bar& bar)
{
    if (sum)
        extendBar(*sum, bar);
    else
        sum = bar;
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

void DaySummaryMaker::add(const Bar& bar, int secondOfDay, int decimals)
{
    if (m_summary.count++ == 0)
        m_summary.firstSecond = secondOfDay;
    m_summary.lastSecond = secondOfDay;
    m_summary.decimals = std::max(m_summary.decimals, decimals);
    if (secondOfDay == 0) {
        ++m_summary.midnightCount;
        extend(m_summary.midnight, bar);
        return;
    }
    extend(m_summary.rest, bar);
    // A bar that begins no candle of a timeframe begins none of a longer one: its interval is in
    // that.
    for (size_t t = 0; t < m_ends.size() && secondOfDay > m_ends[t]; ++t) {
        m_ends[t] = intervalEnd(secondOfDay * msecs, secondsOf(allTimeframes[t]));
        ++m_summary.candles[t];
    }
}

DaySummary summaryOf(const DayBars& bars)
{
    DaySummaryMaker maker;
    for (qsizetype i = 0; i < bars.size(); ++i)
        maker.add(bars.at(i), bars.secondOf(i), bars.decimals());
    return maker.summary();
}

} // namespace vexdesk
