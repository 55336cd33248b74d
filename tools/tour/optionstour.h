// SPDX-License-Identifier: MIT
#pragma once

namespace vexdesk {

class MainWindow;
class Tour;

/// Adds the steps that put a few files into the demonstration's series, choose in the options
/// dialog how long second files are kept, raise a new trading day from the developer menu, and look
/// at which files are gone then.
///
/// No file of the user's is touched: the number of days is above the one that the user has chosen,
/// by which the start of the terminal has removed files already. A user who keeps second files for
/// good, or as long as can be chosen, is shown nothing of it.
///
/// The settings are as they were, and what is left of the tour's files is gone, after the last step
/// and when the tour fails, as long as whoever ends the program then connects to Tour::failed after
/// this call.
void addOptionsTour(Tour& tour, MainWindow& window);

} // namespace vexdesk
