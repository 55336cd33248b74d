// SPDX-License-Identifier: MIT
#include "prunepreview.h"

namespace tadata {

PrunePreview previewOfPruning(const QList<vexdesk::RestorePointRecord>& points,
                              const vexdesk::RestoreLimits& limits)
{
    PrunePreview preview;
    qint64 bytes = 0;
    for (qsizetype i = 0; i < points.size(); ++i) {
        bytes += points.at(i).bytes;
        if (i == 0 || (i < limits.keep && bytes <= limits.bytes))
            continue;
        ++preview.points;
        preview.bytes += points.at(i).bytes;
    }
    return preview;
}

} // namespace tadata
