// SPDX-License-Identifier: MIT
#include "exportcommand.h"

#include "dealsfile.h"
#include "progressbar.h"
#include "series.h"

#include "exportjob.h"

#include <vexdesk/database/exception.h>
#include <vexdesk/history/storepaths.h>
#include <vexdesk/terminal/core.h>

#include <QtCore/QFileInfo>

#include <algorithm>
#include <array>

namespace tadata::cli {

namespace {

constexpr std::array timeframes{1, 60, 300, 600, 1800, 3600, 86400};

const QString defaultLineFormat =
    QStringLiteral("TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE,VOL,VAL,OPEN_INT");

QDate parseDay(const char* option, const QString& text)
{
    const QDate day = QDate::fromString(text, QStringLiteral("yyyy-MM-dd"));
    if (!day.isValid())
        throw UsageError{
            Text::tr("--%1: нужна дата вида 2024-01-31: «%2»").arg(QLatin1String(option), text)};
    return day;
}

int parseTimeframe(const QString& text)
{
    QStringList known;
    for (const int timeframe : timeframes) {
        known.append(QString::number(timeframe));
        if (known.last() == text)
            return timeframe;
    }
    throw UsageError{
        Text::tr("--timeframe: бывает %1: «%2»").arg(known.join(QStringLiteral(", ")), text)};
}

[[noreturn]] void refusePattern(const char* option, const QString& pattern,
                                const QStringList& needed)
{
    throw UsageError{Text::tr("--%1: вид «%2» не называет всего, что нужно: %3")
                         .arg(QLatin1String(option), pattern, needed.join(QStringLiteral(", ")))};
}

// A pattern in which each of these letters stands, in lower or in upper case.
QString parsePattern(const char* option, const QString& pattern, const QStringList& letters)
{
    const bool isWhole =
        std::all_of(letters.begin(), letters.end(), [&pattern](const QString& letter) {
            return pattern.contains(letter.front(), Qt::CaseInsensitive);
        });
    if (!isWhole)
        refusePattern(option, pattern, letters);
    return pattern;
}

// Whether a year stands in a pattern, outside of its quotes: one letter, or three, are none.
bool hasYear(const QString& pattern)
{
    bool isQuoted = false;
    int letters = 0;
    for (const QChar letter : pattern + QChar()) {
        if (letter == u'y' && !isQuoted) {
            ++letters;
            continue;
        }
        if (letters == 2 || letters == 4)
            return true;
        letters = 0;
        if (letter == u'\'')
            isQuoted = !isQuoted;
    }
    return false;
}

QString parseDateFormat(const CommandLine& line)
{
    constexpr auto option = "date-format";
    const QString format = line.value(option).value_or(QStringLiteral("yyyyMMdd"));
    const QStringList needed{QStringLiteral("d"), QStringLiteral("M"), QStringLiteral("yy")};
    parsePattern(option, format, needed);
    if (!hasYear(format))
        refusePattern(option, format, needed);
    return format;
}

ExportDetails parseDetails(const CommandLine& line)
{
    ExportDetails details;
    details.outputPath = line.positional().first();
    details.dateFrom = parseDay("from", line.required("from"));
    details.dateTo = parseDay("to", line.required("to"));
    if (details.dateTo < details.dateFrom)
        throw UsageError{Text::tr("--to: раньше, чем --from")};
    details.timeframe = parseTimeframe(line.value("timeframe").value_or(QStringLiteral("60")));
    details.lineFormat = line.value("line-format").value_or(defaultLineFormat);
    details.separator = parseSeparator(line.value("separator").value_or(QStringLiteral(",")));
    details.dateFormat = parseDateFormat(line);
    details.timeFormat =
        parsePattern("time-format", line.value("time-format").value_or(QStringLiteral("hhmmss")),
                     {QStringLiteral("h"), QStringLiteral("m")});
    details.addHeader = !line.isSet("no-header");
    return details;
}

// The deals of a file stand in for what the terminal's feed would bring.
QString loadDealsOf(const QString& file, const SeriesCodes& codes, vexdesk::Core& core)
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
void cutAtToday(ExportDetails& details, const QDate& today)
{
    if (details.dateFrom > today)
        throw UsageError{
            Text::tr("--from: %1 позже, чем сегодня, %2: выгружать нечего")
                .arg(details.dateFrom.toString(Qt::ISODate), today.toString(Qt::ISODate))};
    details.dateTo = std::min(details.dateTo, today);
}

ExitCode report(const ExportResult& result)
{
    for (const QString& path : result.unopened)
        printError(Text::tr("Невозможно открыть файл %1: его баров в выгрузке нет").arg(path));
    if (!result.outcome)
        printError(result.outcome.message());
    return result.outcome && result.unopened.isEmpty() ? Success : Failure;
}

} // namespace

ExitCode runExport(const QStringList& words)
{
    const CommandLine line(words, {{"series"},
                                   {"from"},
                                   {"to"},
                                   {"timeframe"},
                                   {"line-format"},
                                   {"separator"},
                                   {"date-format"},
                                   {"time-format"},
                                   {"no-header", false},
                                   {"store"},
                                   {"deals"},
                                   {"today"},
                                   {"reference"}});
    if (line.positional().size() != 1)
        throw UsageError{Text::tr("нужен один файл")};
    const SeriesCodes codes = parseSeries(line.required("series"));
    ExportDetails details = parseDetails(line);
    const QDate today =
        line.isSet("today") ? parseDay("today", line.required("today")) : QDate::currentDate();
    cutAtToday(details, today);
    const std::optional<QString> store = parseStore(line);
    if (store && !QFileInfo(*store).isDir()) {
        printError(Text::tr("Нет каталога %1").arg(*store));
        return Failure;
    }

    if (const QString error = installReferenceData(line); !error.isNull()) {
        printError(error);
        return Failure;
    }
    const QDir root = store ? QDir(*store) : vexdesk::storePlace();
    setSeries(details, codes);
    if (const auto allowed = mayWriteOutput(details, root); !allowed) {
        printError(allowed.message());
        return Failure;
    }

    vexdesk::Core core;
    if (const auto file = line.value("deals")) {
        if (const QString error = loadDealsOf(*file, codes, core); !error.isNull()) {
            printError(error);
            return Failure;
        }
    }
    setSeries(details, codes);
    return report(runJob(details, today, [&] { return makeSeriesDirIn(store, codes); }));
}

QString exportHelp()
{
    return Text::tr(
        "Использование: tadata export ФАЙЛ --series ПЛОЩАДКА/РЕЖИМ/ИНСТРУМЕНТ\n"
        "                             --from ДЕНЬ --to ДЕНЬ [параметры]\n"
        "\n"
        "Записывает бары серии в текстовый файл. Файл, который уже есть, заменяется. За каждую\n"
        "строку хранилища пишется бар, каким он стал к ней, и ещё раз — когда он закончен:\n"
        "законченный бар — последняя строка со своим временем. Файл дня, который нельзя открыть,\n"
        "назван в стандартном выводе ошибок, и код завершения тогда 1.\n"
        "\n"
        "  --series КОДЫ        серия: коды площадки, режима торгов и инструмента через «/»\n"
        "  --from ДЕНЬ          первый день, например 2024-01-31; не позже сегодняшнего\n"
        "  --to ДЕНЬ            последний день; дни после сегодняшнего пропускаются\n"
        "  --timeframe СЕКУНДЫ  длина бара: 1, 60 (по умолчанию), 300, 600, 1800, 3600, 86400\n"
        "  --line-format СПИСОК столбцы через запятую: TICKER, PER, DATE, TIME, OPEN, HIGH, LOW,\n"
        "                       CLOSE, VOL, VAL, OPEN_INT; по умолчанию все. Порядок столбцов\n"
        "                       всегда этот; строка кончается после последнего в списке\n"
        "  --separator ТЕКСТ    разделитель столбцов или слово comma, semicolon, space;\n"
        "                       по умолчанию запятая\n"
        "  --date-format ВИД    вид даты из d, M и yy или yyyy; по умолчанию yyyyMMdd\n"
        "  --time-format ВИД    вид времени из h, m, s и z; по умолчанию hhmmss\n"
        "  --no-header          без строки заголовка\n"
        "  --store КАТАЛОГ      каталог с папками площадок; по умолчанию хранилище терминала\n"
        "  --deals ФАЙЛ         сделки сегодняшнего дня: moment_ms_utc,price,quantity и, если\n"
        "                       есть, open_interest и value; первая строка — заголовок\n"
        "  --today ДЕНЬ         какой день считать сегодняшним: дни до него берутся из хранилища,\n"
        "                       он сам — из сделок\n"
        "  --reference ФАЙЛ     справочник площадок, режимов и инструментов; по умолчанию\n"
        "                       справочник терминала\n"
        "\n"
        "Пример:\n"
        "  tadata export eurusd.txt --series ORIENT/FX/EURUSD --from 2024-01-01 --to 2024-01-31 "
        "\\\n"
        "         --timeframe 300\n");
}

} // namespace tadata::cli
