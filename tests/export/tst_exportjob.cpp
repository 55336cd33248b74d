// SPDX-License-Identifier: MIT
#include "exportjob.h"

#include "support/faults.h"
#include "support/filetree.h"
#include "support/otheruser.h"
#include "support/strictlog.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <algorithm>
#include <memory>

#ifdef Q_OS_UNIX
#    include <sys/stat.h>
#endif

using testsupport::readFile;
using testsupport::writeFile;

namespace {

const QByteArray mark = QByteArrayLiteral("\xef\xbb\xbf");

ExportDetails detailsOf(const QString& outputPath)
{
    ExportDetails details;
    details.stockCode = QStringLiteral("NORD");
    details.boardCode = QStringLiteral("MAIN");
    details.securityName = QStringLiteral("ALFA");
    details.timeframe = 60;
    details.separator = QStringLiteral(";");
    details.dateFormat = QStringLiteral("yyyyMMdd");
    details.timeFormat = QStringLiteral("hhmmss");
    details.lineFormat = QStringLiteral("DATE,TIME,OPEN,HIGH,LOW,CLOSE,VOL,VAL,OPEN_INT");
    details.dateFrom = QDate(2024, 1, 15);
    details.dateTo = details.dateFrom;
    details.outputPath = outputPath;
    return details;
}

} // namespace

// Past days: what the store holds. The deals of today have a test of their own.
class TestExportJob final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void writesABarAtEveryLineAndOnceMoreWhenItIsFinished();
    void foldsAnIntervalLineByLine();
    void beginsEachDayAnew();
    void takesTheFilesOfTheTimeframe_data();
    void takesTheFilesOfTheTimeframe();
    void writesTheHeaderFirst();
    void writesAnEmptyFileForNothing();
    void passesOverDaysThatAreNotStored_data();
    void passesOverDaysThatAreNotStored();
    void readsLinesOfAllKinds_data();
    void readsLinesOfAllKinds();
    void stampsATimeThatIsNoneWithMidnight();
    void foldsAnEarlierLineIntoTheOpenBar();
    void exportsWhatTheEditorHasWritten();
    void tellsTheShareOfTheDaysThatAreLeft();
    void asksForTheDirectoryOnceAndOnlyForAPastDay();
    void takesTodayFromNoFile();
    void replacesTheOutput();
    void writesASingleByte();
    void tellsOfDaysThatAreReplacedMeanwhile();
    void namesAnOutputThatCannotBeOpened_data();
    void namesAnOutputThatCannotBeOpened();
    void namesAnOutputThatCannotBeWritten();
    void aFullDiskEndsTheExportWithTheDay();
    void anErrorOfClosingIsNoSuccess();
    void aDayThatCannotBeReadToItsEndEndsTheExport();
    void aDayThatIsWrittenAnewMeanwhileEndsTheExport();
    void aDayThatIsTooLargeEndsTheExport();
    void namesTheDaysThatCannotBeOpened();
    void anIntervalWithoutDatesIsEmpty();
    void saysWhenASumDoesNotFit();
    void refusesToReplaceADayFile();
    void refusesWhatMayBeADayFile();

private:
    QString run(const ExportDetails& details);
    void store(const char* name, const QByteArray& content);
    QString output() const { return m_dir->filePath(QStringLiteral("out.txt")); }
    QByteArray written() const { return readFile(output()); }

    std::unique_ptr<QTemporaryDir> m_dir;
    QDate m_today;
    QList<int> m_progress;
    int m_directoryCalls = 0;
};

void TestExportJob::init()
{
    testsupport::failOnStrayWarnings();
    m_dir = std::make_unique<QTemporaryDir>();
    m_today = QDate(2024, 3, 1);
    m_progress.clear();
    m_directoryCalls = 0;
}

void TestExportJob::cleanup()
{
    m_dir.reset();
}

QString TestExportJob::run(const ExportDetails& details)
{
    const auto seriesDir = [this] {
        ++m_directoryCalls;
        return QDir(m_dir->filePath(QStringLiteral("series")));
    };
    return tadata::exportBars(details, {m_today, -1}, seriesDir,
                              [this](int percent) { m_progress.append(percent); })
        .outcome.message();
}

