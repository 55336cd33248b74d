// SPDX-License-Identifier: MIT
#include <vexdesk/history/storepaths.h>

#include <vexdesk/icore.h>

#include <QtCore/QDirIterator>

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

QStringList namesIn(const QString& path, QDir::Filters kinds)
{
    QStringList names;
    QDirIterator walk(path, kinds | QDir::NoDotAndDotDot);
    while (walk.hasNext()) {
        walk.next();
        names.append(walk.fileName());
    }
    return names;
}

QStringList directoriesBelow(const QStringList& directories)
{
    QStringList paths;
    for (const QString& above : directories) {
        for (const QString& name : namesIn(above, QDir::Dirs | QDir::Hidden))
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
    return namesIn(path, QDir::Dirs);
}

StoreDirectories storeDirectories(const QDir& root)
{
    StoreDirectories directories;
    directories.stocks = directoriesBelow({root.path()});
    directories.boards = directoriesBelow(directories.stocks);
    directories.series = directoriesBelow(directories.boards);
    return directories;
}

} // namespace vexdesk
