// SPDX-License-Identifier: MIT
#include "filesprogress.h"

#include "output.h"

#include <QtCore/QFileInfo>

#include <algorithm>

namespace tadata::cli {

FilesProgress::FilesProgress(const QStringList& files)
{
    for (const QString& file : files) {
        const QFileInfo info(file);
        m_files.append({escaped(info.fileName()), std::max(1.0, static_cast<double>(info.size()))});
    }
}

void FilesProgress::show(qsizetype file, int percent)
{
    const std::lock_guard lock(m_mutex);
    m_files[file].percent = percent;
    draw();
}

void FilesProgress::finish(qsizetype file)
{
    const std::lock_guard lock(m_mutex);
    m_files[file].isDone = true;
    draw();
}

void FilesProgress::whileHidden(const std::function<void()>& act)
{
    const std::lock_guard lock(m_mutex);
    m_bar.clear();
    act();
}

void FilesProgress::draw()
{
    double all = 0;
    double done = 0;
    qsizetype finished = 0;
    QStringList open;
    for (const File& file : std::as_const(m_files)) {
        all += file.weight;
        done += file.weight * (file.isDone ? 100 : std::max(file.percent, 0)) / 100;
        finished += file.isDone ? 1 : 0;
        if (!file.isDone && file.percent >= 0)
            open.append(QStringLiteral("%1 %2%").arg(file.name).arg(file.percent));
    }
    open.prepend(QStringLiteral("%1/%2").arg(finished).arg(m_files.size()));
    m_bar.show(static_cast<int>(done / all * 100), open.join(QStringLiteral("  ")));
}

} // namespace tadata::cli
