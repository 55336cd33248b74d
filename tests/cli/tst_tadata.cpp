// SPDX-License-Identifier: MIT
// The program around its commands: the command line, help, the list of the store, and what the
// program needs of its surroundings.

#include "tadatarunner.h"

#include "support/filetree.h"
#include "support/otheruser.h"
#include "support/strictlog.h"

#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <array>
#include <cstdlib>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace testsupport;

namespace {

constexpr char allColumns[] = "date=0,time=1,open=2,high=3,low=4,close=5";
constexpr char oneBar[] = "20240115,100000,1.5,1.7,1.4,1.6\n";
constexpr char oneRecord[] = "100000;1.50;1.70;1.40;1.60;0;0.00;0\n";

QString correctColumns()
{
    return QLatin1String(allColumns);
}

// A program of its own copy, so that its default store is nobody else's.
QString copyProgram(const QDir& dir)
{
    const QString program = dir.filePath(QStringLiteral("tadata"));
    return QFile::copy(tadataProgram(), program) ? program : QString();
}

} // namespace

class TadataTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void helpIsPrintedOnRequest_data();
    void helpIsPrintedOnRequest();
    void versionIsPrinted();
    void outputThatCannotBeWrittenIsAFailure_data();
    void outputThatCannotBeWrittenIsAFailure();

    void wrongCommandLineChangesNothing_data();
    void wrongCommandLineChangesNothing();
    void wordsAfterTwoDashesAreFiles();
    void optionValuesMayBeginWithADash();

    void listShowsEverySeriesAndTimeframe();
    void listPassesOverForeignFiles();
    void listOfAnEmptyStoreIsEmpty();
    void listOfAMissingStoreFails();
    void listNamesWhatItCannotRead();
    void listShowsEveryNameOnItsOwnLine();
    void listTakesTheCurrentDirectoryAsBase();
    void listTakesNothingElseForTheStore_data();
    void listTakesNothingElseForTheStore();

    void defaultStoreIsBesideAPortableProgram();
    void defaultStoreOfAnInstalledProgramIsTheUsers();
    void referenceDataBesideTheProgramAreUsed();

    void everyLocaleGivesTheSameOutput_data();
    void everyLocaleGivesTheSameOutput();
    void progressIsDrawnOnATerminal();
    void noWindowLibraryIsLoaded();

private:
    QString path(const char* name) const { return m_dir->filePath(QString::fromUtf8(name)); }
    // The command line with the names of this test's file and store filled in.
    QStringList filled(const QStringList& pattern) const;

    std::unique_ptr<QTemporaryDir> m_dir;
};

void TadataTest::init()
{
    failOnStrayWarnings();
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    writeFile(path("bars.csv"), oneBar);
}

void TadataTest::cleanup()
{
    m_dir.reset();
}

QStringList TadataTest::filled(const QStringList& pattern) const
{
    QStringList result = pattern;
    for (QString& word : result) {
        if (word == u"{file}")
            word = path("bars.csv");
        else if (word == u"{store}")
            word = path("store");
    }
    return result;
}

void TadataTest::helpIsPrintedOnRequest_data()
{
    QTest::addColumn<QStringList>("line");
    QTest::addColumn<QStringList>("mentioned");

    const QStringList general{QStringLiteral("tadata import"), QStringLiteral("tadata export"),
                              QStringLiteral("tadata list"), QStringLiteral("--version")};
    const QStringList import{
        QStringLiteral("--series"),      QStringLiteral("--columns"),
        QStringLiteral("--timeframe"),   QStringLiteral("--separator"),
        QStringLiteral("--date-format"), QStringLiteral("--time-format"),
        QStringLiteral("--no-header"),   QStringLiteral("--decimals"),
        QStringLiteral("--store"),       QStringLiteral("--reference"),
        QStringLiteral("yyMMdd"),        QStringLiteral("hh:mm:ss"),
        QStringLiteral("semicolon"),     QStringLiteral("oi"),
    };
    const QStringList exporting{
        QStringLiteral("--series"),      QStringLiteral("--from"),
        QStringLiteral("--to"),          QStringLiteral("--timeframe"),
        QStringLiteral("--line-format"), QStringLiteral("--separator"),
        QStringLiteral("--date-format"), QStringLiteral("--time-format"),
        QStringLiteral("--no-header"),   QStringLiteral("--store"),
        QStringLiteral("--deals"),       QStringLiteral("--today"),
        QStringLiteral("--reference"),   QStringLiteral("OPEN_INT"),
    };
    const QStringList list{QStringLiteral("tadata list"), QStringLiteral("--store")};
    QTest::newRow("--help") << words("--help") << general;
    QTest::newRow("-h") << words("-h") << general;
    QTest::newRow("import --help") << words("import --help") << import;
    QTest::newRow("import -h") << words("import -h") << import;
    QTest::newRow("export --help") << words("export --help") << exporting;
    QTest::newRow("list --help") << words("list --help") << list;
    QTest::newRow("help wins over a wrong line") << words("import --nonsense --help") << import;
}

