// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/restorepoint.h>

#include <QtCore/QSet>

namespace tadata {

/// What keeping no more than these limits would remove.
struct PrunePreview
{
    qsizetype points = 0;
    qint64 bytes = 0;

    bool operator==(const PrunePreview&) const = default;
};

/// Of points with the newest first; the newest always stays, and so do those whose command runs.
PrunePreview previewOfPruning(const QList<vexdesk::RestorePointRecord>& points,
                              const QSet<QString>& running, const vexdesk::RestoreLimits& limits);

} // namespace tadata
