// SPDX-License-Identifier: MIT
#pragma once

namespace tadata::cli {

/// A progress bar on standard error. Draws nothing when that is not a terminal.
class ProgressBar final
{
public:
    ProgressBar();
    /// Leaves the line of the bar.
    ~ProgressBar();

    void show(int percent);

private:
    bool m_visible;
    int m_percent = -1;
};

} // namespace tadata::cli
