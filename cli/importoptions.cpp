// SPDX-License-Identifier: MIT
#include "importoptions.h"

#include "guesstext.h"

#include "optionwords.h"
#include "patterns.h"
#include "seriespattern.h"

#include "textformats.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QFileInfo>
#include <QtCore/QTimeZone>

namespace tadata::cli {

using vexdesk::Result;

namespace {

QMap<qint32, qint32> parseColumns(const CommandLine& line)
{
    const Result<QMap<qint32, qint32>> columns = columnsOfWord(line.text("columns"));
    if (!columns)
        line.refuse("columns", escaped(columns.message()));
    return *columns;
}

QStringList patternsOf(const QList<TextFormat>& formats)
{
    QStringList patterns;
    for (const TextFormat& format : formats)
        patterns.append(format.pattern);
    return patterns;
}

// One that the wizard does not offer has no title: it stands for itself.
QString titleOf(const QString& pattern, const QList<TextFormat>& formats)
{
    const qsizetype place = patternsOf(formats).indexOf(pattern);
    return place < 0 ? pattern : formats[place].title;
}

QString listedPatterns(const QList<TextFormat>& formats)
{
    return patternsOf(formats).join(QStringLiteral(", "));
}

QTimeZone parseZone(const CommandLine& line, const char* option)
{
    const std::optional<QString> name = line.value(option);
    if (!name)
        return {};
    const QByteArray id = name->toUtf8();
    QTimeZone zone(id);
    if (!QTimeZone::isTimeZoneIdAvailable(id) || !zone.isValid())
        line.refuse(option);
    return zone;
}

FileClock parseClock(const CommandLine& line)
{
    constexpr int minutesOfDay = 24 * 60;
    FileClock clock;
    clock.stampsBegin = line.text("stamp") == u"begin";
    clock.from = parseZone(line, "from-zone");
    clock.to = parseZone(line, "to-zone");
    clock.shiftMinutes = line.number("shift", -minutesOfDay, minutesOfDay).value_or(0);
    return clock;
}

// What is there must not be written over, a link to nothing neither.
QString parseRejects(const CommandLine& line)
{
    const std::optional<QString> path = line.value("rejects");
    if (!path)
        return {};
    if (path->isEmpty())
        line.refuse("rejects");
    const QFileInfo file(*path);
    if (file.exists() || file.isSymLink())
        line.refuse("rejects", Text::tr("такой файл уже есть"));
    return *path;
}

Option zoneOption(const char* name, const char* other, const QString& meaning)
{
    return {.name = QLatin1String(name),
            .value = Text::tr("ПОЯС"),
            .meaning = meaning,
            .takes = Text::tr("имя часового пояса, например Europe/Moscow"),
            .partner = QLatin1String(other)};
}

Option rejectsOption()
{
    return {.name = QStringLiteral("rejects"),
            .value = Text::tr("ФАЙЛ"),
            .meaning = Text::tr("Куда записать пропущенные ошибочные строки, байт в байт, после "
                                "заголовка исходного файла. Создаётся с первой из них; включает "
                                "--skip-bad. Только для одного файла."),
            .takes = Text::tr("имя файла, которого ещё нет")};
}

Option columnsOption()
{
    return {
        .name = QStringLiteral("columns"),
        .value = Text::tr("РОЛЬ=СТОЛБЕЦ,..."),
        .meaning = Text::tr("Что несёт каждый столбец. Роли date, time, open, high, low и close "
                            "обязательны; могут быть volume (объём в штуках), value (объём в "
                            "деньгах), oi (открытый интерес) и ticker (код для {ticker}). Без "
                            "него вид файла, который не задан, угадывается, как командой guess."),
        .takes = Text::tr("через запятую роль и номер её столбца, считая от 0; роли date, time, "
                          "open, high, low, close, volume, value, oi, ticker")};
}

void setDateFormat(ImportDetails& details, const QString& pattern)
{
    details.dateFormat = pattern;
    details.dateFormatTitle = titleOf(pattern, dateFormats());
}

void setTimeFormat(ImportDetails& details, const QString& pattern)
{
    details.timeFormat = pattern;
    details.timeFormatTitle = titleOf(pattern, timeFormats());
}

QString parseTimeFormat(const CommandLine& line)
{
    QString pattern = line.text("time-format");
    if (!hasHours(pattern))
        line.refuse("time-format");
    return pattern;
}

ImportDetails parseForms(const CommandLine& line)
{
    ImportDetails details;
    details.timeframe = line.text("timeframe").toInt();
    details.separator = parseSeparator(line);
    setDateFormat(details, parseDateFormat(line));
    setTimeFormat(details, parseTimeFormat(line));
    details.firstLineIsHeader = !line.isSet("no-header");
    return details;
}

ImportDetails detailsOf(const FormatGuess& guess)
{
    ImportDetails details;
    details.timeframe = guess.timeframe;
    details.separator = guess.separator.value_or(QString());
    setDateFormat(details, guess.dateFormat.value_or(QString()));
    setTimeFormat(details, guess.timeFormat.value_or(QString()));
    details.firstLineIsHeader = guess.hasHeader;
    details.columns = guess.columns;
    return details;
}

// Nothing is taken that was not found for certain.
[[noreturn]] void refuseGuess(const QString& file, const FormatGuess& guess)
{
    QStringList lines{Text::tr("вид файла %1 угадать не удалось; задайте --columns и остальное")
                          .arg(escaped(file))};
    lines += guessTroubles(guess);
    for (const QString& alternative : guessedAlternatives(guess))
        lines.append(QStringLiteral("  ") + alternative);
    throw UsageError{lines.join(u'\n')};
}

Result<FileLayout> guessedLayout(const CommandLine& line, const QString& file)
{
    const Result<FormatGuess> guess = guessFormat(file, parseHints(line));
    if (!guess)
        return guess.failure();
    if (!guess->isEnough())
        refuseGuess(file, *guess);
    QStringList note{Text::tr("Взято для файла %1: %2").arg(escaped(file), guessedOptions(*guess))};
    note += guessTroubles(*guess);
    if (!guess->unused.isEmpty())
        note.append(Text::tr("Столбцы, которые не взяты: %1; нужный называют в --columns")
                        .arg(escaped(guess->unused.join(QStringLiteral(", ")))));
    if (guess->decimals && !line.isSet("decimals"))
        note.append(Text::tr("Для инструмента, которого нет в справочнике: --decimals %1")
                        .arg(*guess->decimals));
    return FileLayout{detailsOf(*guess), guess->decimals, note.join(u'\n')};
}

} // namespace

Option seriesPatternOption()
{
    Option option = seriesOption();
    option.meaning += u' ' + Text::tr("На месте {name} — имя файла до последней точки, на месте "
                                      "{ticker} — код из столбца с ролью ticker.");
    return option;
}

QList<Option> layoutOptions()
{
    return QList<Option>{columnsOption()} + formOptions();
}

QList<Option> formOptions()
{
    return {
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
         .takes = Text::tr("%1 или другой вид, в котором есть число (d или dd), месяц (M или MM) "
                           "и год (yy или yyyy); большие и малые буквы различаются")
                      .arg(listedPatterns(dateFormats())),
         .fallback = QStringLiteral("yyyyMMdd")},
        {.name = QStringLiteral("time-format"),
         .value = Text::tr("ВИД"),
         .meaning = Text::tr("Вид времени."),
         .takes = Text::tr("%1 или другой вид, в котором есть часы (h или hh); большие и малые "
                           "буквы различаются")
                      .arg(listedPatterns(timeFormats())),
         .fallback = QStringLiteral("hhmmss")},
        {.name = QStringLiteral("no-header"),
         .meaning = Text::tr("Первая строка — уже бар, а не заголовок.")}};
}