void TadataTest::helpIsPrintedOnRequest()
{
    QFETCH(QStringList, line);
    QFETCH(QStringList, mentioned);
    const Outcome outcome = runTadata(line);
    QCOMPARE(outcome, succeeded(outcome.out));
    for (const QString& word : mentioned)
        QVERIFY2(outcome.out.contains(word.toUtf8()), qPrintable(word));
}

void TadataTest::versionIsPrinted()
{
    QCOMPARE(runTadata(words("--version")), succeeded("tadata 7.06.1812\n"));
}

void TadataTest::outputThatCannotBeWrittenIsAFailure_data()
{
    QTest::addColumn<QStringList>("line");
    QTest::newRow("list") << words("list --store {store}");
    QTest::newRow("--version") << words("--version");
    QTest::newRow("--help") << words("--help");
    QTest::newRow("import --help") << words("import --help");
}

void TadataTest::outputThatCannotBeWrittenIsAFailure()
{
    QFETCH(QStringList, line);
    const QString full = QStringLiteral("/dev/full");
    if (!QFileInfo::exists(full))
        QSKIP("There is no /dev/full here");
    writeFile(path("store/A/B/C/20240115_60.iss"), oneRecord);

    QProcess process;
    process.setProcessEnvironment(plainEnvironment());
    process.setStandardOutputFile(full);
    process.start(tadataProgram(), filled(line));
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(QString::fromUtf8(process.readAllStandardError()),
             QStringLiteral("Невозможно записать в стандартный вывод\n"));
    QCOMPARE(process.exitCode(), 1);
}

