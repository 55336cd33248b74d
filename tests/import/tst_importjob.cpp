// SPDX-License-Identifier: MIT
#include "importjob.h"

#include "series.h"
#include "support/faults.h"
#include "support/filetree.h"
#include "support/otheruser.h"
#include "support/strictlog.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>
#include <QtTest/QTest>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <thread>
#include <vector>

using testsupport::detailsOfSeries;
using testsupport::readTree;
using testsupport::with;
using testsupport::writeFile;

using Tree = QMap<QString, QByteArray>;

class TestImportJob final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void storesAMinuteBar();
    void leavesTheHeaderOut();
    void aHeaderAloneStoresNothing();
    void anEmptyFileStoresNothing();
    void countsPhysicalLines_data();
    void countsPhysicalLines();
    void keepsTheBarsBeforeAWrongLine();
    void importingAgainChangesNothing();
    void replacesWhatADayHeld();
    void keepsTheLastRunOfAlternatingDays();
    void keepsTheOrderOfTheInput();
    void keepsOtherTimeframesAndFiles();
    void derivesMinuteBarsFromSeconds();
    void dropsTheLastMinute();
    void closesTheMinuteWhenTheDayChanges();
    void doesNotWriteTheOpenMinuteAfterAnError();
    void keepsTheMinuteFileOnAMinuteImport();
    void treatsOtherTimeframesLikeMinutes();
    void readsLinesOfAllKinds_data();
    void readsLinesOfAllKinds();
    void aBlankLineHasTooFewColumns();
    void writesNoByteOrderMark();
    void aMissingInputMakesNoDirectory();
    void namesAFileThatCannotBeOpened_data();
    void namesAFileThatCannotBeOpened();
    void namesAFileThatCannotBeWritten_data();
    void namesAFileThatCannotBeWritten();
    void namesAMinuteFileThatCannotBeWritten_data();
    void namesAMinuteFileThatCannotBeWritten();
    void aFullDiskIsToldBeforeAWrongLine();
    void aReadErrorIsNotTheEnd();
    void anInputThatBecameShorterIsAnError();
    void handsOverWholeLines();
    void refusesADayFileOfTheSeriesAsInput_data();
    void refusesADayFileOfTheSeriesAsInput();
    void refusesItsInputWhereTheDirectoryCannotBeListed();
    void refusesAPipeAsDayFile();
    void takesAMarkInsideTheFileForText();
    void countsTheBars();
    void tellsItsProgressBeforeADayIsOpened();
    void dropsTheOpenMinuteWhenTheNextDayCannotBeOpened();
    void refusesASumThatDoesNotFit();
    void minuteBarsAreNotAddedUp();
    void tellsItsProgressAtEachDay();
    void refusesAPipe();
    void worksBesideOtherImports();

    void changeOutputSwitchesFiles();
    void changeOutputKeepsTheOldDeviceOnFailure();

private:
    QString import(const QByteArray& input, const ImportDetails& details);
    QString path(const char* name) const { return m_store->filePath(QString::fromUtf8(name)); }
    Tree stored() const { return readTree(QDir(m_store->path())); }

    std::unique_ptr<QTemporaryDir> m_store;
    std::unique_ptr<QTemporaryDir> m_input;
    QList<int> m_progress;
};

void TestImportJob::init()
{
    testsupport::failOnStrayWarnings();
    m_store = std::make_unique<QTemporaryDir>();
    m_input = std::make_unique<QTemporaryDir>();
    m_progress.clear();
}

void TestImportJob::cleanup()
{
    m_store.reset();
    m_input.reset();
}

QString TestImportJob::import(const QByteArray& input, const ImportDetails& details)
{
    const QString file = m_input->filePath(QStringLiteral("bars.txt"));
    writeFile(file, input);
    return tadata::importBars(
               file, details, [this] { return QDir(m_store->path()); },
               [this](int percent) { m_progress.append(percent); })
        .outcome.message();
}

void TestImportJob::storesAMinuteBar()
{
    const ImportDetails details =
        with(with(with(detailsOfSeries(2), ColumnRole::Volume, 6), ColumnRole::Value, 7),
             ColumnRole::OpenInterest, 8);
    const QString error = import("20181214;093000;1.5;1.7;1.4;1.6;12;345.6;7\n", details);
    QVERIFY2(error.isNull(), qPrintable(error));
    QCOMPARE(stored(), Tree({{"20181214_60.iss", "093000;1.50;1.70;1.40;1.60;12;345.60;7\n"}}));
}