GuessHints parseHints(const CommandLine& line)
{
    GuessHints hints;
    if (line.isSet("separator"))
        hints.separator = parseSeparator(line);
    if (line.isSet("date-format"))
        hints.dateFormat = parseDateFormat(line);
    if (line.isSet("time-format"))
        hints.timeFormat = parseTimeFormat(line);
    if (line.isSet("timeframe"))
        hints.timeframe = line.text("timeframe").toInt();
    if (line.isSet("no-header"))
        hints.hasHeader = false;
    return hints;
}

Result<FileLayout> layoutOf(const CommandLine& line, const QString& file)
{
    Result<FileLayout> layout = FileLayout();
    if (line.isSet("columns")) {
        layout->details = parseForms(line);
        layout->details.columns = parseColumns(line);
    } else {
        layout = guessedLayout(line, file);
    }
    constexpr auto ticker = static_cast<qint32>(ColumnRole::Ticker);
    const bool takesTicker = SeriesPattern(line.text("series")).hasTicker();
    if (layout && !takesTicker && layout->details.columns.contains(ticker) &&
        !line.isSet("columns"))
        layout->note +=
            u'\n' + Text::tr("В файле есть столбец инструментов: если их в нём несколько, "
                             "для каждого нужна своя серия — {ticker} в --series");
    if (layout && takesTicker && !layout->details.columns.contains(ticker))
        line.refuse("series", Text::tr("нет столбца с ролью «ticker»"));
    if (layout && !takesTicker)
        layout->details.columns.remove(ticker);
    return layout;
}

