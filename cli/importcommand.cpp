// SPDX-License-Identifier: MIT
#include "importoptions.h"
#include "interruption.h"
#include "progressbar.h"
#include "storework.h"

#include "importjob.h"

#include <vexdesk/history/storepaths.h>

namespace tadata::cli {

using vexdesk::StoreJobSettings;

namespace {

// No list could show them as they are.
void refuseUnprintable(const CommandLine& line)
{
    if (hasUnprintable(line.text("series")))
        line.refuse("series", Text::tr("в кодах не может быть управляющих символов и того, что не "
                                       "UTF-8"));
}

ImportResult runJob(const QString& file, const ImportDetails& details,
                    const WritableSeriesDir& seriesDir, vexdesk::FileKeeper* keeper)
{
    ProgressBar bar;
    return importBars(file, details, seriesDir, [&bar](int percent) { bar.show(percent); },
                      {.keeper = keeper, .stop = Interruption::flag()});
}

// What surrounds the work of this command line.
StoreJobSettings importSettings(const CommandLine& line, const QString& file)
{
    StoreJobSettings settings = storeJobSettings(line, QStringLiteral("import"), {file});
    settings.makesPoint = !line.isSet("no-restore-point");
    settings.needsPoint = line.isSet("undo-on-error");
    settings.stop = Interruption::flag();
    if (settings.needsPoint && !settings.makesPoint)
        throw UsageError{Text::tr("--undo-on-error нельзя вместе с --no-restore-point")};
    return settings;
}

// The import itself, with the lock of its series and its restore point.
ExitCode importInto(const std::optional<QString>& store, const SeriesCodes& codes,
                    const QString& file, const ImportDetails& details,
                    const StoreJobSettings& settings)
{
    const Interruption interruption;
    vexdesk::StoreJob job(settings);
    const auto seriesDir = [&]() -> vexdesk::Result<QDir> {
        const QDir root = store ? QDir(*store) : vexdesk::storePlace();
        if (const vexdesk::Outcome begun = job.begin(root, {nameOf(codes)}); !begun)
            return begun.failure();
        return makeSeriesDirIn(store, codes);
    };
    const ImportResult result = runJob(file, details, seriesDir, job.keeper());
    const bool takesBack = !result.outcome && settings.needsPoint;
    const ExitCode told = tellOutcomes(result.outcome, takesBack ? job.takeBack() : job.end());
    if (!result.outcome)
        return Interruption::exitCode().value_or(told);
    if (result.bars == 0)
        printError(Text::tr("Ни одного бара не импортировано: в файле %1 их нет").arg(file));
    return told;
}

ExitCode runImport(const CommandLine& line)
{
    const QString& file = line.positional().first();
    const SeriesCodes codes = parseSeries(line);
    refuseUnprintable(line);
    ImportDetails details = parseLayout(line);
    const std::optional<QString> store = parseStore(line);
    const std::optional<int> decimals = parseDecimals(line);
    const StoreJobSettings settings = importSettings(line, file);

    if (const auto installed = installReferenceData(line); !installed)
        return fail(installed.message());
    if (decimals)
        makeKnown(codes, *decimals);
    else if (!isKnown(codes))
        throw UsageError{
            Text::tr("инструмента %1/%2/%3 нет в справочнике: задайте --decimals, число "
                     "знаков после точки в ценах")
                .arg(codes.stock, codes.board, codes.security)};
    setSeries(details, codes);
    return importInto(store, codes, file, details, settings);
}

QList<Option> importOptions()
{
    return QList<Option>{seriesOption(), profileOption()} + layoutOptions() + wayOptions() +
           QList<Option>{
               decimalsOption(),
           } +
           safetyOptions() + QList<Option>{storeOption(), referenceOption()} + storeJobOptions();
}

} // namespace

Command importCommand()
{
    return {.name = QStringLiteral("import"),
            .words = Text::tr("ФАЙЛ"),
            .fewestWords = 1,
            .mostWords = 1,
            .summary = Text::tr("Импортировать бары из текстового файла."),
            .description = Text::tr(
                "Импортирует бары из текстового файла. Файл дня заменяется целиком каждый раз, "
                "когда в файле начинается этот день. Если в файле нет ни одного бара, об этом "
                "сказано в стандартном выводе ошибок, код завершения 0."),
            .options = importOptions(),
            .example = QStringLiteral(
                "tadata import eurusd.csv --series ORIENT/FX/EURUSD --separator semicolon \\\n"
                "       --no-header --date-format dd.MM.yy --time-format hh:mm \\\n"
                "       --columns date=0,time=1,open=2,high=3,low=4,close=5,volume=6"),
            .run = runImport};
}

} // namespace tadata::cli
