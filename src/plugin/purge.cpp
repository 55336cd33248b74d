#include "plugin/purge.h"

#include <QtCore/QDirIterator>

namespace tadata {

namespace {

// A name that begins with no date is of unknown age and counts as new.
qint64 ageInDays(const QString& fileName, const QDate& today)
{
    const QString dayText = fileName.left(fileName.indexOf(u'_'));
    return QDate::fromString(dayText, QStringLiteral("yyyyMMdd")).daysTo(today);
}

} // namespace

void removeOldSecondFiles(const QDir& root, const QDate& today, int storeForDays)
{
    QStringList old;
    QDirIterator walk(root.path(), {QStringLiteral("*_1")}, QDir::Files,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        if (ageInDays(walk.fileName(), today) > storeForDays)
            old.append(path);
    }
    for (const QString& path : std::as_const(old))
        QDir().remove(path);
}

} // namespace tadata
