// SPDX-License-Identifier: MIT
// Stored bars and deals as text files.

#include "tadatarunner.h"

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace testsupport;

namespace {

using Tree = QMap<QString, QByteArray>;

const QByteArray mark = QByteArrayLiteral("\xef\xbb\xbf");
const QByteArray allColumns =
    "<TICKER>,<PER>,<DATE>,<TIME>,<OPEN>,<HIGH>,<LOW>,<CLOSE>,<VOL>,<VAL>,<OPEN_INT>\n";
const QByteArray dealsHeading = "moment_ms_utc,price,quantity,open_interest,value\n";

} // namespace

class TadataExportTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void writesStoredBars();
    void takesEveryOption();
    void acceptsAnyLineFormat_data();
    void acceptsAnyLineFormat();
    void writesTheDealsOfToday();
    void keepsStoredDaysAndDealsApart();
    void readsDealsOfAllKinds_data();
    void readsDealsOfAllKinds();
    void foldsDealsInTheOrderOfTheFile();
    void skipsDaysAfterToday();
    void exportsASeriesThatNothingIsStoredOf();
    void changesNothingInTheStore();

    void refusesAWrongCommandLine_data();
    void refusesAWrongCommandLine();
    void leavesTheOutputAloneWhenNothingIsToBeExported();
    void namesDaysThatCannotBeOpened();
    void aReadErrorIsNotTheEnd_data();
    void aReadErrorIsNotTheEnd();
    void aDiskThatSaysAtTheEndThatItIsFullIsNoSuccess();
    void refusesDayFilesOfItsStoreAsOutput_data();
    void refusesDayFilesOfItsStoreAsOutput();
    void namesWhatCannotBeOpened_data();
    void namesWhatCannotBeOpened();
    void saysWhatIsWrongWithADeal_data();
    void saysWhatIsWrongWithADeal();

private:
    QString path(const char* name) const { return m_dir->filePath(QString::fromUtf8(name)); }
    QByteArray written() const { return readFile(path("out.txt")); }
    // The command line up to the options that a test is about.
    Outcome run(const char* options) const;

    std::unique_ptr<QTemporaryDir> m_dir;
};

void TadataExportTest::init()
{
    failOnStrayWarnings();
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    writeFile(path("store/NORD/MAIN/ALFA/20240115_60.iss"),
              "100100;1.50;1.70;1.40;1.60;12;3.00;7\n"
              "100200;1.60;1.80;1.50;1.70;13;1.00;8\n");
    writeFile(path("store/NORD/MAIN/ALFA/20240115_1.iss"), "100001;9;9;9;9;1;0;0\n");
}

void TadataExportTest::cleanup()
{
    m_dir.reset();
}

Outcome TadataExportTest::run(const char* options) const
{
    return runTadata(words("export --series NORD/MAIN/ALFA --from 2024-01-15 --to 2024-01-15")
                     << path("out.txt") << QStringLiteral("--store") << path("store")
                     << words(options));
}

void TadataExportTest::writesStoredBars()
{
    QCOMPARE(run(""), succeeded());
    QCOMPARE(written(), mark + allColumns +
                            "ALFA,60,20240115,100100,1.50,1.70,1.40,1.60,12,3.00,7\n"
                            "ALFA,60,20240115,100100,1.50,1.70,1.40,1.60,12,3.00,7\n"
                            "ALFA,60,20240115,100200,1.60,1.80,1.50,1.70,13,1.00,8\n");
}

void TadataExportTest::takesEveryOption()
{
    QCOMPARE(run("--timeframe 300 --separator semicolon --date-format dd.MM.yy --time-format hh:mm "
                 "--line-format DATE,TIME,CLOSE,VOL --no-header"),
             succeeded());
    QCOMPARE(written(), mark + "15.01.24;10:05;1.60;12\n"
                               "15.01.24;10:05;1.70;25\n");
    QCOMPARE(run("--timeframe 1 --no-header --line-format OPEN"), succeeded());
    QCOMPARE(written(), mark + "9\n");
}

