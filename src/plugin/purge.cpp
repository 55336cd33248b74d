// SPDX-License-Identifier: MIT
#include "purge.h"

#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QDirIterator>

namespace tadata {

QStringList oldSecondFiles(const QDir& root, const QDate& today, int storeForDays)
{
    QStringList old;
    QDirIterator walk(root.path(), {vexdesk::oldSecondFilePattern()}, QDir::Files,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        if (vexdesk::dayInName(walk.fileName()).daysTo(today) > storeForDays)
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
