// SPDX-License-Identifier: MIT
#include "desk/chart/barseries.h"

#include "desk/chart/wallclock.h"

#include <vexdesk/history/barinterval.h>

#include <algorithm>
#include <cmath>

namespace vexdesk {

BarSeries::BarSeries(int timeframe, std::vector<SeriesDay> days)
    : m_timeframe(timeframe)
    , m_days(std::move(days))
{
    learnToGuess();
    for (const SeriesDay& day : m_days) {
        if (day.summary ? day.summary->count > 0 : day.bytes > 0)
            m_isEmpty = false;
        if (day.summary)
            m_decimals = std::max(m_decimals, day.summary->decimals);
    }
}

// As many to a byte as in the files that were read.
void BarSeries::learnToGuess()
{
    std::array<qint64, timeframesBelowDay> candles{};
    qint64 bytes = 0;
    for (const SeriesDay& day : m_days) {
        if (!day.summary || day.summary->count == 0)
            continue;
        bytes += day.bytes;
        for (size_t t = 0; t < candles.size(); ++t)
            candles[t] += day.summary->candles[t];
    }
    for (size_t t = 0; t < candles.size(); ++t) {
        constexpr double usualLine = 48; // bytes
        const double length = std::max(m_timeframe, secondsOf(allTimeframes[t]));
        m_candlesPerByte[t] = bytes > 0
                                  ? static_cast<double>(candles[t]) / static_cast<double>(bytes)
                                  : m_timeframe / length / usualLine;
    }
}

int BarSeries::guess(qint64 bytes, Timeframe timeframe) const
{
    if (bytes == 0)
        return 0;
    if (!isBelowDay(timeframe))
        return 1;
    const double most = static_cast<double>(secondsPerDay) / secondsOf(timeframe);
    const double candles =
        static_cast<double>(bytes) * m_candlesPerByte[static_cast<size_t>(timeframe)];
    return static_cast<int>(std::clamp(std::round(candles), 1.0, most));
}

qsizetype BarSeries::indexFrom(const QDate& day) const
{
    const auto found = std::partition_point(m_days.begin(), m_days.end(),
                                            [day](const SeriesDay& one) { return one.day < day; });
    return found - m_days.begin();
}

int BarSeries::candlesOf(qsizetype day, Timeframe timeframe) const
{
    if (timeframe > Timeframe::Day)
        return beginsPeriod(day, timeframe) ? 1 : 0;
    const SeriesDay& one = m_days[static_cast<size_t>(day)];
    if (!one.summary)
        return guess(one.bytes, timeframe);
    const DaySummary& summary = *one.summary;
    const int own = summary.midnight && !endsDayBefore(day, timeframe) ? 1 : 0;
    if (timeframe == Timeframe::Day)
        return own + (summary.rest ? 1 : 0);
    return own + summary.candles[static_cast<size_t>(timeframe)];
}

bool BarSeries::endsDayBefore(qsizetype day, Timeframe timeframe) const
{
    if (day == 0)
        return false;
    const SeriesDay& one = m_days[static_cast<size_t>(day)];
    const SeriesDay& before = m_days[static_cast<size_t>(day - 1)];
    if (!one.summary || !one.summary->midnight || !before.summary || !before.summary->rest ||
        before.day.addDays(1) != one.day)
        return false;
    constexpr int msecs = 1000;
    const int seconds = secondsOf(std::min(timeframe, Timeframe::Day));
    return intervalEnd(before.summary->lastSecond * msecs, seconds) == secondsPerDay;
}

bool BarSeries::beginsPeriod(qsizetype day, Timeframe timeframe) const
{
    if (candlesOf(day, Timeframe::Day) == 0)
        return false;
    const QDate begin = periodBegin(m_days[static_cast<size_t>(day)].day, timeframe);
    for (qsizetype i = day - 1; i >= 0 && m_days[static_cast<size_t>(i)].day >= begin; --i) {
        if (candlesOf(i, Timeframe::Day) > 0)
            return false;
    }
    return true;
}

} // namespace vexdesk