void TadataExportTest::acceptsAnyLineFormat_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("written");
    const auto row = [](const char* name, const char* format, const char* bar) {
        QTest::newRow(name) << QString::fromLatin1(format) << QByteArray(bar);
    };
    row("of another order", "CLOSE,TICKER", "<CLOSE>,<TICKER>\nALFA\n9,");
    row("with an unknown name", "TICKER,Q_TY", "<TICKER>,<Q_TY>\nALFA,");
    row("with a name twice", "OPEN,OPEN", "<OPEN>,<OPEN>\n9\n");
    row("with an empty name", "OPEN,", "<OPEN>,<>\n9,");
    row("of nothing", "", "<>\n");
    row("in lower case", "open", "<open>\n");
}

void TadataExportTest::acceptsAnyLineFormat()
{
    QFETCH(const QString, format);
    QFETCH(const QByteArray, written);
    QCOMPARE(runTadata(words("export --series NORD/MAIN/ALFA --from 2024-01-15 --to 2024-01-15 "
                             "--timeframe 1")
                       << path("out.txt") << QStringLiteral("--store") << path("store")
                       << QStringLiteral("--line-format") << format),
             succeeded());
    QCOMPARE(this->written(), mark + written);
}

void TadataExportTest::writesTheDealsOfToday()
{
    writeFile(path("deals.csv"), dealsHeading + "1705312800000,120.05,3,,360.15\n"
                                                "1705312810500,120.10,2,5,240.20\n"
                                                "1705312859999,119.5,1,6,\n"
                                                "1705312860000,120.00,5000000000,7,0.5\n"
                                                "1705312860001,121,1,,\n");
    QCOMPARE(run(qPrintable(QStringLiteral("--today 2024-01-15 --deals ") + path("deals.csv"))),
             succeeded());
    QCOMPARE(written(),
             mark + allColumns +
                 "ALFA,60,20240115,100000,120.05,120.05,120.05,120.05,3,360.15,0\n"
                 "ALFA,60,20240115,100100,120.10,120.10,119.5,120.00,5000000003,240.70,7\n"
                 "ALFA,60,20240115,100200,121,121,121,121,1,0,0\n");
}

void TadataExportTest::keepsStoredDaysAndDealsApart()
{
    // The day before and the day of the deals; the file of the latter is not read.
    writeFile(path("store/NORD/MAIN/ALFA/20240114_60.iss"), "235900;1;1;1;1;1;1;1\n");
    writeFile(path("deals.csv"), dealsHeading + "1705276799999,5,5,,\n"
                                                "1705276800000,6,6,,\n"
                                                "1705363199999,7,7,,\n"
                                                "1705363200000,8,8,,\n");
    const Outcome outcome = runTadata(
        words("export --series NORD/MAIN/ALFA --from 2024-01-14 --to 2024-01-15 --today 2024-01-15 "
              "--no-header --line-format DATE,TIME,VOL --timeframe 3600")
        << path("out.txt") << QStringLiteral("--store") << path("store")
        << QStringLiteral("--deals") << path("deals.csv"));
    QCOMPARE(outcome, succeeded());
    QCOMPARE(written(), mark + "20240115,000000,1\n"
                               "20240115,000000,6\n"
                               "20240116,000000,7\n");
}

void TadataExportTest::readsDealsOfAllKinds_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("bar");
    const auto row = [](const char* name, const QByteArray& file, const char* bar) {
        QTest::newRow(name) << file << QByteArray(bar);
    };
    row("three columns", "moment_ms_utc,price,quantity\n1705312800000,5,2\n", "5,2,0,0\n");
    row("four columns", "moment_ms_utc,price,quantity,open_interest\n1705312800000,5,2,9\n",
        "5,2,0,9\n");
    row("absent price", dealsHeading + "1705312800000,,2,9,1.5\n", "0,2,1.5,9\n");
    row("absent quantity", dealsHeading + "1705312800000,5,,9,1.5\n", "5,0,1.5,9\n");
    row("absent moment", dealsHeading + ",5,2,9,1.5\n", "");
    row("CRLF", "moment_ms_utc,price,quantity\r\n1705312800000,5,2\r\n", "5,2,0,0\n");
    row("no last line end", "moment_ms_utc,price,quantity\n1705312800000,5,2", "5,2,0,0\n");
    row("blank lines", "moment_ms_utc,price,quantity\n\n1705312800000,5,2\n\n", "5,2,0,0\n");
    row("byte order mark", mark + "moment_ms_utc,price,quantity\n1705312800000,5,2\n", "5,2,0,0\n");
    row("a heading alone", dealsHeading, "");
    row("an empty file", "", "");
    row("open interest above 32 bits", dealsHeading + "1705312800000,5,2,3000000000,\n",
        "5,2,0,2147483647\n");
}

