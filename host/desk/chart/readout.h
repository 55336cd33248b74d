// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/candles.h"

#include <QtCore/QString>

/// What the chart says of the bar that is pointed at, in words. Any thread.
namespace vexdesk {

/// At which timeframe a candle is shown, and that of the stored bars of which it is made.
struct CandleKind
{
    Timeframe shown = Timeframe::Minute;
    int stored = 60; ///< in seconds

    /// Whether each candle is one of the stored bars.
    bool isPlain() const { return secondsOf(shown) == stored; }
};

/// The time of a bar or, where a candle stands for an interval of several, the interval.
QString candleTimeText(const Candle& candle, const CandleKind& kind);

/// The time, the prices with these digits after the point, the volume and, where they are not zero,
/// the value and the open interest.
QString readoutText(const Candle& candle, const CandleKind& kind, int decimals);

} // namespace vexdesk
