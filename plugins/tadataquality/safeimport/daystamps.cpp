// SPDX-License-Identifier: MIT
#include "daystamps.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/filestate.h>

#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>

namespace tadata {

namespace {

constexpr size_t missing = 0;
constexpr size_t there = 1;

} // namespace

size_t dayStamp(const QDir& series)
{
    const QString path = series.path();
    if (vexdesk::isMissing(path))
        return missing;
    size_t stamp = there;
    // Also a directory that stands in the place of a day.
    constexpr auto all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    QDirIterator entries(path, all);
    while (entries.hasNext()) {
        entries.next();
        const QString name = entries.fileName();
        if (!vexdesk::isBarFileName(name))
            continue;
        const auto state = vexdesk::fileState(entries.filePath()).value_or(vexdesk::FileState());
        // In whatever order a directory gives them.
        stamp += qHashMulti(0, name, state.inode, state.size, state.modified,
                            QFileInfo(entries.filePath()).isReadable());
    }
    return stamp;
}

} // namespace tadata
