// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/chartstudy.h"

#include <vexdesk/icharts.h>

#include <vector>

namespace vexdesk {

/// What is marked at a candle.
struct CandleMark
{
    size_t candle = 0;
    ChartMark::Kind kind = ChartMark::Kind::Note; ///< the worst of them
    QString text;                                 ///< of each mark a line

    bool operator==(const CandleMark&) const = default;
};

/// Gives the marks to the candles, at most one to each, in their order: to the first one that the
/// marked stretch has a part in or, where there is none, to the next one. The day stands before the
/// text there and at candles of several days. What is marked before the first candle or after the
/// last one is left out. Any thread.
std::vector<CandleMark> marksOfCandles(const QList<ChartMark>& marks,
                                       const std::vector<PlacedCandle>& candles);

} // namespace vexdesk