void TadataTest::wrongCommandLineChangesNothing_data()
{
    QTest::addColumn<QStringList>("line");
    QTest::addColumn<QString>("reason");

    const auto row = [](const char* name, const QStringList& line, const QByteArray& reason) {
        QTest::newRow(name) << line << QString::fromUtf8(reason);
    };
    const QStringList shortest = words("import {file} --store {store} --no-header");
    const QStringList known = shortest + words("--series NORD/MAIN/ALFA");
    const QStringList complete = known + QStringList{QStringLiteral("--columns"), correctColumns()};

    row("no command", {}, "нет команды");
    row("empty command", {QString()}, "нет команды");
    row("unknown command", words("convert {file}"), "неизвестная команда «convert»");
    row("command in capitals", words("IMPORT {file}"), "неизвестная команда «IMPORT»");
    row("option before the command", words("--store {store} list"),
        "неизвестная команда «--store»");

    row("unknown option", complete + words("--colums date=0"), "неизвестный параметр «colums»");
    row("unknown option with a value", complete + words("--force=1"),
        "неизвестный параметр «force»");
    row("unknown short option", complete + words("-x"), "неизвестный параметр «x»");
    row("list with an option of import", words("list --store {store} --decimals 2"),
        "неизвестный параметр «decimals»");
    row("no value after the last option", complete + words("--decimals"),
        "нет значения после «--decimals»");
    row("list without the store's value", words("list --store"), "нет значения после «--store»");
    row("value for a switch",
        words("import {file} --store {store} --series NORD/MAIN/ALFA --columns") +
            QStringList{correctColumns(), QStringLiteral("--no-header=yes")},
        "параметр --no-header не принимает значения");
    row("option with a value twice", complete + words("--series NORD/MAIN/BARK"),
        "параметр --series задан дважды");
    row("the same value twice", complete + words("--store {store}"),
        "параметр --store задан дважды");
    row("switch twice", complete + words("--no-header"), "параметр --no-header задан дважды");

    row("no file",
        words("import --store {store} --series NORD/MAIN/ALFA --columns") << correctColumns(),
        "нужен один файл");
    row("two files", complete + words("{file}"), "нужен один файл");
    row("list with a word", words("list --store {store} NORD"), "лишнее слово «NORD»");

    row("no series", shortest + (words("--columns") << correctColumns()),
        "не задан параметр --series");
    row("no columns", known, "не задан параметр --columns");

    const auto series = [&](const char* name, const QString& text) {
        QTest::newRow(name)
            << shortest + (words("--columns") << correctColumns()) +
                   QStringList{QStringLiteral("--decimals"), QStringLiteral("2"),
                               QStringLiteral("--series"), text}
            << QStringLiteral("--series: нужны три кода через «/», ПЛОЩАДКА/РЕЖИМ/ИНСТРУМЕНТ, и ни "
                              "один не может быть пустым, «.» или «..»: «%1»")
                   .arg(text);
    };
    series("series: empty", QStringLiteral(""));
    series("series: one code", QStringLiteral("NORD"));
    series("series: two codes", QStringLiteral("NORD/MAIN"));
    series("series: four codes", QStringLiteral("NORD/MAIN/ALFA/X"));
    series("series: slash at the end", QStringLiteral("NORD/MAIN/ALFA/"));
    series("series: slash at the start", QStringLiteral("/NORD/MAIN/ALFA"));
    series("series: nothing but slashes", QStringLiteral("//"));
    series("series: empty stock", QStringLiteral("/MAIN/ALFA"));
    series("series: empty board", QStringLiteral("NORD//ALFA"));
    series("series: empty security", QStringLiteral("NORD/MAIN/"));
    series("series: dot as stock", QStringLiteral("./MAIN/ALFA"));
    series("series: dot as board", QStringLiteral("NORD/./ALFA"));
    series("series: dot as security", QStringLiteral("NORD/MAIN/."));
    series("series: two dots as stock", QStringLiteral("../MAIN/ALFA"));
    series("series: two dots as board", QStringLiteral("NORD/../ALFA"));
    series("series: two dots as security", QStringLiteral("NORD/MAIN/.."));

    const auto columns = [&](const char* name, const QString& text, const QByteArray& reason) {
        QTest::newRow(name) << known + QStringList{QStringLiteral("--columns"), text}
                            << QStringLiteral("--columns: ") + QString::fromUtf8(reason);
    };
    const QString correct = correctColumns();
    constexpr char roles[] = "бывают date, time, open, high, low, close, volume, value, oi";
    const auto unknownRole = [&](const char* role) {
        return QByteArray("неизвестное значение «") + role + "»; " + roles;
    };
    columns("columns: empty", QStringLiteral(""), unknownRole(""));
    columns("columns: unknown role", correct + QStringLiteral(",openinterest=6"),
            unknownRole("openinterest"));
    columns("columns: role in capitals", correct + QStringLiteral(",OI=6"), unknownRole("OI"));
    columns("columns: comma at the end", correct + QStringLiteral(","), unknownRole(""));
    columns("columns: no role", QStringLiteral("=0"), unknownRole(""));
    columns("columns: no number", QStringLiteral("date"),
            "нужен номер столбца, считая от 0: «date»");
    columns("columns: empty number", QStringLiteral("date="),
            "нужен номер столбца, считая от 0: «date=»");
    columns("columns: negative number", QStringLiteral("date=-1"),
            "нужен номер столбца, считая от 0: «date=-1»");
    columns("columns: letters for a number", QStringLiteral("date=A"),
            "нужен номер столбца, считая от 0: «date=A»");
    columns("columns: two equals signs", QStringLiteral("date=0=1"),
            "нужен номер столбца, считая от 0: «date=0=1»");
    columns("columns: number beyond 32 bits", QStringLiteral("date=4294967296"),
            "нужен номер столбца, считая от 0: «date=4294967296»");
    columns("columns: role twice", correct + QStringLiteral(",date=6"), "«date» задано дважды");
    columns("columns: one column twice", correct + QStringLiteral(",volume=5"),
            "столбец 5 назначен дважды");
    for (const char* role : {"date", "time", "open", "high", "low", "close"}) {
        QStringList rest = correct.split(u',');
        rest.removeIf([role](const QString& part) { return part.startsWith(QLatin1String(role)); });
        columns(qPrintable(QStringLiteral("columns: no %1").arg(QLatin1String(role))),
                rest.join(u','), QByteArray("не задан столбец «") + role + "»");
    }

    for (const char* text : {"300", "0", "-1", "060", "60s"}) {
        row(qPrintable(QStringLiteral("timeframe %1").arg(QLatin1String(text))),
            complete + words("--timeframe") + QStringList{QLatin1String(text)},
            QByteArray("--timeframe: бывает 60 или 1: «") + text + "»");
    }
    row("timeframe empty", complete + QStringList{QStringLiteral("--timeframe"), QString()},
        "--timeframe: бывает 60 или 1: «»");

    constexpr char separatorReason[] = "--separator: нужен непустой текст без перевода строки";
    row("separator empty", complete + QStringList{QStringLiteral("--separator"), QString()},
        separatorReason);
    row("separator with a line feed",
        complete + QStringList{QStringLiteral("--separator"), QStringLiteral(";\n")},
        separatorReason);
    row("separator with a carriage return",
        complete + QStringList{QStringLiteral("--separator"), QStringLiteral("\r")},
        separatorReason);

    for (const char* text : {"yyyy-MM-dd", "yyyymmdd", "ггггммдд"}) {
        row(qPrintable(QStringLiteral("date format %1").arg(QString::fromUtf8(text))),
            complete + words("--date-format") + QStringList{QString::fromUtf8(text)},
            QByteArray("--date-format: бывает yyyyMMdd, yyMMdd, ddMMyy, dd.MM.yy, dd/MM/yy: «") +
                text + "»");
    }
    for (const char* text : {"HHmmss", "h:m", ""}) {
        row(qPrintable(QStringLiteral("time format '%1'").arg(QLatin1String(text))),
            complete + words("--time-format") + QStringList{QLatin1String(text)},
            QByteArray("--time-format: бывает hhmmss, hhmm, hh:mm:ss, hh:mm: «") + text + "»");
    }

    for (const char* text : {"-1", "16", "two", "2.0", ""}) {
        row(qPrintable(QStringLiteral("decimals '%1'").arg(QLatin1String(text))),
            complete + words("--decimals") + QStringList{QLatin1String(text)},
            QByteArray("--decimals: нужно число от 0 до 15: «") + text + "»");
    }

    row("import into an empty store name",
        QStringList{QStringLiteral("import"), QStringLiteral("{file}"), QStringLiteral("--store"),
                    QString(), QStringLiteral("--series"), QStringLiteral("NORD/MAIN/ALFA"),
                    QStringLiteral("--columns"), correct},
        "--store: нужен каталог");
    row("list of an empty store name",
        QStringList{QStringLiteral("list"), QStringLiteral("--store"), QString()},
        "--store: нужен каталог");

    const auto unknown = [&](const char* name, const char* codes) {
        QTest::newRow(name)
            << shortest + QStringList{QStringLiteral("--series"), QLatin1String(codes),
                                      QStringLiteral("--columns"), correct}
            << QStringLiteral("инструмента %1 нет в справочнике: задайте --decimals, число знаков "
                              "после точки в ценах")
                   .arg(QLatin1String(codes));
    };
    unknown("unknown security", "NORD/MAIN/NOBODY");
    unknown("unknown board", "NORD/NOWHERE/ALFA");
    unknown("unknown stock", "NOWHERE/MAIN/ALFA");
    unknown("known code in lower case", "NORD/MAIN/alfa");
}

