// SPDX-License-Identifier: MIT
// The commands of restore points: points and undo.
#include "commands.h"
#include "storework.h"
#include "undo.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTextStream>

#include <algorithm>

namespace tadata::cli {

using vexdesk::Failure;
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
        return fail(place.failure());
    const auto found = vexdesk::restorePoints(*place);
    if (!found)
        return fail(found.failure());
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
    return vexdesk::restorePoint(place, found->newest);
}

ExitCode refuse(const QString& id, const QStringList& forbidding)
{
    QStringList names;
    for (const QString& path : forbidding)
        names.append(escaped(path));
    return fail(Text::tr("Точка %1 не возвращена: эти файлы с тех пор изменились; вернуть всё "
                         "равно: --force\n%2")
                    .arg(id, names.join(u'\n')));
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

ExitCode showPlan(const RestorePlace& place, const RestorePointRecord& point, bool isForced)
{
    const UndoCheck check = checkUndo(place, point, isForced);
    if (!check.outcome)
        return fail(check.outcome.failure());
    return check.isAllowed() ? printOutput(planOf(point)) : refuse(point.id, check.forbidding);
}

// A command that was killed before it touched anything has left nothing to put back. The one before
// it is taken back by whoever wants that, and not by somebody who has seen the newest one fail.
QString earlierPoint(const RestorePlace& place, const RestorePointRecord& putBack)
{
    if (!putBack.paths().isEmpty())
        return {};
    const QString nothing = Text::tr("Команда, которую она сохранила, ничего не изменила.");
    const auto found = vexdesk::restorePoints(place);
    if (!found)
        return nothing + u'\n';
    auto point = std::find_if(found->points.begin(), found->points.end(),
                              [&](const auto& one) { return one.id == putBack.id; });
    const auto hasFiles = [](const RestorePointRecord& one) { return !one.paths().isEmpty(); };
    point = std::find_if(point, found->points.end(), hasFiles);
    if (point == found->points.end())
        return nothing + u'\n';
    return nothing + u' ' +
           Text::tr("Вернуть то, что изменила предыдущая (%1, %2): tadata undo %3")
               .arg(point->by, escaped(point->series.join(QStringLiteral(", "))), point->id) +
           u'\n';
}

ExitCode tellUndo(const QString& id, const UndoResult& result, const QString& more)
{
    if (!result.forbidding.isEmpty())
        static_cast<void>(refuse(id, result.forbidding));
    const ExitCode told = tellOutcomes(result.work, result.end);
    if (!result.isDone())
        return ExitCode::Failure;
    return told == ExitCode::Success
               ? printOutput(Text::tr("Точка %1: возвращено файлов: %2, удалено: %3")
                                 .arg(id, QString::number(result.returned),
                                      QString::number(result.removed)) +
                             u'\n' + more)
               : told;
}

ExitCode runUndo(const CommandLine& line)
{
    const QDir root = storeRootOf(line);
    const bool isForced = line.isSet("force");
    const vexdesk::StoreJobSettings settings = storeJobSettings(line, QString());
    const auto place = vexdesk::restorePlace(root);
    if (!place)
        return fail(place.failure());
    const auto point = pointToPutBack(*place, line.positional().value(0));
    if (!point)
        return fail(point.failure());
    if (line.isSet("dry-run"))
        return showPlan(*place, *point, isForced);
    return tellUndo(point->id, undo(root, point->id, isForced, settings),
                    earlierPoint(*place, *point));
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
