// SPDX-License-Identifier: MIT
// The command lines of all commands: what is wrong with one, and the help and the manual pages
// that say how they are written.

#include "commandtest.h"

#include "support/filetree.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace testsupport;

namespace {

constexpr char allColumns[] = "date=0,time=1,open=2,high=3,low=4,close=5";
constexpr char oneBar[] = "20240115,100000,1.5,1.7,1.4,1.6\n";
constexpr char oneRecord[] = "100000;1.50;1.70;1.40;1.60;0;0.00;0\n";

constexpr char seriesTakes[] = "три кода через «/», ни один из них не пустой, не «.» и не «..»";
constexpr char columnsTakes[] =
    "через запятую роль и номер её столбца, считая от 0; роли date, time, open, high, low, close, "
    "volume, value, oi, ticker";
constexpr char dateTakes[] =
    "вид, в котором есть число (d или dd), месяц (M или MM) и год (yy или yyyy); большие и малые "
    "буквы различаются";
constexpr char timeTakes[] =
    "вид, в котором есть часы (h или hh) и минуты (m или mm) и могут быть секунды (s или ss) и их "
    "доли (z или zzz); большие и малые буквы различаются";
constexpr char dayTakes[] = "дата вида 2024-01-31";

// How a wrong value is told; `why` says more than what the option takes.
QString wrongValue(const char* option, const QString& value, const char* takes,
                   const QString& why = QString())
{
    return QStringLiteral("--%1: неверное значение «%2»%3; нужно: %4")
        .arg(QLatin1String(option), value, why.isNull() ? QString() : QStringLiteral(": ") + why,
             QString::fromUtf8(takes));
}

// The options of the help, in its order.
QStringList optionsOf(const QByteArray& help)
{
    QStringList names;
    for (const QByteArray& line : help.split('\n')) {
        if (line.startsWith("  --"))
            names.append(QString::fromUtf8(line.mid(4).split(' ').first()));
    }
    return names;
}

void row(const char* name, const QStringList& line, const QByteArray& reason)
{
    QTest::newRow(name) << line << QString::fromUtf8(reason);
}

void value(const char* name, const QStringList& line, const char* option, const QString& given,
           const char* takes, const QString& why = QString())
{
    QTest::newRow(name) << line + QStringList{QStringLiteral("--") + QLatin1String(option), given}
                        << wrongValue(option, given, takes, why);
}

// Imports that lack columns, or nothing.
const QStringList shortestImport = words("import {file} --store {store} --no-header");
const QStringList knownImport = shortestImport + words("--series NORD/MAIN/ALFA");
const QStringList completeImport = knownImport + words("--columns") + words(allColumns);

QByteArray seriesUsage()
{
    return QByteArray("--series ПЛОЩАДКА/РЕЖИМ/ИНСТРУМЕНТ (") + seriesTakes + ")";
}

void addWrongWords()
{
    row("no command", {}, "нет команды");
    row("empty command", {QString()}, "нет команды");
    row("unknown command", words("convert {file}"), "неизвестная команда «convert»");
    row("command in capitals", words("IMPORT {file}"),
        "неизвестная команда «IMPORT»; похоже на import");
    row("option before the command", words("--store {store} list"),
        "неизвестная команда «--store»");

    row("unknown option", completeImport + words("--colums date=0"),
        "у команды import нет параметра --colums; похоже на --columns");
    row("unknown option with a value", completeImport + words("--force=1"),
        "у команды import нет параметра --force");
    row("unknown short option", completeImport + words("-x"), "у команды import нет параметра -x");
    row("option with one dash", completeImport + words("-decimals 2"),
        "у команды import нет параметра -decimals; похоже на --decimals");
    row("beginning of an option", completeImport + words("--dec 2"),
        "у команды import нет параметра --dec; похоже на --decimals");
    row("list with an option of import", words("list --store {store} --decimals 2"),
        "у команды list нет параметра --decimals");
    row("export with an option of import", words("export {out} --columns date=0"),
        "у команды export нет параметра --columns");
    row("no value after the last option", completeImport + words("--decimals"),
        "--decimals: нет значения; нужно: число от 0 до 15");
    row("list without the store's value", words("list --store"),
        "--store: нет значения; нужно: имя каталога");
    row("value for a switch", knownImport + words("--no-header=yes"),
        "--no-header не принимает значения: «yes»");
    row("option with a value twice", completeImport + words("--series NORD/MAIN/BARK"),
        "--series задан дважды: «NORD/MAIN/ALFA» и «NORD/MAIN/BARK»");
    row("the same value twice", completeImport + words("--decimals=2 --decimals 2"),
        "--decimals задан дважды: «2» и «2»");
    row("switch twice", completeImport + words("--no-header"), "--no-header задан дважды");
}

void addMissingAndSuperfluous()
{
    row("no file", words("import --series NORD/MAIN/ALFA --columns") + words(allColumns),
        "не задано: ФАЙЛ...");
    row("no series", shortestImport + words("--columns") + words(allColumns),
        "не задано: " + seriesUsage());
    row("nothing", words("import"), "не задано: ФАЙЛ..., " + seriesUsage());
    row("nothing to export", words("export"),
        QByteArray("не задано: ФАЙЛ, ") + seriesUsage() + ", --from ДЕНЬ (" + dayTakes +
            "), --to ДЕНЬ (" + dayTakes + ")");
    row("list with a word", words("list --store {store} NORD"), "лишнее слово «NORD»");
    row("escape in a word", QStringList(words("list") << QStringLiteral("\x1b[1m")),
        "лишнее слово «\\x1b[1m»");
}

void addWrongWays()
{
    value("mode", completeImport, "mode", QStringLiteral("add"), "replace, merge, fill");
    value("stamp", completeImport, "stamp", QStringLiteral("start"), "end, begin");
    for (const char* shift : {"1441", "-1441", "1.5", ""})
        value(qPrintable(QStringLiteral("shift '%1'").arg(QLatin1String(shift))), completeImport,
              "shift", QLatin1String(shift), "целое число от -1440 до 1440");
    constexpr char zoneTakes[] = "имя часового пояса, например Europe/Moscow";
    for (const char* zone : {"Moscow", "europe", "Europe/Moscow ", ""})
        value(qPrintable(QStringLiteral("zone '%1'").arg(QLatin1String(zone))),
              completeImport + words("--from-zone Europe/Moscow"), "to-zone", QLatin1String(zone),
              zoneTakes);
    row("one zone", completeImport + words("--from-zone Europe/Moscow"),
        QByteArray("--from-zone «Europe/Moscow» задан без --to-zone; нужно и то и другое: "
                   "--to-zone ПОЯС (") +
            zoneTakes + ")");
    value("rejects that are there", completeImport, "rejects", QStringLiteral("{file}"),
          "имя файла, которого ещё нет", QStringLiteral("такой файл уже есть"));
    row("rejects of two files", completeImport + words("{file} --rejects {out}"),
        wrongValue("rejects", QStringLiteral("{out}"), "имя файла, которого ещё нет",
                   QStringLiteral("он — только для одного файла"))
            .toUtf8());
    for (const char* jobs : {"0", "-1", "257", "two"})
        value(qPrintable(QStringLiteral("jobs '%1'").arg(QLatin1String(jobs))), completeImport,
              "jobs", QLatin1String(jobs), "число от 1 до 256");
    row("back without a point", completeImport + words("--undo-on-error --no-restore-point"),
        "--undo-on-error нельзя вместе с --no-restore-point");
    row("no column for the ticker",
        shortestImport + words("--series NORD/MAIN/{ticker} --columns") + words(allColumns),
        wrongValue("series", QStringLiteral("NORD/MAIN/{ticker}"), seriesTakes,
                   QStringLiteral("нет столбца с ролью «ticker»"))
            .toUtf8());
    for (const char* place : {"{tiker}", "{Ticker}", "{tick}", "{nmae}"}) {
        const QString series = QStringLiteral("NORD/MAIN/") + QLatin1String(place);
        const char* const meant = place[1] == 'n' ? "{name}" : "{ticker}";
        row(place, shortestImport + words("--series") + QStringList{series},
            wrongValue("series", series, seriesTakes,
                       QStringLiteral("такого места нет; похоже на ") + QLatin1String(meant))
                .toUtf8());
    }
    row("profile that is none", completeImport + words("--profile nobody"), "профиля «nobody» нет");
}

void addWrongValuesOfImport()
{
    for (const char* text : {"300", "0", "-1", "060", "60s", ""})
        value(qPrintable(QStringLiteral("timeframe '%1'").arg(QLatin1String(text))), completeImport,
              "timeframe", QLatin1String(text), "60, 1");
    constexpr char separatorTakes[] =
        "непустой текст без перевода строки или слово comma, semicolon, space, tab";
    value("separator empty", completeImport, "separator", QString(), separatorTakes);
    row("separator with a line feed",
        completeImport + QStringList{QStringLiteral("--separator=;\n")},
        wrongValue("separator", QStringLiteral(";\\x0a"), separatorTakes).toUtf8());
    row("separator with a carriage return",
        completeImport + QStringList{QStringLiteral("--separator"), QStringLiteral("\r")},
        wrongValue("separator", QStringLiteral("\\x0d"), separatorTakes).toUtf8());
    for (const char* text : {"yyyymmdd", "ггггммдд", "dd.MM", "dd.MM.y", "'yy'ddMM", ""})
        value(qPrintable(QStringLiteral("date format '%1'").arg(QString::fromUtf8(text))),
              completeImport, "date-format", QString::fromUtf8(text),
              "yyyyMMdd, yyMMdd, ddMMyy, dd.MM.yy, dd/MM/yy или другой вид, в котором есть число "
              "(d или dd), месяц (M или MM) и год (yy или yyyy); большие и малые буквы "
              "различаются");
    for (const char* text : {"mmss", "'h'mm", ""})
        value(qPrintable(QStringLiteral("time format '%1'").arg(QLatin1String(text))),
              completeImport, "time-format", QLatin1String(text),
              "hhmmss, hhmm, hh:mm:ss, hh:mm или другой вид, в котором есть часы (h или hh); "
              "большие и малые буквы различаются");
    addWrongWays();
    for (const char* text : {"-1", "16", "two", "2.0", "", "99999999999999999999"})
        value(qPrintable(QStringLiteral("decimals '%1'").arg(QLatin1String(text))), completeImport,
              "decimals", QLatin1String(text), "число от 0 до 15");
    value("import into an empty store name",
          words("import {file} --series NORD/MAIN/ALFA --columns") + words(allColumns), "store",
          QString(), "имя каталога");
    value("list of an empty store name", words("list"), "store", QString(), "имя каталога");

    for (const char* codes :
         {"NORD/MAIN/NOBODY", "NORD/NOWHERE/ALFA", "NOWHERE/MAIN/ALFA", "NORD/MAIN/alfa"}) {
        row(qPrintable(QStringLiteral("unknown series %1").arg(QLatin1String(codes))),
            shortestImport + words("--series") + words(codes) + words("--columns") +
                words(allColumns),
            QByteArray("инструмента ") + codes +
                " нет в справочнике: задайте --decimals, число знаков после точки в ценах");
    }
}

void addWrongExports()
{
    const QStringList someBars = words("export {out} --store {store} --series NORD/MAIN/ALFA");
    const QStringList aDay = someBars + words("--from 2024-01-15 --to 2024-01-15");
    row("no file to export to", aDay.mid(0, 1) + aDay.mid(2), "не задано: ФАЙЛ");
    row("no series to export", words("export {out} --from 2024-01-15 --to 2024-01-15"),
        "не задано: " + seriesUsage());
    row("no first day", someBars + words("--to 2024-01-15"),
        QByteArray("--to «2024-01-15» задан без --from; нужно и то и другое: --from ДЕНЬ (") +
            dayTakes + ")");
    row("no last day", someBars + words("--from 2024-01-15"),
        QByteArray("--from «2024-01-15» задан без --to; нужно и то и другое: --to ДЕНЬ (") +
            dayTakes + ")");
    row("no days", someBars,
        QByteArray("не задано: --from ДЕНЬ (") + dayTakes + "), --to ДЕНЬ (" + dayTakes + ")");
    value("day of another form", someBars + words("--to 2024-01-15"), "from",
          QStringLiteral("15.01.2024"), dayTakes);
    value("day that is none", someBars + words("--from 2024-01-15"), "to",
          QStringLiteral("2024-02-30"), dayTakes);
    value("reversed interval", someBars + words("--from 2024-01-16"), "to",
          QStringLiteral("2024-01-15"), dayTakes, QStringLiteral("раньше, чем --from 2024-01-16"));
    value("wrong today", aDay, "today", QStringLiteral("tomorrow"), dayTakes);
    value("first day after today", someBars + words("--to 2024-01-18 --today 2024-01-16"), "from",
          QStringLiteral("2024-01-17"), dayTakes,
          QStringLiteral("позже, чем сегодня, 2024-01-16: выгружать нечего"));
    value("first day after the real today", someBars + words("--to 9999-01-02"), "from",
          QStringLiteral("9999-01-01"), dayTakes,
          QStringLiteral("позже, чем сегодня, %1: выгружать нечего")
              .arg(QDate::currentDate().toString(Qt::ISODate)));
    value("deals of no file", aDay, "deals", QString(), "имя файла");
    value("no reference file", aDay, "reference", QString(), "имя файла");
    value("unknown timeframe", aDay, "timeframe", QStringLiteral("120"),
          "1, 60, 300, 600, 1800, 3600, 86400");
    // Capital D and Y and small m are no fields of a date to Qt, which would write them as they
    // are; three or four d are the name of a day of the week.
    for (const char* format :
         {"", "yyyydd", "yyyyMM", "dd.MM.y", "dd.MM.yyy", "ddMM'yy'", "yddMM", "MM''yyyy",
          "DDMMyyyy", "ddmmyyyy", "ddMMYYYY", "dddMMyy", "'d'MMyy", "dd'M'yy"})
        value(qPrintable(QStringLiteral("date '%1'").arg(QLatin1String(format))), aDay,
              "date-format", QLatin1String(format), dateTakes);
    for (const char* format : {"", "hhss", "mmss", "hhMM", "'h'mm", "hh'mm'"})
        value(qPrintable(QStringLiteral("time '%1'").arg(QLatin1String(format))), aDay,
              "time-format", QLatin1String(format), timeTakes);
}

} // namespace

