// SPDX-License-Identifier: MIT
#include <vexdesk/history/dayfile.h>

#include <vexdesk/icore.h>

#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <optional>

namespace vexdesk {

namespace {

constexpr qsizetype dayLength = 8; // of "yyyyMMdd"

QString dayText(const QDate& day)
{
    return day.toString(QStringLiteral("yyyyMMdd"));
}

QDate dayAtStart(const QString& name)
{
    return QDate::fromString(name.left(dayLength), QStringLiteral("yyyyMMdd"));
}

// The terminal gives the last directory that it reached where it cannot make one: what is not the
// directory that was asked for is never taken for it.
QDir dataDirectory(const QString& path)
{
    const QDir reached = ICore::getDir(path, false);
    const QDir wanted(ICore::getDir(QString(), false).filePath(path));
    return reached.absolutePath() == wanted.absolutePath() ? reached : wanted;
}

} // namespace

QDir storeRoot()
{
    return dataDirectory(QStringLiteral("tadata"));
}

QDir storePlace()
{
    return QDir(ICore::getDir(QString(), false).filePath(QStringLiteral("tadata")));
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

QStringList subdirectories(const QString& path, QDir::Filters also)
{
    QStringList names;
    QDirIterator walk(path, QDir::Dirs | QDir::NoDotAndDotDot | also);
    while (walk.hasNext()) {
        walk.next();
        names.append(walk.fileName());
    }
    return names;
}

QString dayFileName(const QDate& day, int timeframe)
{
    return QStringLiteral("%1_%2.iss").arg(dayText(day), QString::number(timeframe));
}

QString minuteFileName(const QDate& day)
{
    return QStringLiteral("%1_%2").arg(dayText(day), QString::number(minuteTimeframe));
}

std::optional<DayFileKey> parseDayFileName(const QString& name)
{
    const QDate day = dayAtStart(name);
    const qsizetype dot = name.indexOf(u'.');
    if (!day.isValid() || dot <= dayLength)
        return std::nullopt;
    const int timeframe = QStringView(name).mid(dayLength + 1, dot - dayLength - 1).toInt();
    if (timeframe <= 0 || dayFileName(day, timeframe) != name)
        return std::nullopt;
    return DayFileKey{day, timeframe};
}

bool isBarFileName(const QString& name)
{
    if (parseDayFileName(name))
        return true;
    const QDate day = dayAtStart(name);
    return day.isValid() && minuteFileName(day) == name;
}

QString barFileThatIs(const QString& path, const QDir& seriesDir)
{
    const std::optional<FileState> file = fileState(path);
    if (!file)
        return QString();
    const QString name = QFileInfo(QFileInfo(path).canonicalFilePath()).fileName();
    QDirIterator walk(seriesDir.path(), QDir::Files | QDir::Hidden);
    while (walk.hasNext()) {
        const QString candidate = walk.next();
        // What is no link, and has no other name, is the file under its own name alone.
        const bool mayBeIt =
            file->links > 1 || walk.fileName() == name || walk.fileInfo().isSymLink();
        if (!mayBeIt || !isBarFileName(walk.fileName()))
            continue;
        const std::optional<FileState> state = fileState(candidate);
        if (state && state->isSameFile(*file))
            return walk.fileName();
    }
    return QString();
}

QList<QDate> storedDays(const QDir& seriesDir, int timeframe, const QDate& from, const QDate& to)
{
    QList<QDate> days;
    if (!from.isValid() || !to.isValid())
        return days;
    // One walk through the directory: an interval may have a million days, a series has few files.
    QDirIterator walk(seriesDir.path(), QDir::Files);
    while (walk.hasNext()) {
        walk.next();
        const auto key = parseDayFileName(walk.fileName());
        if (key && key->timeframe == timeframe && from <= key->day && key->day <= to)
            days.append(key->day);
    }
    std::sort(days.begin(), days.end());
    return days;
}

} // namespace vexdesk
