// SPDX-License-Identifier: MIT
#include "chartseries.h"

#include "desk/chart/wallclock.h"

#include <algorithm>

using vexdesk::Bar;

namespace testsupport {

Bar makeBar(const QDate& day, const QTime& time, int number)
{
    Bar bar;
    bar.time = vexdesk::wallTime(day, time);
    bar.open = 100 + number % 17 / 4.0;
    bar.close = 100 + number % 13 / 4.0;
    bar.high = std::max(bar.open, bar.close) + 0.25;
    bar.low = std::min(bar.open, bar.close) - 0.5;
    bar.volume = 100 + number;
    return bar;
}

std::vector<Bar> makeBars(const QDate& day, int count, int timeframe)
{
    std::vector<Bar> bars;
    for (int i = 1; i <= count; ++i)
        bars.push_back(makeBar(day, QTime(10, 0).addSecs(i * timeframe), i));
    return bars;
}

SeriesPointer seriesOf(const std::vector<std::vector<Bar>>& days, int decimals)
{
    std::vector<vexdesk::SeriesDay> read;
    for (const std::vector<Bar>& bars : days)
        read.push_back(readDay(vexdesk::wallDate(bars.front().time), bars, decimals));
    return std::make_shared<const vexdesk::BarSeries>(minute, std::move(read));
}

SeriesPointer makeSeries(int days, int barsPerDay, int timeframe)
{
    std::vector<vexdesk::SeriesDay> read;
    QDate day = firstDay;
    for (int i = 0; i < days; ++i) {
        read.push_back(readDay(day, makeBars(day, barsPerDay, timeframe)));
        day = day.addDays(day.dayOfWeek() == Qt::Friday ? 3 : 1);
    }
    return std::make_shared<const vexdesk::BarSeries>(timeframe, std::move(read));
}

vexdesk::TimeAxis axisOf(const SeriesPointer& series, vexdesk::Timeframe timeframe,
                         bool areNightsShown)
{
    return {std::make_shared<vexdesk::FoldedDays>(series, timeframe), areNightsShown};
}

} // namespace testsupport
