// SPDX-License-Identifier: MIT
#include "storereaders.h"

#include "support/filetree.h"

#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>

#include <algorithm>

namespace testsupport {

namespace {

struct Day
{
    QByteArrayList bars;
    bool isCut = false; ///< in the middle of the last line
    qint64 bytes = 0;
};

using Days = QMap<QString, Day>;                    // by the day as "20240115"
using Series = QMap<std::pair<QString, int>, Days>; // by name and timeframe

Day dayOf(const QByteArray& content)
{
    static const QRegularExpression bar(QStringLiteral("^\\d{6}(;\\d+){7}$"));
    Day day;
    day.bytes = content.size();
    for (const QByteArray& line : content.split('\n')) {
        if (bar.match(QString::fromUtf8(line)).hasMatch())
            day.bars.append(line);
        else
            day.isCut = day.isCut || !line.isEmpty();
    }
    return day;
}

Series storedSeries(const StoreJobs& jobs)
{
    static const QRegularExpression form(QStringLiteral("^(.+)/(\\d{8})_(60|1)\\.iss$"));
    Series series;
    const Files files = filesBelow(jobs.store());
    for (auto file = files.begin(); file != files.end(); ++file) {
        const auto name = form.match(file.key());
        if (name.hasMatch())
            series[{name.captured(1), name.captured(3).toInt()}][name.captured(2)] =
                dayOf(file->first);
    }
    return series;
}

bool isAnyCut(const Days& days)
{
    return std::any_of(days.begin(), days.end(), [](const Day& day) { return day.isCut; });
}

QString isoDay(const QString& day)
{
    return QDate::fromString(day, QStringLiteral("yyyyMMdd")).toString(Qt::ISODate);
}

QByteArray wrongly(const char* reader, const Outcome& outcome)
{
    return QByteArray(reader) + ": exit code " + QByteArray::number(outcome.exitCode) + ' ' +
           outcome.out + outcome.err;
}

Outcome read(const StoreJobs& jobs, const QString& job, const QStringList& options = {})
{
    const QStringList line = jobs.commandLine(job) + options;
    return runProgram(line.first(), line.mid(1));
}

QJsonArray listIn(const Outcome& outcome, const char* name)
{
    return QJsonDocument::fromJson(outcome.out)[QLatin1String(name)].toArray();
}

QByteArray wrongList(const StoreJobs& jobs, const Series& stored)
{
    QString text;
    for (auto series = stored.begin(); series != stored.end(); ++series) {
        qint64 bytes = 0;
        for (const Day& day : *series)
            bytes += day.bytes;
        const QStringList fields{series.key().first,
                                 QString::number(series.key().second),
                                 QString::number(series->size()),
                                 isoDay(series->firstKey()),
                                 isoDay(series->lastKey()),
                                 QString::number(bytes)};
        text += fields.join(u'\t') + u'\n';
    }
    const Outcome listed = read(jobs, QStringLiteral("list"));
    return listed == succeeded(text.toUtf8()) ? QByteArray() : wrongly("list", listed);
}

bool isReported(const QJsonValue& report, const Days& days)
{
    const QJsonArray reported = report[QStringLiteral("days")].toArray();
    if (reported.size() != days.size())
        return false;
    auto day = days.begin();
    for (const auto& one : reported) {
        const bool isRight =
            one[QStringLiteral("day")].toString() == isoDay(day.key()) &&
            one[QStringLiteral("bars")].toInt() == day->bars.size() &&
            one[QStringLiteral("badLines")].toArray().size() == (day->isCut ? 1 : 0);
        if (!isRight)
            return false;
        ++day;
    }
    return true;
}

// Half lines are found; nothing else is.
QByteArray wrongHealth(const StoreJobs& jobs, const Series& stored)
{
    const Outcome outcome = read(jobs, QStringLiteral("health"), words("--json"));
    const QJsonArray reports = listIn(outcome, "series");
    const bool isCut = std::any_of(stored.begin(), stored.end(), isAnyCut);
    bool isRight = outcome.exitCode == (isCut ? 1 : 0) && outcome.err.isEmpty() &&
                   reports.size() == stored.size();
    for (const auto& report : reports) {
        const auto series = stored.find({report[QStringLiteral("series")].toString(),
                                         report[QStringLiteral("timeframe")].toInt()});
        isRight = isRight && series != stored.end() && isReported(report, *series);
    }
    return isRight ? QByteArray() : wrongly("health", outcome);
}

// Of a command that was killed, by its journal.
qsizetype keptFiles(const StoreJobs& jobs, const QString& id)
{
    const QString point = jobs.place() + u'/' + id;
    const auto record = QJsonDocument::fromJson(readFile(point + QStringLiteral("/point.json")));
    if (record[QStringLiteral("complete")].toBool())
        return record[QStringLiteral("kept")].toArray().size();
    const QByteArray journal = readFile(point + QStringLiteral("/journal"));
    return ('\n' + journal.left(journal.lastIndexOf('\n') + 1)).count("\nK ");
}

QByteArray wrongPoints(const StoreJobs& jobs)
{
    const Outcome outcome = read(jobs, QStringLiteral("points"), words("--json"));
    const QJsonArray points = listIn(outcome, "points");
    QStringList ids;
    bool isRight = outcome.exitCode == 0 && outcome.err.isEmpty();
    for (const auto& point : points) {
        ids.append(point[QStringLiteral("id")].toString());
        isRight = isRight && point[QStringLiteral("files")].toInt() == keptFiles(jobs, ids.last());
    }
    return isRight && ids == jobs.points() ? QByteArray() : wrongly("points", outcome);
}

// A merge into a day that ends in a half line would be refused.
QByteArray wrongCheck(const StoreJobs& jobs, const Series& stored, const char* job)
{
    const Days days = stored.value({QStringLiteral("S/B/X"), 60});
    const QStringList touched{QStringLiteral("20240115"), QStringLiteral("20240117")};
    const bool isRefused = QByteArray(job) == "check merge" &&
                           std::any_of(touched.begin(), touched.end(), [&days](const QString& day) {
                               return days.value(day).isCut;
                           });
    const Outcome outcome = read(jobs, QLatin1String(job), words("--json"));
    const QJsonArray reports = listIn(outcome, "days");
    bool isRight = outcome.exitCode == (isRefused ? 1 : 0) &&
                   reports.size() == (isRefused ? 0 : touched.size());
    for (const auto& report : reports) {
        const QString day = report[QStringLiteral("day")].toString().remove(u'-');
        isRight = isRight && touched.contains(day) &&
                  report[QStringLiteral("stored")].toInt() == days.value(day).bars.size();
    }
    return isRight ? QByteArray() : wrongly(job, outcome);
}

// A half line may come out as a bar at the end of its day.
bool isDayExported(const QByteArrayList& lines, const QByteArray& begin, const Day& day)
{
    QByteArrayList wanted;
    for (const QByteArray& bar : day.bars)
        wanted.append(begin + QByteArray(bar).replace(';', ','));
    return lines.size() <= wanted.size() + (day.isCut ? 1 : 0) &&
           lines.mid(0, wanted.size()) == wanted;
}

QByteArray wrongExport(const StoreJobs& jobs, const std::pair<QString, int>& series,
                       const Days& days)
{
    const QString path = jobs.path("read.txt");
    const QString timeframe = QString::number(series.second);
    const Outcome outcome =
        runTadata(words("export --from 2024-01-01 --to 2024-01-31 --finished-only --series")
                  << series.first << QStringLiteral("--timeframe") << timeframe
                  << QStringLiteral("--store") << jobs.store() << path);
    QByteArrayList lines = readFile(path).split('\n').mid(1);
    const bool isWhole = !lines.isEmpty() && lines.takeLast().isEmpty();
    bool isRight = outcome == succeeded() && isWhole;
    for (auto day = days.begin(); day != days.end(); ++day) {
        const QString begin = series.first.section(u'/', -1) + u',' + timeframe + u',' + day.key();
        QByteArrayList ofDay;
        while (!lines.isEmpty() && lines.first().startsWith(begin.toUtf8() + ','))
            ofDay.append(lines.takeFirst());
        isRight = isRight && isDayExported(ofDay, begin.toUtf8() + ',', *day);
    }
    return isRight && lines.isEmpty() ? QByteArray() : wrongly("export", outcome) + readFile(path);
}

} // namespace

QByteArray wrongReaders(const StoreJobs& jobs)
{
    const Series stored = storedSeries(jobs);
    QByteArray wrong = wrongPoints(jobs);
    // Who lists a store that is not there says so.
    if (QFileInfo::exists(jobs.store())) {
        if (wrong.isEmpty())
            wrong = wrongList(jobs, stored);
        if (wrong.isEmpty())
            wrong = wrongHealth(jobs, stored);
    }
    for (const char* job : {"check", "check merge"}) {
        if (wrong.isEmpty())
            wrong = wrongCheck(jobs, stored, job);
    }
    for (auto series = stored.begin(); series != stored.end() && wrong.isEmpty(); ++series)
        wrong = wrongExport(jobs, series.key(), *series);
    return wrong;
}

} // namespace testsupport
