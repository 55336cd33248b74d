// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/restorepoint.h>

namespace tadata {

/// What keeping no more than these limits would remove.
struct PrunePreview
{
    qsizetype points = 0;
    qint64 bytes = 0;

    bool operator==(const PrunePreview&) const = default;
};

/// Of points with the newest first; the newest always stays. One whose command runs stays as well,
/// which is not known here.
PrunePreview previewOfPruning(const QList<vexdesk::RestorePointRecord>& points,
                              const vexdesk::RestoreLimits& limits);

} // namespace tadata