class TadataCommandLineTest final : public CommandTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void helpNamesEveryOption_data();
    void helpNamesEveryOption();
    void generalHelpNamesEveryCommand_data();
    void generalHelpNamesEveryCommand();
    void pagesHaveTheOptionsOfTheHelp_data();
    void pagesHaveTheOptionsOfTheHelp();
    void pagesAreWellFormed_data();
    void pagesAreWellFormed();

    void wrongLineChangesNothing_data();
    void wrongLineChangesNothing();
    void wrongColumnsAreExplained_data();
    void wrongColumnsAreExplained();
    void wrongSeriesAreExplained_data();
    void wrongSeriesAreExplained();
    void patternsMayHaveOtherText_data();
    void patternsMayHaveOtherText();
    void inputIsNoOutput_data();
    void inputIsNoOutput();

    void wordsAfterTwoDashesAreFiles();
    void optionValuesMayBeginWithADash();
    void optionValuesMayFollowAnEqualsSign();

private:
    QStringList filled(const QStringList& pattern) const;
    void refuses(const QStringList& line, const QString& reason) const;
};

void TadataCommandLineTest::init()
{
    CommandTest::init();
    writeFile(path("bars.csv"), oneBar);
    writeFile(path("store/NORD/MAIN/ALFA/20240115_60.iss"), oneRecord);
}

