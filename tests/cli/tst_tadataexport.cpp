// SPDX-License-Identifier: MIT
// Stored bars and deals as text files.

#include "commandtest.h"

#include "support/filetree.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QLockFile>
#include <QtTest/QTest>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

using namespace testsupport;

namespace {

const QByteArray mark = QByteArrayLiteral("\xef\xbb\xbf");
const QByteArray allColumns =
    "<TICKER>,<PER>,<DATE>,<TIME>,<OPEN>,<HIGH>,<LOW>,<CLOSE>,<VOL>,<VAL>,<OPEN_INT>\n";
const QByteArray dealsHeading = "moment_ms_utc,price,quantity,open_interest,value\n";

} // namespace

class TadataExportTest final : public CommandTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();

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
    void aSeriesThatIsNoTextMakesNoDirectory();
    void changesNothingInTheStore();

    void leavesTheOutputAloneWhenNothingIsToBeExported();
    void namesDaysThatCannotBeOpened();
    void namesTimesThatTheClockSkips_data();
    void namesTimesThatTheClockSkips();
    void aReadErrorIsNotTheEnd_data();
    void aReadErrorIsNotTheEnd();
    void aDiskThatSaysAtTheEndThatItIsFullIsNoSuccess();
    void aFileThatMayNotBecomeLargerIsNoSuccess();
    void refusesDayFilesOfItsStoreAsOutput_data();
    void refusesDayFilesOfItsStoreAsOutput();
    void tellsOfDaysThatAreBeingReplaced();
    void refusesToMakeADayFile_data();
    void refusesToMakeADayFile();
    void namesWhatCannotBeOpened_data();
    void namesWhatCannotBeOpened();
    void saysWhatIsWrongWithADeal_data();
    void saysWhatIsWrongWithADeal();

private:
    QByteArray written() const { return readFile(path("out.txt")); }
    // The output that all tests have, with the options that a test is about.
    Outcome run(const QStringList& options) const;
    Outcome run(const char* options) const { return run(words(options)); }
    Outcome runWithDeals(const char* options) const;
};

void TadataExportTest::init()
{
    CommandTest::init();
    writeFile(path("store/NORD/MAIN/ALFA/20240115_60.iss"),
              "100100;1.50;1.70;1.40;1.60;12;3.00;7\n"
              "100200;1.60;1.80;1.50;1.70;13;1.00;8\n");
    writeFile(path("store/NORD/MAIN/ALFA/20240115_1.iss"), "100001;9;9;9;9;1;0;0\n");
}

Outcome TadataExportTest::run(const QStringList& options) const
{
    return runTadata(exportLine(path("out.txt"), options));
}

Outcome TadataExportTest::runWithDeals(const char* options) const
{
    return run(words(options) << QStringLiteral("--deals") << path("deals.csv"));
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
    QCOMPARE(run("--timeframe 300 --no-header --line-format CLOSE,VOL --finished-only"),
             succeeded());
    QCOMPARE(written(), mark + "1.70,25\n");
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
    QCOMPARE(run(words("--timeframe 1 --line-format") << format), succeeded());
    QCOMPARE(this->written(), mark + written);
}

void TadataExportTest::writesTheDealsOfToday()
{
    writeFile(path("deals.csv"), dealsHeading + "1705312800000,120.05,3,,360.15\n"
                                                "1705312810500,120.10,2,5,240.20\n"
                                                "1705312859999,119.5,1,6,\n"
                                                "1705312860000,120.00,5000000000,7,0.5\n"
                                                "1705312860001,121,1,,\n");
    QCOMPARE(runWithDeals("--today 2024-01-15"), succeeded());
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
    QCOMPARE(runWithDeals("--from 2024-01-14 --today 2024-01-15 --no-header "
                          "--line-format DATE,TIME,VOL --timeframe 3600"),
             succeeded());
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
    QCOMPARE(runWithDeals("--today 2024-01-15 --no-header --line-format CLOSE,VOL,VAL,OPEN_INT"),
             succeeded());
    QCOMPARE(written(), bar.isEmpty() ? QByteArray() : mark + bar);
}