void TestImportJob::leavesTheHeaderOut()
{
    ImportDetails details = detailsOfSeries(0);
    details.firstLineIsHeader = true;
    QVERIFY(import("<DATE>;<TIME>\n20240115;100000;1;2;0;1\n", details).isNull());
    QCOMPARE(stored(), Tree({{"20240115_60.iss", "100000;1;2;0;1;0;0;0\n"}}));
}

void TestImportJob::aHeaderAloneStoresNothing()
{
    ImportDetails details = detailsOfSeries(0);
    details.firstLineIsHeader = true;
    QVERIFY(import("<DATE>;<TIME>\n", details).isNull());
    QVERIFY(stored().isEmpty());
    QCOMPARE(m_progress, QList<int>({100}));
}

void TestImportJob::anEmptyFileStoresNothing()
{
    for (const bool header : {false, true}) {
        ImportDetails details = detailsOfSeries(0);
        details.firstLineIsHeader = header;
        QVERIFY(import("", details).isNull());
        QVERIFY(stored().isEmpty());
    }
}

void TestImportJob::countsPhysicalLines_data()
{
    QTest::addColumn<bool>("header");
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QString>("error");
    const auto row = [](const char* name, bool header, const char* input, const char* error) {
        QTest::newRow(name) << header << QByteArray(input) << QString::fromUtf8(error);
    };
    row("first line", false, "x\n",
        "Ошибка при импорте 1-й строки:\nНедостаточное количество столбцов.");
    row("behind a header", true, "head\nx\n",
        "Ошибка при импорте 2-й строки:\nНедостаточное количество столбцов.");
    row("third", false,
        "20240115;100000;1;2;0;1\n20240115;100100;1;2;0;1\n20240115;100200;1;2;0;y\n",
        "Ошибка при импорте 3-й строки:\nНекорректное число 'y'.");
    row("placeholder in the text", false, "20240115;100000;%1;2;0;1\n",
        "Ошибка при импорте 1-й строки:\nНекорректное число '%1'.");
}

void TestImportJob::countsPhysicalLines()
{
    QFETCH(const bool, header);
    QFETCH(const QByteArray, input);
    ImportDetails details = detailsOfSeries(0);
    details.firstLineIsHeader = header;
    QTEST(import(input, details), "error");
}

void TestImportJob::keepsTheBarsBeforeAWrongLine()
{
    const QString error = import("20240115;100000;1;1;1;1\n"
                                 "20240115;100100;2;2;2;2\n"
                                 "20240116;100000;3;3;3;3\n"
                                 "20240116;100100;4;4;4;4\n"
                                 "20240116;100200;wrong;5;5;5\n"
                                 "20240116;100300;6;6;6;6\n",
                                 detailsOfSeries(0));
    QCOMPARE(error, QStringLiteral("Ошибка при импорте 5-й строки:\nНекорректное число 'wrong'."));
    QCOMPARE(stored(), Tree({{"20240115_60.iss", "100000;1;1;1;1;0;0;0\n100100;2;2;2;2;0;0;0\n"},
                             {"20240116_60.iss", "100000;3;3;3;3;0;0;0\n100100;4;4;4;4;0;0;0\n"}}));
    // Once for each day; the end, which says 100, was not reached.
    QCOMPARE(m_progress.size(), 2);
}

void TestImportJob::importingAgainChangesNothing()
{
    const QByteArray input = "20240115;100000;1;1;1;1\n20240116;100000;3;3;3;3\n";
    QVERIFY(import(input, detailsOfSeries(0)).isNull());
    const Tree first = stored();
    QVERIFY(import(input, detailsOfSeries(0)).isNull());
    QCOMPARE(stored(), first);
    QCOMPARE(first.size(), 2);
}

void TestImportJob::replacesWhatADayHeld()
{
    QVERIFY(
        import("20240115;100000;1;1;1;1\n20240115;110000;2;2;2;2\n", detailsOfSeries(0)).isNull());
    QVERIFY(import("20240115;120000;3;3;3;3\n", detailsOfSeries(0)).isNull());
    QCOMPARE(stored(), Tree({{"20240115_60.iss", "120000;3;3;3;3;0;0;0\n"}}));
}

