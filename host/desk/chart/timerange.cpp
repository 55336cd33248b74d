// SPDX-License-Identifier: MIT
#include "desk/chart/timerange.h"

#include <algorithm>

namespace vexdesk {

namespace {

constexpr double fewestBars = 10; // that fill the view
constexpr double margin = 0.02;   // of everything, on each side
constexpr double leastMargin = 3; // bars

} // namespace

TimeLimits::TimeLimits(double firstTime, double lastTime, double timeframe)
    : m_lastTime(lastTime)
    , m_shortest(fewestBars * timeframe)
{
    const double firstBegin = firstTime - timeframe;
    const double side = std::max({margin * (lastTime - firstBegin), leastMargin * timeframe,
                                  (m_shortest - (lastTime - firstBegin)) / 2});
    m_all = {firstBegin - side, lastTime + side};
}

TimeRange TimeLimits::fitted(const TimeRange& range) const
{
    const double length = std::clamp(range.length(), m_shortest, m_all.length());
    const double lastBegin = std::max(m_all.begin, m_all.end - length);
    const double begin = std::clamp(range.begin, m_all.begin, lastBegin);
    return {begin, begin + length};
}

TimeRange TimeLimits::zoomed(const TimeRange& range, double fixed, double factor) const
{
    const double length = std::clamp(range.length() * factor, m_shortest, m_all.length());
    const double begin = fixed - (fixed - range.begin) / range.length() * length;
    return fitted({begin, begin + length});
}

TimeRange TimeLimits::moved(const TimeRange& range, double seconds) const
{
    return fitted({range.begin + seconds, range.end + seconds});
}

TimeRange TimeLimits::followed(const TimeRange& range, const TimeLimits& now) const
{
    constexpr double almost = 1 - 1e-9;
    if (range.length() >= m_all.length() * almost)
        return now.all();
    const bool isAtEnd = range.end >= m_lastTime && range.begin < m_lastTime;
    return now.moved(range, isAtEnd ? std::max(0.0, now.m_lastTime - m_lastTime) : 0);
}

} // namespace vexdesk
