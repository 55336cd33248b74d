// SPDX-License-Identifier: MIT
#include "commands.h"
#include "dealsfile.h"
#include "patterns.h"
#include "progressbar.h"
#include "series.h"
#include "skippedtimes.h"

#include "exportjob.h"

#include <vexdesk/database/exception.h>
#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/filestate.h>
#include <vexdesk/history/links.h>
#include <vexdesk/history/restoreplace.h>
#include <vexdesk/history/serieslock.h>
#include <vexdesk/history/storepaths.h>
#include <vexdesk/terminal/core.h>

#include <QtCore/QFileInfo>

#include <algorithm>

namespace tadata::cli {

using vexdesk::Failure;
using vexdesk::Outcome;
using vexdesk::Result;

namespace {

QString parseTimeFormat(const CommandLine& line)
{
    QString format = line.text("time-format");
    if (!hasHours(format) || !hasMinutes(format))
        line.refuse("time-format");
    return format;
}

ExportDetails parseDetails(const CommandLine& line)
{
    ExportDetails details;
    details.outputPath = line.positional().first();
    details.dateFrom = *line.day("from");
    details.dateTo = *line.day("to");
    if (details.dateTo < details.dateFrom)
        line.refuse("to", Text::tr("раньше, чем --from %1").arg(line.text("from")));
    details.timeframe = line.text("timeframe").toInt();
    details.lineFormat = line.text("line-format");
    details.separator = parseSeparator(line);
    details.dateFormat = parseDateFormat(line);
    details.timeFormat = parseTimeFormat(line);
    details.addHeader = !line.isSet("no-header");
    details.finishedOnly = line.isSet("finished-only");
    return details;
}

// The deals of a file stand in for what the terminal's feed would bring.
Outcome loadDealsOf(const QString& file, const SeriesCodes& codes, vexdesk::Core& core)
{
    if (!isKnown(codes))
        makeKnown(codes, 0);
    ExportDetails ids;
    setSeries(ids, codes);
    return loadDeals(file, {ids.stockId, ids.boardId, ids.securityId}, *core.database());
}

ExportResult runJob(const ExportDetails& details, const QDate& today, const SeriesDir& seriesDir)
{
    ProgressBar bar;
    try {
        return exportBars(details, {today, 0}, seriesDir,
                          [&bar](int percent) { bar.show(percent); });
    } catch (const Exception& exception) {
        return {vexdesk::Failure{exception.message()}, {}};
    }
}

// The days that are exported: each day from today on would bring the deals of today once more.
void cutAtToday(const CommandLine& line, ExportDetails& details, const QDate& today)
{
    if (details.dateFrom > today)
        line.refuse(
            "from",
            Text::tr("позже, чем сегодня, %1: выгружать нечего").arg(today.toString(Qt::ISODate)));
    details.dateTo = std::min(details.dateTo, today);
}

// What is read would be gone before it is read.
void refuseInputAsOutput(const CommandLine& line, const QString& path)
{
    const auto output = vexdesk::fileState(path);
    for (const char* option : {"deals", "reference"}) {
        const auto input = vexdesk::fileState(line.path(option).value_or(QString()));
        if (input && output && input->isSameFile(*output))
            line.refuse(option, Text::tr("это и файл %1, который был бы записан").arg(path));
    }
}

// A day that is not stored yet must not come to be one that no import has written: neither under
// the name that was given nor under the one to which links lead from there.
Result<bool> isNewDayFile(const QString& output, const QDir& root)
{
    const auto unknown = [](const QString& path) {
        return Failure{
            Text::tr("Невозможно узнать, куда ведёт %1: %2").arg(path, qt_error_string())};
    };
    const auto target = vexdesk::behindLinks(output);
    if (!target)
        return unknown(output);
    const QFileInfo file(*target);
    if (vexdesk::isMissing(root.path()) || vexdesk::isMissing(file.path()) ||
        !vexdesk::isBarFileName(file.fileName()))
        return false;
    const auto place = vexdesk::withoutLinks(file.path());
    if (!place)
        return unknown(output);
    const auto store = vexdesk::withoutLinks(root.path());
    if (!store)
        return unknown(root.path());
    const auto isBelow = [](const QString& path, const QString& directory) {
        return path == directory || path.startsWith(directory + u'/');
    };
    const QString named = QDir::cleanPath(QFileInfo(output).absolutePath());
    return isBelow(*place, *store) || isBelow(named, QDir::cleanPath(root.absolutePath()));
}

Outcome checkOutput(const ExportDetails& details, const QDir& root)
{
    if (Outcome allowed = mayWriteOutput(details, root); !allowed)
        return allowed;
    const Result<bool> isNew = isNewDayFile(details.outputPath, root);
    if (!isNew)
        return isNew.failure();
    if (*isNew)
        return Failure{Text::tr("Файл %1 стал бы файлом дня в хранилище: их пишет только "
                                "импорт. Выберите другой файл")
                           .arg(details.outputPath)};
    return {};
}

// An interval ends at a moment of this computer's clock, which does not know such times.
void tellOfSkippedTimes(const ExportDetails& details, const QDir& series)
{
    const auto times = skippedTimes(QTimeZone::systemTimeZone(), details.dateFrom, details.dateTo);
    for (const SkippedTime& skipped : times) {
        if (hasBarIn(skipped, series, details.storedTimeframe()))
            printError(Text::tr("%1: часы этого компьютера пропускают время с %2 до %3, и его бары "
                                "могли слиться с соседними. С TZ=UTC перед командой каждый из них "
                                "выгружается сам")
                           .arg(skipped.from.date().toString(Qt::ISODate),
                                skipped.from.time().toString(Qt::ISODate),
                                skipped.to.time().toString(Qt::ISODate)));
    }
}

// What a writer of the series that is still at work has touched since it began: it empties a day
// before it writes it anew.
QStringList beingReplaced(const QDir& root, const SeriesCodes& codes, const ExportResult& result)
{
    const auto place = vexdesk::restorePlace(root);
    const auto holder = place ? vexdesk::lockHolder(*place, codes.name()) : std::nullopt;
    QStringList paths;
    if (!holder || !holder->runsHere)
        return paths;
    for (const auto& [path, asRead] : result.read) {
        // A file that is being emptied still has its old time.
        if (asRead.modified >= holder->since || asRead.size == 0)
            paths.append(path);
    }
    return paths;
}

ExitCode report(const ExportResult& result, const QStringList& changed)
{
    for (const QString& path : result.unopened)
        printError(Text::tr("Невозможно открыть файл %1: его баров в выгрузке нет").arg(path));
    for (const QString& path : changed)
        printError(Text::tr("Файл %1 меняли, пока шла выгрузка: повторите её").arg(path));
    if (!result.outcome)
        printError(result.outcome.wholeMessage());
    const bool isWhole = result.outcome && result.unopened.isEmpty() && changed.isEmpty();
    return isWhole ? ExitCode::Success : ExitCode::Failure;
}

ExitCode runExport(const CommandLine& line)
{
    const SeriesCodes codes = parseSeries(line);
    ExportDetails details = parseDetails(line);
    const QDate today = line.day("today").value_or(QDate::currentDate());
    cutAtToday(line, details, today);
    refuseInputAsOutput(line, details.outputPath);
    const std::optional<QString> store = parseStore(line);
    if (store && !QFileInfo(*store).isDir())
        return fail(Text::tr("Нет каталога %1").arg(*store));

    if (const auto installed = installReferenceData(line); !installed)
        return fail(installed.failure());
    setSeries(details, codes);
    const QDir root = store ? QDir(*store) : vexdesk::storePlace();
    if (const auto reached = checkReached(root, codes); !reached)
        return fail(reached.failure());
    if (const auto output = checkOutput(details, root); !output)
        return fail(output.failure());

    vexdesk::Core core;
    if (const auto file = line.path("deals")) {
        if (const auto loaded = loadDealsOf(*file, codes, core); !loaded)
            return fail(loaded.failure());
    }
    setSeries(details, codes);
    const ExportResult result =
        runJob(details, today, [&] { return makeSeriesDirIn(store, codes); });
    if (result.outcome)
        tellOfSkippedTimes(
            details, QDir(vexdesk::seriesPath(root, codes.stock, codes.board, codes.security)));
    // In this order: who has let go of the series by now has changed what is looked at next.
    QStringList changed = beingReplaced(root, codes, result);
    changed += result.changed();
    changed.removeDuplicates();
    return report(result, changed);
}

// One end of the interval, of which both must be given.
Option endOption(const char* name, const char* otherEnd, const QString& meaning)
{
    Option option = dayOption(name, meaning);
    option.partner = QLatin1String(otherEnd);
    option.isRequired = true;
    return option;
}

// Which bars are written.
QList<Option> barOptions()
{
    return {
        seriesOption(),
        endOption("from", "to", Text::tr("Первый день, не позже сегодняшнего.")),
        endOption("to", "from", Text::tr("Последний день; дни после сегодняшнего пропускаются.")),
        {.name = QStringLiteral("timeframe"),
         .value = Text::tr("СЕКУНДЫ"),
         .meaning = Text::tr("Длина бара. Секундные бары делаются из хранимых секундных, все "
                             "остальные — из хранимых минутных."),
         .choices = QStringLiteral("1 60 300 600 1800 3600 86400").split(u' '),
         .fallback = QStringLiteral("60")},
    };
}

// How the lines of the output look.
QList<Option> formatOptions()
{
    return {
        {.name = QStringLiteral("line-format"),
         .value = Text::tr("СПИСОК"),
         .meaning = Text::tr("Какие столбцы выгружать. Порядок столбцов всегда как в значении по "
                             "умолчанию; строка кончается после последнего из названных. "
                             "Неизвестное название ничего не пишет."),
         .takes = Text::tr("названия через запятую"),
         .fallback = QStringLiteral("TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE,VOL,VAL,OPEN_INT")},
        separatorOption(),
        {.name = QStringLiteral("date-format"),
         .value = Text::tr("ВИД"),
         .meaning = Text::tr("Вид даты."),
         .takes = Text::tr("вид, в котором есть число (d или dd), месяц (M или MM) и год (yy или "
                           "yyyy); большие и малые буквы различаются"),
         .fallback = QStringLiteral("yyyyMMdd")},
        {.name = QStringLiteral("time-format"),
         .value = Text::tr("ВИД"),
         .meaning = Text::tr("Вид времени."),
         .takes = Text::tr("вид, в котором есть часы (h или hh) и минуты (m или mm) и могут быть "
                           "секунды (s или ss) и их доли (z или zzz); большие и малые буквы "
                           "различаются"),
         .fallback = QStringLiteral("hhmmss")},
        {.name = QStringLiteral("no-header"),
         .meaning = Text::tr("Без строки с названиями столбцов.")},
        {.name = QStringLiteral("finished-only"),
         .meaning = Text::tr("Каждый бар один раз, законченным: из идущих подряд строк с одними "
                             "датой и временем — только последняя.")},
    };
}

// What the bars are taken from.
QList<Option> sourceOptions()
{
    return {
        storeOption(),
        {.name = QStringLiteral("deals"),
         .value = Text::tr("ФАЙЛ"),
         .meaning = Text::tr("Сделки сегодняшнего дня: под заголовком столбцы moment_ms_utc, "
                             "price, quantity и, если нужно, open_interest и value, через "
                             "запятую; пустое поле — отсутствующее значение. Момент — "
                             "миллисекунды с 1970 года по UTC."),
         .takes = Text::tr("имя файла")},
        dayOption("today", Text::tr("Какой день считать сегодняшним: дни до него берутся из "
                                    "хранилища, он сам — из сделок. Без него — текущая дата.")),
        referenceOption(),
    };
}

} // namespace

Command exportCommand()
{
    return {.name = QStringLiteral("export"),
            .words = Text::tr("ФАЙЛ"),
            .fewestWords = 1,
            .mostWords = 1,
            .summary = Text::tr("Записать хранимые бары в текстовый файл."),
            .description = Text::tr(
                "Записывает бары серии в текстовый файл. Файл, который уже есть, заменяется. За "
                "каждую строку хранилища пишется бар, каким он стал к ней, и ещё раз — когда он "
                "закончен: законченный бар — последняя строка со своим временем. Файл дня, "
                "который нельзя открыть, назван в стандартном выводе ошибок, и код завершения "
                "тогда 1."),
            .options = barOptions() + formatOptions() + sourceOptions(),
            .example = QStringLiteral("tadata export eurusd.txt --series ORIENT/FX/EURUSD \\\n"
                                      "       --from 2024-01-01 --to 2024-01-31 --timeframe 300"),
            .run = runExport};
}

} // namespace tadata::cli
