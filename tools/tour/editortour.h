// SPDX-License-Identifier: MIT
#pragma once

namespace vexdesk {

class MainWindow;
class Tour;

/// Adds the steps that open the history editor on the imported demonstration bars, show a range,
/// find a bar, delete some and close the window, and then look at the day files on disk.
void addEditorTour(Tour& tour, MainWindow& window);

} // namespace vexdesk