// The command line with the names of this test's files and its store filled in.
QStringList TadataCommandLineTest::filled(const QStringList& pattern) const
{
    QStringList result = pattern;
    result.replaceInStrings(QStringLiteral("{file}"), path("bars.csv"));
    result.replaceInStrings(QStringLiteral("{out}"), path("out.txt"));
    result.replaceInStrings(QStringLiteral("{store}"), path("store"));
    return result;
}

void TadataCommandLineTest::refuses(const QStringList& line, const QString& reason) const
{
    const Tree files = readTree(directory());
    const QStringList directories = readDirectories(directory());
    QCOMPARE(runTadata(filled(line)), refused(reason));
    QCOMPARE(readTree(directory()), files);
    QCOMPARE(readDirectories(directory()), directories);
}

void TadataCommandLineTest::helpNamesEveryOption_data()
{
    QTest::addColumn<QStringList>("line");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QStringList>("mentioned");

    const QStringList import =
        words("series profile columns timeframe separator date-format time-format no-header "
              "decimals mode stamp from-zone to-zone shift skip-bad rejects jobs stop "
              "undo-on-error no-restore-point store reference wait keep keep-megabytes");
    const QStringList exporting =
        words("series from to timeframe line-format separator date-format "
              "time-format no-header finished-only store deals today reference");
    const QStringList mentioned = words("yyMMdd hh:mm:ss semicolon oi");
    QTest::newRow("import --help") << words("import --help") << import << mentioned;
    QTest::newRow("import -h") << words("import -h") << import << mentioned;
    QTest::newRow("export --help") << words("export --help") << exporting << words("OPEN_INT");
    QTest::newRow("list --help") << words("list --help") << words("store") << words("\\u2028");
    QTest::newRow("points --help")
        << words("points --help") << words("store json") << QStringList();
    QTest::newRow("undo --help") << words("undo --help")
                                 << words("dry-run force store wait keep keep-megabytes")
                                 << QStringList();
    QTest::newRow("delete --help")
        << words("delete --help") << words("from to timeframe all store wait keep keep-megabytes")
        << words("tadata undo");
    for (const char* name : {"copy", "rename"})
        QTest::addRow("%s --help", name)
            << QStringList({QLatin1String(name), words("--help")[0]})
            << words("store wait keep keep-megabytes") << QStringList();
    QTest::newRow("unlock --help")
        << words("unlock --help") << words("store force") << QStringList();
    QTest::newRow("help wins over a wrong line")
        << words("import --nonsense --help") << import << mentioned;
}