Option decimalsOption()
{
    return {.name = QStringLiteral("decimals"),
            .value = Text::tr("ЧИСЛО"),
            .meaning = Text::tr("Знаков после точки в ценах. Без него — как в справочнике; для "
                                "инструмента, которого там нет, — как в файле, а с --columns "
                                "обязателен."),
            .takes = Text::tr("число от 0 до %1").arg(vexdesk::ReferenceData::maxDecimals)};
}

QList<Option> wayOptions()
{
    return {
        {.name = QStringLiteral("mode"),
         .value = Text::tr("СПОСОБ"),
         .meaning = Text::tr("Что станет с хранимыми барами тех же дней: replace — дни файла "
                             "заменяются целиком; merge — бары файла добавляются и заменяют бары "
                             "с тем же временем; fill — добавляются только бары, времени которых "
                             "в хранилище нет."),
         .choices = {QStringLiteral("replace"), QStringLiteral("merge"), QStringLiteral("fill")},
         .fallback = QStringLiteral("replace")},
        {.name = QStringLiteral("stamp"),
         .value = Text::tr("КОНЕЦ"),
         .meaning = Text::tr("Какое время стоит у баров файла: конца бара (end) или его начала "
                             "(begin); к началу прибавляется длина бара."),
         .choices = {QStringLiteral("end"), QStringLiteral("begin")},
         .fallback = QStringLiteral("end")},
        zoneOption("from-zone", "to-zone", Text::tr("По часам какого пояса время в файле.")),
        zoneOption("to-zone", "from-zone", Text::tr("По часам какого пояса время в хранилище.")),
        {.name = QStringLiteral("shift"),
         .value = Text::tr("МИНУТЫ"),
         .meaning = Text::tr("Сколько минут прибавить ко времени, после смены пояса."),
         .takes = Text::tr("целое число от -1440 до 1440")},
        {.name = QStringLiteral("skip-bad"),
         .meaning = Text::tr("Ошибочные строки пропускать; в конце печатается, сколько баров, дней "
                             "и ошибочных строк.")},
        rejectsOption()};
}

ImportWays parseWays(const CommandLine& line)
{
    ImportWays ways;
    const QString mode = line.text("mode");
    if (mode == u"merge")
        ways.mode = ImportMode::Merge;
    else if (mode == u"fill")
        ways.mode = ImportMode::Fill;
    ways.clock = parseClock(line);
    ways.rejects = parseRejects(line);
    ways.skipsBad = line.isSet("skip-bad");
    return ways;
}

QList<Option> safetyOptions()
{
    return {{.name = QStringLiteral("undo-on-error"),
             .meaning = Text::tr("Если импорт закончится ошибкой или будет прерван, вернуть всё, "
                                 "что он изменил.")},
            {.name = QStringLiteral("no-restore-point"),
             .meaning = Text::tr("Не сохранять того, что импорт заменяет.")}};
}

Option profileOption()
{
    return {.name = QStringLiteral("profile"),
            .value = Text::tr("ИМЯ"),
            .meaning = Text::tr("Параметры, сохранённые командой tadata profile save. Заданные в "
                                "командной строке важнее."),
            .takes = Text::tr("имя профиля")};
}

void checkOptions(const CommandLine& line)
{
    if (line.isSet("columns"))
        parseColumns(line);
    parseForms(line);
    parseClock(line);
    parseDecimals(line);
}

std::optional<int> parseDecimals(const CommandLine& line)
{
    return line.number("decimals", 0, vexdesk::ReferenceData::maxDecimals);
}

} // namespace tadata::cli
