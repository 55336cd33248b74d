// SPDX-License-Identifier: MIT
#pragma once

class QString;
class QWidget;

namespace vexdesk {

/// From now on a screen reader finds a chart in a ChartView, with the bar that the keyboard points
/// at as its value. As often as one likes; user-interface thread only.
void installChartAccessibility();

/// Tells the screen reader what is said of the bar that the keyboard points at now.
void setReadout(QWidget& chart, const QString& text);

} // namespace vexdesk
