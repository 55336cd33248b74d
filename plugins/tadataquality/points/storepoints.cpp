// SPDX-License-Identifier: MIT
#include "storepoints.h"

#include <algorithm>

namespace tadata {

using vexdesk::RestorePointRecord;

namespace {

// Nobody needs to be told any more of what is put right or gone.
class Since final
{
public:
    void add(const RestorePointRecord& point)
    {
        // What is put back has changed nothing, and what has put it back neither.
        if (!point.isComplete || m_putBack.contains(point.id))
            return;
        if (point.by == u"undo") {
            m_putBack += QSet<QString>(point.source.begin(), point.source.end());
            return;
        }
        const QStringList paths = point.paths();
        m_changed += QSet<QString>(paths.begin(), paths.end());
    }
    const QSet<QString>& putBack() const { return m_putBack; }
    bool settles(const RestorePointRecord& point) const
    {
        const QStringList paths = point.paths();
        return m_putBack.contains(point.id) ||
               std::all_of(paths.begin(), paths.end(),
                           [this](const QString& path) { return m_changed.contains(path); });
    }

private:
    QSet<QString> m_putBack; // ids
    QSet<QString> m_changed; // paths
};

} // namespace

vexdesk::Result<StorePoints> storePoints(const QDir& root)
{
    const auto place = vexdesk::restorePlace(root);
    if (!place)
        return place.failure();
    const auto found = vexdesk::restorePoints(*place);
    if (!found)
        return found.failure();
    StorePoints points{*place, *found, {}, {}, {}};
    Since since;
    for (const RestorePointRecord& point : found->points) { // the newest first
        if (!point.isComplete && vexdesk::isJobRunning(*place, point.id))
            points.running.insert(point.id);
        else if (!point.isComplete && !since.settles(point))
            points.interrupted.append(point);
        since.add(point);
    }
    points.putBack = since.putBack();
    return points;
}

} // namespace tadata
