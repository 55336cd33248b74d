// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/candles.h"

#include <QtCore/QString>

/// What the chart says of the bar that is pointed at, in words. Any thread.
namespace vexdesk {

/// The time of a bar or, where a candle stands for an interval of several, the interval. `interval`
/// is that of the candles and `timeframe` that of the bars, in seconds.
QString candleTimeText(const Candle& candle, qint64 interval, int timeframe);

/// The time, the prices with these digits after the point, the volume and, where they are not zero,
/// the value and the open interest.
QString readoutText(const Candle& candle, qint64 interval, int timeframe, int decimals);

} // namespace vexdesk
