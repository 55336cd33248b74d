#include <vexdesk/history/dayfile.h>

#include <vexdesk/icore.h>

#include <QtCore/QDirIterator>

#include <algorithm>

namespace vexdesk {

namespace {

QString dayText(const QDate& day)
{
    return day.toString(QStringLiteral("yyyyMMdd"));
}

} // namespace

QDir storeRoot()
{
    return ICore::getDir(QStringLiteral("tadata"), false);
}

QString seriesPath(const QDir& root, const QString& stockCode, const QString& boardCode,
                   const QString& securityName)
{
    // Not QDir::filePath: a code that begins with ":" would be a path of its own to it.
    return QStringLiteral("%1/%2/%3/%4").arg(root.path(), stockCode, boardCode, securityName);
}

QDir makeSeriesDir(const QString& stockCode, const QString& boardCode, const QString& securityName)
{
    const QString path = QStringLiteral("tadata/%1/%2/%3").arg(stockCode, boardCode, securityName);
    const QDir reached = ICore::getDir(path, false);
    const QDir wanted(ICore::getDir(QString(), false).filePath(path));
    return reached.absolutePath() == wanted.absolutePath() ? reached : wanted;
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
    constexpr qsizetype dayLength = 8;
    const QDate day = QDate::fromString(name.left(dayLength), QStringLiteral("yyyyMMdd"));
    const qsizetype dot = name.indexOf(u'.');
    if (!day.isValid() || dot <= dayLength)
        return std::nullopt;
    const int timeframe = QStringView(name).mid(dayLength + 1, dot - dayLength - 1).toInt();
    if (timeframe <= 0 || dayFileName(day, timeframe) != name)
        return std::nullopt;
    return DayFileKey{day, timeframe};
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
