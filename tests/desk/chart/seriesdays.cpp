// SPDX-License-Identifier: MIT
#include "seriesdays.h"

#include <algorithm>

using vexdesk::Bar;
using vexdesk::DayBars;
using vexdesk::DaySummary;
using vexdesk::SeriesDay;

namespace testsupport {

SeriesDay readDay(const QDate& day, const std::vector<Bar>& bars, int decimals)
{
    constexpr qint64 lineSize = 50;
    SeriesDay read;
    read.day = day;
    read.bytes = lineSize * static_cast<qint64>(bars.size());
    if (!bars.empty())
        read.bars = std::make_shared<const DayBars>(bars, decimals);
    read.summary = std::make_shared<const DaySummary>(read.bars ? vexdesk::summaryOf(*read.bars)
                                                                : DaySummary());
    return read;
}

SeriesDay summedDay(const QDate& day, const std::vector<Bar>& bars, int decimals)
{
    SeriesDay summed = readDay(day, bars, decimals);
    summed.bars.reset();
    return summed;
}

SeriesDay unreadDay(const QDate& day, qint64 bytes)
{
    SeriesDay unread;
    unread.day = day;
    unread.bytes = bytes;
    return unread;
}

Bar randomBar(QRandomGenerator& random, qint64 time)
{
    const auto quarters = [&random](int count) { return random.bounded(count) / 4.0; };
    Bar bar;
    bar.time = time;
    bar.open = quarters(1000) - 100;
    bar.close = quarters(1000) - 100;
    bar.high = std::max(bar.open, bar.close) + quarters(50);
    bar.low = std::min(bar.open, bar.close) - quarters(50);
    bar.volume = random.bounded(100000) - 5;
    bar.value = quarters(1000000);
    bar.openInterest = random.bounded(1000);
    return bar;
}

} // namespace testsupport
