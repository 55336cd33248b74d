// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

namespace tadata::cli {

/// A progress bar on standard error. Draws nothing when that is not a terminal.
class ProgressBar final
{
public:
    ProgressBar();
    /// Leaves the line of the bar.
    ~ProgressBar();

    /// With a text beside the bar, as far as the line has room.
    void show(int percent, const QString& text = QString());
    /// Takes the line of the bar away, so that something else can be written there.
    void clear();

private:
    bool m_visible;
    int m_percent = -1;
    QString m_text;
};

} // namespace tadata::cli