void TadataCommandLineTest::helpNamesEveryOption()
{
    QFETCH(const QStringList, line);
    QFETCH(const QStringList, options);
    QFETCH(const QStringList, mentioned);
    const Outcome outcome = runTadata(line);
    QCOMPARE(outcome, succeeded(outcome.out));
    QCOMPARE(optionsOf(outcome.out), options);
    for (const QString& word : mentioned)
        QVERIFY2(outcome.out.contains(word.toUtf8()), qPrintable(word));
}

void TadataCommandLineTest::generalHelpNamesEveryCommand_data()
{
    QTest::addColumn<QString>("word");
    QTest::newRow("--help") << QStringLiteral("--help");
    QTest::newRow("-h") << QStringLiteral("-h");
}

void TadataCommandLineTest::generalHelpNamesEveryCommand()
{
    QFETCH(const QString, word);
    const Outcome outcome = runTadata({word});
    QCOMPARE(outcome, succeeded(outcome.out));
    for (const char* mentioned :
         {"tadata import", "tadata export", "tadata list", "tadata health", "tadata points",
          "tadata undo", "tadata delete", "tadata copy", "tadata rename", "tadata unlock",
          "tadata guess", "tadata profile", "--version"})
        QVERIFY2(outcome.out.contains(mentioned), mentioned);
}

