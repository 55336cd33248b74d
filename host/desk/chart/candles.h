// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/barseries.h"

#include <vector>

/// What is drawn of a series: bars, summed up to as many candles as the chart has room for. The
/// cost is that of the candles, whatever the number of bars behind them. Any thread.
namespace vexdesk {

/// The bars of one interval, which does not hold its begin and holds its end.
struct Candle
{
    qint64 begin = 0; ///< wall times
    qint64 end = 0;
    Bar bar;
    qsizetype count = 0; ///< of bars, at least one

    /// Where it is drawn.
    double middle() const { return (static_cast<double>(begin) + static_cast<double>(end)) / 2; }
};

/// How many seconds a candle should cover so that it is at least this wide: the timeframe itself,
/// or the next of the usual longer intervals.
qint64 candleInterval(double shortest, int timeframe);

/// When the interval that holds this time ends. Intervals begin where the clock has a round number,
/// a midnight, or a Monday, so that a candle is the same wherever the view is moved.
qint64 intervalEnd(qint64 time, qint64 interval);

/// The candles of which something is between two wall times, in their order.
std::vector<Candle> candlesOf(const BarSeries& series, qint64 interval, double from, double to);

} // namespace vexdesk