void TadataTest::wrongCommandLineChangesNothing()
{
    QFETCH(QStringList, line);
    QFETCH(QString, reason);
    writeFile(path("store/NORD/MAIN/ALFA/20240115_60.iss"), "what was there\n");
    const auto files = readTree(QDir(m_dir->path()));
    const QStringList directories = readDirectories(QDir(m_dir->path()));

    QCOMPARE(runTadata(filled(line)), refused(reason));
    QCOMPARE(readTree(QDir(m_dir->path())), files);
    QCOMPARE(readDirectories(QDir(m_dir->path())), directories);
}

void TadataTest::wordsAfterTwoDashesAreFiles()
{
    const QString name = path("--bars.csv");
    writeFile(name, oneBar);
    QProcess process;
    process.setProcessEnvironment(plainEnvironment());
    process.setWorkingDirectory(m_dir->path());
    process.start(tadataProgram(),
                  words("import --store store --no-header --series NORD/MAIN/ALFA --columns")
                      << correctColumns() << QStringLiteral("--") << QStringLiteral("--bars.csv"));
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.readAllStandardError(), QByteArray());
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(readFile(path("store/NORD/MAIN/ALFA/20240115_60.iss")), QByteArray(oneRecord));
}

void TadataTest::optionValuesMayBeginWithADash()
{
    writeFile(path("bars.csv"), "20240115-100000-1.5-1.7-1.4-1.6\n");
    QCOMPARE(
        runTadata(filled(words("import {file} --store {store} --no-header --separator - --series "
                               "NORD/MAIN/ALFA --columns")
                         << correctColumns())),
        succeeded());
    QCOMPARE(readFile(path("store/NORD/MAIN/ALFA/20240115_60.iss")), QByteArray(oneRecord));
}

