// SPDX-License-Identifier: MIT
// Restore points: whatever the record of a point and its journal hold, they are read as a point
// whose files lie in the store, or named as broken; and putting it back changes nothing outside of
// the store.
//
// An input is the point.json, and after a zero byte the journal.

#include "target.h"

#include <vexdesk/history/restorepoint.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

#include <algorithm>

namespace {

using fuzz::require;

const QString pointId = QStringLiteral("20240115-101010-1");
const QString dayFile = QStringLiteral("S/B/X/20240115_60.iss");

void writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    require(QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly) &&
                file.write(content) == content.size(),
            "a file can be written");
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void checkPaths(const QStringList& paths)
{
    const auto isBefore = [](const QString& left, const QString& right) {
        return left.toUcs4() < right.toUcs4();
    };
    require(std::is_sorted(paths.begin(), paths.end(), isBefore), "paths are sorted");
    require(std::adjacent_find(paths.begin(), paths.end()) == paths.end(),
            "no path is twice there");
    for (const QString& path : paths) {
        require(path.count(u'/') == 3 && QDir::cleanPath(path) == path && !path.startsWith(u'.'),
                "a path is that of a file of a series");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const qsizetype end = input.indexOf('\0');
    const QTemporaryDir directory;
    const vexdesk::RestorePlace place{directory.filePath(QStringLiteral("store")),
                                      directory.filePath(QStringLiteral("store-restore"))};
    const QString point = place.path + u'/' + pointId + u'/';
    const QString outside = directory.filePath(QStringLiteral("20240115_60.iss"));
    writeFile(outside, "outside");
    writeFile(place.root + u'/' + dayFile, "new\n");
    writeFile(point + dayFile, "old\n");
    writeFile(point + QStringLiteral("point.json"), input.left(end));
    if (end >= 0)
        writeFile(point + QStringLiteral("journal"), input.mid(end + 1));

    const auto found = vexdesk::restorePoints(place);
    require(found && found->points.size() + found->problems.size() == 1,
            "a point is read, or named as broken");
    if (found->points.isEmpty()) {
        require(found->problems.first().contains(pointId), "a broken point is named");
        return 0;
    }
    const vexdesk::RestorePointRecord record = found->points.first();
    require(record.id == pointId, "a point has the name of its directory");
    checkPaths(record.kept);
    checkPaths(record.created);
    vexdesk::PuttingBack puttingBack(place, record);
    vexdesk::Outcome done = puttingBack.begin();
    if (done)
        done = puttingBack.run(nullptr);
    require(done || !done.message().isEmpty(), "a failure says why");
    require(readFile(outside) == "outside", "nothing outside of the store is changed");
    if (done && record.kept.contains(dayFile) && !record.created.contains(dayFile))
        require(readFile(place.root + u'/' + dayFile) == "old\n", "a kept file is back");
    return 0;
}
