// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/chartlayout.h"

#include <memory>

class QWidget;

/// What the tests of the chart share: made-up bars, and the mouse over a widget.
namespace testsupport {

constexpr int minute = 60;
inline const QDate firstDay(2024, 1, 15);

/// A rising or a falling bar, another one for every number.
vexdesk::Bar makeBar(const QDate& day, const QTime& time, int number);
/// A series of these days, each given as its bars.
std::shared_ptr<const vexdesk::BarSeries>
seriesOf(const std::vector<std::vector<vexdesk::Bar>>& days, int decimals = 2);
/// Minute bars that end at 10:01 and later.
std::shared_ptr<const vexdesk::BarSeries> makeSeries(int days, int barsPerDay);

/// Where the mouse points at a candle at the height of its close.
QPoint placeOf(const vexdesk::ChartLayout& chart, const vexdesk::Candle& candle);
void moveMouse(QWidget* widget, const QPoint& place, Qt::MouseButtons buttons = Qt::NoButton);
void leaveWidget(QWidget* widget);

} // namespace testsupport