void TestExportJob::store(const char* name, const QByteArray& content)
{
    QVERIFY(QDir(m_dir->path()).mkpath(QStringLiteral("series")));
    writeFile(m_dir->filePath(QStringLiteral("series/") + QLatin1String(name)), content);
}

void TestExportJob::writesABarAtEveryLineAndOnceMoreWhenItIsFinished()
{
    store("20240115_60.iss", "100100;1.50;1.70;1.40;1.60;12;345.60;7\n"
                             "100200;1.60;1.80;1.50;1.70;13;100.00;8\n");
    QVERIFY(run(detailsOf(output())).isNull());
    QCOMPARE(written(), mark + "20240115;100100;1.50;1.70;1.40;1.60;12;345.60;7\n"
                               "20240115;100100;1.50;1.70;1.40;1.60;12;345.60;7\n"
                               "20240115;100200;1.60;1.80;1.50;1.70;13;100.00;8\n");
    ExportDetails finished = detailsOf(output());
    finished.finishedOnly = true;
    QVERIFY(run(finished).isNull());
    QCOMPARE(written(), mark + "20240115;100100;1.50;1.70;1.40;1.60;12;345.60;7\n"
                               "20240115;100200;1.60;1.80;1.50;1.70;13;100.00;8\n");
}

void TestExportJob::foldsAnIntervalLineByLine()
{
    store("20240115_60.iss", "100100;5;6;4;5;1;1.0;1\n"
                             "100200;5;9;5;8;2;2.50;2\n"
                             "100500;8;8;3;4;3;3;3\n"
                             "100600;4;4;4;4;4;4;4\n");
    ExportDetails details = detailsOf(output());
    details.timeframe = 300;
    QVERIFY(run(details).isNull());
    QCOMPARE(written(), mark + "20240115;100500;5;6;4;5;1;1.0;1\n"
                               "20240115;100500;5;9;4;8;3;3.50;2\n"
                               "20240115;100500;5;9;3;4;6;6.50;3\n"
                               "20240115;100500;5;9;3;4;6;6.50;3\n"
                               "20240115;101000;4;4;4;4;4;4;4\n");
}

void TestExportJob::beginsEachDayAnew()
{
    store("20240115_60.iss", "235900;5;6;4;5;1;1;1\n");
    store("20240116_60.iss", "000000;7;7;7;7;1;1;1\n");
    ExportDetails details = detailsOf(output());
    details.dateTo = QDate(2024, 1, 16);
    details.timeframe = 86400;
    QVERIFY(run(details).isNull());
    // Two bars with one stamp: the first day's ends where the second one begins.
    QCOMPARE(written(), mark + "20240116;000000;5;6;4;5;1;1;1\n"
                               "20240116;000000;7;7;7;7;1;1;1\n");
}

void TestExportJob::takesTheFilesOfTheTimeframe_data()
{
    QTest::addColumn<int>("timeframe");
    QTest::addColumn<QByteArray>("open");
    QTest::newRow("1 second") << 1 << QByteArray("1");
    QTest::newRow("59 seconds") << 59 << QByteArray("1");
    QTest::newRow("1 minute") << 60 << QByteArray("60");
    QTest::newRow("1 hour") << 3600 << QByteArray("60");
    QTest::newRow("1 day") << 86400 << QByteArray("60");
}

void TestExportJob::takesTheFilesOfTheTimeframe()
{
    QFETCH(const int, timeframe);
    QFETCH(const QByteArray, open);
    store("20240115_1.iss", "100000;1;1;1;1;0;0;0\n");
    store("20240115_60.iss", "100000;60;60;60;60;0;0;0\n");
    store("20240115_60", "100000;99;99;99;99;0;0;0\n");
    store("20240115_300.iss", "100000;300;300;300;300;0;0;0\n");
    ExportDetails details = detailsOf(output());
    details.timeframe = timeframe;
    details.lineFormat = QStringLiteral("OPEN");
    QVERIFY(run(details).isNull());
    QCOMPARE(written(), mark + open + '\n');
}

