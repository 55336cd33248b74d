// SPDX-License-Identifier: MIT
#include "prunepreview.h"

namespace tadata {

PrunePreview previewOfPruning(const QList<vexdesk::RestorePointRecord>& points,
                              const QSet<QString>& running, const vexdesk::RestoreLimits& limits)
{
    PrunePreview preview;
    qint64 bytes = 0;
    for (qsizetype i = 0; i < points.size(); ++i) {
        bytes += points.at(i).bytes;
        const bool isWithin = i < limits.keep && bytes <= limits.bytes;
        if (i == 0 || isWithin || running.contains(points.at(i).id))
            continue;
        ++preview.points;
        preview.bytes += points.at(i).bytes;
    }
    return preview;
}

} // namespace tadata
