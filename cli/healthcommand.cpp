// SPDX-License-Identifier: MIT
#include "commands.h"
#include "healthtext.h"
#include "progressbar.h"
#include "series.h"

#include "healthreport.h"
#include "storehealth.h"

#include <vexdesk/history/links.h>
#include <vexdesk/history/storepaths.h>

#include <functional>
#include <limits>
#include <memory>
#include <utility>

namespace tadata::cli {

namespace {

// The first day of the month of --month.
std::optional<QDate> parseMonth(const CommandLine& line)
{
    const std::optional<QString> text = line.value("month");
    if (!text)
        return std::nullopt;
    const QDate month = QDate::fromString(*text, QStringLiteral("yyyy-MM"));
    if (!month.isValid())
        line.refuse("month");
    return month;
}

// Each of them says what the output is, or what a calendar is of.
void refuseTogether(const CommandLine& line, const char* option,
                    std::initializer_list<const char*> others)
{
    for (const char* other : others) {
        if (line.isSet(option) && line.isSet(other))
            throw UsageError{Text::tr("--%1 и --%2 нельзя задать вместе")
                                 .arg(QLatin1String(option), QLatin1String(other))};
    }
}

HealthScope parseScope(const CommandLine& line)
{
    constexpr int most = anyNumberOfWords;
    HealthScope scope;
    scope.from = line.day("from").value_or(QDate());
    scope.to = line.day("to").value_or(QDate());
    if (scope.from.isValid() && scope.to.isValid() && scope.to < scope.from)
        line.refuse("to", Text::tr("раньше, чем --from %1").arg(line.text("from")));
    if (const std::optional<QDate> month = parseMonth(line)) {
        scope.from = *month;
        scope.to = month->addMonths(1).addDays(-1);
    }
    scope.gap = *line.number("gap", 1, most);
    scope.jumpPercent = *line.number("jump", 0, most);
    return scope;
}

HealthQuery parseQuery(const CommandLine& line)
{
    refuseTogether(line, "json", {"list", "month"});
    refuseTogether(line, "list", {"month"});
    refuseTogether(line, "month", {"from", "to"});
    HealthQuery query;
    for (const QString& name : line.positional()) {
        if (!seriesFrom(name))
            throw UsageError{
                Text::tr("«%1» — не серия; нужно: %2").arg(escaped(name), seriesOption().takes)};
        if (!query.series.contains(name))
            query.series.append(name);
    }
    if (line.isSet("timeframe"))
        query.timeframe = line.text("timeframe").toInt();
    query.scope = parseScope(line);
    return query;
}

// What the command prints, in UTF-8: it is given one series after the other.
class Report
{
public:
    Report() = default;
    virtual ~Report() = default;
    Q_DISABLE_COPY_MOVE(Report)

    virtual QByteArray begin() { return {}; }
    virtual QByteArray series(const SeriesHealth& health) = 0;
    virtual QByteArray end() { return {}; }
};

class JsonReport final : public Report
{
public:
    QByteArray begin() override { return "{\"series\":["; }
    QByteArray series(const SeriesHealth& health) override
    {
        const QByteArray text = healthReport(health).text();
        return std::exchange(m_isFirst, false) ? text : ',' + text;
    }
    QByteArray end() override { return "]}\n"; }

private:
    bool m_isFirst = true;
};

class ListReport final : public Report
{
public:
    QByteArray series(const SeriesHealth& health) override
    {
        QString text;
        for (const QDate& day : daysToAskFor(health)) {
            text += QStringLiteral("%1 %2 %3\n")
                        .arg(escaped(health.series))
                        .arg(health.timeframe)
                        .arg(day.toString(Qt::ISODate));
        }
        return text.toUtf8();
    }
};

class TextReport final : public Report
{
public:
    QByteArray series(const SeriesHealth& health) override
    {
        m_worst.add(health);
        return seriesLine(health).toUtf8() + '\n';
    }
    QByteArray end() override
    {
        const QStringList lines = m_worst.lines();
        return lines.isEmpty() ? QByteArray() : '\n' + lines.join(u'\n').toUtf8() + '\n';
    }

private:
    WorstDays m_worst;
};

// Whether the terminal can show more than ASCII. Qt itself goes on in UTF-8 whatever the locale is.
bool isLocaleAscii()
{
    QString locale;
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        if (locale.isEmpty())
            locale = qEnvironmentVariable(name);
    }
    return !locale.contains(QLatin1String("utf"), Qt::CaseInsensitive);
}

class MonthReport final : public Report
{
public:
    explicit MonthReport(const QDate& month)
        : m_month(month)
    {}