void TadataCommandLineTest::pagesHaveTheOptionsOfTheHelp_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("command");
    for (const char* command : {"import", "export", "list", "health", "points", "undo", "delete",
                                "copy", "rename", "unlock", "guess", "profile"}) {
        QTest::addRow("%s, English", command)
            << QStringLiteral(MANUAL_PAGES "/man1/tadata.1") << QStringLiteral("en")
            << QString::fromLatin1(command);
        QTest::addRow("%s, Russian", command)
            << QStringLiteral(MANUAL_PAGES "/ru/man1/tadata.1") << QStringLiteral("ru")
            << QString::fromLatin1(command);
    }
}

// Each option with all that the help says of it. A command is described as well, by hand.
void TadataCommandLineTest::pagesHaveTheOptionsOfTheHelp()
{
    QFETCH(const QString, page);
    QFETCH(const QString, language);
    QFETCH(const QString, command);
    QProcessEnvironment environment = plainEnvironment();
    environment.insert(QStringLiteral("TADATA_LANGUAGE"), language);
    const Outcome help = runTadata(QStringList{command, QStringLiteral("--help")}, environment);
    const auto simplified = [](const QString& text) {
        static const QRegularExpression marks(QStringLiteral(R"(\\f[BIR])"));
        QString plain = text;
        plain.remove(marks).replace(QStringLiteral("\\-"), QStringLiteral("-"));
        return plain.replace(QStringLiteral("\\e"), QStringLiteral("\\")).simplified();
    };

    const QString text = QString::fromUtf8(readFile(page));
    QVERIFY(text.contains(QStringLiteral("\n.SS %1\n").arg(command)));
    const qsizetype begin = text.indexOf(QStringLiteral("\n.SS tadata %1\n").arg(command));
    QVERIFY(begin >= 0);
    const QString section =
        text.mid(begin, text.indexOf(QStringLiteral("\n.S"), begin + 1) - begin);
    const QStringList entries = section.split(QStringLiteral("\n.TP\n")).mid(1);
    const QString options = QString::fromUtf8(help.out);
    QCOMPARE(entries.size(), optionsOf(help.out).size());
    for (const QString& entry : entries)
        QVERIFY2(simplified(options).contains(simplified(entry)), qPrintable(entry));
}