void TestExportJob::writesTheHeaderFirst()
{
    store("20240115_60.iss", "100000;1;2;0;1;0;0;0\n");
    ExportDetails details = detailsOf(output());
    details.addHeader = true;
    details.lineFormat = QStringLiteral("CLOSE,DATE");
    QVERIFY(run(details).isNull());
    QCOMPARE(written(), mark + "<CLOSE>;<DATE>\n20240115\n1;");
}

void TestExportJob::writesAnEmptyFileForNothing()
{
    QVERIFY(run(detailsOf(output())).isNull());
    QVERIFY(QFile::exists(output()));
    QCOMPARE(written(), QByteArray());

    ExportDetails details = detailsOf(output());
    details.dateTo = details.dateFrom.addDays(-1);
    details.addHeader = true;
    QVERIFY(run(details).isNull());
    QCOMPARE(written(),
             mark + "<DATE>;<TIME>;<OPEN>;<HIGH>;<LOW>;<CLOSE>;<VOL>;<VAL>;<OPEN_INT>\n");
}

void TestExportJob::passesOverDaysThatAreNotStored_data()
{
    QTest::addColumn<QString>("obstacle");
    for (const char* name : {"nothing", "empty file", "directory", "pipe", "dangling link"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestExportJob::passesOverDaysThatAreNotStored()
{
    QFETCH(const QString, obstacle);
    store("20240115_60.iss", "100000;1;1;1;1;0;0;0\n");
    store("20240117_60.iss", "100000;3;3;3;3;0;0;0\n");
    const QString between = m_dir->filePath(QStringLiteral("series/20240116_60.iss"));
    if (obstacle == u"empty file")
        writeFile(between, QByteArray());
    else if (obstacle == u"directory")
        QVERIFY(QDir().mkpath(between));
    else if (obstacle == u"dangling link")
        QVERIFY(QFile::link(m_dir->filePath(QStringLiteral("nowhere")), between));
#ifdef Q_OS_UNIX
    else if (obstacle == u"pipe")
        QCOMPARE(mkfifo(QFile::encodeName(between).constData(), 0600), 0);
#endif
    ExportDetails details = detailsOf(output());
    details.dateTo = QDate(2024, 1, 17);
    details.lineFormat = QStringLiteral("OPEN");
    QVERIFY(run(details).isNull());
    QCOMPARE(written(), mark + "1\n3\n");
    QCOMPARE(m_progress, QList<int>({66, 33, 0, 100}));
}

void TestExportJob::readsLinesOfAllKinds_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("bar");
    const auto row = [](const char* name, const char* line, const char* bar) {
        QTest::newRow(name) << QByteArray(line) << QByteArray(bar);
    };
    row("eight fields", "100000;1.5;2;0.5;1;12;3.40;5\n", "100000;1.5;2;0.5;1;12;3.40;5\n");
    row("five fields", "100000;1.5;2;0.5;1\n", "100000;1.5;2;0.5;1;0;0;0\n");
    row("six fields", "100000;1.5;2;0.5;1;12\n", "100000;1.5;2;0.5;1;12;0;0\n");
    row("seven fields", "100000;1.5;2;0.5;1;12;3.40\n", "100000;1.5;2;0.5;1;12;3.40;0\n");
    row("nine fields", "100000;1.5;2;0.5;1;12;3.40;5;9\n", "100000;1.5;2;0.5;1;12;3.40;5\n");
    row("CRLF", "100000;1.5;2;0.5;1;12;3.40;5\r\n", "100000;1.5;2;0.5;1;12;3.40;5\n");
    row("no line end", "100000;1.5;2;0.5;1;12;3.40;5", "100000;1.5;2;0.5;1;12;3.40;5\n");
    row("largest volume", "100000;1;1;1;1;2147483647;0;0\n", "100000;1;1;1;1;2147483647;0;0\n");
    row("three thousand million", "100000;1;1;1;1;3000000000;0;0\n", "100000;1;1;1;1;0;0;0\n");
    row("volume below 32 bits", "100000;1;1;1;1;-2147483649;0;0\n", "100000;1;1;1;1;0;0;0\n");
    row("negative volume", "100000;1;1;1;1;-5;0;0\n", "100000;1;1;1;1;-5;0;0\n");
    row("volume that is none", "100000;1;1;1;1;1.5;0;0\n", "100000;1;1;1;1;0;0;0\n");
    row("interest above 32 bits", "100000;1;1;1;1;1;0;2147483648\n", "100000;1;1;1;1;1;0;0\n");
    row("interest that is none", "100000;1;1;1;1;1;0;x\n", "100000;1;1;1;1;1;0;0\n");
    row("price that is none", "100000;1,5;2;.5;1.\n", "100000;0;2;0;0;0;0;0\n");
    row("money that is none", "100000;1;1;1;1;1;1e3;1\n", "100000;1;1;1;1;1;0;1\n");
    row("empty fields", "100000;;;;;;;\n", "100000;0;0;0;0;0;0;0\n");
    row("money before volume", "100000;1;1;1;1;0.00;12;0\n", "100000;1;1;1;1;0;12;0\n");
    row("byte order mark",
        "\xef\xbb\xbf"
        "100000;1;1;1;1;1;1;1\n",
        "100000;1;1;1;1;1;1;1\n");
}

void TestExportJob::readsLinesOfAllKinds()
{
    QFETCH(const QByteArray, line);
    QFETCH(const QByteArray, bar);
    store("20240115_60.iss", line);
    QVERIFY(run(detailsOf(output())).isNull());
    QCOMPARE(written(), mark + "20240115;" + bar);
}

void TestExportJob::stampsATimeThatIsNoneWithMidnight()
{
    store("20240115_60.iss", "246000;1;1;1;1;1;0;0\n"
                             "\n"
                             "100000;2;2;2;2;2;0;0\n");
    QVERIFY(run(detailsOf(output())).isNull());
    // The second line has nothing but a midnight of its own, which is not after the first one.
    QCOMPARE(written(), mark + "20240115;000000;1;1;1;1;1;0;0\n"
                               "20240115;000000;1;1;0;0;1;0;0\n"
                               "20240115;000000;1;1;0;0;1;0;0\n"
                               "20240115;100000;2;2;2;2;2;0;0\n");
}

void TestExportJob::foldsAnEarlierLineIntoTheOpenBar()
{
    store("20240115_60.iss", "100500;2;2;2;2;1;0;0\n"
                             "100100;9;9;1;5;1;0;0\n");
    QVERIFY(run(detailsOf(output())).isNull());
    QCOMPARE(written(), mark + "20240115;100500;2;2;2;2;1;0;0\n"
                               "20240115;100500;2;9;1;5;2;0;0\n");
}

// Its lines have money and volume the other way round; money without a point passes for a volume.
void TestExportJob::exportsWhatTheEditorHasWritten()
{
    store("20240115_60.iss", "100000;1;1;1;1;345.60;12;7\n"
                             "100100;1;1;1;1;345;12;7\n");
    QVERIFY(run(detailsOf(output())).isNull());
    QCOMPARE(written(), mark + "20240115;100000;1;1;1;1;0;12;7\n"
                               "20240115;100000;1;1;1;1;0;12;7\n"
                               "20240115;100100;1;1;1;1;345;12;7\n");
}

void TestExportJob::tellsTheShareOfTheDaysThatAreLeft()
{
    ExportDetails details = detailsOf(output());
    details.dateTo = details.dateFrom.addDays(6);
    QVERIFY(run(details).isNull());
    QCOMPARE(m_progress, QList<int>({85, 71, 57, 42, 28, 14, 0, 100}));

    // The share is taken before it becomes a percentage: 57 hundredths are a little less than 57.
    m_progress.clear();
    details.dateTo = details.dateFrom.addDays(99);
    m_today = details.dateTo.addDays(1);
    QVERIFY(run(details).isNull());
    QCOMPARE(m_progress.size(), 101);
    QCOMPARE(m_progress.at(42), 56);
    QCOMPARE(m_progress.at(49), 50);
}

void TestExportJob::asksForTheDirectoryOnceAndOnlyForAPastDay()
{
    ExportDetails details = detailsOf(output());
    m_today = details.dateFrom;
    QVERIFY(run(details).isNull());
    QCOMPARE(m_directoryCalls, 0);

    m_today = details.dateTo.addDays(1);
    details.dateFrom = details.dateTo.addDays(-3);
    QVERIFY(run(details).isNull());
    QCOMPARE(m_directoryCalls, 1);
}

void TestExportJob::takesTodayFromNoFile()
{
    store("20240115_60.iss", "100000;1;1;1;1;0;0;0\n");
    store("20240116_60.iss", "100000;2;2;2;2;0;0;0\n");
    m_today = QDate(2024, 1, 16);
    ExportDetails details = detailsOf(output());
    details.dateTo = m_today;
    details.lineFormat = QStringLiteral("OPEN");
    QVERIFY(run(details).isNull());
    QCOMPARE(written(), mark + "1\n");
    // Today has no value of its own.
    QCOMPARE(m_progress, QList<int>({50, 100}));
}

void TestExportJob::replacesTheOutput()
{
    writeFile(output(), QByteArray(100000, 'x'));
    store("20240115_60.iss", "100000;1;1;1;1;0;0;0\n");
    ExportDetails details = detailsOf(output());
    details.lineFormat = QStringLiteral("OPEN");
    QVERIFY(run(details).isNull());
    QCOMPARE(written(), mark + "1\n");
}

// One bar with nothing behind its only number.
void TestExportJob::writesASingleByte()
{
    store("20240115_60.iss", "100000;7;7;7;7;0;0;0\n");
    ExportDetails details = detailsOf(output());
    details.separator.clear();
    details.lineFormat = QStringLiteral("OPEN,");
    QVERIFY(run(details).isNull());
    QCOMPARE(written(), mark + "7");
}

// An import empties a day before it writes it anew: who reads it then finds nothing, or a part.
void TestExportJob::tellsOfDaysThatAreReplacedMeanwhile()
{
    for (const char* day : {"20240115_60.iss", "20240116_60.iss", "20240117_60.iss"})
        store(day, "100000;1;1;1;1;0;0;0\n");
    ExportDetails details = detailsOf(output());
    details.dateTo = QDate(2024, 1, 17);
    const QDir series(m_dir->filePath(QStringLiteral("series")));
    const auto seriesDir = [&series] { return series; };
    const auto changed = [&] {
        return tadata::exportBars(details, {m_today, -1}, seriesDir, [](int) {}).changed();
    };
    QCOMPARE(changed(), QStringList());
    const testsupport::Meanwhile empties(testsupport::SystemCall::Open,
                                         QStringLiteral("20240116_60.iss"),
                                         [this] { store("20240116_60.iss", QByteArray()); });
    const testsupport::Meanwhile writes(testsupport::SystemCall::Open,
                                        QStringLiteral("20240117_60.iss"), [this] {
                                            store("20240115_60.iss", "100000;2;2;2;2;0;0;0\n");
                                            store("20240116_60.iss", "100000;2;2;2;2;0;0;0\n");
                                            store("20240118_60.iss", "100000;2;2;2;2;0;0;0\n");
                                        });
    QCOMPARE(changed(), QStringList({series.filePath(QStringLiteral("20240115_60.iss")),
                                     series.filePath(QStringLiteral("20240116_60.iss"))}));
    QCOMPARE(changed(), QStringList());
}

void TestExportJob::namesAnOutputThatCannotBeOpened_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("in a missing directory") << QStringLiteral("missing/out.txt");
    QTest::newRow("a directory") << QStringLiteral("series");
    QTest::newRow("below a file") << QStringLiteral("series/20240115_60.iss/out.txt");
}

void TestExportJob::namesAnOutputThatCannotBeOpened()
{
    QFETCH(const QString, name);
    store("20240115_60.iss", "100000;1;1;1;1;0;0;0\n");
    const auto before = testsupport::readTree(QDir(m_dir->path()));
    const QString path = m_dir->filePath(name);
    QCOMPARE(run(detailsOf(path)), QStringLiteral("Невозможно открыть файл %1").arg(path));
    QCOMPARE(testsupport::readTree(QDir(m_dir->path())), before);
    QVERIFY(m_progress.isEmpty());
    QCOMPARE(m_directoryCalls, 0);
}

void TestExportJob::namesAnOutputThatCannotBeWritten()
{
    const QString full = QStringLiteral("/dev/full");
    if (!QFile::exists(full))
        QSKIP("there is no file that is always full here");
    store("20240115_60.iss", QByteArray("100000;1;1;1;1;0;0;0\n").repeated(2000));
    ExportDetails details = detailsOf(full);
    details.dateTo = details.dateFrom.addDays(3);
    QCOMPARE(run(details), QStringLiteral("Невозможно записать файл %1").arg(full));
    QVERIFY(!m_progress.contains(100));
}

// A day or two are not too short to tell.
void TestExportJob::aFullDiskEndsTheExportWithTheDay()
{
    const QString full = QStringLiteral("/dev/full");
    if (!QFile::exists(full))
        QSKIP("there is no file that is always full here");
    for (const char* day : {"20240115_60.iss", "20240116_60.iss", "20240117_60.iss"})
        store(day, "100000;1;1;1;1;0;0;0\n");
    ExportDetails details = detailsOf(full);
    details.dateTo = details.dateFrom.addDays(3);
    QCOMPARE(run(details), QStringLiteral("Невозможно записать файл %1").arg(full));
    QCOMPARE(m_progress, QList<int>{75});
}

void TestExportJob::anErrorOfClosingIsNoSuccess()
{
    store("20240115_60.iss", "100000;1;1;1;1;0;0;0\n");
    const testsupport::Fault fault(testsupport::SystemCall::Close, output(), EDQUOT);
    QCOMPARE(run(detailsOf(output())), QStringLiteral("Невозможно записать файл %1").arg(output()));
    QVERIFY(!m_progress.contains(100));
}

void TestExportJob::aDayThatCannotBeReadToItsEndEndsTheExport()
{
    store("20240115_60.iss", "100000;1;1;1;1;0;0;0\n");
    store("20240116_60.iss", QByteArray("100000;2;2;2;2;0;0;0\n").repeated(20000));
    store("20240117_60.iss", "100000;3;3;3;3;0;0;0\n");
    const testsupport::Fault fault(testsupport::SystemCall::Read, QStringLiteral("20240116_60.iss"),
                                   EIO, 1);
    ExportDetails details = detailsOf(output());
    details.dateTo = details.dateFrom.addDays(2);
    details.lineFormat = QStringLiteral("CLOSE");
    const QString error = run(details);
    const QString path = m_dir->filePath(QStringLiteral("series/20240116_60.iss"));
    QVERIFY2(error.startsWith(QStringLiteral("Невозможно прочитать файл %1: ").arg(path)),
             qPrintable(error));
    QVERIFY(!m_progress.contains(100));
    // No bar of the line that the error has cut, and none behind it.
    const QList<QByteArray> closes = written().mid(mark.size()).split('\n');
    QVERIFY(std::all_of(closes.begin(), closes.end(), [](const QByteArray& close) {
        return close.isEmpty() || close == "1" || close == "2";
    }));
}

// Otherwise the end of an old line and the beginning of a new one would make a bar.
void TestExportJob::aDayThatIsWrittenAnewMeanwhileEndsTheExport()
{
    store("20240115_60.iss", QByteArray("100000;2;2;2;2;0;0;0\n").repeated(40000));
    const QString path = m_dir->filePath(QStringLiteral("series/20240115_60.iss"));
    const testsupport::Meanwhile end(testsupport::SystemCall::ReadEnd, path, [&] {
        writeFile(path, QByteArray("100000;3.5;3.5;3.5;3.5;0;0;0\n").repeated(20000));
    });
    QCOMPARE(
        run(detailsOf(output())),
        QStringLiteral("Невозможно прочитать файл %1: он изменился, пока его читали").arg(path));
}

void TestExportJob::aDayThatIsTooLargeEndsTheExport()
{
    store("20240115_60.iss", "100000;1;1;1;1;0;0;0\n");
    const QString path = m_dir->filePath(QStringLiteral("series/20240115_60.iss"));
    QVERIFY(QFile::resize(path, qint64(1024) * 1024 * 1024 + 1)); // takes no room
    QCOMPARE(run(detailsOf(output())),
             QStringLiteral("Невозможно прочитать файл %1: файл больше 1 ГБ").arg(path));
}

void TestExportJob::namesTheDaysThatCannotBeOpened()
{
    store("20240115_60.iss", "100000;1;1;1;1;0;0;0\n");
    store("20240116_60.iss", "100000;2;2;2;2;0;0;0\n");
    const QString path = m_dir->filePath(QStringLiteral("series/20240116_60.iss"));
    const testsupport::Fault fault(testsupport::SystemCall::Open, path, EACCES);
    ExportDetails details = detailsOf(output());
    details.dateTo = details.dateFrom.addDays(2);
    details.lineFormat = QStringLiteral("CLOSE");
    const auto result = tadata::exportBars(
        details, {m_today, -1}, [this] { return QDir(m_dir->filePath(QStringLiteral("series"))); },
        [](int) {});
    QVERIFY(result.outcome);
    QCOMPARE(result.unopened, QStringList{path});
    QCOMPARE(written(), mark + "1\n");
}

void TestExportJob::anIntervalWithoutDatesIsEmpty()
{
    ExportDetails details;
    details.outputPath = output();
    QVERIFY(run(details).isNull());
    QCOMPARE(m_progress, QList<int>({100}));
    QCOMPARE(m_directoryCalls, 0);
    QCOMPARE(written(), QByteArray(""));
}

void TestExportJob::saysWhenASumDoesNotFit()
{
    store("20240115_60.iss", "100000;1;1;1;1;0;36028797018963967;0\n"
                             "100000;1;1;1;1;0;1;0\n");
    QVERIFY(!run(detailsOf(output())).isEmpty());
    QCOMPARE(written(), mark + "20240115;100000;1;1;1;1;0;36028797018963967;0\n");
}

void TestExportJob::refusesToReplaceADayFile()
{
    const QDir root(m_dir->filePath(QStringLiteral("store")));
    const QString day = root.filePath(QStringLiteral("NORD/MAIN/ALFA/20240115_60.iss"));
    const QString notes = root.filePath(QStringLiteral("NORD/MAIN/ALFA/notes.txt"));
    writeFile(day, "100000;1;1;1;1;0;0;0\n");
    const auto refusal = [&root](const QString& path) {
        return tadata::mayWriteOutput(detailsOf(path), root).message();
    };
    for (const QString& path : {output(), notes}) {
        QCOMPARE(refusal(path), QString());
        writeFile(path, "old");
        QCOMPARE(refusal(path), QString());
    }
    QCOMPARE(refusal(day), QStringLiteral("Файл %1 — файл дня в хранилище: выгрузка стёрла бы его "
                                          "бары. Выберите другой файл")
                               .arg(day));
}

// Where a directory cannot be looked into, what lies elsewhere is none of its files.
void TestExportJob::refusesWhatMayBeADayFile()
{
    const testsupport::OtherUser user;
    const QTemporaryDir own;
    const QDir root(own.filePath(QStringLiteral("store")));
    const QString board = root.filePath(QStringLiteral("NORD/MAIN"));
    const QString series = board + QStringLiteral("/ALFA");
    const QString day = series + QStringLiteral("/20240115_60.iss");
    const QString outside = own.filePath(QStringLiteral("out.txt"));
    writeFile(day, "100000;1;1;1;1;0;0;0\n");
    writeFile(outside, "old");
    const auto refusal = [&root](const QString& path) {
        return tadata::mayWriteOutput(detailsOf(path), root).message();
    };
    const QStringList free{outside, own.filePath(QStringLiteral("new.txt")),
                           QStringLiteral("/dev/null")};
    {
        const testsupport::Permissions noList(board, 0300);
        QCOMPARE(refusal(day), QStringLiteral("Невозможно прочитать каталог %1").arg(board));
        for (const QString& path : free)
            QCOMPARE(refusal(path), QString());
    }
    for (const mode_t mode : {0300, 0600}) {
        const testsupport::Permissions closed(series, mode);
        QVERIFY(!refusal(day).isNull());
        for (const QString& path : free)
            QCOMPARE(refusal(path), QString());
    }
}

QTEST_GUILESS_MAIN(TestExportJob)
#include "tst_exportjob.moc"