void TadataTest::listShowsEverySeriesAndTimeframe()
{
    writeFile(path("store/NORD/MAIN/ALFA/20240117_60.iss"), "12345");
    writeFile(path("store/NORD/MAIN/ALFA/20240115_60.iss"), "");
    writeFile(path("store/NORD/MAIN/ALFA/20240116_60.iss"), "1234567");
    writeFile(path("store/NORD/MAIN/ALFA/20231231_1.iss"), "123");
    writeFile(path("store/NORD/MAIN/ALFA/20231231_60"), "a minute file, which is no day file");
    writeFile(path("store/NORD/MAIN/alfa/20240101_60.iss"), "1");
    writeFile(path("store/NORD/AUX/ALFA/20240229_1.iss"), "12");
    writeFile(path("store/Биржа/Режим 1/Сбер. ао/20991231_60.iss"), "1");

    // By code unit, whatever the locale: capitals first, Cyrillic last.
    QCOMPARE(runTadata(filled(words("list --store {store}"))),
             succeeded("NORD/AUX/ALFA\t1\t1\t2024-02-29\t2024-02-29\t2\n"
                       "NORD/MAIN/ALFA\t1\t1\t2023-12-31\t2023-12-31\t3\n"
                       "NORD/MAIN/ALFA\t60\t3\t2024-01-15\t2024-01-17\t12\n"
                       "NORD/MAIN/alfa\t60\t1\t2024-01-01\t2024-01-01\t1\n"
                       "Биржа/Режим 1/Сбер. ао\t60\t1\t2099-12-31\t2099-12-31\t1\n"));
}

void TadataTest::listPassesOverForeignFiles()
{
    writeFile(path("store/A/B/C/20240115_60.iss"), "1");
    constexpr std::array foreign{
        "20240115_60",      "20240115_60.iss~", "20240115_060.iss", "20240115_.iss",
        "20240115_0.iss",   "20240115.iss",     "20240230_60.iss",  "2024015_60.iss",
        "20240115-60.iss",  "20240115_60.ISS",  ".20240115_60.iss", "20240115_60.iss.bak",
        "20240115_-60.iss", "notes.txt",        "20240115_60s.iss", "20240115_+60.iss",
    };
    for (const char* name : foreign)
        writeFile(path("store/A/B/C/") + QLatin1String(name), "foreign");
    QVERIFY(QDir().mkpath(path("store/A/B/C/20240116_60.iss")));
    // Day files on the wrong level belong to no series.
    writeFile(path("store/20240115_60.iss"), "foreign");
    writeFile(path("store/A/20240115_60.iss"), "foreign");
    writeFile(path("store/A/B/20240115_60.iss"), "foreign");
    writeFile(path("store/A/B/C/D/20240115_60.iss"), "foreign");
    QVERIFY(QDir().mkpath(path("store/A/B/EMPTY")));

    QCOMPARE(runTadata(filled(words("list --store {store}"))),
             succeeded("A/B/C\t60\t1\t2024-01-15\t2024-01-15\t1\n"));
}

