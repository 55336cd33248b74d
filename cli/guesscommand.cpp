// SPDX-License-Identifier: MIT
#include "guesstext.h"
#include "importoptions.h"

#include "columnroles.h"
#include "formatguess.h"
#include "json.h"

namespace tadata::cli {

namespace {

Json columnsReport(const QMap<qint32, qint32>& columns)
{
    QList<Json::Member> members;
    for (auto column = columns.begin(); column != columns.end(); ++column)
        members.append({roleWord(ColumnRole(column.key())), *column});
    return Json::object(members);
}

Json guessReport(const QString& file, const FormatGuess& guess)
{
    return Json::object({{QStringLiteral("ambiguous"), Json::list(guess.ambiguous)},
                         {QStringLiteral("columns"), columnsReport(guess.columns)},
                         {QStringLiteral("dateFormat"), guess.dateFormat},
                         {QStringLiteral("decimals"), guess.decimals},
                         {QStringLiteral("file"), file},
                         {QStringLiteral("header"), guess.hasHeader},
                         {QStringLiteral("lines"), guess.lines},
                         {QStringLiteral("missing"), Json::list(guess.missing)},
                         {QStringLiteral("separator"), guess.separator},
                         {QStringLiteral("timeFormat"), guess.timeFormat},
                         {QStringLiteral("timeframe"), guess.timeframe}});
}

// A name that would pass for an option.
QString fileWord(const QString& file)
{
    return shellWord(file.startsWith(u'-') ? QStringLiteral("./") + file : file);
}

// The commands to use, one where nothing is ambiguous; none where something cannot do without more.
QString commandText(const QString& file, const FormatGuess& guess)
{
    FormatGuess chosen = guess;
    chosen.ambiguous.clear();
    if (!chosen.isEnough())
        return {};
    QString text;
    for (const QString& options : guessedAlternatives(guess))
        text += QStringLiteral("tadata import %1 --series %2 %3\n")
                    .arg(escaped(fileWord(file)), seriesOption().value, options);
    return text +
           Text::tr("Для инструмента, которого нет в справочнике, добавьте --decimals %1.")
               .arg(guess.decimals.value_or(0)) +
           u'\n';
}

// Given ones are not guessed; the others have no value of their own here.
QList<Option> guessedFormOptions()
{
    QList<Option> options = formOptions();
    for (Option& option : options)
        option.fallback = QString();
    return options;
}

ExitCode runGuess(const CommandLine& line)
{
    const QString& file = line.positional().first();
    const vexdesk::Result<FormatGuess> guess = guessFormat(file, parseHints(line));
    if (!guess)
        return fail(guess.failure());
    const ExitCode printed = line.isSet("json") ? printUtf8(guessReport(file, *guess).report())
                                                : printOutput(commandText(file, *guess));
    if (!line.isSet("json")) {
        for (const QString& trouble : guessTroubles(*guess))
            printError(trouble);
    }
    return guess->isEnough() ? printed : ExitCode::Failure;
}

} // namespace

Command guessCommand()
{
    return {.name = QStringLiteral("guess"),
            .words = Text::tr("ФАЙЛ"),
            .fewestWords = 1,
            .mostWords = 1,
            .summary = Text::tr("Угадать формат текстового файла с барами."),
            .description = Text::tr(
                "Угадывает разделитель, заголовок, столбцы, вид даты и времени и таймфрейм по "
                "первой и последней тысяче строк файла, каким бы большим он ни был, и печатает "
                "команду импорта с ними. Если вид даты неоднозначен, команд несколько. Код "
                "завершения 1, когда для импорта чего-то не хватает; чего — сказано в стандартном "
                "выводе ошибок. Ничего не меняет."),
            .options = QList<Option>{{.name = QStringLiteral("json"),
                                      .meaning = Text::tr("Отчёт для программ.")},
                                     profileOption()} +
                       guessedFormOptions(),
            .example = QStringLiteral("tadata guess eurusd.csv"),
            .run = runGuess};
}

} // namespace tadata::cli