void TestImportJob::keepsTheLastRunOfAlternatingDays()
{
    QVERIFY(import("20240115;100000;1;1;1;1\n"
                   "20240116;100000;2;2;2;2\n"
                   "20240115;110000;3;3;3;3\n"
                   "20240115;120000;4;4;4;4\n",
                   detailsOfSeries(0))
                .isNull());
    QCOMPARE(stored(), Tree({{"20240115_60.iss", "110000;3;3;3;3;0;0;0\n120000;4;4;4;4;0;0;0\n"},
                             {"20240116_60.iss", "100000;2;2;2;2;0;0;0\n"}}));
}

void TestImportJob::keepsTheOrderOfTheInput()
{
    QVERIFY(import("20240115;110000;1;1;1;1\n20240115;100000;2;2;2;2\n20240115;110000;3;3;3;3\n",
                   detailsOfSeries(0))
                .isNull());
    QCOMPARE(stored().value("20240115_60.iss"),
             QByteArray("110000;1;1;1;1;0;0;0\n100000;2;2;2;2;0;0;0\n110000;3;3;3;3;0;0;0\n"));
}

void TestImportJob::keepsOtherTimeframesAndFiles()
{
    const Tree others({{"20240115_1.iss", "seconds"}, {"20240115_60", "minutes"}, {"notes", "x"}});
    for (auto file = others.begin(); file != others.end(); ++file)
        writeFile(m_store->filePath(file.key()), file.value());
    QVERIFY(import("20240115;100000;1;1;1;1\n", detailsOfSeries(0)).isNull());
    Tree expected = others;
    expected.insert("20240115_60.iss", "100000;1;1;1;1;0;0;0\n");
    QCOMPARE(stored(), expected);
}

void TestImportJob::derivesMinuteBarsFromSeconds()
{
    ImportDetails details = detailsOfSeries(0);
    details.timeframe = 1;
    QByteArray input;
    QByteArray seconds;
    for (int s = 1; s <= 60; ++s) {
        const QByteArray time =
            QTime(10, 0).addSecs(s).toString(QStringLiteral("hhmmss")).toLatin1();
        const QByteArray price = QByteArray::number(100 + s);
        const QByteArray prices = price + ";" + price + ";" + price + ";" + price;
        input += "20240115;" + time + ";" + prices + "\n";
        seconds += time + ";" + prices + ";0;0;0\n";
    }
    input += "20240115;100101;7;7;7;7\n";
    seconds += "100101;7;7;7;7;0;0;0\n";
    QVERIFY(import(input, details).isNull());
    QCOMPARE(stored(), Tree({{"20240115_1.iss", seconds},
                             {"20240115_60", "100100;101;160;101;160;0;0;0\n"}}));
}

void TestImportJob::dropsTheLastMinute()
{
    ImportDetails details = detailsOfSeries(0);
    details.timeframe = 1;
    QVERIFY(import("20240115;100000;1;1;1;1\n20240115;100100;2;2;2;2\n", details).isNull());
    QCOMPARE(stored(), Tree({{"20240115_1.iss", "100000;1;1;1;1;0;0;0\n100100;2;2;2;2;0;0;0\n"},
                             {"20240115_60", ""}}));
}

void TestImportJob::closesTheMinuteWhenTheDayChanges()
{
    ImportDetails details = detailsOfSeries(0);
    details.timeframe = 1;
    QVERIFY(import("20240115;235930;1;1;1;1\n"
                   "20240115;235931;2;2;2;2\n"
                   "20240116;100001;3;3;3;3\n"
                   "20240117;100001;4;4;4;4\n",
                   details)
                .isNull());
    const Tree files = stored();
    QCOMPARE(files.value("20240115_60"),
             QByteArray("000000;1;1;1;1;0;0;0\n000000;2;2;2;2;0;0;0\n"));
    QCOMPARE(files.value("20240116_60"), QByteArray("100100;3;3;3;3;0;0;0\n"));
    QCOMPARE(files.value("20240117_60"), QByteArray(""));
    QCOMPARE(files.size(), 6);
}

void TestImportJob::doesNotWriteTheOpenMinuteAfterAnError()
{
    ImportDetails details = detailsOfSeries(0);
    details.timeframe = 1;
    QVERIFY(!import("20240115;100001;1;1;1;1\n20240115;100101;2;2;2;2\nwrong\n", details).isNull());
    QCOMPARE(stored().value("20240115_60"), QByteArray("100100;1;1;1;1;0;0;0\n"));
}