void TadataTest::listOfAnEmptyStoreIsEmpty()
{
    QVERIFY(QDir().mkpath(path("store")));
    QCOMPARE(runTadata(filled(words("list --store {store}"))), succeeded());
}

void TadataTest::listOfAMissingStoreFails()
{
    QCOMPARE(runTadata(filled(words("list --store {store}"))),
             failed(QStringLiteral("Нет каталога %1").arg(path("store"))));
    QVERIFY(!QFileInfo::exists(path("store")));

    writeFile(path("store"), "a file");
    QCOMPARE(runTadata(filled(words("list --store {store}"))),
             failed(QStringLiteral("Нет каталога %1").arg(path("store"))));
}

void TadataTest::listNamesWhatItCannotRead()
{
    m_dir.reset();
    const OtherUser nobody;
    init(); // in a directory of his own
    writeFile(path("store/A/B/C/20240115_60.iss"), oneRecord);
    writeFile(path("store/A/B/D/20240115_60.iss"), oneRecord);
    writeFile(path("store/A/X/C/20240115_60.iss"), oneRecord);
    const Permissions series(path("store/A/B/D"), 0);
    const Permissions board(path("store/A/X"), 0);
    const QByteArray rest = "A/B/C\t60\t1\t2024-01-15\t2024-01-15\t" +
                            QByteArray::number(qsizetype(qstrlen(oneRecord))) + "\n";
    const auto told = [](const QString& directory) {
        return QStringLiteral("Невозможно прочитать каталог %1: того, что в нём, в списке нет\n")
            .arg(directory)
            .toUtf8();
    };
    QCOMPARE(runTadata(filled(words("list --store {store}"))),
             (Outcome{1, rest, told(path("store/A/B/D")) + told(path("store/A/X"))}));
}

void TadataTest::listShowsEveryNameOnItsOwnLine()
{
    const QByteArrayList names{"A\nB", "A\x1b[0m", "A\xff", "A\xc2\x85", "A\\x0a", "A\\n"};
    for (const QByteArray& name : names) {
        const QByteArray series = QFile::encodeName(path("store/V/W/")) + name;
        QVERIFY(QDir().mkpath(path("store/V/W")));
        QCOMPARE(::mkdir(series.constData(), 0700), 0);
        const int file =
            ::open((series + "/20240115_60.iss").constData(), O_CREAT | O_WRONLY, 0600);
        QVERIFY(file >= 0);
        ::close(file);
    }
    QByteArray wanted;
    // In the order of the codes.
    for (const char* shown : {"A\\x0aB", "A\\x1b[0m", "A\\n", "A\\\\x0a", "A\\u0085", "A\\xff"})
        wanted += QByteArray("V/W/") + shown + "\t60\t1\t2024-01-15\t2024-01-15\t0\n";
    const Outcome outcome = runTadata(filled(words("list --store {store}")));
    QCOMPARE(outcome, succeeded(wanted));
    // Qt cannot remove a directory whose name is no text.
    QCOMPARE(std::system(qPrintable(QStringLiteral("rm -r '%1'").arg(path("store/V")))), 0);
}

void TadataTest::listTakesTheCurrentDirectoryAsBase()
{
    writeFile(path("store/A/B/C/20240115_60.iss"), "1");
    QProcess process;
    process.setProcessEnvironment(plainEnvironment());
    process.setWorkingDirectory(m_dir->path());
    process.start(tadataProgram(), words("list --store store/"));
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.readAllStandardOutput(),
             QByteArray("A/B/C\t60\t1\t2024-01-15\t2024-01-15\t1\n"));
}

void TadataTest::listTakesNothingElseForTheStore_data()
{
    QTest::addColumn<bool>("isLink");
    QTest::newRow("link to nothing") << true;
    QTest::newRow("file") << false;
}

// The data directory has folders of the same shape, which are somebody else's.
void TadataTest::listTakesNothingElseForTheStore()
{
    QFETCH(const bool, isLink);
    const QString program = copyProgram(QDir(m_dir->path()));
    QVERIFY(!program.isEmpty());
    writeFile(path("user/A/B/C/20240115_60.iss"), oneRecord);
    const QString store = path("user/tadata");
    if (isLink)
        QVERIFY(QFile::link(path("nothing"), store));
    else
        writeFile(store, "");
    QCOMPARE(runProgram(program, words("list")), failed(QStringLiteral("Нет каталога ") + store));
}

