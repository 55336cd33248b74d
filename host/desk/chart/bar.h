// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QtGlobal>

#include <algorithm>

namespace vexdesk {

/// A bar, or what several bars in a row have come to. A plain value.
struct Bar
{
    qint64 time = 0; ///< wall time at which it ends
    double open = 0;
    double high = 0;
    double low = 0;
    double close = 0;
    qint64 volume = 0; ///< in pieces
    double value = 0;  ///< in money
    qint32 openInterest = 0;

    bool operator==(const Bar&) const = default;
};

/// Makes the bar one that goes on to the end of `next`: the first open, the highest high, the
/// lowest low, the last close, the sums of volume and value, the last open interest.
inline void extendBar(Bar& bar, const Bar& next)
{
    bar.time = next.time;
    bar.high = std::max(bar.high, next.high);
    bar.low = std::min(bar.low, next.low);
    bar.close = next.close;
    bar.volume += next.volume;
    bar.value += next.value;
    bar.openInterest = next.openInterest;
}

} // namespace vexdesk