void TestImportJob::keepsTheMinuteFileOnAMinuteImport()
{
    ImportDetails details = detailsOfSeries(0);
    details.timeframe = 1;
    const QByteArray input = "20240115;100001;1;1;1;1\n20240115;100101;2;2;2;2\n";
    QVERIFY(import(input, details).isNull());
    QVERIFY(import(input, detailsOfSeries(0)).isNull());
    QCOMPARE(stored().value("20240115_60"), QByteArray("100100;1;1;1;1;0;0;0\n"));
    QCOMPARE(stored().size(), 3);
}

void TestImportJob::treatsOtherTimeframesLikeMinutes()
{
    ImportDetails details = detailsOfSeries(0);
    details.timeframe = 300;
    QVERIFY(import("20240115;100000;1;1;1;1\n", details).isNull());
    QCOMPARE(stored(), Tree({{"20240115_300.iss", "100000;1;1;1;1;0;0;0\n"}}));
}

void TestImportJob::readsLinesOfAllKinds_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::newRow("line feeds") << QByteArray("20240115;100000;1;1;1;1\n20240115;100100;2;2;2;2\n");
    QTest::newRow("no last line feed")
        << QByteArray("20240115;100000;1;1;1;1\n20240115;100100;2;2;2;2");
    QTest::newRow("carriage returns")
        << QByteArray("20240115;100000;1;1;1;1\r\n20240115;100100;2;2;2;2\r\n");
    QTest::newRow("UTF-8 with a byte-order mark")
        << QByteArray("\xef\xbb\xbf"
                      "20240115;100000;1;1;1;1\n20240115;100100;2;2;2;2\n");
    QByteArray utf16("\xff\xfe");
    for (const char c : QByteArray("20240115;100000;1;1;1;1\n20240115;100100;2;2;2;2\n"))
        utf16.append(c).append('\0');
    QTest::newRow("UTF-16 with a byte-order mark") << utf16;
}

void TestImportJob::readsLinesOfAllKinds()
{
    QFETCH(const QByteArray, input);
    const QString error = import(input, detailsOfSeries(0));
    QVERIFY2(error.isNull(), qPrintable(error));
    QCOMPARE(stored(), Tree({{"20240115_60.iss", "100000;1;1;1;1;0;0;0\n100100;2;2;2;2;0;0;0\n"}}));
}

void TestImportJob::aBlankLineHasTooFewColumns()
{
    const QString wanted =
        QStringLiteral("Ошибка при импорте 2-й строки:\nНедостаточное количество столбцов.");
    QCOMPARE(import("20240115;100000;1;1;1;1\n\n20240115;100100;2;2;2;2\n", detailsOfSeries(0)),
             wanted);
    QCOMPARE(import("20240115;100000;1;1;1;1\n\n", detailsOfSeries(0)), wanted);
}

void TestImportJob::writesNoByteOrderMark()
{
    ImportDetails details = detailsOfSeries(0);
    details.timeframe = 1;
    QVERIFY(import("20240115;100001;1;1;1;1\n20240115;100101;2;2;2;2\n", details).isNull());
    const Tree files = stored();
    QVERIFY(files.value("20240115_1.iss").startsWith("100001"));
    QVERIFY(files.value("20240115_60").startsWith("100100"));
}

void TestImportJob::aMissingInputMakesNoDirectory()
{
    bool asked = false;
    const QString missing = m_input->filePath(QStringLiteral("нет такого %1.txt"));
    const QString error = tadata::importBars(
                              missing, detailsOfSeries(0),
                              [&asked] {
                                  asked = true;
                                  return QDir();
                              },
                              [](int) {})
                              .outcome.message();
    QCOMPARE(error, QString(QStringLiteral("Невозможно открыть файл ") + missing));
    QVERIFY(!asked);
}

void TestImportJob::namesAFileThatCannotBeOpened_data()
{
    QTest::addColumn<int>("timeframe");
    QTest::addColumn<QString>("blocked");
    QTest::newRow("day file") << 60 << QStringLiteral("20240116_60.iss");
    QTest::newRow("second file") << 1 << QStringLiteral("20240116_1.iss");
    QTest::newRow("minute file") << 1 << QStringLiteral("20240116_60");
}

