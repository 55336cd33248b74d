// SPDX-License-Identifier: MIT
#pragma once

/// Which part of the time the chart shows. Any thread.
namespace vexdesk {

/// Wall times in seconds.
struct TimeRange
{
    double begin = 0;
    double end = 0;

    double length() const { return end - begin; }
    bool operator==(const TimeRange&) const = default;
};

/// How far the view can be moved and zoomed over the bars that there are.
class TimeLimits final
{
public:
    TimeLimits() = default;
    /// For bars of this timeframe that end between two wall times.
    TimeLimits(double firstTime, double lastTime, double timeframe);

    /// Everything, with a margin on both sides.
    const TimeRange& all() const { return m_all; }
    /// When the last bar ends.
    double lastTime() const { return m_bars.end; }
    /// Between which times a view of this length can be moved: the bars with a margin that is a
    /// share of the view.
    TimeRange reach(double length) const;

    /// The nearest range that may be shown: neither shorter than a few bars nor longer than
    /// everything, and within it.
    TimeRange fitted(const TimeRange& range) const;
    /// The range made longer by this factor, with the time `fixed` where it was.
    TimeRange zoomed(const TimeRange& range, double fixed, double factor) const;
    TimeRange moved(const TimeRange& range, double seconds) const;

    /// What is to be shown in place of `range` when the bars have become others, with limits
    /// `now`: the same place; but everything where everything was shown, and new bars at the right
    /// end where that was shown.
    TimeRange followed(const TimeRange& range, const TimeLimits& now) const;

private:
    double shortest() const;

    TimeRange m_bars;
    TimeRange m_all;
    double m_timeframe = 0;
};

} // namespace vexdesk
