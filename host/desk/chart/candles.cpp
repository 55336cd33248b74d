// SPDX-License-Identifier: MIT
#include "desk/chart/candles.h"

#include "desk/chart/wallclock.h"

#include <vexdesk/history/barinterval.h>

namespace vexdesk {

namespace {

constexpr int msecs = 1000; // of a second

void extendCandle(Candle& candle, const Bar& bar, qsizetype count)
{
    extendBar(candle.bar, bar);
    candle.count += count;
}

Candle candleThatEnds(int secondOfDay, int seconds, const QDate& day)
{
    Candle candle;
    candle.end = wallTime(day) + secondOfDay;
    candle.begin = candle.end - seconds;
    candle.day = day;
    return candle;
}

void appendBars(std::vector<Candle>& candles, const SeriesDay& day, int seconds)
{
    const DayBars& bars = *day.bars;
    qsizetype bar = day.summary->midnightCount;
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

void appendDay(std::vector<Candle>& candles, const SeriesDay& day)
{
    const DaySummary& summary = *day.summary;
    if (!summary.rest)
        return;
    Candle& candle = candles.emplace_back(candleThatEnds(secondsPerDay, secondsPerDay, day.day));
    candle.bar = *summary.rest;
    candle.count = summary.count - summary.midnightCount;
}

std::vector<Candle> foldUpToDay(const BarSeries& series, qsizetype index, Timeframe timeframe)
{
    std::vector<Candle> candles;
    const SeriesDay& day = series.days()[static_cast<size_t>(index)];
    if (!day.summary || (isBelowDay(timeframe) && !day.bars))
        return candles;
    candles.reserve(static_cast<size_t>(series.candlesOf(index, timeframe)));
    const int seconds = secondsOf(timeframe);
    if (day.summary->midnight && !series.endsDayBefore(index, timeframe)) {
        Candle& candle = candles.emplace_back(candleThatEnds(0, seconds, day.day));
        candle.bar = *day.summary->midnight;
        candle.count = day.summary->midnightCount;
    }
    if (isBelowDay(timeframe))
        appendBars(candles, day, seconds);
    else
        appendDay(candles, day);
    const qsizetype next = index + 1;
    if (next < static_cast<qsizetype>(series.days().size()) &&
        series.endsDayBefore(next, timeframe)) {
        const DaySummary& after = *series.days()[static_cast<size_t>(next)].summary;
        extendCandle(candles.back(), *after.midnight, after.midnightCount);
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
                extendCandle(folded.front(), part.bar, part.count);
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

std::vector<Candle> foldDay(const BarSeries& series, qsizetype day, Timeframe timeframe)
{
    return timeframe > Timeframe::Day ? foldPeriod(series, day, timeframe)
                                      : foldUpToDay(series, day, timeframe);
}

} // namespace vexdesk
