// SPDX-License-Identifier: MIT
#include "importcommand.h"

#include "progressbar.h"
#include "series.h"

#include "importjob.h"
#include "textformats.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/storepaths.h>

#include <array>

namespace tadata::cli {

namespace {

struct RoleName
{
    const char* name;
    ColumnRole role;
    bool mandatory;
};

constexpr std::array roleNames{
    RoleName{"date", ColumnRole::Date, true},        RoleName{"time", ColumnRole::Time, true},
    RoleName{"open", ColumnRole::Open, true},        RoleName{"high", ColumnRole::High, true},
    RoleName{"low", ColumnRole::Low, true},          RoleName{"close", ColumnRole::Close, true},
    RoleName{"volume", ColumnRole::Volume, false},   RoleName{"value", ColumnRole::Value, false},
    RoleName{"oi", ColumnRole::OpenInterest, false},
};

ColumnRole parseRole(const QString& name)
{
    for (const RoleName& known : roleNames) {
        if (name == QLatin1String(known.name))
            return known.role;
    }
    throw UsageError{
        Text::tr("--columns: неизвестное значение «%1»; бывают date, time, open, high, low, "
                 "close, volume, value, oi")
            .arg(name)};
}

QMap<qint32, qint32> parseColumns(const QString& text)
{
    QMap<qint32, qint32> columns;
    const QStringList parts = text.split(u',');
    for (const QString& part : parts) {
        const qsizetype equals = part.indexOf(u'=');
        const auto role = static_cast<qint32>(parseRole(part.left(equals)));
        bool isNumber = false;
        const int column = equals < 0 ? -1 : QStringView(part).mid(equals + 1).toInt(&isNumber);
        if (!isNumber || column < 0)
            throw UsageError{
                Text::tr("--columns: нужен номер столбца, считая от 0: «%1»").arg(part)};
        if (columns.contains(role))
            throw UsageError{Text::tr("--columns: «%1» задано дважды").arg(part.left(equals))};
        if (columns.values().contains(column))
            throw UsageError{Text::tr("--columns: столбец %1 назначен дважды").arg(column)};
        columns.insert(role, column);
    }
    for (const RoleName& known : roleNames) {
        if (known.mandatory && !columns.contains(static_cast<qint32>(known.role)))
            throw UsageError{
                Text::tr("--columns: не задан столбец «%1»").arg(QLatin1String(known.name))};
    }
    return columns;
}

qint32 parseTimeframe(const QString& text)
{
    if (text == QString::number(vexdesk::minuteTimeframe))
        return vexdesk::minuteTimeframe;
    if (text == QString::number(vexdesk::secondTimeframe))
        return vexdesk::secondTimeframe;
    throw UsageError{Text::tr("--timeframe: бывает 60 или 1: «%1»").arg(text)};
}

TextFormat parseFormat(const char* option, const QString& pattern, const QList<TextFormat>& known)
{
    QStringList patterns;
    for (const TextFormat& format : known) {
        if (format.pattern == pattern)
            return format;
        patterns.append(format.pattern);
    }
    throw UsageError{Text::tr("--%1: бывает %2: «%3»")
                         .arg(QLatin1String(option), patterns.join(QStringLiteral(", ")), pattern)};
}

ImportDetails parseDetails(const CommandLine& line)
{
    ImportDetails details;
    details.columns = parseColumns(line.required("columns"));
    details.timeframe = parseTimeframe(line.value("timeframe").value_or(QStringLiteral("60")));
    details.separator = parseSeparator(line.value("separator").value_or(QStringLiteral(",")));
    const TextFormat date =
        parseFormat("date-format", line.value("date-format").value_or(QStringLiteral("yyyyMMdd")),
                    dateFormats());
    details.dateFormat = date.pattern;
    details.dateFormatTitle = date.title;
    const TextFormat time = parseFormat(
        "time-format", line.value("time-format").value_or(QStringLiteral("hhmmss")), timeFormats());
    details.timeFormat = time.pattern;
    details.timeFormatTitle = time.title;
    details.firstLineIsHeader = !line.isSet("no-header");
    return details;
}

ImportResult runJob(const QString& file, const ImportDetails& details, const SeriesDir& seriesDir)
{
    ProgressBar bar;
    return importBars(file, details, seriesDir, [&bar](int percent) { bar.show(percent); });
}

} // namespace

ExitCode runImport(const QStringList& words)
{
    const CommandLine line(words, {{"series"},
                                   {"columns"},
                                   {"timeframe"},
                                   {"separator"},
                                   {"date-format"},
                                   {"time-format"},
                                   {"no-header", false},
                                   {"decimals"},
                                   {"store"},
                                   {"reference"}});
    if (line.positional().size() != 1)
        throw UsageError{Text::tr("нужен один файл")};
    const QString file = line.positional().first();
    const SeriesCodes codes = parseSeries(line.required("series"));
    refuseUnprintable(codes);
    ImportDetails details = parseDetails(line);
    const std::optional<QString> store = parseStore(line);
    std::optional<int> decimals;
    if (const auto text = line.value("decimals"))
        decimals = parseDecimals(*text);

    if (const QString error = installReferenceData(line); !error.isNull()) {
        printError(error);
        return Failure;
    }
    if (decimals) {
        makeKnown(codes, *decimals);
    } else if (!isKnown(codes)) {
        throw UsageError{
            Text::tr("инструмента %1/%2/%3 нет в справочнике: задайте --decimals, число "
                     "знаков после точки в ценах")
                .arg(codes.stock, codes.board, codes.security)};
    }
    setSeries(details, codes);

    const ImportResult result =
        runJob(file, details, [&] { return makeSeriesDirIn(store, codes); });
    if (!result.outcome) {
        printError(result.outcome.message());
        return Failure;
    }
    if (result.bars == 0)
        printError(Text::tr("Ни одного бара не импортировано: в файле %1 их нет").arg(file));
    return Success;
}

QString importHelp()
{
    return Text::tr(
        "Использование: tadata import ФАЙЛ --series ПЛОЩАДКА/РЕЖИМ/ИНСТРУМЕНТ\n"
        "                             --columns РОЛЬ=СТОЛБЕЦ,... [параметры]\n"
        "\n"
        "Импортирует бары из текстового файла. Файл дня заменяется целиком каждый раз, когда в\n"
        "файле начинается этот день. Если в файле нет ни одного бара, об этом сказано в "
        "стандартном\n"
        "выводе ошибок, код завершения 0.\n"
        "\n"
        "  --series КОДЫ        серия: коды площадки, режима торгов и инструмента через «/»\n"
        "  --columns СПИСОК     какой столбец что несёт, считая столбцы от 0; обязательны date,\n"
        "                       time, open, high, low, close; могут быть volume (объём в штуках),\n"
        "                       value (объём в деньгах), oi (открытый интерес)\n"
        "  --timeframe 60|1     длина бара в секундах; по умолчанию 60. Из секундных баров\n"
        "                       строятся и минутные, в отдельный файл\n"
        "  --separator ТЕКСТ    разделитель столбцов или слово comma, semicolon, space;\n"
        "                       по умолчанию запятая\n"
        "  --date-format ВИД    yyyyMMdd (по умолчанию), yyMMdd, ddMMyy, dd.MM.yy или dd/MM/yy\n"
        "  --time-format ВИД    hhmmss (по умолчанию), hhmm, hh:mm:ss или hh:mm\n"
        "  --no-header          первая строка — уже бар, а не заголовок\n"
        "  --decimals ЧИСЛО     знаков после точки в ценах, от 0 до 15; по умолчанию как в\n"
        "                       справочнике инструментов\n"
        "  --store КАТАЛОГ      каталог с папками площадок; по умолчанию хранилище терминала\n"
        "  --reference ФАЙЛ     справочник площадок, режимов и инструментов; по умолчанию\n"
        "                       справочник терминала\n"
        "\n"
        "Пример:\n"
        "  tadata import eurusd.csv --series ORIENT/FX/EURUSD --separator semicolon --no-header "
        "\\\n"
        "         --date-format dd.MM.yy --time-format hh:mm \\\n"
        "         --columns date=0,time=1,open=2,high=3,low=4,close=5,volume=6\n");
}

} // namespace tadata::cli
