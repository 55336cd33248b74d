// SPDX-License-Identifier: MIT
#include <vexdesk/history/storepaths.h>

#include "systemfile.h"

#include <vexdesk/icore.h>

namespace vexdesk {

namespace {

QDir placeOf(const QString& path)
{
    return QDir(ICore::getDir(QString(), false).filePath(path));
}

// The terminal gives the last directory that it reached where it cannot make one: what is not the
// directory that was asked for is never taken for it.
QDir dataDirectory(const QString& path)
{
    const QDir reached = ICore::getDir(path, false);
    const QDir wanted = placeOf(path);
    return reached.absolutePath() == wanted.absolutePath() ? reached : wanted;
}

QStringList directoriesBelow(const QStringList& directories, QStringList& unreadable)
{
    QStringList paths;
    for (const QString& above : directories) {
        const Result<QStringList> names = namesIn(above, EntryKind::Directories);
        if (!names)
            unreadable.append(above);
        for (const QString& name : names.valueOr(QStringList()))
            paths.append(above + u'/' + name);
    }
    return paths;
}

} // namespace

QDir storeRoot()
{
    return dataDirectory(QStringLiteral("tadata"));
}

QDir storePlace()
{
    return placeOf(QStringLiteral("tadata"));
}

QString seriesPath(const QDir& root, const QString& stockCode, const QString& boardCode,
                   const QString& securityName)
{
    // Not QDir::filePath: a code that begins with ":" would be a path of its own to it.
    return QStringLiteral("%1/%2/%3/%4").arg(root.path(), stockCode, boardCode, securityName);
}

QDir makeSeriesDir(const QString& stockCode, const QString& boardCode, const QString& securityName)
{
    return dataDirectory(QStringLiteral("tadata/%1/%2/%3").arg(stockCode, boardCode, securityName));
}

QStringList subdirectories(const QString& path)
{
    QStringList names = namesIn(path, EntryKind::Directories).valueOr(QStringList());
    names.removeIf([](const QString& name) { return name.startsWith(u'.'); });
    return names;
}

StoreDirectories storeDirectories(const QDir& root)
{
    StoreDirectories directories;
    QStringList& unreadable = directories.unreadable;
    directories.stocks = directoriesBelow({root.path()}, unreadable);
    directories.boards = directoriesBelow(directories.stocks, unreadable);
    directories.series = directoriesBelow(directories.boards, unreadable);
    return directories;
}

} // namespace vexdesk
