// SPDX-License-Identifier: MIT
#include <vexdesk/history/dayfilenames.h>

#include "systemfile.h"

#include <vexdesk/history/filestate.h>
#include <vexdesk/history/links.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>

#include <algorithm>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::DayFileNames)
};

constexpr qsizetype dayLength = 8;
const QString dayForm = QStringLiteral("yyyyMMdd");

// By numbers: a store has many names, and the forms of QDate are taken apart anew for each.

QString dayText(const QDate& day)
{
    const int number = (day.year() * 100 + day.month()) * 100 + day.day();
    return day.year() < 1 ? day.toString(dayForm)
                          : QString::number(number).rightJustified(dayLength, u'0');
}

QDate dayAtStart(const QString& name)
{
    if (name.size() < dayLength)
        return QDate();
    int number = 0;
    for (int i = 0; i < dayLength; ++i) {
        if (name[i] < u'0' || name[i] > u'9')
            return QDate();
        number = number * 10 + (name[i].unicode() - u'0');
    }
    return QDate(number / 10000, number / 100 % 100, number % 100);
}

// By the error of the call that failed last.
Failure notLookedAt(const QString& path)
{
    return {Text::tr("Невозможно узнать, что за файл %1: %2").arg(path, Step::failed().reason())};
}

} // namespace

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
    if (!day.isValid())
        return std::nullopt;
    const QStringView rest = QStringView(name).sliced(dayLength);
    const int timeframe = rest.left(rest.indexOf(u'.')).mid(1).toInt();
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

QString oldSecondFilePattern()
{
    return QStringLiteral("*_%1").arg(secondTimeframe);
}

QDate dayInName(const QString& name)
{
    return QDate::fromString(name.left(name.indexOf(u'_')), dayForm);
}

Result<QString> barFileThatIs(const QString& path, const QDir& seriesDir)
{
    const PathLook file = lookAt(path);
    if (file.kind == PathKind::Unknown)
        return notLookedAt(path);
    if (!file.state)
        return QString();
    QString found;
    Outcome looked;
    const Outcome listed =
        visitNamesIn(seriesDir.path(), EntryKind::Files, [&](const QString& candidate) {
            if (!isBarFileName(candidate))
                return true;
            const QString stored = seriesDir.filePath(candidate);
            const PathLook look = lookAt(stored);
            if (look.kind == PathKind::Unknown)
                looked = notLookedAt(stored);
            else if (look.state && look.state->isSameFile(*file.state))
                found = candidate;
            return found.isEmpty();
        });
    // Which of the others cannot be looked at is all the same once it is found.
    if (found.isEmpty() && !looked)
        return looked.failure();
    return listed ? Result<QString>(found) : listed.failure();
}

bool mayBeIn(const QDir& directory, const QString& path)
{
    const std::optional<FileState> file = fileState(path);
    const std::optional<QString> own = withoutLinks(path);
    const std::optional<QString> place = withoutLinks(directory.path());
    return !file || file->links > 1 || !own || !place || own->startsWith(*place + u'/');
}

Result<QList<QDate>> storedDays(const QDir& seriesDir, int timeframe, const QDate& from,
                                const QDate& to)
{
    QList<QDate> days;
    if (!from.isValid() || !to.isValid())
        return days;
    // One walk through the directory: an interval may have a million days, a series has few files.
    const Outcome listed =
        visitNamesIn(seriesDir.path(), EntryKind::Files, [&](const QString& name) {
            const auto key = parseDayFileName(name);
            if (key && key->timeframe == timeframe && from <= key->day && key->day <= to)
                days.append(key->day);
            return true;
        });
    if (!listed)
        return listed.failure();
    std::sort(days.begin(), days.end());
    return days;
}

} // namespace vexdesk