void TadataCommandLineTest::pagesAreWellFormed_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("heading");
    QTest::newRow("English") << QStringLiteral(MANUAL_PAGES "/man1/tadata.1")
                             << QStringLiteral("OPTIONS");
    QTest::newRow("Russian") << QStringLiteral(MANUAL_PAGES "/ru/man1/tadata.1")
                             << QStringLiteral("ПАРАМЕТРЫ");
}

// Nothing is left to be filled in, and nothing begins with a point that is no request.
void TadataCommandLineTest::pagesAreWellFormed()
{
    QFETCH(const QString, page);
    QFETCH(const QString, heading);
    const QString text = QString::fromUtf8(readFile(page));
    QVERIFY(text.contains(QStringLiteral(".SH %1\n").arg(heading)));
    QVERIFY(text.contains(QStringLiteral("eurusd.csv")));
    QVERIFY(!text.contains(u'@'));
    static const QRegularExpression request(
        QStringLiteral(R"(^(\.(TH|SH|SS|PP|TP|B|BR|I|IR|BI|br|nf|fi)\b|[^.'].*|$))"));
    for (const QString& line : text.split(u'\n'))
        QVERIFY2(request.match(line).hasMatch(), qPrintable(line));
}

void TadataCommandLineTest::wrongLineChangesNothing_data()
{
    QTest::addColumn<QStringList>("line");
    QTest::addColumn<QString>("reason");
    addWrongWords();
    addMissingAndSuperfluous();
    addWrongValuesOfImport();
    addWrongExports();
}

