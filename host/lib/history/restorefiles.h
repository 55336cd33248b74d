// SPDX-License-Identifier: MIT
#pragma once

#include "systemfile.h"
#include "touchedfiles.h"

#include <vexdesk/history/restorepoint.h>

#include <QtCore/QCoreApplication>

#include <utility>

/// The files of restore points: their names, what stands in them, and copies that go there and
/// back. Any thread.
namespace vexdesk {

namespace restore {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::RestorePoint)
};

/// The moment of an id and its number in that second; no value for other names.
std::optional<std::pair<QDateTime, qint64>> takeIdApart(const QString& id);
QString idOf(const QDateTime& when, qint64 number);
/// The ids of the points in a place, the newest first. A failure where it cannot be read.
Result<QStringList> idsIn(const RestorePlace& place);

QString directoryOf(const RestorePlace& place, const QString& id);

/// Whether it is the path of a bar file below a store's root, and leads nowhere else.
bool isStorePath(const QString& path);

/// Writes the point.json of a point's directory, with these files in the place of the record's own.
/// They are looked at as they are now, and none of it is gathered in memory.
Outcome writeRecord(const QString& directory, const RestorePointRecord& point,
                    const TouchedFiles& files);
Result<RestorePointRecord> readRecord(const RestorePlace& place, const QString& id);

QByteArray journalLine(char kind, const QString& path);

/// The sums of a point's copies. They lie beside the points, which hold nothing but files of the
/// store and what is said about them.
using Sums = QMap<QString, ContentSum>;
Step writeSums(const RestorePlace& place, const QString& id, const TouchedFiles& files);
/// No value for a point that has none: its job was killed.
Result<std::optional<Sums>> readSums(const RestorePlace& place, const QString& id);
/// The size of all copies of a point; quicker than to read what is said about them.
qint64 bytesOf(const RestorePlace& place, const QString& id);
void removeSums(const RestorePlace& place, const QString& id);

/// Keeps a file: a copy with its permissions and times. No value where it fails, errno says why.
std::optional<ContentSum> keepCopy(int from, const QString& to);
/// Gives a file of the store the content of a copy, whole or not at all where the directory allows
/// that. Through links; the directories are made.
Outcome putCopyBack(const QString& copy, const QString& path);
/// The same with a copy that nobody needs afterwards: where the disk is full it is the file itself
/// that comes back.
Outcome putLastCopyBack(const QString& copy, const QString& path);
Failure notPutBack(const QString& path, const QString& reason);
/// Makes a file go that a job has made; through links.
Outcome removeCreated(const QString& path);

/// Makes a point's directory go at once: nobody finds half of one.
Outcome removePoint(const RestorePlace& place, const QString& id);

} // namespace restore

} // namespace vexdesk
