// SPDX-License-Identifier: MIT
#include "desk/chart/candles.h"

#include "desk/chart/wallclock.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vexdesk {

namespace {

constexpr qint64 minute = 60;
constexpr qint64 hour = 60 * minute;
constexpr qint64 week = 7 * secondsPerDay;

constexpr std::array usualIntervals{
    qint64(1),  qint64(2),  qint64(5),   qint64(10),    qint64(15),        qint64(30), minute,
    2 * minute, 5 * minute, 10 * minute, 15 * minute,   30 * minute,       hour,       2 * hour,
    4 * hour,   6 * hour,   12 * hour,   secondsPerDay, 2 * secondsPerDay, week,       2 * week,
    4 * week};

} // namespace

qint64 candleInterval(double shortest, int timeframe)
{
    if (shortest <= timeframe)
        return timeframe;
    const auto found = std::find_if(usualIntervals.begin(), usualIntervals.end(),
                                    [shortest, timeframe](qint64 interval) {
                                        return double(interval) >= shortest && interval > timeframe;
                                    });
    if (found != usualIntervals.end())
        return *found;
    qint64 interval = usualIntervals.back();
    while (double(interval) < shortest || interval < timeframe)
        interval *= 2;
    return interval;
}

qint64 intervalEnd(qint64 time, qint64 interval)
{
    // The first day of 1970 was a Thursday.
    const qint64 origin = interval % week == 0 ? -3 * secondsPerDay : 0;
    return (floorDivided(time - 1 - origin, interval) + 1) * interval + origin;
}

std::vector<Candle> candlesOf(const BarSeries& series, qint64 interval, double from, double to)
{
    std::vector<Candle> candles;
    if (series.isEmpty())
        return candles;
    // An interval that ends at `from` is not seen; the next one is, to its begin.
    const qint64 begin =
        intervalEnd(static_cast<qint64>(std::floor(from)) + 1, interval) - interval;
    qsizetype bar = series.firstAfter(begin);
    while (bar < series.size()) {
        Candle candle;
        candle.end = intervalEnd(series.at(bar).time, interval);
        candle.begin = candle.end - interval;
        if (static_cast<double>(candle.begin) >= to)
            break;
        const qsizetype next = series.firstAfter(candle.end);
        candle.bar = series.sum(bar, next);
        candle.count = next - bar;
        candles.push_back(candle);
        bar = next;
    }
    return candles;
}

} // namespace vexdesk
