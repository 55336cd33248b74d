// SPDX-License-Identifier: MIT
// The commands that change whole series: delete, copy and rename; and unlock.
#include "commands.h"
#include "storework.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/seriesfiles.h>

namespace tadata::cli {

using vexdesk::Outcome;

namespace {

ExitCode printNumber(qsizetype number)
{
    return printOutput(QString::number(number) + u'\n');
}

ExitCode runDelete(const CommandLine& line)
{
    const SeriesCodes codes = seriesWord(line, 0);
    vexdesk::BarFileRange range;
    range.from = line.day("from").value_or(QDate());
    range.to = line.day("to").value_or(QDate());
    if (const auto timeframe = line.value("timeframe"))
        range.timeframe = timeframe->toInt();
    const bool isWhole = !range.from.isValid() && !range.to.isValid() && !range.timeframe;
    if (isWhole && !line.isSet("all"))
        throw UsageError{Text::tr("не задано, что удалить: --from, --to, --timeframe или --all")};
    if (!isWhole && line.isSet("all"))
        throw UsageError{Text::tr("--all нельзя вместе с --from, --to и --timeframe")};
    const QDir root = storeRootOf(line);
    vexdesk::StoreJob job(storeJobSettings(line, QStringLiteral("delete")));
    if (!root.exists())
        return fail(Text::tr("Нет каталога %1").arg(root.path()));
    if (const auto reached = checkReached(root, codes); !reached)
        return fail(reached.failure());

    if (const Outcome begun = job.begin(root, {codes.name()}); !begun)
        return fail(begun.failure());
    const QDir dir = seriesDirIn(root, codes);
    const auto names = vexdesk::barFiles(dir, range);
    const Outcome removed =
        names ? vexdesk::removeBarFiles(dir, *names, job.keeper()) : names.failure();
    const ExitCode told = tellOutcomes(removed, job.end());
    return told == ExitCode::Success ? printNumber(names->size()) : told;
}

using Transfer = Outcome (*)(const QDir& from, const QDir& to, const QStringList& names,
                             vexdesk::FileKeeper* keeper);

// Of a series that has files into one that has none.
Outcome transferAll(const QDir& from, const QDir& to, const QString& nameOfTo,
                    const QStringList& names, Transfer transfer, vexdesk::FileKeeper* keeper)
{
    const auto hasFiles = vexdesk::hasBarFiles(to);
    if (!hasFiles)
        return hasFiles.failure();
    if (*hasFiles)
        return vexdesk::Failure{Text::tr("У серии %1 уже есть файлы").arg(nameOfTo)};
    return transfer(from, to, names, keeper);
}

ExitCode runTransfer(const CommandLine& line, const QString& by, Transfer transfer)
{
    const SeriesCodes from = seriesWord(line, 0);
    const SeriesCodes to = seriesWord(line, 1);
    const QDir root = storeRootOf(line);
    vexdesk::StoreJob job(storeJobSettings(line, by));
    const QDir fromDir = seriesDirIn(root, from);
    const QDir toDir = seriesDirIn(root, to);
    const auto noFile = [&from] {
        return fail(Text::tr("У серии %1 нет ни одного файла").arg(from.name()));
    };
    for (const SeriesCodes& codes : {from, to}) {
        if (const auto reached = checkReached(root, codes); !reached)
            return fail(reached.failure());
    }
    if (const auto stored = vexdesk::barFiles(fromDir); !stored)
        return fail(stored.failure());
    else if (stored->isEmpty())
        return noFile();

    if (const Outcome begun = job.begin(root, {from.name(), to.name()}); !begun)
        return fail(begun.failure());
    const auto names = vexdesk::barFiles(fromDir);
    const Outcome done =
        names ? transferAll(fromDir, toDir, to.name(), *names, transfer, job.keeper())
              : names.failure();
    const ExitCode told = tellOutcomes(done, job.end());
    if (told != ExitCode::Success)
        return told;
    return names->isEmpty() ? noFile() : printNumber(names->size());
}

ExitCode runCopy(const CommandLine& line)
{
    return runTransfer(line, QStringLiteral("copy"), vexdesk::copyBarFiles);
}

ExitCode runRename(const CommandLine& line)
{
    return runTransfer(line, QStringLiteral("rename"), vexdesk::moveBarFiles);
}

ExitCode runUnlock(const CommandLine& line)
{
    const QString series = seriesWord(line, 0).name();
    const auto place = vexdesk::restorePlace(storeRootOf(line));
    if (!place)
        return fail(place.failure());
    const auto holder = vexdesk::lockHolder(*place, series);
    if (!holder)
        return printOutput(Text::tr("Серия %1 не заблокирована").arg(series) + u'\n');
    const QString whose =
        holder->process == 0
            ? Text::tr("неизвестно чья")
            : Text::tr("%1, процесс %2, компьютер %3")
                  .arg(holder->program, QString::number(holder->process), holder->host);
    if (holder->runsHere && !line.isSet("force"))
        return fail(Text::tr("Серию %1 меняет программа, которая работает (%2); снять блокировку "
                             "всё равно: --force")
                        .arg(series, whose));
    if (const Outcome removed = vexdesk::removeLock(*place, series); !removed)
        return fail(removed.failure());
    return printOutput(Text::tr("Блокировка серии %1 снята: %2").arg(series, whose) + u'\n');
}

QString seriesWords()
{
    return Text::tr("СЕРИЯ");
}

Command transferCommand(const QString& name, const QString& summary, const QString& description)
{
    return {.name = name,
            .words = Text::tr("ОТКУДА КУДА"),
            .fewestWords = 2,
            .mostWords = 2,
            .summary = summary,
            .description = description,
            .options = QList<Option>{storeOption()} + storeJobOptions(),
            .run = nullptr};
}

} // namespace

Command deleteCommand()
{
    return {.name = QStringLiteral("delete"),
            .words = seriesWords(),
            .fewestWords = 1,
            .mostWords = 1,
            .summary = Text::tr("Удалить дни серии."),
            .description = Text::tr(
                "Удаляет файлы дней серии и построенные рядом с ними минутные файлы и печатает, "
                "сколько файлов удалено. Вернуть их можно командой tadata undo."),
            .options = QList<Option>{dayOption("from", Text::tr("Первый день.")),
                                     dayOption("to", Text::tr("Последний день.")),
                                     {.name = QStringLiteral("timeframe"),
                                      .value = Text::tr("СЕКУНДЫ"),
                                      .meaning = Text::tr("Длина бара. Без него — обе. К секундам "
                                                          "относятся и построенные из них минуты."),
                                      .choices = {QString::number(vexdesk::minuteTimeframe),
                                                  QString::number(vexdesk::secondTimeframe)}},
                                     {.name = QStringLiteral("all"),
                                      .meaning = Text::tr("Удалить все файлы серии.")},
                                     storeOption()} +
                       storeJobOptions(),
            .example = QStringLiteral("tadata delete NORD/MAIN/ALFA --from 2024-01-15 "
                                      "--to 2024-01-15"),
            .run = runDelete};
}

Command copyCommand()
{
    Command command = transferCommand(
        QStringLiteral("copy"), Text::tr("Скопировать серию."),
        Text::tr("Копирует все файлы серии в серию, у которой их ещё нет, и печатает, сколько "
                 "файлов скопировано."));
    command.run = runCopy;
    return command;
}

Command renameCommand()
{
    Command command = transferCommand(
        QStringLiteral("rename"), Text::tr("Переименовать серию."),
        Text::tr("Переносит все файлы серии в серию, у которой их ещё нет, и печатает, сколько "
                 "файлов перенесено. Опустевший каталог остаётся."));
    command.run = runRename;
    return command;
}

Command unlockCommand()
{
    return {.name = QStringLiteral("unlock"),
            .words = seriesWords(),
            .fewestWords = 1,
            .mostWords = 1,
            .summary = Text::tr("Снять с серии блокировку."),
            .description = Text::tr(
                "Снимает блокировку серии, которую оставил завершившийся процесс или процесс на "
                "другом компьютере, и говорит, чья она была."),
            .options = {storeOption(),
                        {.name = QStringLiteral("force"),
                         .meaning = Text::tr("И ту, чей процесс работает на этом компьютере.")}},
            .run = runUnlock};
}

} // namespace tadata::cli
