// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace vexdesk {

class MainWindow;
class Tour;

/// Adds the steps that open the imported demonstration bars from the tree of series, show a study,
/// zoom with the wheel, point at a bar and compare what is read out with the stored bar, ask for
/// the context menu, go to a date and back. Then come the steps that `edit` adds, beside the open
/// chart: they delete that bar. The last steps show that it is gone from the chart, and close it.
///
/// The charts that the user had, and whether the tree is shown, are as they were when the
/// application quits and when the tour fails, as long as whoever ends the program then connects to
/// Tour::failed after this call.
void addChartTour(Tour& tour, MainWindow& window, const std::function<void()>& edit);

} // namespace vexdesk
