// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QtGlobal>

/// The intervals into which bars are folded, the same for the export and the charts. Any thread.
namespace vexdesk {

/// Seconds from midnight to the end of the interval of `timeframe` seconds, at least one, in which
/// a moment of the day lies, given in milliseconds since midnight. Intervals are counted from
/// midnight and hold their end but not their begin: midnight itself ends an interval of the day
/// before, which is 0 here. The last interval of a day may end after it.
constexpr int intervalEnd(int msecsOfDay, int timeframe)
{
    const qint64 length = qint64(timeframe) * 1000;
    return static_cast<int>((msecsOfDay + length - 1) / length * timeframe);
}

} // namespace vexdesk