void TestImportJob::namesAFileThatCannotBeOpened()
{
    QFETCH(const int, timeframe);
    QFETCH(const QString, blocked);
    QVERIFY(QDir(m_store->path()).mkdir(blocked));
    ImportDetails details = detailsOfSeries(0);
    details.timeframe = timeframe;
    QCOMPARE(import("20240115;100001;1;1;1;1\n20240116;100001;2;2;2;2\n", details),
             QString(QStringLiteral("Невозможно открыть файл ") + m_store->filePath(blocked)));
    const QString earlier = QStringLiteral("20240115_%1.iss").arg(timeframe);
    QCOMPARE(stored().value(earlier), QByteArray("100001;1;1;1;1;0;0;0\n"));
}

void TestImportJob::namesAFileThatCannotBeWritten_data()
{
    QTest::addColumn<testsupport::SystemCall>("call");
    // On some file systems the first word of a full disk comes with the end of the file.
    QTest::newRow("write") << testsupport::SystemCall::Write;
    QTest::newRow("close") << testsupport::SystemCall::Close;
}

void TestImportJob::namesAFileThatCannotBeWritten()
{
    QFETCH(const testsupport::SystemCall, call);
    const QString full = path("20240116_60.iss");
    const testsupport::Fault fault(call, full, ENOSPC);
    const QString wanted = QStringLiteral("Невозможно записать файл ") + full;
    // Found out at the switch to the next day, and at the end.
    QCOMPARE(import("20240115;100000;1;1;1;1\n20240116;100000;2;2;2;2\n20240117;100000;3;3;3;3\n",
                    detailsOfSeries(0)),
             wanted);
    QVERIFY(!QFile::exists(path("20240117_60.iss")));
    QCOMPARE(import("20240115;100000;1;1;1;1\n20240116;100000;2;2;2;2\n", detailsOfSeries(0)),
             wanted);
    QCOMPARE(testsupport::readFile(path("20240115_60.iss")), QByteArray("100000;1;1;1;1;0;0;0\n"));
}

void TestImportJob::namesAMinuteFileThatCannotBeWritten_data()
{
    namesAFileThatCannotBeWritten_data();
}

void TestImportJob::namesAMinuteFileThatCannotBeWritten()
{
    QFETCH(const testsupport::SystemCall, call);
    const QString full = path("20240115_60");
    const testsupport::Fault fault(call, full, ENOSPC);
    ImportDetails details = detailsOfSeries(0);
    details.timeframe = 1;
    QCOMPARE(import("20240115;100001;1;1;1;1\n20240115;100101;2;2;2;2\n", details),
             QString(QStringLiteral("Невозможно записать файл ") + full));
    QCOMPARE(testsupport::readFile(path("20240115_1.iss")),
             QByteArray("100001;1;1;1;1;0;0;0\n100101;2;2;2;2;0;0;0\n"));
}

// The bars before a wrong line are to stay stored; that they could not be is the worse error.
void TestImportJob::aFullDiskIsToldBeforeAWrongLine()
{
    const QString full = path("20240115_60.iss");
    const testsupport::Fault fault(testsupport::SystemCall::Write, full, ENOSPC);
    QCOMPARE(import("20240115;100000;1;1;1;1\nwrong\n", detailsOfSeries(0)),
             QString(QStringLiteral("Невозможно записать файл ") + full));
}

namespace {

// Bars of one day each minute, of so many days from 1 January 2024 on.
QByteArray barsOfDays(int days)
{
    QByteArray lines;
    for (int day = 0; day < days; ++day) {
        const QByteArray date =
            QDate(2024, 1, 1).addDays(day).toString(QStringLiteral("yyyyMMdd;")).toLatin1();
        for (int minute = 0; minute < 24 * 60; ++minute) {
            const QString time =
                QTime(0, 0).addSecs(60 * minute).toString(QStringLiteral("hhmmss"));
            lines += date + time.toLatin1() + ";1.5;1.7;1.4;1.6\n";
        }
    }
    return lines;
}

bool hardLink(const QString& file, const QString& name)
{
    return ::link(QFile::encodeName(file).constData(), QFile::encodeName(name).constData()) == 0;
}

bool isWholeLines(const QByteArray& text)
{
    return text.isEmpty() || text.endsWith('\n');
}

} // namespace

