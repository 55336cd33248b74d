// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/axisticks.h"
#include "desk/chart/candles.h"
#include "desk/chart/timerange.h"

#include <QtCore/QRectF>

#include <cmath>
#include <vector>

namespace vexdesk {

/// From what to what an upright axis goes.
struct ValueRange
{
    double low = 0;
    double high = 1;
};

/// What is shown now and where: all that the items of the chart paint from. Places are those of the
/// scene, in device-independent pixels. The view owns it.
struct ChartLayout
{
    QRectF pricePane;
    QRectF volumePane;
    double labelsTop = 0; ///< of the labels below both
    QRectF timeTag;       ///< of the crosshair, over the labels; null when there is none

    TimeRange time;
    ValueRange prices;
    ValueRange volumes;
    bool hasVolumes = false; ///< of a candle that is shown
    qint64 interval = 60;    ///< of a candle, in seconds
    int timeframe = 60;
    int decimals = 0; ///< of prices
    std::vector<Candle> candles;
    std::vector<TimeTick> ticks;

    double xOf(double seconds) const
    {
        return pricePane.left() + (seconds - time.begin) / time.length() * pricePane.width();
    }
    double timeAt(double x) const
    {
        return time.begin + (x - pricePane.left()) / pricePane.width() * time.length();
    }
    static double yOf(double value, const QRectF& pane, const ValueRange& range)
    {
        return pane.bottom() - (value - range.low) / (range.high - range.low) * pane.height();
    }
    static double valueAt(double y, const QRectF& pane, const ValueRange& range)
    {
        return range.low + (pane.bottom() - y) / pane.height() * (range.high - range.low);
    }
};

} // namespace vexdesk
