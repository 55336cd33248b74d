// SPDX-License-Identifier: MIT
#include "pointfiles.h"

#include <vexdesk/history/dayfilenames.h>

namespace tadata {

namespace {

PointFile fileAt(const QString& path, PointFile::Done done)
{
    PointFile file;
    file.path = path;
    file.series = path.section(u'/', 0, 2);
    file.name = path.section(u'/', 3);
    file.done = done;
    if (const auto key = vexdesk::parseDayFileName(file.name)) {
        file.day = key->day;
        file.timeframe = key->timeframe;
    } else {
        file.day = vexdesk::dayInName(file.name);
    }
    return file;
}

} // namespace

std::vector<PointFile> filesOf(const vexdesk::RestorePointRecord& point)
{
    const QSet<QString> created(point.created.begin(), point.created.end());
    std::vector<PointFile> files;
    const QStringList paths = point.paths();
    for (const QString& path : paths) {
        const bool isGone = point.isComplete && !point.left.contains(path);
        if (created.contains(path))
            files.push_back(fileAt(path, PointFile::Done::Created));
        else
            files.push_back(
                fileAt(path, isGone ? PointFile::Done::Removed : PointFile::Done::Changed));
    }
    return files;
}

QSet<QString> belowRoot(const vexdesk::RestorePlace& place, const QStringList& paths)
{
    QSet<QString> found;
    for (const QString& path : paths)
        found.insert(path.mid(place.root.size() + 1));
    return found;
}

} // namespace tadata
