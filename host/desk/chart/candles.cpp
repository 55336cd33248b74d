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

Candle candleOfDay(const QDate& day, const Bar& bar, qsizetype count)
{
    const qint64 begin = wallTime(day);
    return {begin, begin + secondsPerDay, bar, count, day};
}

// Bars at midnight end the day before, where they are shown also if it has no others. Bars that are
// days are those of their day.
void appendDay(std::vector<Candle>& candles, const SeriesDay& day, bool hasMidnight, bool areDays)
{
    const DaySummary& summary = *day.summary;
    if (areDays && hasMidnight) {
        candles.push_back(candleOfDay(day.day, summary.whole(), summary.count));
        return;
    }
    if (hasMidnight)
        candles.push_back(
            candleOfDay(day.day.addDays(-1), *summary.midnight, summary.midnightCount));
    if (summary.rest)
        candles.push_back(
            candleOfDay(day.day, *summary.rest, summary.count - summary.midnightCount));
}

std::vector<Candle> foldUpToDay(const BarSeries& series, qsizetype index, Timeframe timeframe)
{
    std::vector<Candle> candles;
    const SeriesDay& day = series.days()[static_cast<size_t>(index)];
    if (isBelowDay(timeframe) && !day.bars)
        return candles;
    candles.reserve(static_cast<size_t>(series.candlesOf(index, timeframe)));
    const bool hasMidnight =
        day.summary && day.summary->midnight && !series.endsDayBefore(index, timeframe);
    if (isBelowDay(timeframe))
        appendBars(candles, day, secondsOf(timeframe), hasMidnight);
    else if (day.summary)
        appendDay(candles, day, hasMidnight, series.areDays());
    const qsizetype next = index + 1;
    if (next == static_cast<qsizetype>(series.days().size()) ||
        !series.endsDayBefore(next, timeframe))
        return candles;
    const DaySummary& after = *series.days()[static_cast<size_t>(next)].summary;
    if (!day.summary) {
        candles.push_back(candleOfDay(day.day, *after.midnight, after.midnightCount));
    } else {
        extendBar(candles.back().bar, *after.midnight);
        candles.back().count += after.midnightCount;
    }
    return candles;
}

// Up to the file of the day that the next one begins with, whose bars at midnight may be of it.
std::vector<Candle> foldPeriod(const BarSeries& series, qsizetype index, const QDate& first,
                               Timeframe timeframe)
{
    const std::vector<SeriesDay>& days = series.days();
    const QDate end = periodEnd(first, timeframe);
    std::vector<Candle> folded;
    for (size_t i = static_cast<size_t>(index); i < days.size() && days[i].day <= end; ++i) {
        for (const Candle& part : foldUpToDay(series, static_cast<qsizetype>(i), Timeframe::Day)) {
            if (part.day < first || part.day >= end)
                continue;
            if (folded.empty())
                folded.push_back(part);
            else
                extendCandle(folded.front(), part);
        }
    }
    for (Candle& candle : folded) {
        candle.begin = wallTime(periodBegin(first, timeframe));
        candle.end = wallTime(end);
        candle.day = first;
    }
    return folded;
}

std::vector<Candle> foldPeriods(const BarSeries& series, qsizetype index, Timeframe timeframe)
{
    std::vector<Candle> all;
    for (const QDate& first : series.periodsFrom(index, timeframe)) {
        const std::vector<Candle> folded = foldPeriod(series, index, first, timeframe);
        all.insert(all.end(), folded.begin(), folded.end());
    }
    return all;
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
    return timeframe > Timeframe::Day ? foldPeriods(series, day, timeframe)
                                      : foldUpToDay(series, day, timeframe);
}

} // namespace vexdesk