void TestImportJob::aReadErrorIsNotTheEnd()
{
    // Two blocks are read, the third is not.
    const testsupport::Fault fault(testsupport::SystemCall::Read, QStringLiteral("bars.txt"), EIO,
                                   2);
    const QString error = import(barsOfDays(3), detailsOfSeries(2));
    QVERIFY2(error.startsWith(QStringLiteral("Невозможно прочитать файл ") +
                              m_input->filePath(QStringLiteral("bars.txt")) + u':'),
             qPrintable(error));
    QCOMPARE(fault.failed(), 1);
    // The bars of the whole lines before, and none of the line that the error has cut.
    const QByteArray bars = stored().value("20240101_60.iss");
    const qsizetype whole = barsOfDays(3).first(qsizetype(2) * 16384).count('\n');
    QCOMPARE(bars.count('\n'), whole);
    QVERIFY(isWholeLines(bars));
    QVERIFY(!m_progress.contains(100));
}

void TestImportJob::anInputThatBecameShorterIsAnError()
{
    const QString file = m_input->filePath(QStringLiteral("bars.txt"));
    const QByteArray content = barsOfDays(3);
    writeFile(file, content);
    const auto result = tadata::importBars(
        file, detailsOfSeries(2), [this] { return QDir(m_store->path()); },
        // In the middle of a line, while the first day is read.
        [&](int) { QVERIFY(QFile::resize(file, content.size() / 2 + 5)); });
    QVERIFY2(
        result.outcome.message().startsWith(QStringLiteral("Невозможно прочитать файл ") + file),
        qPrintable(result.outcome.message()));
    const qsizetype whole = content.first(content.size() / 2 + 5).count('\n');
    QCOMPARE(result.bars, whole);
}

void TestImportJob::handsOverWholeLines()
{
    const testsupport::WrittenPieces written(QStringLiteral(".iss"));
    QVERIFY(import(barsOfDays(2), detailsOfSeries(2)).isNull());
    const QByteArrayList pieces = written.pieces();
    QVERIFY(pieces.size() > 4);
    QVERIFY(std::all_of(pieces.begin(), pieces.end(), isWholeLines));
    QCOMPARE(pieces.join(), stored().value("20240101_60.iss") + stored().value("20240102_60.iss"));
}

void TestImportJob::refusesADayFileOfTheSeriesAsInput_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("way");
    for (const char* name : {"20240115_60.iss", "20240115_60", "20240115_1.iss"}) {
        for (const char* way : {"itself", "symbolic link", "hard link", "linked from the store"})
            QTest::addRow("%s, %s", name, way)
                << QString::fromLatin1(name) << QString::fromLatin1(way);
    }
}

void TestImportJob::refusesADayFileOfTheSeriesAsInput()
{
    QFETCH(const QString, name);
    QFETCH(const QString, way);
    const QString dayFile = m_store->filePath(name);
    const QString other = m_input->filePath(QStringLiteral("other.txt"));
    const QByteArray content = "20240114;100000;1;1;1;1\n20240115;100000;1;1;1;1\n";
    writeFile(way == u"linked from the store" ? other : dayFile, content);
    if (way == u"symbolic link")
        QVERIFY(QFile::link(dayFile, other));
    else if (way == u"hard link")
        QVERIFY(hardLink(dayFile, other));
    else if (way == u"linked from the store")
        QVERIFY(QFile::link(other, dayFile));
    const QString input = way == u"itself" ? dayFile : other;
    const QString error =
        tadata::importBars(
            input, detailsOfSeries(0), [this] { return QDir(m_store->path()); }, [](int) {})
            .outcome.message();
    QVERIFY2(error.contains(input), qPrintable(error));
    QCOMPARE(stored(), Tree({{name.toUtf8(), content}}));
}

// What cannot be found beforehand shows when the file is to be opened.
void TestImportJob::refusesItsInputWhereTheDirectoryCannotBeListed()
{
    cleanup();
    const testsupport::OtherUser nobody;
    init(); // in directories of his own
    const QString series = m_store->filePath(QStringLiteral("series"));
    const QString dayFile = series + QStringLiteral("/20240115_60.iss");
    const QString input = m_input->filePath(QStringLiteral("bars.txt"));
    const QByteArray content = "20240115;100000;1;1;1;1\n";
    writeFile(dayFile, content);
    QVERIFY(hardLink(dayFile, input));
    QString error;
    {
        const testsupport::Permissions closed(series, 0311);
        error = tadata::importBars(
                    input, detailsOfSeries(0), [&series] { return QDir(series); }, [](int) {})
                    .outcome.message();
    }
    QVERIFY2(error.contains(dayFile), qPrintable(error));
    QCOMPARE(testsupport::readFile(input), content);
    cleanup();
}

