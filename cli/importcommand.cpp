// SPDX-License-Identifier: MIT
#include "commands.h"
#include "interruption.h"
#include "progressbar.h"
#include "storework.h"

#include "importjob.h"
#include "textformats.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/storepaths.h>
#include <vexdesk/terminal/referencedata.h>

#include <array>
#include <limits>

namespace tadata::cli {

using vexdesk::StoreJobSettings;

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

std::optional<ColumnRole> roleOf(const QString& name)
{
    for (const RoleName& known : roleNames) {
        if (name == QLatin1String(known.name))
            return known.role;
    }
    return std::nullopt;
}

std::optional<int> columnOf(const QString& text)
{
    const std::optional<qint64> number = integerFrom(text);
    const bool isColumn = number && *number >= 0 && *number <= std::numeric_limits<int>::max();
    return isColumn ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

QMap<qint32, qint32> parseColumns(const CommandLine& line)
{
    const auto refuse = [&line](const QString& why) { line.refuse("columns", why); };
    QMap<qint32, qint32> columns;
    const QStringList parts = line.text("columns").split(u',');
    for (const QString& part : parts) {
        const QString name = part.section(u'=', 0, 0);
        const std::optional<ColumnRole> role = roleOf(name);
        const std::optional<int> column = columnOf(part.section(u'=', 1));
        if (!role)
            refuse(Text::tr("роли «%1» нет").arg(escaped(name)));
        if (!column)
            refuse(Text::tr("«%1» не называет номера столбца").arg(escaped(part)));
        if (columns.contains(qint32(*role)))
            refuse(Text::tr("роль «%1» названа дважды").arg(name));
        if (columns.values().contains(*column))
            refuse(Text::tr("столбец %1 назначен дважды").arg(*column));
        columns.insert(qint32(*role), *column);
    }
    for (const RoleName& known : roleNames) {
        if (known.mandatory && !columns.contains(static_cast<qint32>(known.role)))
            refuse(Text::tr("нет роли «%1»").arg(QLatin1String(known.name)));
    }
    return columns;
}

QStringList patternsOf(const QList<TextFormat>& formats)
{
    QStringList patterns;
    for (const TextFormat& format : formats)
        patterns.append(format.pattern);
    return patterns;
}

// The table of the options has its patterns from the same list.
TextFormat formatOf(const QString& pattern, const QList<TextFormat>& formats)
{
    return formats.value(patternsOf(formats).indexOf(pattern));
}

ImportDetails parseDetails(const CommandLine& line)
{
    ImportDetails details;
    details.columns = parseColumns(line);
    details.timeframe = line.text("timeframe").toInt();
    details.separator = parseSeparator(line);
    const TextFormat date = formatOf(line.text("date-format"), dateFormats());
    details.dateFormat = date.pattern;
    details.dateFormatTitle = date.title;
    const TextFormat time = formatOf(line.text("time-format"), timeFormats());
    details.timeFormat = time.pattern;
    details.timeFormatTitle = time.title;
    details.firstLineIsHeader = !line.isSet("no-header");
    return details;
}

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
    ImportDetails details = parseDetails(line);
    const std::optional<QString> store = parseStore(line);
    const auto decimals = line.number("decimals", 0, vexdesk::ReferenceData::maxDecimals);
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

// Of the file's layout.
QList<Option> layoutOptions()
{
    return {
        {.name = QStringLiteral("columns"),
         .value = Text::tr("РОЛЬ=СТОЛБЕЦ,..."),
         .meaning = Text::tr("Что несёт каждый столбец. Роли date, time, open, high, low и close "
                             "обязательны; могут быть volume (объём в штуках), value (объём в "
                             "деньгах) и oi (открытый интерес)."),
         .takes = Text::tr("через запятую роль и номер её столбца, считая от 0; роли date, time, "
                           "open, high, low, close, volume, value, oi"),
         .isRequired = true},
        {.name = QStringLiteral("timeframe"),
         .value = Text::tr("СЕКУНДЫ"),
         .meaning = Text::tr("Длина бара. Из секундных баров строятся и минутные, в отдельный "
                             "файл."),
         .choices = {QString::number(vexdesk::minuteTimeframe),
                     QString::number(vexdesk::secondTimeframe)},
         .fallback = QString::number(vexdesk::minuteTimeframe)},
        separatorOption(),
        {.name = QStringLiteral("date-format"),
         .value = Text::tr("ВИД"),
         .meaning = Text::tr("Вид даты. Год из двух цифр — этого столетия."),
         .choices = patternsOf(dateFormats()),
         .fallback = QStringLiteral("yyyyMMdd")},
        {.name = QStringLiteral("time-format"),
         .value = Text::tr("ВИД"),
         .meaning = Text::tr("Вид времени."),
         .choices = patternsOf(timeFormats()),
         .fallback = QStringLiteral("hhmmss")},
        {.name = QStringLiteral("no-header"),
         .meaning = Text::tr("Первая строка — уже бар, а не заголовок.")}};
}

QList<Option> importOptions()
{
    return QList<Option>{seriesOption()} + layoutOptions() +
           QList<Option>{
               {.name = QStringLiteral("decimals"),
                .value = Text::tr("ЧИСЛО"),
                .meaning = Text::tr("Знаков после точки в ценах. Без него — как в справочнике; для "
                                    "инструмента, которого там нет, обязателен."),
                .takes = Text::tr("число от 0 до %1").arg(vexdesk::ReferenceData::maxDecimals)},
               {.name = QStringLiteral("undo-on-error"),
                .meaning = Text::tr(
                    "Если импорт закончится ошибкой или будет прерван, вернуть всё, что он "
                    "изменил.")},
               {.name = QStringLiteral("no-restore-point"),
                .meaning = Text::tr("Не сохранять того, что импорт заменяет.")},
               storeOption(),
               referenceOption(),
           } +
           storeJobOptions();
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