    QByteArray series(const SeriesHealth& health) override
    {
        return (seriesLine(health) + u'\n' + monthCalendar(health, m_month, m_inAscii) + u'\n')
            .toUtf8();
    }
    QByteArray end() override { return calendarLegend(m_inAscii).toUtf8() + '\n'; }

private:
    QDate m_month;
    bool m_inAscii = isLocaleAscii();
};

std::unique_ptr<Report> reportFor(const CommandLine& line)
{
    if (line.isSet("json"))
        return std::make_unique<JsonReport>();
    if (line.isSet("list"))
        return std::make_unique<ListReport>();
    if (const std::optional<QDate> month = parseMonth(line))
        return std::make_unique<MonthReport>(*month);
    return std::make_unique<TextReport>();
}

QString textOf(const UnreadFile& file)
{
    const QString path = escaped(file.path);
    switch (file.reason) {
    case UnreadFile::Reason::NotListed:
        return Text::tr("Невозможно прочитать каталог %1").arg(path);
    case UnreadFile::Reason::NotOpened:
        return vexdesk::isLostLink(file.path) ? vexdesk::lostLink(path).message
                                              : Text::tr("Невозможно открыть файл %1").arg(path);
    case UnreadFile::Reason::Changing:
        return Text::tr("Файл %1 изменился, пока его читали").arg(path);
    case UnreadFile::Reason::Broken:
        break;
    }
    return Text::tr("Невозможно прочитать файл %1: %2").arg(path, file.message);
}

// Reads the store and prints what is found. A failure also where something is wrong with a series.
ExitCode readAndPrint(StoreHealth& store, Report& report)
{
    bool isHealthy = true;
    std::vector<UnreadFile> unread;
    ExitCode printed = printUtf8(report.begin());
    const auto print = [&](const QByteArray& text) {
        if (printed == ExitCode::Success)
            printed = printUtf8(text);
    };
    {
        ProgressBar bar;
        unread = store.read(
            [&](const SeriesHealth& health) {
                isHealthy = isHealthy && !health.isWrong();
                print(report.series(health));
            },
            [&bar](int percent) { bar.show(percent); });
    }
    print(report.end());
    QStringList lost = store.lostLinks();
    for (const UnreadFile& file : unread) {
        printError(Text::tr("%1: серии нет в отчёте").arg(textOf(file)));
        lost.removeOne(file.path);
    }
    for (const QString& link : std::as_const(lost))
        printError(vexdesk::lostLink(escaped(link)).message);
    return unread.empty() && store.lostLinks().isEmpty() && isHealthy ? printed : ExitCode::Failure;
}

ExitCode runHealth(const CommandLine& line)
{
    const HealthQuery query = parseQuery(line);
    const std::optional<QString> given = parseStore(line);
    const QDir root = given ? QDir(*given) : vexdesk::storePlace();
    if (!root.exists())
        return fail(Text::tr("Нет каталога %1").arg(root.path()));
    StoreHealth store(root, query);
    for (const QString& directory : store.unlisted())
        printError(Text::tr("Невозможно прочитать каталог %1: того, что в нём, в отчёте нет")
                       .arg(escaped(directory)));
    // A series that is asked for may lie behind one; of the others the report tells.
    if (!store.notStored().isEmpty()) {
        for (const QString& link : store.lostLinks())
            printError(vexdesk::lostLink(escaped(link)).message);
    }
    for (const QString& name : store.notStored())
        printError(Text::tr("Серия %1 не хранится").arg(escaped(name)));
    if (store.unlisted().contains(root.path()) || !store.notStored().isEmpty())
        return ExitCode::Failure;
    const std::unique_ptr<Report> report = reportFor(line);
    const ExitCode found = readAndPrint(store, *report);
    return store.unlisted().isEmpty() ? found : ExitCode::Failure;
}

QList<Option> whatToReport()
{
    Option from = dayOption("from", Text::tr("Первый день отчёта. Сравниваются всегда все "
                                             "хранимые дни."));
    Option to = dayOption("to", Text::tr("Последний день отчёта."));
    return {
        storeOption(),
        {.name = QStringLiteral("timeframe"),
         .value = Text::tr("СЕКУНДЫ"),
         .meaning = Text::tr("Только бары этой длины."),
         .choices = QStringLiteral("60 1").split(u' ')},
        from,
        to,
        {.name = QStringLiteral("gap"),
         .value = Text::tr("ЧИСЛО"),
         .meaning = Text::tr("Сколько обычных времён подряд без бара — уже разрыв."),
         .takes = Text::tr("целое число от 1"),
         .fallback = QStringLiteral("5")},
        {.name = QStringLiteral("jump"),
         .value = Text::tr("ПРОЦЕНТЫ"),
         .meaning = Text::tr("Открытие бара, которое дальше от закрытия предыдущего бара дня, — "
                             "скачок."),
         .takes = Text::tr("целое число от 0"),
         .fallback = QStringLiteral("10")},
    };
}

QList<Option> howToReport()
{
    return {
        {.name = QStringLiteral("json"), .meaning = Text::tr("Отчёт для программ.")},
        {.name = QStringLiteral("list"),
         .meaning = Text::tr("Только то, что стоит запросить у брокера ещё раз: строка «СЕРИЯ "
                             "ТАЙМФРЕЙМ ДЕНЬ» на каждый день с разрывом и каждый пропущенный "
                             "день.")},
        {.name = QStringLiteral("month"),
         .value = Text::tr("МЕСЯЦ"),
         .meaning = Text::tr("Календарь покрытия этого месяца."),
         .takes = Text::tr("месяц вида 2024-01")},
    };
}

} // namespace

Command healthCommand()
{
    return {.name = QStringLiteral("health"),
            .words = Text::tr("[СЕРИЯ...]"),
            .mostWords = anyNumberOfWords,
            .summary = Text::tr("Найти, чего не хватает и что испорчено."),
            .description = Text::tr(
                "Ищет в хранимых сериях разрывы, пропущенные дни, строки, которые не записи "
                "баров, повторы времени, невозможные цены и скачки. Печатает строку на серию, "
                "затем худшие дни. Код завершения 1, когда что-нибудь найдено или не прочитано. "
                "Серия, которую нельзя прочитать, названа в стандартном выводе ошибок, остальные "
                "в отчёте. Ничего не меняет."),
            .options = whatToReport() + howToReport(),
            .example = QStringLiteral("tadata health ORIENT/FX/EURUSD --month 2024-01"),
            .run = runHealth};
}

} // namespace tadata::cli
