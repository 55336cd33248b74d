// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/barseries.h"

#include <QtCore/QRandomGenerator>

/// What the tests of the chart's bars share: days of a series as if they had been read.
namespace testsupport {

/// A day with these bars in memory; without any a day whose file has none that can be drawn.
vexdesk::SeriesDay readDay(const QDate& day, const std::vector<vexdesk::Bar>& bars,
                           int decimals = 2);
/// The same after its bars were let go.
vexdesk::SeriesDay summedDay(const QDate& day, const std::vector<vexdesk::Bar>& bars,
                             int decimals = 2);
vexdesk::SeriesDay unreadDay(const QDate& day, qint64 bytes);

/// A bar with prices and money in quarters: every order of adding gives the same double.
vexdesk::Bar randomBar(QRandomGenerator& random, qint64 time);

} // namespace testsupport
