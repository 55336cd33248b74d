// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

/// What the chart's dock holds: made by one of two sources, with Qt Charts and without.
namespace vexdesk {

bool isChartBuilt();

/// The caller owns it.
QWidget* makeChartContent();

} // namespace vexdesk
