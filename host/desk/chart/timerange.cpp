// SPDX-License-Identifier: MIT
#include "desk/chart/timerange.h"

#include <algorithm>

namespace vexdesk {

namespace {

constexpr double fewestBars = 10; // that fill the view
constexpr double margin = 0.02;   // of the view, on each side of the bars
constexpr double leastMargin = 3; // bars

} // namespace

TimeLimits::TimeLimits(double firstTime, double lastTime, double timeframe)
    : m_bars{firstTime - timeframe, lastTime}
    , m_timeframe(timeframe)
{
    m_all = reach(std::max({m_bars.length() / (1 - 2 * margin),
                            m_bars.length() + 2 * leastMargin * timeframe, shortest()}));
}

double TimeLimits::shortest() const
{
    return fewestBars * m_timeframe;
}

TimeRange TimeLimits::reach(double length) const
{
    const double side =
        std::max({margin * length, leastMargin * m_timeframe, (length - m_bars.length()) / 2});
    return {m_bars.begin - side, m_bars.end + side};
}

TimeRange TimeLimits::fitted(const TimeRange& range) const
{
    if (range.length() >= m_all.length())
        return m_all;
    const double length = std::max(range.length(), shortest());
    const TimeRange ends = reach(length);
    const double begin =
        std::clamp(range.begin, ends.begin, std::max(ends.begin, ends.end - length));
    return {begin, begin + length};
}

TimeRange TimeLimits::zoomed(const TimeRange& range, double fixed, double factor) const
{
    const double length = std::clamp(range.length() * factor, shortest(), m_all.length());
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
    const bool isAtEnd = range.end >= lastTime() && range.begin < lastTime();
    return now.moved(range, isAtEnd ? std::max(0.0, now.lastTime() - lastTime()) : 0);
}

} // namespace vexdesk
