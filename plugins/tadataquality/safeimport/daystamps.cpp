// SPDX-License-Identifier: MIT
#include "daystamps.h"

#include <vexdesk/history/filestate.h>
#include <vexdesk/history/seriesfiles.h>

namespace tadata {

size_t dayStamp(const QDir& series)
{
    const auto names = vexdesk::barFiles(series);
    if (!names)
        return 0;
    size_t stamp = 1;
    for (const QString& name : *names) {
        const auto state = vexdesk::fileState(series.filePath(name)).value_or(vexdesk::FileState());
        // In whatever order a directory gives them.
        stamp += qHashMulti(0, name, state.inode, state.size, state.modified);
    }
    return stamp;
}

} // namespace tadata
