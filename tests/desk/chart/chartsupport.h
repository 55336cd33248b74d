// SPDX-License-Identifier: MIT
#pragma once

#include "chartseries.h"
#include "desk/chart/chartlayout.h"

class QWidget;

/// The mouse over a chart.
namespace testsupport {

/// Where the mouse points at a candle at the height of its close.
QPoint placeOf(const vexdesk::ChartLayout& chart, const vexdesk::PlacedCandle& candle);
void moveMouse(QWidget* widget, const QPoint& place, Qt::MouseButtons buttons = Qt::NoButton);
void leaveWidget(QWidget* widget);

} // namespace testsupport
