// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace vexdesk {

class MainWindow;
class Tour;

/// Adds the steps that open the chart on the imported demonstration bars, zoom with the wheel,
/// point at a bar and compare what is read out with the stored bar. Then come the steps that `edit`
/// adds, beside the open chart: they delete that bar. The last steps show that it is gone from the
/// chart, and close it.
///
/// The user's choice of a series, and whether the chart is open, are as they were in the end and
/// when the tour fails, as long as whoever ends the program then connects to Tour::failed after
/// this call.
void addChartTour(Tour& tour, MainWindow& window, const std::function<void()>& edit);

} // namespace vexdesk