void TestImportJob::refusesAPipeAsDayFile()
{
    const QString pipe = path("20240115_60.iss");
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QCOMPARE(import("20240115;100000;1;1;1;1\n", detailsOfSeries(0)),
             QString(QStringLiteral("Невозможно открыть файл ") + pipe));
}

void TestImportJob::takesAMarkInsideTheFileForText()
{
    const QByteArray file = "\xef\xbb\xbf"
                            "20240115;100000;1;1;1;1\n";
    QCOMPARE(import(file + file, detailsOfSeries(0)),
             QStringLiteral("Ошибка при импорте 2-й строки:\nДата '\ufeff20240115' не "
                            "соответствует заявленному формату 'ггггммдд'."));
}

void TestImportJob::countsTheBars()
{
    const QString file = m_input->filePath(QStringLiteral("bars.txt"));
    const auto barsOf = [&](const QByteArray& content) {
        writeFile(file, content);
        return tadata::importBars(
                   file, detailsOfSeries(0), [this] { return QDir(m_store->path()); }, [](int) {})
            .bars;
    };
    QCOMPARE(barsOf(""), 0);
    QCOMPARE(barsOf("20240115;100000;1;1;1;1\n20240116;100000;1;1;1;1\n"), 2);
    QCOMPARE(barsOf("20240115;100000;1;1;1;1\nwrong\n"), 1);
}

// Whoever shows the progress of a day may look at the file as it was.
void TestImportJob::tellsItsProgressBeforeADayIsOpened()
{
    const QString file = m_input->filePath(QStringLiteral("bars.txt"));
    writeFile(file, "20240115;100000;1;1;1;1\n");
    QStringList seen;
    const auto result = tadata::importBars(
        file, detailsOfSeries(0), [this] { return QDir(m_store->path()); },
        [&](int) { seen.append(stored().keys().join(u' ')); });
    QVERIFY(result.outcome);
    QCOMPARE(seen, QStringList({QString(), QStringLiteral("20240115_60.iss")}));
}

// More of its seconds may come with the next file.
void TestImportJob::dropsTheOpenMinuteWhenTheNextDayCannotBeOpened()
{
    QVERIFY(QDir(m_store->path()).mkdir(QStringLiteral("20240116_1.iss")));
    ImportDetails details = detailsOfSeries(0);
    details.timeframe = 1;
    QVERIFY(!import("20240115;100001;1;1;1;1\n20240116;100001;2;2;2;2\n", details).isNull());
    QCOMPARE(stored().value("20240115_60"), QByteArray(""));
}

void TestImportJob::refusesASumThatDoesNotFit()
{
    ImportDetails details = with(detailsOfSeries(0), ColumnRole::Value, 6);
    details.timeframe = 1;
    const QString error = import("20240115;100001;1;1;1;1;30000000000000000\n"
                                 "20240115;100002;1;1;1;1;30000000000000000\n",
                                 details);
    QVERIFY2(
        error.startsWith(QStringLiteral("Ошибка при импорте 2-й строки:\nНекорректное число '")),
        qPrintable(error));
}

// No minute is derived from them.
void TestImportJob::minuteBarsAreNotAddedUp()
{
    const ImportDetails details = with(detailsOfSeries(0), ColumnRole::Value, 6);
    const QString error = import("20240115;100000;1;1;1;1;30000000000000000\n"
                                 "20240115;100100;1;1;1;1;30000000000000000\n",
                                 details);
    QVERIFY2(error.isNull(), qPrintable(error));
    QCOMPARE(stored().keys(), QStringList{QStringLiteral("20240115_60.iss")});
}

