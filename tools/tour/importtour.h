// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDir>

namespace vexdesk {

class MainWindow;
class Tour;

/// Adds the steps that import a file of bars with the import command of the history plug-in, from
/// the menu to the day files on disk. The file is written to `directory` first; false when it
/// cannot be. The bars go to the terminal's store, series NORD/MAIN/ALFA of the demonstration data.
bool addImportTour(Tour& tour, MainWindow& window, const QDir& directory);

} // namespace vexdesk