void TadataExportTest::readsDealsOfAllKinds()
{
    QFETCH(const QByteArray, file);
    QFETCH(const QByteArray, bar);
    writeFile(path("deals.csv"), file);
    QCOMPARE(
        run(qPrintable(
            QStringLiteral("--today 2024-01-15 --no-header --line-format CLOSE,VOL,VAL,OPEN_INT "
                           "--deals ") +
            path("deals.csv"))),
        succeeded());
    QCOMPARE(written(), bar.isEmpty() ? QByteArray() : mark + bar);
}

void TadataExportTest::foldsDealsInTheOrderOfTheFile()
{
    writeFile(path("deals.csv"), dealsHeading + "1705312860000,5,1,,\n"
                                                "1705312800000,9,1,,\n"
                                                "1705312860001,6,1,,\n");
    QCOMPARE(run(qPrintable(QStringLiteral("--today 2024-01-15 --no-header --line-format "
                                           "TIME,OPEN,HIGH,CLOSE --deals ") +
                            path("deals.csv"))),
             succeeded());
    QCOMPARE(written(), mark + "100100,5,9,9\n"
                               "100200,6,6,6\n");
}

void TadataExportTest::skipsDaysAfterToday()
{
    writeFile(path("deals.csv"), dealsHeading + "1705312800000,5,1,,\n");
    const Outcome outcome = runTadata(
        words("export --series NORD/MAIN/ALFA --from 2024-01-15 --to 2024-01-31 --today 2024-01-15 "
              "--no-header --line-format TIME,OPEN")
        << path("out.txt") << QStringLiteral("--store") << path("store")
        << QStringLiteral("--deals") << path("deals.csv"));
    QCOMPARE(outcome, succeeded());
    QCOMPARE(written(), mark + "100000,5\n");
}

// The directory knows the series of the deals from then on.
void TadataExportTest::exportsASeriesThatNothingIsStoredOf()
{
    writeFile(path("deals.csv"), dealsHeading + "1705312800000,5,1,,\n");
    for (const char* series :
         {"NOWHERE/NOTHING/NOBODY", "NORD/MAIN/NOBODY", "NORDFUT/FUT/NOBODY"}) {
        const Outcome outcome = runTadata(
            words("export --from 2024-01-15 --to 2024-01-15 --today 2024-01-15 --no-header "
                  "--line-format TICKER,OPEN")
            << QStringLiteral("--series") << QLatin1String(series) << path("out.txt")
            << QStringLiteral("--store") << path("store") << QStringLiteral("--deals")
            << path("deals.csv"));
        QCOMPARE(outcome, succeeded());
        QCOMPARE(written(), mark + "NOBODY,5\n");
    }
    const Outcome past = runTadata(
        words("export --from 2024-01-15 --to 2024-01-15 --series NORD/MAIN/NOBODY --no-header")
        << path("out.txt") << QStringLiteral("--store") << path("store"));
    QCOMPARE(past, succeeded());
    QCOMPARE(written(), QByteArray());
}

void TadataExportTest::changesNothingInTheStore()
{
    const Tree before = readTree(QDir(path("store")));
    QCOMPARE(run("--timeframe 86400"), succeeded());
    QCOMPARE(readTree(QDir(path("store"))), before);
}

