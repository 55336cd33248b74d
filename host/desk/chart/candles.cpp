// SPDX-License-Identifier: MIT
#include "desk/chart/candles.h"

#include "desk/chart/wallclock.h"

#include <vexdesk/history/barinterval.h>

namespace vexdesk {

namespace {

constexpr int msecs = 1000; // of a second

Candle candleThatEnds(int secondOfDay, int seconds, const QDate& day)
{
    Candle candle;
    candle.end = wallTime(day) + secondOfDay;
    candle.begin = candle.end - seconds;
    candle.day = day;
    return candle;
}

void appendBars(std::vector<Candle>& candles, const SeriesDay& day, int seconds, bool hasMidnight)
{
    const DayBars& bars = *day.bars;
    qsizetype bar = day.summary->midnightCount;
    if (hasMidnight) {
        Candle& candle = candles.emplace_back(candleThatEnds(0, seconds, day.day));
        candle.bar = *day.summary->midnight;
        candle.count = day.summary->midnightCount;
    }
    while (bar < bars.size()) {
        const int end = intervalEnd(bars.secondOf(bar) * msecs, seconds);
        qsizetype next = bar + 1;
        while (next < bars.size() && bars.secondOf(next) <= end)
            ++next;
        Candle& candle = candles.emplace_back(candleThatEnds(end, seconds, day.day));
        candle.bar = bars.sum(bar, next);
        candle.count = next - bar;
        bar = next;
    }
}

// A day is shown at its day: bars at midnight that end no day before have its first second there,
// or all of it where there are no others.
void appendDay(std::vector<Candle>& candles, const SeriesDay& day, bool hasMidnight)
{
    const DaySummary& summary = *day.summary;
    const qint64 begin = wallTime(day.day);
    const qint64 end = begin + secondsPerDay;
    const qint64 afterMidnight = begin + (hasMidnight ? 1 : 0);
    if (hasMidnight) {
        candles.push_back({begin, summary.rest ? afterMidnight : end, *summary.midnight,
                           summary.midnightCount, day.day});
    }
    if (summary.rest) {
        candles.push_back(
            {afterMidnight, end, *summary.rest, summary.count - summary.midnightCount, day.day});
    }
}

std::vector<Candle> foldUpToDay(const BarSeries& series, qsizetype index, Timeframe timeframe)
{
    std::vector<Candle> candles;
    const SeriesDay& day = series.days()[static_cast<size_t>(index)];
    if (!day.summary || (isBelowDay(timeframe) && !day.bars))
        return candles;
    candles.reserve(static_cast<size_t>(series.candlesOf(index, timeframe)));
    const bool hasMidnight = day.summary->midnight && !series.endsDayBefore(index, timeframe);
    if (isBelowDay(timeframe))
        appendBars(candles, day, secondsOf(timeframe), hasMidnight);
    else
        appendDay(candles, day, hasMidnight);
    const qsizetype next = index + 1;
    if (next < static_cast<qsizetype>(series.days().size()) &&
        series.endsDayBefore(next, timeframe)) {
        const DaySummary& after = *series.days()[static_cast<size_t>(next)].summary;
        extendBar(candles.back().bar, *after.midnight);
        candles.back().count += after.midnightCount;
    }
    return candles;
}

std::vector<Candle> foldPeriod(const BarSeries& series, qsizetype index, Timeframe timeframe)
{
    if (series.candlesOf(index, timeframe) == 0)
        return {};
    const std::vector<SeriesDay>& days = series.days();
    const QDate day = days[static_cast<size_t>(index)].day;
    const QDate end = periodEnd(day, timeframe);
    std::vector<Candle> folded;
    for (size_t i = static_cast<size_t>(index); i < days.size() && days[i].day < end; ++i) {
        for (const Candle& part : foldUpToDay(series, static_cast<qsizetype>(i), Timeframe::Day)) {
            if (folded.empty())
                folded.push_back(part);
            else
                extendCandle(folded.front(), part);
        }
    }
    for (Candle& candle : folded) {
        candle.begin = wallTime(periodBegin(day, timeframe));
        candle.end = wallTime(end);
        candle.day = day;
    }
    return folded;
}

} // namespace

void extendCandle(Candle& candle, const Candle& next)
{
    candle.end = next.end;
    extendBar(candle.bar, next.bar);
    candle.count += next.count;
}

std::vector<Candle> foldDay(const BarSeries& series, qsizetype day, Timeframe timeframe)
{
    return timeframe > Timeframe::Day ? foldPeriod(series, day, timeframe)
                                      : foldUpToDay(series, day, timeframe);
}

} // namespace vexdesk
