// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/timeaxis.h"
#include "seriesdays.h"

#include <memory>

/// What the tests of the chart share: made-up bars in series.
namespace testsupport {

constexpr int minute = 60;
inline const QDate firstDay(2024, 1, 15); // a Monday

/// A rising or a falling bar, another one for every number.
vexdesk::Bar makeBar(const QDate& day, const QTime& time, int number);
/// Bars of this timeframe, the first of which ends so long after 10:00.
std::vector<vexdesk::Bar> makeBars(const QDate& day, int count, int timeframe = minute);

using SeriesPointer = std::shared_ptr<const vexdesk::BarSeries>;

/// A series of minute bars whose days were read.
SeriesPointer seriesOf(const std::vector<std::vector<vexdesk::Bar>>& days, int decimals = 2);
/// So many bars on each of so many weekdays.
SeriesPointer makeSeries(int days, int barsPerDay, int timeframe = minute);

vexdesk::TimeAxis axisOf(const SeriesPointer& series, vexdesk::Timeframe timeframe,
                         bool areNightsShown = false);

} // namespace testsupport