void TadataExportTest::refusesAWrongCommandLine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char* name, const char* line, const char* reason) {
        QTest::newRow(name) << QString::fromUtf8(line) << QString::fromUtf8(reason);
    };
    row("no file", "--series A/B/C --from 2024-01-15 --to 2024-01-15", "нужен один файл");
    row("two files", "OUT OUT --series A/B/C --from 2024-01-15 --to 2024-01-15", "нужен один файл");
    row("no series", "OUT --from 2024-01-15 --to 2024-01-15", "не задан параметр --series");
    row("series that climbs", "OUT --series A/../C --from 2024-01-15 --to 2024-01-15",
        "--series: нужны три кода через «/», ПЛОЩАДКА/РЕЖИМ/ИНСТРУМЕНТ, и ни один не может быть "
        "пустым, «.» или «..»: «A/../C»");
    row("no first day", "OUT --series A/B/C --to 2024-01-15", "не задан параметр --from");
    row("no last day", "OUT --series A/B/C --from 2024-01-15", "не задан параметр --to");
    row("day of another form", "OUT --series A/B/C --from 15.01.2024 --to 2024-01-15",
        "--from: нужна дата вида 2024-01-31: «15.01.2024»");
    row("day that is none", "OUT --series A/B/C --from 2024-01-15 --to 2024-02-30",
        "--to: нужна дата вида 2024-01-31: «2024-02-30»");
    row("reversed interval", "OUT --series A/B/C --from 2024-01-16 --to 2024-01-15",
        "--to: раньше, чем --from");
    row("unknown timeframe", "OUT --series A/B/C --from 2024-01-15 --to 2024-01-15 --timeframe 120",
        "--timeframe: бывает 1, 60, 300, 600, 1800, 3600, 86400: «120»");
    row("date without a month",
        "OUT --series A/B/C --from 2024-01-15 --to 2024-01-15 --date-format yyyydd",
        "--date-format: вид «yyyydd» не называет всего, что нужно: d, M, yy");
    for (const char* format : {"dd.MM.y", "dd.MM.yyy", "ddMM'yy'", "yddMM"}) {
        const QByteArray line =
            QByteArray("OUT --series A/B/C --from 2024-01-15 --to 2024-01-15 --date-format ") +
            format;
        const QString reason =
            QStringLiteral("--date-format: вид «%1» не называет всего, что нужно: "
                           "d, M, yy")
                .arg(QLatin1String(format));
        row(format, line.constData(), qUtf8Printable(reason));
    }
    row("first day after today",
        "OUT --series A/B/C --from 2024-01-17 --to 2024-01-18 --today 2024-01-16",
        "--from: 2024-01-17 позже, чем сегодня, 2024-01-16: выгружать нечего");
    row("first day after the real today", "OUT --series A/B/C --from 9999-01-01 --to 9999-01-02",
        qUtf8Printable(QStringLiteral("--from: 9999-01-01 позже, чем сегодня, %1: выгружать нечего")
                           .arg(QDate::currentDate().toString(Qt::ISODate))));
    row("time without minutes",
        "OUT --series A/B/C --from 2024-01-15 --to 2024-01-15 --time-format hhss",
        "--time-format: вид «hhss» не называет всего, что нужно: h, m");
    row("wrong today", "OUT --series A/B/C --from 2024-01-15 --to 2024-01-15 --today tomorrow",
        "--today: нужна дата вида 2024-01-31: «tomorrow»");
    row("unknown option", "OUT --series A/B/C --from 2024-01-15 --to 2024-01-15 --columns date=0",
        "неизвестный параметр «columns»");
}

void TadataExportTest::refusesAWrongCommandLine()
{
    QFETCH(const QString, line);
    QFETCH(const QString, reason);
    QStringList parts = QStringList(QStringLiteral("export")) << line.split(u' ');
    parts.replaceInStrings(QStringLiteral("OUT"), path("out.txt"));
    QCOMPARE(runTadata(parts), refused(reason));
    QVERIFY(!QFile::exists(path("out.txt")));
}

// What is there already stays, too.
void TadataExportTest::leavesTheOutputAloneWhenNothingIsToBeExported()
{
    writeFile(path("out.txt"), "earlier");
    const Outcome outcome =
        runTadata(words("export --series NORD/MAIN/ALFA --from 2024-01-17 --to 2024-01-18 --today "
                        "2024-01-16")
                  << path("out.txt") << QStringLiteral("--store") << path("store"));
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(written(), QByteArray("earlier"));
}

