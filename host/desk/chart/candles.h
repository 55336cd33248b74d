// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/barseries.h"

#include <QtCore/QDate>

#include <vector>

/// The bars of a series folded into candles, by the rule of the export. Any thread.
namespace vexdesk {

/// The bars of one interval, which does not hold its begin and holds its end.
struct Candle
{
    /// Wall times; of a day, a week and a month whole days.
    qint64 begin = 0;
    qint64 end = 0;
    Bar bar;
    qsizetype count = 0; ///< of bars, at least one
    /// Where the candle is shown: the day of its first bar's file, or the day before for bars at
    /// midnight that are a day; of a week or a month its first day with a candle or a file not
    /// read.
    QDate day;

    bool operator==(const Candle&) const = default;

    /// Where it is drawn.
    double middle() const { return (static_cast<double>(begin) + static_cast<double>(end)) / 2; }
};

/// Makes the candle one that goes on to the end of `next`.
void extendCandle(Candle& candle, const Candle& next);

/// The candles that begin with a day, as many as BarSeries::candlesOf() says of a day that was
/// read; none below the day while its bars are not in memory, and of a day that was not read those
/// that the next day tells of. The bars at midnight of the next day are in the last one where they
/// end it, so the candles depend on the day, on the one before and on the one after; those of weeks
/// and months on all their days. No two candles of days have the same date.
std::vector<Candle> foldDay(const BarSeries& series, qsizetype day, Timeframe timeframe);

} // namespace vexdesk
