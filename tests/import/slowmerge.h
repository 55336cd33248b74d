// SPDX-License-Identifier: MIT
#pragma once

#include "importways.h"

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayList>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QRandomGenerator>

/// What merging makes of a store, by maps and texts alone: nothing of the product's reading,
/// sorting and writing of lines. All numbers have two digits after the point.
namespace testsupport {

/// File names and contents.
using StoreTree = QMap<QString, QByteArray>;

/// A line of a file that is imported.
struct FileRecord
{
    QByteArray day;  ///< "yyyyMMdd"
    QByteArray time; ///< "hhmmss"
    QByteArray rest; ///< from the opening price on, as it is stored
    QByteArray line; ///< as the file has it; of a bad line the only thing there is
    bool isBad = false;
    bool isBlank = false;
};

struct SlowResult
{
    StoreTree store;
    qint64 badInputLine = 0;  ///< that ends the import, from 1; nothing is changed then
    QString badFile;          ///< of a bad stored line, which ends it too
    qint64 badStoredLine = 0; ///< from 1
    qint64 bars = 0;
    qint64 days = 0;
    qint64 badLines = 0;
};

SlowResult slowMerge(const StoreTree& store, const QList<FileRecord>& file, ImportMode mode,
                     bool skipsBad, int timeframe);

/// The times of a day file that are stored.
QByteArrayList storedTimes(const QByteArray& content);
/// All its lines of a time, edited ones in the regular order.
QByteArrayList storedLines(const QByteArray& content, const QByteArray& time);

/// A few days with many lines of few times: doubles, edited and unordered lines, all kinds of line
/// ends. `faults` is the number in a hundred of files with a bad line.
StoreTree randomStore(QRandomGenerator& random, int timeframe, int faults);
/// Lines of the same days and times.
QList<FileRecord> randomFile(QRandomGenerator& random, int timeframe, bool hasBadLines);

QByteArray textOf(const QList<FileRecord>& file);

} // namespace testsupport
