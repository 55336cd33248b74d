// SPDX-License-Identifier: MIT
#include "importoptions.h"

#include "textformats.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/terminal/referencedata.h>

#include <array>
#include <limits>

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

} // namespace

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

ImportDetails parseLayout(const CommandLine& line)
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

Option decimalsOption()
{
    return {.name = QStringLiteral("decimals"),
            .value = Text::tr("ЧИСЛО"),
            .meaning = Text::tr("Знаков после точки в ценах. Без него — как в справочнике; для "
                                "инструмента, которого там нет, обязателен."),
            .takes = Text::tr("число от 0 до %1").arg(vexdesk::ReferenceData::maxDecimals)};
}

std::optional<int> parseDecimals(const CommandLine& line)
{
    return line.number("decimals", 0, vexdesk::ReferenceData::maxDecimals);
}

} // namespace tadata::cli