void TadataExportTest::foldsDealsInTheOrderOfTheFile()
{
    writeFile(path("deals.csv"), dealsHeading + "1705312860000,5,1,,\n"
                                                "1705312800000,9,1,,\n"
                                                "1705312860001,6,1,,\n");
    QCOMPARE(runWithDeals("--today 2024-01-15 --no-header --line-format TIME,OPEN,HIGH,CLOSE"),
             succeeded());
    QCOMPARE(written(), mark + "100100,5,9,9\n"
                               "100200,6,6,6\n");
}

void TadataExportTest::skipsDaysAfterToday()
{
    writeFile(path("deals.csv"), dealsHeading + "1705312800000,5,1,,\n");
    QCOMPARE(runWithDeals("--to 2024-01-31 --today 2024-01-15 --no-header --line-format TIME,OPEN"),
             succeeded());
    QCOMPARE(written(), mark + "100000,5\n");
}

// The directory knows the series of the deals from then on.
void TadataExportTest::exportsASeriesThatNothingIsStoredOf()
{
    writeFile(path("deals.csv"), dealsHeading + "1705312800000,5,1,,\n");
    for (const char* series :
         {"NOWHERE/NOTHING/NOBODY", "NORD/MAIN/NOBODY", "NORDFUT/FUT/NOBODY"}) {
        const Outcome outcome =
            run(words("--today 2024-01-15 --no-header --line-format TICKER,OPEN --series")
                << QLatin1String(series) << QStringLiteral("--deals") << path("deals.csv"));
        QCOMPARE(outcome, succeeded());
        QCOMPARE(written(), mark + "NOBODY,5\n");
    }
    QCOMPARE(run("--series NORD/MAIN/NOBODY --no-header"), succeeded());
    QCOMPARE(written(), QByteArray());
}

void TadataExportTest::aSeriesThatIsNoTextMakesNoDirectory()
{
    // What a byte that is no UTF-8 becomes in a word of the command line.
    const QString series = QStringLiteral("NORD/MAIN/AL\ufffd");
    const QString reason = QStringLiteral(
        "--series: неверное значение «%1»: в кодах не может быть того, что не UTF-8");
    const Outcome outcome = run({QStringLiteral("--series"), series});
    QCOMPARE(outcome.exitCode, 2);
    QVERIFY2(outcome.err.contains(reason.arg(series).toUtf8()), outcome.err.constData());
    QCOMPARE(readDirectories(QDir(path("store"))), words("NORD NORD/MAIN NORD/MAIN/ALFA"));
}

void TadataExportTest::changesNothingInTheStore()
{
    const Tree before = stored();
    QCOMPARE(run("--timeframe 86400"), succeeded());
    QCOMPARE(stored(), before);
}

// What is there already stays, too.
void TadataExportTest::leavesTheOutputAloneWhenNothingIsToBeExported()
{
    writeFile(path("out.txt"), "earlier");
    const Outcome outcome = run("--from 2024-01-17 --to 2024-01-18 --today 2024-01-16");
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

void TadataExportTest::namesTimesThatTheClockSkips_data()
{
    QTest::addColumn<QString>("zone");
    QTest::addColumn<QByteArray>("time");
    QTest::addColumn<QString>("said");
    const auto row = [](const char* name, const char* zone, const char* time,
                        const char* said = nullptr) {
        QTest::newRow(name) << QString::fromLatin1(zone) << QByteArray(time)
                            << QString::fromUtf8(said);
    };
    constexpr char skipped[] =
        "2024-03-31: часы этого компьютера пропускают время с 02:00:00 до "
        "03:00:00, и его бары могли слиться с соседними. С TZ=UTC перед командой каждый из них "
        "выгружается сам\n";
    row("first skipped", "Europe/Berlin", "020000", skipped);
    row("last skipped", "Europe/Berlin", "025900", skipped);
    row("before", "Europe/Berlin", "015900");
    row("after", "Europe/Berlin", "030000");
    row("a clock without summer", "UTC", "023000");
}

void TadataExportTest::namesTimesThatTheClockSkips()
{
    QFETCH(const QString, zone);
    QFETCH(const QByteArray, time);
    QFETCH(const QString, said);
    writeFile(path("store/NORD/MAIN/ALFA/20240331_60.iss"), time + ";1;1;1;1;1;1;1\n");
    QProcessEnvironment environment = plainEnvironment();
    environment.insert(QStringLiteral("TZ"), zone);
    const QStringList days = words("--from 2024-03-31 --to 2024-03-31");
    const Outcome outcome = runTadata(exportLine(path("out.txt"), days), environment);
    QCOMPARE(outcome, (Outcome{0, {}, said.toUtf8()}));
    QVERIFY(!written().isEmpty());
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
    const QStringList line =
        exportLine(path("out.txt"), words("--to 2024-01-16 --today 2024-01-17 --deals")
                                        << path("deals.csv") << QStringLiteral("--reference")
                                        << path("reference.json"));
    const Outcome outcome = runTadata(line, faultyEnvironment(QStringLiteral("read"), full, EIO));
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.err.startsWith("Невозможно прочитать файл " + full.toUtf8()),
             outcome.err.constData());
}

