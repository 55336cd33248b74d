// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDir>

namespace vexdesk {

class MainWindow;
class Tour;

/// Adds the steps that go through the windows of the data quality plug-in: a file of two series is
/// imported by the safe import, their health is looked at and shown in the chart, and the import is
/// put back in the window of restore points. The file is written to `directory` first; false when
/// it cannot be. Where that plug-in is missing nothing of it is shown.
///
/// The stored bars are what they were after the last step; the tour fails where they are not. The
/// settings are as they were, also when the tour fails.
bool addQualityTour(Tour& tour, MainWindow& window, const QDir& directory);

} // namespace vexdesk
