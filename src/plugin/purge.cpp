// SPDX-License-Identifier: MIT
#include "purge.h"

#include <QtCore/QDirIterator>

namespace tadata {

namespace {

qint64 ageInDays(const QString& fileName, const QDate& today)
{
    const QString dayText = fileName.left(fileName.indexOf(u'_'));
    return QDate::fromString(dayText, QStringLiteral("yyyyMMdd")).daysTo(today);
}

} // namespace

QStringList oldSecondFiles(const QDir& root, const QDate& today, int storeForDays)
{
    QStringList old;
    QDirIterator walk(root.path(), {QStringLiteral("*_1")}, QDir::Files,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        if (ageInDays(walk.fileName(), today) > storeForDays)
            old.append(path);
    }
    return old;
}

void removeOldSecondFiles(const QDir& root, const QDate& today, int storeForDays)
{
    const QStringList old = oldSecondFiles(root, today, storeForDays);
    for (const QString& path : old)
        QDir().remove(path);
}

} // namespace tadata
