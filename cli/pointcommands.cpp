// SPDX-License-Identifier: MIT
// The commands of restore points: points and undo.
#include "commands.h"
#include "storework.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTextStream>

#include <algorithm>

namespace tadata::cli {

using vexdesk::Failure;
using vexdesk::Outcome;
using vexdesk::RestorePlace;
using vexdesk::RestorePointRecord;
using vexdesk::Result;

namespace {

const QString momentForm = QStringLiteral("yyyy-MM-ddThh:mm:ss");

QString jsonOf(const QList<RestorePointRecord>& points)
{
    QJsonArray list;
    for (const RestorePointRecord& point : points)
        list.append(
            QJsonObject{{QStringLiteral("bytes"), point.bytes},
                        {QStringLiteral("by"), point.by},
                        {QStringLiteral("complete"), point.isComplete},
                        {QStringLiteral("files"), point.kept.size()},
                        {QStringLiteral("id"), point.id},
                        {QStringLiteral("series"), QJsonArray::fromStringList(point.series)},
                        {QStringLiteral("source"), QJsonArray::fromStringList(point.source)},
                        {QStringLiteral("when"), point.when.toString(momentForm)}});
    const QJsonDocument document(QJsonObject{{QStringLiteral("points"), list}});
    return QString::fromUtf8(document.toJson(QJsonDocument::Compact)) + u'\n';
}

QString textOf(const QList<RestorePointRecord>& points)
{
    QString text;
    QTextStream out(&text);
    for (const RestorePointRecord& point : points) {
        out << point.id << '\t' << point.when.toString(momentForm) << '\t' << point.by << '\t'
            << (point.isComplete ? Text::tr("закончено") : Text::tr("прервано")) << '\t'
            << point.kept.size() << '\t' << point.bytes << '\t'
            << escaped(point.series.join(QStringLiteral(", "))) << '\t'
            << escaped(point.source.join(QStringLiteral(", "))) << '\n';
    }
    return text;
}

ExitCode runPoints(const CommandLine& line)
{
    const auto place = vexdesk::restorePlace(storeRootOf(line));
    if (!place)
        return fail(place.message());
    const auto found = vexdesk::restorePoints(*place);
    if (!found)
        return fail(found.message());
    const ExitCode printed =
        printOutput(line.isSet("json") ? jsonOf(found->points) : textOf(found->points));
    for (const QString& problem : found->problems)
        printError(problem);
    return found->problems.isEmpty() ? printed : ExitCode::Failure;
}

Result<RestorePointRecord> pointToPutBack(const RestorePlace& place, const QString& wanted)
{
    if (!wanted.isNull())
        return vexdesk::restorePoint(place, wanted);
    const auto found = vexdesk::restorePoints(place);
    if (!found)
        return found.failure();
    if (found->newest.isNull())
        return Failure{Text::tr("В каталоге %1 нет ни одной точки возврата").arg(place.path)};
    // A command that was killed before it touched anything has left nothing to put back.
    const auto hasFiles = [](const RestorePointRecord& point) { return !point.paths().isEmpty(); };
    const auto point = std::find_if(found->points.begin(), found->points.end(), hasFiles);
    const bool isNewestEmpty = !found->points.isEmpty() &&
                               found->points.first().id == found->newest &&
                               !hasFiles(found->points.first());
    if (isNewestEmpty && point != found->points.end())
        return *point;
    return vexdesk::restorePoint(place, found->newest);
}

Outcome checkAllowed(const RestorePlace& place, const RestorePointRecord& point)
{
    const Result<QStringList> forbidding = vexdesk::whatForbidsPuttingBack(place, point);
    if (!forbidding)
        return forbidding.failure();
    if (forbidding->isEmpty())
        return {};
    QStringList names;
    for (const QString& path : *forbidding)
        names.append(escaped(path));
    return Failure{Text::tr("Точка %1 не возвращена: эти файлы с тех пор изменились; вернуть всё "
                            "равно: --force\n%2")
                       .arg(point.id, names.join(u'\n'))};
}

// Of its files and of what it says it belongs to.
QStringList seriesOf(const RestorePointRecord& point)
{
    QStringList series = point.series;
    for (const QString& path : point.paths())
        series.append(path.section(u'/', 0, 2));
    return vexdesk::sortedByCodePoint(series);
}

QString planOf(const RestorePointRecord& point)
{
    QString text;
    for (const QString& path : point.kept)
        text += Text::tr("вернуть %1").arg(escaped(path)) + u'\n';
    for (const QString& path : point.created)
        text += Text::tr("удалить %1").arg(escaped(path)) + u'\n';
    return text;
}

// Nothing is touched before all is seen to be right.
Outcome checkPoint(const RestorePlace& place, const RestorePointRecord& point, bool isForced,
                   vexdesk::PuttingBack& puttingBack)
{
    if (Outcome begun = puttingBack.begin(); !begun)
        return begun;
    return isForced ? Outcome() : checkAllowed(place, point);
}

ExitCode showPlan(const RestorePlace& place, const RestorePointRecord& point, bool isForced)
{
    vexdesk::PuttingBack puttingBack(place, point);
    const Outcome checked = checkPoint(place, point, isForced, puttingBack);
    return checked ? printOutput(planOf(point)) : fail(checked.message());
}

// With the locks of its series held.
ExitCode putBack(const RestorePlace& place, const QString& id, bool isForced,
                 vexdesk::StoreJob& job)
{
    // Its job may have ended only now.
    const Result<RestorePointRecord> point = vexdesk::restorePoint(place, id);
    if (!point)
        return tellOutcomes(point.failure(), job.end());
    vexdesk::PuttingBack puttingBack(place, *point);
    if (const Outcome checked = checkPoint(place, *point, isForced, puttingBack); !checked)
        return tellOutcomes(checked, job.end());
    if (const Outcome back = puttingBack.run(job.keeper()); !back)
        return tellOutcomes(back, job.takeBack());
    const ExitCode told = tellOutcomes(Outcome(), job.end());
    return told == ExitCode::Success
               ? printOutput(Text::tr("Точка %1: возвращено файлов: %2, удалено: %3")
                                 .arg(id, QString::number(point->kept.size()),
                                      QString::number(point->created.size())) +
                             u'\n')
               : told;
}

ExitCode runUndo(const CommandLine& line)
{
    const QDir root = storeRootOf(line);
    const bool isForced = line.isSet("force");
    vexdesk::StoreJobSettings settings = storeJobSettings(line, QStringLiteral("undo"));
    const auto place = vexdesk::restorePlace(root);
    if (!place)
        return fail(place.message());
    const auto point = pointToPutBack(*place, line.positional().value(0));
    if (!point)
        return fail(point.message());
    if (line.isSet("dry-run"))
        return showPlan(*place, *point, isForced);
    settings.source = {point->id};
    settings.needsPoint = true;
    vexdesk::StoreJob job(settings);
    if (const Outcome begun = job.begin(root, seriesOf(*point)); !begun)
        return fail(begun.message());
    return putBack(*place, point->id, isForced, job);
}

} // namespace

Command pointsCommand()
{
    return {.name = QStringLiteral("points"),
            .summary = Text::tr("Показать точки возврата."),
            .description = Text::tr(
                "Печатает по строке на каждую точку возврата, новые первыми, через табуляцию: имя, "
                "время по Гринвичу, задание, закончено оно или прервано, сохранённые файлы, их "
                "байты, серии, источник."),
            .options = {storeOption(),
                        {.name = QStringLiteral("json"),
                         .meaning = Text::tr("Напечатать один объект JSON.")}},
            .run = runPoints};
}

Command undoCommand()
{
    return {.name = QStringLiteral("undo"),
            .words = Text::tr("[ТОЧКА]"),
            .mostWords = 1,
            .summary = Text::tr("Вернуть то, что изменила команда."),
            .description = Text::tr(
                "Возвращает файлы новейшей точки возврата или названной: прежние файлы "
                "возвращаются, созданные заданием удаляются. Возвращение само создаёт точку, так "
                "что и его можно отменить. Если файл с тех пор изменился или о нём знает более "
                "новая точка, ничего не меняется, а файл назван."),
            .options = QList<Option>{{.name = QStringLiteral("dry-run"),
                                      .meaning = Text::tr("Только показать, что будет сделано.")},
                                     {.name = QStringLiteral("force"),
                                      .meaning = Text::tr("Вернуть и те файлы, которые с тех пор "
                                                          "изменились.")},
                                     storeOption()} +
                       storeJobOptions(),
            .example = QStringLiteral("tadata undo --dry-run"),
            .run = runUndo};
}

} // namespace tadata::cli
