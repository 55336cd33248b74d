// SPDX-License-Identifier: MIT
#include "checkreport.h"
#include "importoptions.h"
#include "progressbar.h"
#include "storework.h"

#include <limits>

namespace tadata::cli {

namespace {

// What is wrong with a file, beside what it would be taken with.
bool isClean(const ImportCheck& check)
{
    qint64 wrong = -check.count(ProblemKind::Midnight) - check.count(ProblemKind::Rounded);
    for (const qint64 count : check.counts)
        wrong += count;
    return wrong == 0;
}

// Whether an import would take the values of options that a check has no use for.
void checkSettings(const CommandLine& line)
{
    storeJobSettings(line, QStringLiteral("import"));
    if (line.isSet("undo-on-error") && line.isSet("no-restore-point"))
        throw UsageError{Text::tr("--undo-on-error нельзя вместе с --no-restore-point")};
}

QList<Option> checkOnlyOptions()
{
    return {{.name = QStringLiteral("max-problems"),
             .value = Text::tr("ЧИСЛО"),
             .meaning = Text::tr("Сколько замечаний перечислить; сосчитаны все."),
             .takes = Text::tr("целое число, не меньше 0"),
             .fallback = QStringLiteral("100")},
            {.name = QStringLiteral("strict"),
             .meaning = Text::tr("Код завершения 1 и тогда, когда импорт прошёл бы, но есть "
                                 "замечания, кроме времени 00:00:00 и округлений.")},
            {.name = QStringLiteral("json"), .meaning = Text::tr("Отчёт для программ.")}};
}

QList<Option> checkCommandOptions()
{
    return QList<Option>{seriesPatternOption(), profileOption()} + layoutOptions() + wayOptions() +
           QList<Option>{decimalsOption()} + safetyOptions() +
           QList<Option>{storeOption(), referenceOption()} + storeJobOptions() + checkOnlyOptions();
}

// Of a file with tickers each has a series of its own; a check is of one.
SeriesCodes parseOneSeries(const CommandLine& line)
{
    const SeriesPattern pattern = parseSeriesPattern(line);
    if (pattern.hasTicker())
        line.refuse("series", Text::tr("проверить можно только одну серию: без {ticker}"));
    const std::optional<SeriesCodes> codes = pattern.codesOf(line.positional().first());
    if (!codes)
        line.refuse("series", Text::tr("имя файла не подходит на место {name}"));
    return *codes;
}

ExitCode checkInto(const CommandLine& line, const SeriesCodes& codes, const ImportDetails& details,
                   const ImportWays& ways)
{
    constexpr int anyNumber = std::numeric_limits<int>::max();
    const CheckedImport import{line.positional().first(), codes.name(), details.timeframe,
                               ways.mode};
    const int maxProblems = *line.number("max-problems", 0, anyNumber);
    const QDir root = storeRootOf(line);
    if (const auto reached = checkReached(root, codes); !reached)
        return fail(reached.failure());
    const QDir dir = seriesDirIn(root, codes);
    const auto checked = [&] {
        ProgressBar bar;
        return checkImport(import.file, details, ways, dir, maxProblems,
                           [&bar](int percent) { bar.show(percent); });
    }();
    if (!checked)
        return fail(checked.failure());
    const ExitCode printed = line.isSet("json") ? printUtf8(checkReport(import, *checked).report())
                                                : printOutput(checkText(import, *checked));
    const bool isFine = checked->wouldImport && (!line.isSet("strict") || isClean(*checked));
    return isFine ? printed : ExitCode::Failure;
}

ExitCode runCheck(const CommandLine& line)
{
    const SeriesCodes codes = parseOneSeries(line);
    const ImportWays ways = parseWays(line);
    const std::optional<int> decimals = parseDecimals(line);
    checkSettings(line);
    vexdesk::Result<FileLayout> layout = layoutOf(line, line.positional().first());
    if (!layout)
        return fail(layout.failure());
    if (!layout->note.isNull())
        printError(layout->note);
    if (const auto installed = installReferenceData(line); !installed)
        return fail(installed.failure());
    if (const vexdesk::Outcome known = makeKnown(codes, decimals, layout->decimals); !known)
        throw UsageError{known.message()};
    setSeries(layout->details, codes);
    return checkInto(line, codes, layout->details, ways);
}

} // namespace

Command checkCommand()
{
    return {.name = QStringLiteral("check"),
            .words = Text::tr("ФАЙЛ"),
            .fewestWords = 1,
            .mostWords = 1,
            .summary = Text::tr("Сказать, что сделает импорт, ничего не меняя."),
            .description = Text::tr(
                "Читает файл и дни хранилища, до которых дошёл бы импорт с теми же параметрами, и "
                "говорит, пройдёт ли он до конца, что станет с каждым днём, какие бары пропадут и "
                "что в файле не так. Код завершения 0, когда импорт прошёл бы до конца. Ничего не "
                "меняет."),
            .options = checkCommandOptions(),
            .example = QStringLiteral(
                "tadata check eurusd.csv --series ORIENT/FX/EURUSD --mode merge \\\n"
                "       --separator semicolon --no-header --date-format dd.MM.yy \\\n"
                "       --time-format hh:mm --columns date=0,time=1,open=2,high=3,low=4,close=5"),
            .run = runCheck};
}

} // namespace tadata::cli
