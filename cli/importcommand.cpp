// SPDX-License-Identifier: MIT
#include "importfiles.h"
#include "importoptions.h"
#include "interruption.h"
#include "storework.h"

#include "optionwords.h"

namespace tadata::cli {

using vexdesk::StoreJobSettings;

namespace {

constexpr int mostJobs = 256;

SeriesPattern parseManySeries(const CommandLine& line)
{
    // No list could show them as they are.
    if (hasUnprintable(line.text("series")))
        line.refuse("series", Text::tr("в кодах не может быть управляющих символов и того, что не "
                                       "UTF-8"));
    return parseSeriesPattern(line);
}

// What surrounds the work of this command line.
StoreJobSettings importSettings(const CommandLine& line, ImportMode mode)
{
    StoreJobSettings settings = storeJobSettings(line, pointMaker(mode), line.positional());
    settings.makesPoint = !line.isSet("no-restore-point");
    settings.needsPoint = line.isSet("undo-on-error");
    settings.stop = Interruption::flag();
    if (settings.needsPoint && !settings.makesPoint)
        throw UsageError{Text::tr("--undo-on-error нельзя вместе с --no-restore-point")};
    return settings;
}

ImportRequest parseRequest(const CommandLine& line)
{
    ImportRequest request;
    request.series = parseManySeries(line);
    request.ways = parseWays(line);
    request.decimals = parseDecimals(line);
    request.store = parseStore(line);
    request.settings = importSettings(line, request.ways.mode);
    request.jobs = line.number("jobs", 1, mostJobs).value_or(1);
    request.stopsAtFailure = line.isSet("stop");
    if (line.positional().size() > 1 && !request.ways.rejects.isEmpty())
        line.refuse("rejects", Text::tr("он — только для одного файла"));
    parseHints(line);
    return request;
}

// A file of many whose format cannot be guessed is one that fails.
FileToImport fileOf(const CommandLine& line, const QString& path)
{
    try {
        const vexdesk::Result<FileLayout> layout = layoutOf(line, path);
        if (layout)
            return {path, layout->details, layout->decimals, layout->note, QString()};
        return {
            path, {}, std::nullopt, QString(), vexdesk::Outcome(layout.failure()).wholeMessage()};
    } catch (const UsageError& error) {
        if (line.isSet("columns") || line.positional().size() == 1)
            throw;
        return {path, {}, std::nullopt, QString(), error.text};
    }
}

QList<FileToImport> filesOf(const CommandLine& line)
{
    QList<FileToImport> files;
    for (const QString& path : line.positional())
        files.append(fileOf(line, path));
    return files;
}

ExitCode runImport(const CommandLine& line)
{
    const ImportRequest request = parseRequest(line);
    const QList<FileToImport> files = filesOf(line);
    if (const auto installed = installReferenceData(line); !installed)
        return fail(installed.failure());
    return importFiles(files, request);
}

QList<Option> manyOptions()
{
    return {{.name = QStringLiteral("jobs"),
             .value = Text::tr("ЧИСЛО"),
             .meaning = Text::tr("Сколько файлов импортировать одновременно. Файлы одной серии "
                                 "всегда идут друг за другом."),
             .takes = Text::tr("число от 1 до %1").arg(mostJobs),
             .fallback = QStringLiteral("1")},
            {.name = QStringLiteral("stop"),
             .meaning = Text::tr("После первого неудавшегося файла не начинать следующих.")}};
}

QList<Option> importOptions()
{
    return QList<Option>{seriesPatternOption(), profileOption()} + layoutOptions() +
           QList<Option>{decimalsOption()} + wayOptions() + manyOptions() + safetyOptions() +
           QList<Option>{storeOption(), referenceOption()} + storeJobOptions();
}

} // namespace

Command importCommand()
{
    return {.name = QStringLiteral("import"),
            .words = Text::tr("ФАЙЛ..."),
            .fewestWords = 1,
            .mostWords = anyNumberOfWords,
            .summary = Text::tr("Импортировать бары из текстовых файлов."),
            .description = Text::tr(
                "Импортирует бары из текстовых файлов, по порядку. Файл дня заменяется целиком "
                "каждый раз, когда в файле начинается этот день; --mode говорит, если нужно иначе. "
                "Вид файла угадывается, если не задан --columns. Если в файле нет ни одного бара, "
                "об этом сказано в стандартном выводе ошибок, код завершения 0."),
            .options = importOptions(),
            .example = QStringLiteral(
                "tadata import eurusd.csv --series ORIENT/FX/EURUSD --separator semicolon \\\n"
                "       --no-header --date-format dd.MM.yy --time-format hh:mm \\\n"
                "       --columns date=0,time=1,open=2,high=3,low=4,close=5,volume=6"),
            .run = runImport};
}

} // namespace tadata::cli