void TadataTest::defaultStoreIsBesideAPortableProgram()
{
    const QString program = copyProgram(QDir(m_dir->path()));
    QVERIFY(!program.isEmpty());
    const QStringList import = filled(words("import {file} --no-header --series NORD/MAIN/ALFA "
                                            "--columns")
                                      << correctColumns());
    QCOMPARE(runProgram(program, words("list")), succeeded());
    QCOMPARE(runProgram(program, import), succeeded());
    QCOMPARE(readFile(path("user/tadata/NORD/MAIN/ALFA/20240115_60.iss")), QByteArray(oneRecord));
    QCOMPARE(runProgram(program, words("list")),
             succeeded("NORD/MAIN/ALFA\t60\t1\t2024-01-15\t2024-01-15\t36\n"));
}

void TadataTest::defaultStoreOfAnInstalledProgramIsTheUsers()
{
    const QString program = copyProgram(QDir(m_dir->path()));
    QVERIFY(!program.isEmpty());
    writeFile(path(".installed"), "");
    QProcessEnvironment environment = plainEnvironment();
    environment.insert(QStringLiteral("XDG_DATA_HOME"), path("share"));

    QCOMPARE(runProgram(program,
                        filled(words("import {file} --no-header --series NORD/MAIN/ALFA --columns")
                               << correctColumns()),
                        environment),
             succeeded());
    const QMap<QString, QByteArray> files = readTree(QDir(path("share")));
    QCOMPARE(files.size(), 1);
    QVERIFY2(files.firstKey().endsWith(QStringLiteral("/tadata/NORD/MAIN/ALFA/20240115_60.iss")),
             qPrintable(files.firstKey()));
    QCOMPARE(files.first(), QByteArray(oneRecord));
    QVERIFY(!QFileInfo::exists(path("user")));
    QCOMPARE(runProgram(program, words("list"), environment),
             succeeded("NORD/MAIN/ALFA\t60\t1\t2024-01-15\t2024-01-15\t36\n"));
}

void TadataTest::referenceDataBesideTheProgramAreUsed()
{
    const QString program = copyProgram(QDir(m_dir->path()));
    QVERIFY(!program.isEmpty());
    const QStringList import =
        filled(words("import {file} --store {store} --no-header --series X/Y/Z --columns")
               << correctColumns());

    writeFile(path("user/reference.json"), R"({
        "stocks": [{"id": 7, "code": "X", "name": ""}],
        "boards": [{"stock": "X", "id": 3, "code": "Y", "name": "", "flags": 0}],
        "securities": [{"stock": "X", "board": "Y", "id": 5, "code": "Z", "title": "",
                        "decimals": 3}]})");
    QCOMPARE(runProgram(program, import), succeeded());
    QCOMPARE(readFile(path("store/X/Y/Z/20240115_60.iss")),
             QByteArray("100000;1.500;1.700;1.400;1.600;0;0.000;0\n"));

    writeFile(path("user/reference.json"), R"({"stocks": [], "boards": []})");
    QCOMPARE(runProgram(program, import),
             failed(QStringLiteral("Ошибка в справочнике %1: нет списка \"securities\"")
                        .arg(path("user/reference.json"))));
}

void TadataTest::everyLocaleGivesTheSameOutput_data()
{
    QTest::addColumn<QString>("locale");
    QTest::newRow("C") << QStringLiteral("C");
    QTest::newRow("POSIX") << QStringLiteral("POSIX");
    QTest::newRow("C.UTF-8") << QStringLiteral("C.UTF-8");
    QTest::newRow("ru_RU.UTF-8") << QStringLiteral("ru_RU.UTF-8");
    QTest::newRow("ru_RU.KOI8-R") << QStringLiteral("ru_RU.KOI8-R");
    QTest::newRow("one that there is not") << QStringLiteral("xx_XX");
    QTest::newRow("none") << QString();
}