void TadataCommandLineTest::wrongLineChangesNothing()
{
    QFETCH(const QStringList, line);
    QFETCH(const QString, reason);
    refuses(line, filled({reason}).first());
}

void TadataCommandLineTest::wrongColumnsAreExplained_data()
{
    QTest::addColumn<QString>("columns");
    QTest::addColumn<QString>("why");
    const auto row = [](const char* name, const QString& columns, const char* why) {
        QTest::newRow(name) << columns << QString::fromUtf8(why);
    };
    const QString correct = QLatin1String(allColumns);
    row("empty", QStringLiteral(""), "роли «» нет");
    row("unknown role", correct + QStringLiteral(",openinterest=6"), "роли «openinterest» нет");
    row("role in capitals", correct + QStringLiteral(",OI=6"), "роли «OI» нет");
    row("comma at the end", correct + QStringLiteral(","), "роли «» нет");
    row("no role", QStringLiteral("=0"), "роли «» нет");
    row("no number", QStringLiteral("date"), "«date» не называет номера столбца");
    row("empty number", QStringLiteral("date="), "«date=» не называет номера столбца");
    row("negative number", QStringLiteral("date=-1"), "«date=-1» не называет номера столбца");
    row("letters for a number", QStringLiteral("date=A"), "«date=A» не называет номера столбца");
    row("two equals signs", QStringLiteral("date=0=1"), "«date=0=1» не называет номера столбца");
    row("number beyond 32 bits", QStringLiteral("date=4294967296"),
        "«date=4294967296» не называет номера столбца");
    row("role twice", correct + QStringLiteral(",date=6"), "роль «date» названа дважды");
    row("one column twice", correct + QStringLiteral(",volume=5"), "столбец 5 назначен дважды");
    for (const char* role : {"date", "time", "open", "high", "low", "close"}) {
        QStringList rest = correct.split(u',');
        rest.removeIf([role](const QString& part) { return part.startsWith(QLatin1String(role)); });
        QTest::addRow("no %s", role)
            << rest.join(u',') << QStringLiteral("нет роли «%1»").arg(QLatin1String(role));
    }
}

void TadataCommandLineTest::wrongColumnsAreExplained()
{
    QFETCH(const QString, columns);
    QFETCH(const QString, why);
    refuses(importLine(path("bars.csv"), {QStringLiteral("--columns"), columns}),
            wrongValue("columns", columns, columnsTakes, why));
}

void TadataCommandLineTest::wrongSeriesAreExplained_data()
{
    QTest::addColumn<QString>("series");
    for (const char* series :
         {"", "NORD", "NORD/MAIN", "NORD/MAIN/ALFA/X", "NORD/MAIN/ALFA/", "/NORD/MAIN/ALFA", "//",
          "/MAIN/ALFA", "NORD//ALFA", "NORD/MAIN/", "./MAIN/ALFA", "NORD/./ALFA", "NORD/MAIN/.",
          "../MAIN/ALFA", "NORD/../ALFA", "NORD/MAIN/.."})
        QTest::addRow("'%s'", series) << QString::fromLatin1(series);
}

void TadataCommandLineTest::wrongSeriesAreExplained()
{
    QFETCH(const QString, series);
    const QStringList option{QStringLiteral("--series"), series};
    const QString reason = wrongValue("series", series, seriesTakes);
    refuses(importLine(path("bars.csv"), option + words("--decimals 2")), reason);
    refuses(exportLine(path("out.txt"), option), reason);
}