void TadataExportTest::namesDaysThatCannotBeOpened()
{
    const QString dayFile = path("store/NORD/MAIN/ALFA/20240115_60.iss");
    QVERIFY(QFile::exists(dayFile));
    QCOMPARE(run("--timeframe 60"), succeeded());
    const QByteArray whole = written();
    QVERIFY(QFile::remove(dayFile));
    QCOMPARE(::mkfifo(QFile::encodeName(dayFile).constData(), 0600), 0);
    QCOMPARE(
        run("--timeframe 60"),
        failed(
            QStringLiteral("Невозможно открыть файл %1: его баров в выгрузке нет").arg(dayFile)));
    QVERIFY(!written().isNull() && written() != whole);
}

void TadataExportTest::aReadErrorIsNotTheEnd_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("day file") << QStringLiteral("store/NORD/MAIN/ALFA/20240115_60.iss");
    QTest::newRow("deals") << QStringLiteral("deals.csv");
    QTest::newRow("reference") << QStringLiteral("reference.json");
}

void TadataExportTest::aReadErrorIsNotTheEnd()
{
    QFETCH(const QString, file);
    writeFile(path("deals.csv"), dealsHeading + "1705312800000,5,1,,\n");
    writeFile(path("reference.json"), R"({"stocks": [], "boards": [], "securities": []})");
    const QString full = m_dir->filePath(file);
    const Outcome outcome = runTadata(
        words("export --series NORD/MAIN/ALFA --from 2024-01-15 --to 2024-01-16 --today 2024-01-17")
            << path("out.txt") << QStringLiteral("--store") << path("store")
            << QStringLiteral("--deals") << path("deals.csv") << QStringLiteral("--reference")
            << path("reference.json"),
        faultyEnvironment(QStringLiteral("read"), full, EIO));
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.err.startsWith("Невозможно прочитать файл " + full.toUtf8()),
             outcome.err.constData());
}

void TadataExportTest::aDiskThatSaysAtTheEndThatItIsFullIsNoSuccess()
{
    const Outcome outcome =
        runTadata(words("export --series NORD/MAIN/ALFA --from 2024-01-15 --to 2024-01-15")
                      << path("out.txt") << QStringLiteral("--store") << path("store"),
                  faultyEnvironment(QStringLiteral("close"), QStringLiteral("/out.txt"), EDQUOT));
    QCOMPARE(outcome, failed(QStringLiteral("Невозможно записать файл ") + path("out.txt")));
}