void TadataTest::everyLocaleGivesTheSameOutput()
{
    QFETCH(QString, locale);
    QProcessEnvironment environment = plainEnvironment();
    for (const QString& name : environment.keys()) {
        if (name == u"LANG" || name == u"LANGUAGE" || name.startsWith(u"LC_"))
            environment.remove(name);
    }
    if (!locale.isEmpty())
        environment.insert(QStringLiteral("LC_ALL"), locale);

    const QString file = path("Бары за день.csv");
    writeFile(file, oneBar);
    const auto import = [&](const QString& input) {
        return QStringList{QStringLiteral("import"),
                           input,
                           QStringLiteral("--store"),
                           path("Хранилище"),
                           QStringLiteral("--series"),
                           QStringLiteral("Биржа/Режим/Сбер. ао"),
                           QStringLiteral("--decimals"),
                           QStringLiteral("2"),
                           QStringLiteral("--no-header"),
                           QStringLiteral("--columns"),
                           correctColumns()};
    };
    QCOMPARE(runTadata(import(file), environment), succeeded());
    QCOMPARE(readFile(path("Хранилище/Биржа/Режим/Сбер. ао/20240115_60.iss")),
             QByteArray(oneRecord));
    QCOMPARE(runTadata({QStringLiteral("list"), QStringLiteral("--store"), path("Хранилище")},
                       environment),
             succeeded("Биржа/Режим/Сбер. ао\t60\t1\t2024-01-15\t2024-01-15\t36\n"));
    QCOMPARE(runTadata(import(path("Нет его")), environment),
             failed(QStringLiteral("Невозможно открыть файл %1").arg(path("Нет его"))));
    QCOMPARE(runTadata({QStringLiteral("список")}, environment),
             refused(QStringLiteral("неизвестная команда «список»")));
}

void TadataTest::progressIsDrawnOnATerminal()
{
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0)
        QSKIP("No pseudo-terminal can be made here");
    std::array<char, 64> name{};
    QCOMPARE(ptsname_r(terminal, name.data(), name.size()), 0);

    QProcess process;
    process.setProcessEnvironment(plainEnvironment());
    process.setStandardErrorFile(QString::fromLatin1(name.data()), QIODevice::Append);
    process.start(tadataProgram(),
                  filled(words("import {file} --store {store} --no-header --series NORD/MAIN/ALFA "
                               "--columns")
                         << correctColumns()));
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(process.readAllStandardOutput(), QByteArray());

    // What was drawn comes in pieces, and then an error: nobody draws any more.
    QByteArray drawn;
    std::array<char, 4096> buffer{};
    constexpr int patience = 10'000;
    pollfd pending{terminal, POLLIN, 0};
    while (poll(&pending, 1, patience) > 0) {
        const ssize_t length = read(terminal, buffer.data(), buffer.size());
        if (length <= 0)
            break;
        drawn.append(buffer.data(), length);
    }
    close(terminal);
    QVERIFY2(drawn.startsWith("\r["), drawn.constData());
    // The terminal turns the line feed into two characters.
    const QByteArray whole = "\r[" + QByteArray(40, '#') + "] 100%\r\n";
    QVERIFY2(drawn.endsWith(whole), drawn.constData());
}

void TadataTest::noWindowLibraryIsLoaded()
{
    // The loader's own account: every library with its dependencies, before main() runs.
    QProcessEnvironment environment = plainEnvironment();
    environment.insert(QStringLiteral("LD_TRACE_LOADED_OBJECTS"), QStringLiteral("1"));
    const Outcome libraries = runProgram(tadataProgram(), {}, environment);
    if (libraries.exitCode != 0 || !libraries.out.contains("libc.so"))
        QSKIP("The loader does not tell which libraries it loads");

    QVERIFY2(libraries.out.contains("libQt6Core"), libraries.out.constData());
    QVERIFY2(libraries.out.contains("libvexdesk-core"), libraries.out.constData());
    for (const char* library :
         {"libQt6Gui", "libQt6Widgets", "libQt6DBus", "libQt6XcbQpa", "libvexdesk-gui", "libX11",
          "libxcb", "libGL", "libEGL", "libwayland-client"})
        QVERIFY2(!libraries.out.contains(library), library);
}

QTEST_GUILESS_MAIN(TadataTest)
#include "tst_tadata.moc"
