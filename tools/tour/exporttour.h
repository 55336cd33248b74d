// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDir>

namespace vexdesk {

class MainWindow;
class Tour;

/// Adds the steps that export the edited demonstration bars, and then today's deals over the same
/// file, and compare what was written. The file goes to `directory`.
void addExportTour(Tour& tour, MainWindow& window, const QDir& directory);

} // namespace vexdesk
