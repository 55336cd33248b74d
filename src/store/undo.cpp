// SPDX-License-Identifier: MIT
#include "undo.h"

namespace tadata {

using vexdesk::Outcome;
using vexdesk::PuttingBack;
using vexdesk::RestorePlace;
using vexdesk::RestorePointRecord;
using vexdesk::Result;

namespace {

UndoCheck check(const RestorePlace& place, const RestorePointRecord& point, bool isForced,
                PuttingBack& puttingBack)
{
    if (const Outcome begun = puttingBack.begin(); !begun || isForced)
        return {begun};
    const Result<QStringList> forbidding = vexdesk::whatForbidsPuttingBack(place, point);
    if (!forbidding)
        return {forbidding.failure()};
    return {Outcome(), *forbidding};
}

// With the locks of its series held.
UndoResult undoLocked(const RestorePlace& place, const QString& id, bool isForced,
                      vexdesk::StoreJob& job)
{
    // Its job may have ended only now.
    const Result<RestorePointRecord> point = vexdesk::restorePoint(place, id);
    if (!point)
        return {point.failure(), job.end()};
    PuttingBack puttingBack(place, *point);
    if (const UndoCheck checked = check(place, *point, isForced, puttingBack); !checked.isAllowed())
        return {checked.outcome, job.end(), checked.forbidding};
    if (const Outcome back = puttingBack.run(job.keeper()); !back)
        return {back, job.takeBack()};
    return {Outcome(), job.end(), {}, point->kept.size(), point->created.size()};
}

} // namespace

UndoCheck checkUndo(const RestorePlace& place, const RestorePointRecord& point, bool isForced)
{
    PuttingBack puttingBack(place, point);
    return check(place, point, isForced, puttingBack);
}

QStringList seriesOf(const RestorePointRecord& point)
{
    QStringList series = point.series;
    for (const QString& path : point.paths())
        series.append(path.section(u'/', 0, 2));
    return vexdesk::sortedByCodePoint(series);
}

UndoResult undo(const QDir& root, const QString& id, bool isForced,
                vexdesk::StoreJobSettings settings)
{
    const Result<RestorePlace> place = vexdesk::restorePlace(root);
    if (!place)
        return {place.failure(), Outcome()};
    const Result<RestorePointRecord> point = vexdesk::restorePoint(*place, id);
    if (!point)
        return {point.failure(), Outcome()};
    settings.by = QStringLiteral("undo");
    settings.source = {id};
    settings.needsPoint = true;
    vexdesk::StoreJob job(settings);
    if (const Outcome begun = job.begin(root, seriesOf(*point)); !begun)
        return {begun, Outcome()};
    return undoLocked(*place, id, isForced, job);
}

} // namespace tadata