void TadataExportTest::aDiskThatSaysAtTheEndThatItIsFullIsNoSuccess()
{
    const Outcome outcome =
        runTadata(exportLine(path("out.txt")),
                  faultyEnvironment(QStringLiteral("close"), QStringLiteral("/out.txt"), EDQUOT));
    QCOMPARE(outcome,
             failed(QStringLiteral("Невозможно записать файл ") + path("out.txt"), EDQUOT));
}

// It takes a part first, and only of the rest it says why not.
void TadataExportTest::aFileThatMayNotBecomeLargerIsNoSuccess()
{
    QByteArray bars;
    for (int minute = 0; minute < 60; ++minute)
        bars += QByteArray::number(100000 + minute * 100) + ";1.5;1.7;1.4;1.6;1;1;1\n";
    writeFile(path("store/NORD/MAIN/ALFA/20240115_60.iss"), bars);
    QCOMPARE(runTadataLimited(exportLine(path("out.txt"))),
             failed(QStringLiteral("Невозможно записать файл ") + path("out.txt"), EFBIG));
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
    const Tree before = stored();
    QCOMPARE(runTadata(exportLine(output)),
             failed(QStringLiteral("Файл %1 — файл дня в хранилище: выгрузка стёрла бы его "
                                   "бары. Выберите другой файл")
                        .arg(output)));
    QCOMPARE(stored(), before);
    QCOMPARE(QFile::exists(other), output == other);
}

// By who holds the series: what he has not touched is as it was.
void TadataExportTest::tellsOfDaysThatAreBeingReplaced()
{
    const QString day = path("store/NORD/MAIN/ALFA/20240115_60.iss");
    const QByteArray bar = "100000;1;1;1;1;0;0;0\n";
    writeFile(day, bar);
    QVERIFY(QDir(path("store")).mkpath(path("store-restore/locks/NORD/MAIN")));
    QFile old(day);
    QVERIFY(old.open(QIODevice::ReadWrite));
    QVERIFY(old.setFileTime(QDateTime::currentDateTime().addSecs(-60),
                            QFileDevice::FileModificationTime));
    old.close();
    QLockFile lock(path("store-restore/locks/NORD/MAIN/ALFA.lock"));
    QVERIFY(lock.tryLock());
    const auto exported = [this] { return runTadata(exportLine(path("out.txt"))); };
    const Outcome told =
        failed(QStringLiteral("Файл %1 меняли, пока шла выгрузка: повторите её").arg(day));
    QCOMPARE(exported(), succeeded());
    writeFile(day, QByteArray());
    QCOMPARE(exported(), told);
    writeFile(day, bar);
    QCOMPARE(exported(), told);
    lock.unlock();
    QCOMPARE(exported(), succeeded());
}

void TadataExportTest::refusesToMakeADayFile_data()
{
    QTest::addColumn<QString>("output");
    for (const char* output :
         {"store/NORD/MAIN/ALFA/20240116_60.iss", "store/NORD/MAIN/ALFA/20240116_1.iss",
          "store/NORD/MAIN/ALFA/20240115_60", "store/NORD/MAIN/BARK/20240116_60.iss",
          "store/20240116_60.iss", "store/../store/NORD/MAIN/ALFA/20240116_60.iss",
          "elsewhere/20240116_60.iss", "alias/NORD/MAIN/ALFA/20240116_60.iss", "link.txt",
          "chain.txt", "store/OUTER/MAIN/ALFA/20240116_60.iss"})
        QTest::newRow(output) << QString::fromLatin1(output);
}

