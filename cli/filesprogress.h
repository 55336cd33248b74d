// SPDX-License-Identifier: MIT
#pragma once

#include "progressbar.h"

#include <QtCore/QList>
#include <QtCore/QStringList>

#include <functional>
#include <mutex>

namespace tadata::cli {

/// The progress of a command that works on several files, on standard error: a bar for all of them,
/// and the share that is done of each that is being worked on. Any thread.
class FilesProgress final
{
public:
    explicit FilesProgress(const QStringList& files);

    void show(qsizetype file, int percent);
    /// The file needs no work any more.
    void finish(qsizetype file);
    /// Does something while the line of the bar is free.
    void whileHidden(const std::function<void()>& act);

private:
    struct File
    {
        QString name;
        double weight = 1;
        int percent = -1; ///< before its work begins
        bool isDone = false;
    };

    void draw();

    std::mutex m_mutex; ///< of everything here
    QList<File> m_files;
    ProgressBar m_bar;
};

} // namespace tadata::cli