void TadataExportTest::refusesDayFilesOfItsStoreAsOutput_data()
{
    QTest::addColumn<QString>("way");
    for (const char* way :
         {"itself", "symbolic link", "hard link", "linked from the store", "another series",
          "hard link of another series", "another series, linked from the store", "linked venue"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void TadataExportTest::refusesDayFilesOfItsStoreAsOutput()
{
    QFETCH(const QString, way);
    const QString other = path("other.txt");
    const QString foreign = path("store/NORD/MAIN/BARK/20240115_60");
    writeFile(foreign, "100000;1;1;1;1;0;0;0\n");
    QString dayFile = path("store/NORD/MAIN/ALFA/20240115_60.iss");
    if (way.contains(u"another series"))
        dayFile = foreign;
    QString output = other;
    if (way == u"symbolic link") {
        QVERIFY(QFile::link(dayFile, other));
    } else if (way.startsWith(u"hard link")) {
        QCOMPARE(
            ::link(QFile::encodeName(dayFile).constData(), QFile::encodeName(other).constData()),
            0);
    } else if (way.endsWith(u"linked from the store")) {
        QVERIFY(QFile::rename(dayFile, other));
        QVERIFY(QFile::link(other, dayFile));
    } else if (way == u"linked venue") {
        QVERIFY(QFile::rename(path("store/NORD"), path("elsewhere")));
        QVERIFY(QFile::link(path("elsewhere"), path("store/NORD")));
        output = dayFile;
    } else {
        output = dayFile;
    }
    const Tree before = readTree(QDir(path("store")));
    const Outcome outcome =
        runTadata(words("export --series NORD/MAIN/ALFA --from 2024-01-15 --to 2024-01-15")
                  << output << QStringLiteral("--store") << path("store"));
    QCOMPARE(outcome,
             failed(QStringLiteral("Файл %1 — файл дня в хранилище: выгрузка стёрла бы его "
                                   "бары. Выберите другой файл")
                        .arg(output)));
    QCOMPARE(readTree(QDir(path("store"))), before);
    QCOMPARE(QFile::exists(other), output == other);
}

void TadataExportTest::namesWhatCannotBeOpened_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("message");
    QTest::newRow("output in a missing directory")
        << QStringLiteral("DIR/missing/out.txt --store DIR/store")
        << QStringLiteral("Невозможно открыть файл DIR/missing/out.txt");
    QTest::newRow("output that is a directory")
        << QStringLiteral("DIR/store --store DIR/store")
        << QStringLiteral("Невозможно открыть файл DIR/store");
    QTest::newRow("missing store") << QStringLiteral("DIR/out.txt --store DIR/nowhere")
                                   << QStringLiteral("Нет каталога DIR/nowhere");
    QTest::newRow("missing deals")
        << QStringLiteral("DIR/out.txt --store DIR/store --deals DIR/nowhere")
        << QStringLiteral("Невозможно открыть файл DIR/nowhere");
    QTest::newRow("deals that are a pipe")
        << QStringLiteral("DIR/out.txt --store DIR/store --deals DIR/pipe")
        << QStringLiteral("Невозможно открыть файл DIR/pipe");
    QTest::newRow("reference that is a pipe")
        << QStringLiteral("DIR/out.txt --store DIR/store --reference DIR/pipe")
        << QStringLiteral("Невозможно открыть файл DIR/pipe");
    QTest::newRow("deals that are a directory")
        << QStringLiteral("DIR/out.txt --store DIR/store --deals DIR/store")
        << QStringLiteral("Невозможно открыть файл DIR/store");
    if (QFile::exists(QStringLiteral("/dev/full"))) {
        QTest::newRow("full disk") << QStringLiteral("/dev/full --store DIR/store")
                                   << QStringLiteral("Невозможно записать файл /dev/full");
    }
}

void TadataExportTest::namesWhatCannotBeOpened()
{
    QFETCH(QString, options);
    QFETCH(QString, message);
    options.replace(QStringLiteral("DIR"), m_dir->path());
    message.replace(QStringLiteral("DIR"), m_dir->path());
    QCOMPARE(::mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    QCOMPARE(runTadata(words("export --series NORD/MAIN/ALFA --from 2024-01-15 --to 2024-01-15")
                       << options.split(u' ')),
             failed(message));
    QVERIFY(!QFile::exists(path("out.txt")));
}

void TadataExportTest::saysWhatIsWrongWithADeal_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("message");
    const auto row = [](const char* name, const QByteArray& file, const char* message) {
        QTest::newRow(name) << file << QString::fromUtf8(message);
    };
    row("moment", dealsHeading + "1705312800000,5,1,,\n10:00,5,1,,\n",
        ", строка 3: «10:00» — не целое число");
    row("price", dealsHeading + "1705312800000,5.x,1,,\n", ", строка 2: «5.x» — не число");
    row("quantity", dealsHeading + "1705312800000,5,1.5,,\n", ", строка 2: «1.5» — не целое число");
    row("too few fields", dealsHeading + "1705312800000,5\n",
        ", строка 2: полей 2, а нужно от 3 до 5");
    row("too many fields", dealsHeading + "1705312800000,5,1,1,1,1\n",
        ", строка 2: полей 6, а нужно от 3 до 5");
    row("no heading", "1705312800000,5,1,1,1\n",
        ": первая строка — сделка, а должна быть заголовком");
}

void TadataExportTest::saysWhatIsWrongWithADeal()
{
    QFETCH(const QByteArray, file);
    QFETCH(const QString, message);
    writeFile(path("deals.csv"), file);
    QCOMPARE(run(qPrintable(QStringLiteral("--deals ") + path("deals.csv"))),
             failed(path("deals.csv") + message));
    QVERIFY(!QFile::exists(path("out.txt")));
}

QTEST_GUILESS_MAIN(TadataExportTest)
#include "tst_tadataexport.moc"