// By whatever way its name leads into the store.
void TadataExportTest::refusesToMakeADayFile()
{
    QFETCH(const QString, output);
    QVERIFY(QDir().mkpath(path("store/NORD/MAIN/BARK")) && QDir().mkpath(path("outer/MAIN/ALFA")));
    QVERIFY(QFile::link(path("store/NORD/MAIN/ALFA"), path("elsewhere")));
    QVERIFY(QFile::link(path("store"), path("alias")));
    QVERIFY(QFile::link(path("outer"), path("store/OUTER")));
    QVERIFY(QFile::link(path("store/NORD/MAIN/ALFA/20240117_60.iss"), path("link.txt")));
    QVERIFY(QFile::link(QStringLiteral("link.txt"), path("chain.txt")));
    const Tree before = readTree(directory());
    QCOMPARE(runTadata(exportLine(path(output))),
             failed(QStringLiteral("Файл %1 стал бы файлом дня в хранилище: их пишет только "
                                   "импорт. Выберите другой файл")
                        .arg(path(output))));
    QCOMPARE(readTree(directory()), before);
    // Other names below the store are nobody's, and so are day files' names in other places.
    for (const char* free : {"store/NORD/MAIN/ALFA/20240116.txt", "20240116_60.iss"})
        QCOMPARE(runTadata(exportLine(path(free))), succeeded());
}

void TadataExportTest::namesWhatCannotBeOpened_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("message");
    QTest::addColumn<int>("error");
    QTest::newRow("output in a missing directory")
        << QStringLiteral("DIR/missing/out.txt --store DIR/store")
        << QStringLiteral("Невозможно открыть файл DIR/missing/out.txt") << ENOENT;
    QTest::newRow("output that is a directory")
        << QStringLiteral("DIR/store --store DIR/store")
        << QStringLiteral("Невозможно открыть файл DIR/store") << EISDIR;
    QTest::newRow("missing store") << QStringLiteral("DIR/out.txt --store DIR/nowhere")
                                   << QStringLiteral("Нет каталога DIR/nowhere") << 0;
    QTest::newRow("missing deals")
        << QStringLiteral("DIR/out.txt --store DIR/store --deals DIR/nowhere")
        << QStringLiteral("Невозможно открыть файл DIR/nowhere") << 0;
    QTest::newRow("deals that are a pipe")
        << QStringLiteral("DIR/out.txt --store DIR/store --deals DIR/pipe")
        << QStringLiteral("Невозможно открыть файл DIR/pipe") << 0;
    QTest::newRow("reference that is a pipe")
        << QStringLiteral("DIR/out.txt --store DIR/store --reference DIR/pipe")
        << QStringLiteral("Невозможно открыть файл DIR/pipe") << 0;
    QTest::newRow("deals that are a directory")
        << QStringLiteral("DIR/out.txt --store DIR/store --deals DIR/store")
        << QStringLiteral("Невозможно открыть файл DIR/store") << 0;
    if (QFile::exists(QStringLiteral("/dev/full"))) {
        QTest::newRow("full disk")
            << QStringLiteral("/dev/full --store DIR/store")
            << QStringLiteral("Невозможно записать файл /dev/full") << ENOSPC;
    }
}

void TadataExportTest::namesWhatCannotBeOpened()
{
    QFETCH(QString, options);
    QFETCH(QString, message);
    QFETCH(const int, error);
    options.replace(QStringLiteral("DIR"), m_dir->path());
    message.replace(QStringLiteral("DIR"), m_dir->path());
    QCOMPARE(::mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    QStringList line = options.split(u' ');
    const QString output = line.takeFirst();
    QCOMPARE(runTadata(exportLine(output, line)), failed(message, error));
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
    QCOMPARE(runWithDeals(""), failed(path("deals.csv") + message));
    QVERIFY(!QFile::exists(path("out.txt")));
}

QTEST_GUILESS_MAIN(TadataExportTest)
#include "tst_tadataexport.moc"