void TestImportJob::tellsItsProgressAtEachDay()
{
    // Larger than what the stream reads ahead, so that the positions differ.
    QByteArray input;
    const QDate first(2024, 1, 1);
    for (int day = 0; day < 4; ++day) {
        const QByteArray date = first.addDays(day).toString(QStringLiteral("yyyyMMdd")).toLatin1();
        for (int bar = 0; bar < 1000; ++bar) {
            const QTime time = QTime(0, 0).addSecs(60 * bar);
            input += date + ";" + time.toString(QStringLiteral("hhmmss")).toLatin1() + ";1;1;1;1\n";
        }
    }
    QVERIFY(import(input, detailsOfSeries(0)).isNull());
    QCOMPARE(m_progress.size(), 5);
    QCOMPARE(m_progress.last(), 100);
    QVERIFY(m_progress.first() > 0); // the position runs ahead of the first line
    QVERIFY(m_progress.first() < 50);
    QVERIFY(std::is_sorted(m_progress.begin(), m_progress.end()));
}

void TestImportJob::refusesAPipe()
{
    const QString pipe = m_input->filePath(QStringLiteral("pipe"));
    QCOMPARE(std::system(qPrintable(QStringLiteral("mkfifo '%1'").arg(pipe))), 0);
    // Nobody writes into it, and nobody is waited for.
    QCOMPARE(tadata::importBars(
                 pipe, detailsOfSeries(0), [this] { return QDir(m_store->path()); },
                 [this](int percent) { m_progress.append(percent); })
                 .outcome.message(),
             QString(QStringLiteral("Невозможно открыть файл ") + pipe));
    QVERIFY(stored().isEmpty());
}

void TestImportJob::worksBesideOtherImports()
{
    QByteArray input;
    QByteArray expected;
    for (int bar = 1; bar <= 500; ++bar) {
        const QTime time = QTime(0, 0).addSecs(60 * bar);
        const QByteArray prices = "1.5;1.7;1.4;" + QByteArray::number(bar);
        input +=
            "20240115;" + time.toString(QStringLiteral("hhmmss")).toLatin1() + ";" + prices + "\n";
        expected += time.toString(QStringLiteral("hhmmss")).toLatin1() + ";1.50;1.70;1.40;" +
                    QByteArray::number(bar) + ".00;0;0.00;0\n";
    }
    const QString file = m_input->filePath(QStringLiteral("bars.txt"));
    writeFile(file, input);

    constexpr int threadCount = 4;
    const ImportDetails details = detailsOfSeries(2);
    std::array<QString, threadCount> errors;
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int i = 0; i < threadCount; ++i) {
        const QDir dir(m_store->filePath(QString::number(i)));
        QVERIFY(dir.mkpath(QStringLiteral(".")));
        threads.emplace_back([&error = errors.at(i), &file, &details, dir] {
            error = tadata::importBars(
                        file, details, [&dir] { return dir; }, [](int) {})
                        .outcome.message();
        });
    }
    // The terminal may take new reference data at any moment.
    for (int i = 0; i < 20; ++i)
        detailsOfSeries(2);
    for (std::thread& thread : threads)
        thread.join();

    for (int i = 0; i < threadCount; ++i) {
        QVERIFY2(errors.at(i).isNull(), qPrintable(errors.at(i)));
        QCOMPARE(stored().value(QStringLiteral("%1/20240115_60.iss").arg(i)), expected);
    }
}

void TestImportJob::changeOutputSwitchesFiles()
{
    writeFile(path("two"), "something longer than what comes");
    QFile file;
    QTextStream stream;
    stream.setGenerateByteOrderMark(true);
    QVERIFY(changeOutput(file, stream, path("one")));
    stream << "first";
    QVERIFY(changeOutput(file, stream, path("two")));
    stream << "second";
    QCOMPARE(testsupport::readFile(path("one")), QByteArray("first"));
    stream.flush();
    QCOMPARE(testsupport::readFile(path("two")), QByteArray("second"));
    QCOMPARE(file.fileName(), path("two"));
}

void TestImportJob::changeOutputKeepsTheOldDeviceOnFailure()
{
    QFile file;
    QTextStream stream;
    QVERIFY(changeOutput(file, stream, path("one")));
    stream << "first";
    QVERIFY(!changeOutput(file, stream, path("no such directory/two")));
    QCOMPARE(stream.device(), &file);
    QVERIFY(!file.isOpen());
    QCOMPARE(testsupport::readFile(path("one")), QByteArray("first"));
}

QTEST_GUILESS_MAIN(TestImportJob)
#include "tst_importjob.moc"