void TadataCommandLineTest::patternsMayHaveOtherText_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QByteArray>("written");
    const auto row = [](const char* option, const char* pattern, const char* written) {
        QTest::addRow("%s %s", option, pattern)
            << QString::fromLatin1(option) << QString::fromLatin1(pattern) << QByteArray(written);
    };
    row("--date-format", "d.M.yy", "15.1.24");
    row("--date-format", "dd-MMM-yyyy ddd", "15-Jan-2024 Mon");
    row("--date-format", "'day'dd''MM''yyyy", "day15'01'2024");
    row("--time-format", "H:m", "10:0");
    row("--time-format", "hh'h'mm''ss.zzz", "10h00'00.000");
}

void TadataCommandLineTest::patternsMayHaveOtherText()
{
    QFETCH(const QString, option);
    QFETCH(const QString, pattern);
    QFETCH(const QByteArray, written);
    const QStringList options{
        option, pattern, QStringLiteral("--no-header"), QStringLiteral("--line-format"),
        option == u"--date-format" ? QStringLiteral("DATE,CLOSE") : QStringLiteral("TIME,CLOSE")};
    QCOMPARE(runTadata(exportLine(path("out.txt"), options)), succeeded());
    QCOMPARE(readFile(path("out.txt")), "\xef\xbb\xbf" + written + ",1.60\n");
}

void TadataCommandLineTest::inputIsNoOutput_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<bool>("isLink");
    for (const char* option : {"deals", "reference"}) {
        QTest::addRow("%s", option) << QString::fromLatin1(option) << false;
        QTest::addRow("%s by a link", option) << QString::fromLatin1(option) << true;
    }
}

void TadataCommandLineTest::inputIsNoOutput()
{
    QFETCH(const QString, option);
    QFETCH(const bool, isLink);
    const QString input = path("input.txt");
    writeFile(input, "moment_ms_utc,price,quantity\n1705312800000,5,2\n");
    const QString output = isLink ? path("link.txt") : input;
    QVERIFY(!isLink || QFile::link(input, output));
    refuses(exportLine(output, {QStringLiteral("--") + option, input}),
            wrongValue(qPrintable(option), input, "имя файла",
                       QStringLiteral("это и файл %1, который был бы записан").arg(output)));
}

void TadataCommandLineTest::wordsAfterTwoDashesAreFiles()
{
    writeFile(path("--bars.csv"), oneBar);
    const QStringList line =
        importLine(QStringLiteral("--"), words("--store store --series NORD/MAIN/BARK"));
    QCOMPARE(runTadata(line.mid(0, 1) + line.mid(2) + words("-- --bars.csv"), plainEnvironment(),
                       m_dir->path()),
             succeeded());
    QCOMPARE(readFile(path("store/NORD/MAIN/BARK/20240115_60.iss")), QByteArray(oneRecord));
}

void TadataCommandLineTest::optionValuesMayBeginWithADash()
{
    QCOMPARE(import("20240116-100000-1.5-1.7-1.4-1.6\n", words("--separator -")), succeeded());
    QCOMPARE(readFile(path("store/NORD/MAIN/ALFA/20240116_60.iss")), QByteArray(oneRecord));
}

// The value of --columns has such signs of its own.
void TadataCommandLineTest::optionValuesMayFollowAnEqualsSign()
{
    const QStringList line = words("import {file} --store={store} --no-header --decimals=2 "
                                   "--series=NORD/MAIN/BARK");
    const QString columns = QStringLiteral("--columns=") + QLatin1String(allColumns);
    QCOMPARE(runTadata(filled(line) << columns), succeeded());
    QCOMPARE(readFile(path("store/NORD/MAIN/BARK/20240115_60.iss")), QByteArray(oneRecord));
}

QTEST_GUILESS_MAIN(TadataCommandLineTest)
#include "tst_tadatacommandline.moc"
