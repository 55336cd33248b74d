// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/barseries.h"

#include <QtCore/QDate>

#include <algorithm>
#include <functional>
#include <vector>

/// The bars of a series folded into candles, by the rule of the export. Any thread.
namespace vexdesk {

/// The bars of one interval, which does not hold its begin and holds its end.
struct Candle
{
    /// Wall times; of a day within the day at which it is shown, of a week and a month whole days.
    qint64 begin = 0;
    qint64 end = 0;
    Bar bar;
    qsizetype count = 0; ///< of bars, at least one
    /// Where the candle is shown: the day of its first bar's file, of a week or a month the first
    /// day that has one.
    QDate day;

    bool operator==(const Candle&) const = default;

    /// Where it is drawn.
    double middle() const { return (static_cast<double>(begin) + static_cast<double>(end)) / 2; }
};

/// Makes the candle one that goes on to the end of `next`.
void extendCandle(Candle& candle, const Candle& next);

/// On a calendar a day has one place, also where bars at midnight are a candle of their own: those
/// of each day become one. For candles in their order, of days and no longer; `candleOf` gives the
/// candle of an item, or is a pointer to its member.
template <typename Item, typename CandleOf>
void joinDays(std::vector<Item>& items, CandleOf candleOf)
{
    size_t last = 0;
    for (size_t i = 1; i < items.size(); ++i) {
        Candle& before = std::invoke(candleOf, items[last]);
        const Candle& candle = std::invoke(candleOf, items[i]);
        if (candle.day == before.day)
            extendCandle(before, candle);
        else
            items[++last] = items[i];
    }
    items.resize(std::min(items.size(), last + 1));
}

/// The candles that begin with a day, as many as BarSeries::candlesOf() says of a day that was
/// read; none of a day that was not, and none below the day while its bars are not in memory. The
/// bars at midnight of the next day are in the last one where they end it, so the candles depend on
/// the day, on the one before and on the one after; those of weeks and months on all their days.
std::vector<Candle> foldDay(const BarSeries& series, qsizetype day, Timeframe timeframe);

} // namespace vexdesk
