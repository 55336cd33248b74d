// SPDX-License-Identifier: MIT
#include "filebars.h"
#include "importjob.h"

#include "series.h"
#include "support/faults.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <vexdesk/history/filekeeper.h>

#include <QtCore/QFile>
#include <QtCore/QStringConverter>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <atomic>
#include <memory>

using tadata::FileBars;
using tadata::FileLine;
using tadata::ImportResult;
using testsupport::detailsOfSeries;
using testsupport::readFile;
using testsupport::readTree;
using testsupport::with;
using testsupport::writeFile;

using Tree = QMap<QString, QByteArray>;

/// Replacing with bad lines passed over, a clock and tickers, and the lines that all ways see.
class TestImportWays final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void passesOverBadLines();
    void countsNoBlankLines_data();
    void countsNoBlankLines();
    void aBlankLineIsBadAsEver();
    void sumsThatDoNotFitStillEndTheImport();
    void countsEachDayOnce();
    void countsNoDayThatCannotBeOpened();
    void tellsOfTheFilesOfADayBeforeTheyAreTouched();
    void endsWhenItIsStopped();
    void readsNoTickersOnceItIsStopped();
    void rejectsAreTheBytesOfTheFile_data();
    void rejectsAreTheBytesOfTheFile();
    void aFileThatChangesGivesNoRejects();
    void rejectsMendedAreTheRest();
    void anImportThatFailsKeepsItsRejects();
    void makesNoRejectsWithoutBadLines();
    void refusesAPlaceOfRejectsThatIsMissing();
    void overwritesNoRejects();
    void namesRejectsThatCannotBeWritten_data();
    void namesRejectsThatCannotBeWritten();
    void anUnreadableFileIsToldBeforeItsRejects();
    void refusesRejectsAmongTheDayFiles();
    void changesTheClock();
    void aSkippedTimeIsABadLine();
    void writesASeriesForEachTicker();
    void endsWhereATickerComesBack();
    void dropsTheLastMinuteOfEachTicker();
    void aTickerHasItsOwnDecimals();
    void aFileOfTickersThatCannotBeReadIsAnError();
    void refusesTickersThatNameNoDirectory_data();
    void refusesTickersThatNameNoDirectory();
    void aTickerMayHaveTwoHundredFiftyBytes();
    void asksForAllDirectoriesBeforehand();
    void whoRefusesADirectoryEndsTheImport();
    void tellsLinesAsTheyAre();
    void tellsThatItsInputHasChangedMeanwhile();

private:
    ImportResult import(const QByteArray& text, const ImportDetails& details,
                        const ImportWays& ways = {}, const tadata::SeriesOfTicker& describe = {});
    QString input() const { return m_input->filePath(QStringLiteral("bars.txt")); }
    QString rejects() const { return m_input->filePath(QStringLiteral("rejects.txt")); }
    QString path(const QString& name) const { return m_store->filePath(name); }
    Tree stored() const { return readTree(QDir(m_store->path())); }

    std::unique_ptr<QTemporaryDir> m_store;
    std::unique_ptr<QTemporaryDir> m_input;
    QList<QStringList> m_asked;
};

namespace {

constexpr const char* bar = "20240115;100000;1;1;1;1\n";
constexpr const char* storedBar = "100000;1;1;1;1;0;0;0\n";

ImportDetails tickerDetails(int decimals)
{
    return with(detailsOfSeries(decimals), ColumnRole::Ticker, 6);
}

class Keeper final : public vexdesk::FileKeeper
{
public:
    vexdesk::Outcome keep(const QStringList& paths) override
    {
        calls.append(paths);
        return answer;
    }

    QList<QStringList> calls;
    vexdesk::Outcome answer;
};

} // namespace

void TestImportWays::init()
{
    testsupport::failOnStrayWarnings();
    m_store = std::make_unique<QTemporaryDir>();
    m_input = std::make_unique<QTemporaryDir>();
    m_asked.clear();
}

void TestImportWays::cleanup()
{
    m_store.reset();
    m_input.reset();
}

ImportResult TestImportWays::import(const QByteArray& text, const ImportDetails& details,
                                    const ImportWays& ways, const tadata::SeriesOfTicker& describe)
{
    writeFile(input(), text);
    const auto directories = [this](const QStringList& tickers) -> vexdesk::Result<QList<QDir>> {
        m_asked.append(tickers);
        QList<QDir> found;
        for (const QString& ticker : tickers) {
            const QString name = ticker.isNull() ? m_store->path() : path(ticker);
            if (!QDir().mkpath(name))
                return vexdesk::Failure{name};
            found.append(QDir(name));
        }
        return found;
    };
    return tadata::importByWays(input(), details, ways, {directories, describe}, [](int) {});
}

void TestImportWays::passesOverBadLines()
{
    const QByteArray text =
        QByteArray("x\n") + bar + "20240115;100100;1;1;1\n20240116;100000;2;2;2;2\ny";
    const ImportResult result = import(text, detailsOfSeries(0), {.skipsBad = true});
    QVERIFY(result.outcome);
    QCOMPARE(result.bars, 2);
    QCOMPARE(result.days, 2);
    QCOMPARE(result.badLines, 3);
    QCOMPARE(stored(),
             Tree({{"20240115_60.iss", storedBar}, {"20240116_60.iss", "100000;2;2;2;2;0;0;0\n"}}));
    // Nothing but bad lines is for the caller to tell.
    const ImportResult none = import("x\n\ny\n", detailsOfSeries(0), {.skipsBad = true});
    QVERIFY(none.outcome);
    QCOMPARE(none.bars, 0);
    QCOMPARE(none.badLines, 2);
}

void TestImportWays::countsNoBlankLines_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("badLines");
    QTest::newRow("empty") << QByteArray("\n") << 0;
    QTest::newRow("carriage return") << QByteArray("\r\r\n") << 0;
    QTest::newRow("blanks of all kinds") << QByteArray(" \t\v\f\r \n") << 0;
    QTest::newRow("no-break space") << QByteArray("\xc2\xa0\n") << 1;
    QTest::newRow("separator") << QByteArray(" ; \n") << 1;
    QTest::newRow("null") << QByteArray("\0\n", 2) << 1;
}

void TestImportWays::countsNoBlankLines()
{
    QFETCH(const QByteArray, line);
    QFETCH(const int, badLines);
    const ImportWays ways{.rejects = rejects()};
    const ImportResult result = import(line + bar, detailsOfSeries(0), ways);
    QVERIFY(result.outcome);
    QCOMPARE(result.badLines, badLines);
    QCOMPARE(result.bars, 1);
    QCOMPARE(readFile(rejects()), badLines == 0 ? QByteArray() : line);
}

void TestImportWays::aBlankLineIsBadAsEver()
{
    QCOMPARE(import(QByteArray(bar) + " \n", detailsOfSeries(0)).outcome.message(),
             QStringLiteral("Ошибка при импорте 2-й строки:\nНедостаточное количество столбцов."));
}

void TestImportWays::sumsThatDoNotFitStillEndTheImport()
{
    ImportDetails details = with(detailsOfSeries(0), ColumnRole::Value, 6);
    details.timeframe = 1;
    const QByteArray text = "x\n20240115;100001;1;1;1;1;30000000000000000\n"
                            "20240115;100002;1;1;1;1;30000000000000000\n";
    const ImportResult result = import(text, details, {.skipsBad = true});
    QVERIFY2(result.outcome.message().startsWith(
                 QStringLiteral("Ошибка при импорте 3-й строки:\nНекорректное число '")),
             qPrintable(result.outcome.message()));
    QCOMPARE(result.badLines, 1);
}

void TestImportWays::countsEachDayOnce()
{
    const QByteArray other = "20240116;100000;1;1;1;1\n";
    const ImportResult result = import(bar + other + bar, detailsOfSeries(0));
    QCOMPARE(result.bars, 3);
    QCOMPARE(result.days, 2);
}

void TestImportWays::countsNoDayThatCannotBeOpened()
{
    QVERIFY(QDir(m_store->path()).mkdir(QStringLiteral("20240116_60.iss")));
    const ImportResult result =
        import(bar + QByteArray("20240116;100000;1;1;1;1\n"), detailsOfSeries(0));
    QVERIFY(!result.outcome);
    QCOMPARE(result.days, 1);
}

// Of both where minutes are derived.
void TestImportWays::tellsOfTheFilesOfADayBeforeTheyAreTouched()
{
    writeFile(input(), QByteArray(bar) + "20240116;100000;1;1;1;1\n");
    const auto directory = [this](const QStringList&) {
        return vexdesk::Result<QList<QDir>>(QList<QDir>{QDir(m_store->path())});
    };
    const auto importKept = [&](Keeper& keeper, int timeframe) {
        ImportDetails details = detailsOfSeries(0);
        details.timeframe = timeframe;
        return tadata::importByWays(input(), details, {}, {directory, {}}, [](int) {},
                                    {.keeper = &keeper});
    };
    Keeper refusing;
    refusing.answer = vexdesk::Failure{QStringLiteral("no")};
    QCOMPARE(importKept(refusing, 1).outcome.message(), QStringLiteral("no"));
    QVERIFY(stored().isEmpty());
    Keeper seconds;
    QVERIFY(importKept(seconds, 1).outcome);
    QCOMPARE(seconds.calls,
             QList<QStringList>(
                 {{path(QStringLiteral("20240115_1.iss")), path(QStringLiteral("20240115_60"))},
                  {path(QStringLiteral("20240116_1.iss")), path(QStringLiteral("20240116_60"))}}));
    Keeper minutes;
    QVERIFY(importKept(minutes, 60).outcome);
    QCOMPARE(minutes.calls, QList<QStringList>({{path(QStringLiteral("20240115_60.iss"))},
                                                {path(QStringLiteral("20240116_60.iss"))}}));
}

void TestImportWays::endsWhenItIsStopped()
{
    writeFile(input(), QByteArray(bar) + "x\n");
    const auto directory = [this](const QStringList&) {
        return vexdesk::Result<QList<QDir>>(QList<QDir>{QDir(m_store->path())});
    };
    std::atomic<bool> stop = false;
    const auto result = tadata::importByWays(input(), detailsOfSeries(0), {}, {directory, {}},
                                             [&stop](int) { stop = true; }, {.stop = &stop});
    QCOMPARE(result.outcome.message(), QStringLiteral("Импорт прерван"));
    QCOMPARE(stored(), Tree({{"20240115_60.iss", storedBar}}));
}

// Nor is anybody asked for the directories of some of them.
void TestImportWays::readsNoTickersOnceItIsStopped()
{
    writeFile(input(), "20240115;100000;1;1;1;1;A\n20240115;100000;1;1;1;1;B\n");
    int asked = 0;
    const auto directories = [&asked](const QStringList& tickers) {
        ++asked;
        return vexdesk::Result<QList<QDir>>(QList<QDir>(tickers.size()));
    };
    const std::atomic<bool> stop = true;
    for (const ImportMode mode : {ImportMode::Replace, ImportMode::Merge}) {
        const auto result = tadata::importByWays(input(), tickerDetails(0), {.mode = mode},
                                                 {directories, {}}, [](int) {}, {.stop = &stop});
        QCOMPARE(result.outcome.message(), QStringLiteral("Импорт прерван"));
    }
    QCOMPARE(asked, 0);
}

void TestImportWays::rejectsAreTheBytesOfTheFile_data()
{
    QTest::addColumn<QByteArray>("mark");
    QTest::addColumn<int>("encoding");
    QTest::addColumn<bool>("hasHeader");
    const auto row = [](const char* name, const QByteArray& mark, QStringConverter::Encoding to) {
        QTest::newRow(name) << mark << int(to) << false;
        QTest::addRow("%s, with a header", name) << mark << int(to) << true;
    };
    row("UTF-8", "", QStringConverter::Utf8);
    row("UTF-8 with a mark", "\xef\xbb\xbf", QStringConverter::Utf8);
    row("UTF-16, little first", "\xff\xfe", QStringConverter::Utf16LE);
    row("UTF-16, big first", "\xfe\xff", QStringConverter::Utf16BE);
    row("UTF-32, little first", QByteArray("\xff\xfe\0\0", 4), QStringConverter::Utf32LE);
    row("UTF-32, big first", QByteArray("\0\0\xfe\xff", 4), QStringConverter::Utf32BE);
}

void TestImportWays::rejectsAreTheBytesOfTheFile()
{
    QFETCH(const QByteArray, mark);
    QFETCH(const int, encoding);
    QFETCH(const bool, hasHeader);
    QStringEncoder encoder{QStringConverter::Encoding(encoding)};
    const auto encoded = [&encoder](const QString& text) -> QByteArray { return encoder(text); };
    // Characters that have the byte of a line feed in some encoding, on either side.
    const QString odd = QString(QChar(0x0a0d)) + QChar(0x0d0a) + QChar(0x010a) + QChar(0x0a0a) +
                        QChar(0x0a0d) + QChar(0x0100) + QChar(0x0a0d);
    const QByteArray header =
        hasHeader ? encoded(QStringLiteral("<дата>;") + odd + QStringLiteral("\r\n"))
                  : QByteArray();
    const QByteArray good = encoded(QString::fromLatin1(bar));
    const QByteArray first = encoded(odd + QStringLiteral(";1\r\n"));
    const QByteArray second = encoded(QStringLiteral("20240115;\r;1\n"));
    const QByteArray last = encoded(odd + QStringLiteral("x"));
    ImportDetails details = detailsOfSeries(0);
    details.firstLineIsHeader = hasHeader;
    const QByteArray text =
        mark + header + good + first + good + encoded(QStringLiteral(" \n")) + second + good + last;
    const ImportResult result = import(text, details, {.rejects = rejects()});
    QVERIFY2(result.outcome, qPrintable(result.outcome.message()));
    QCOMPARE(result.badLines, 3);
    QCOMPARE(result.bars, 3);
    QCOMPARE(readFile(rejects()), mark + header + first + second + last);
}

// It is read a second time for them.
void TestImportWays::aFileThatChangesGivesNoRejects()
{
    writeFile(input(), bar + QByteArray("x\ny\n"));
    const auto change = [this](int) { writeFile(input(), bar); };
    const auto directory = [this](const QStringList&) {
        return vexdesk::Result<QList<QDir>>(QList<QDir>{QDir(m_store->path())});
    };
    const auto result = tadata::importByWays(input(), detailsOfSeries(0), {.rejects = rejects()},
                                             {directory, {}}, change);
    QCOMPARE(
        result.outcome.message(),
        QStringLiteral("Невозможно прочитать файл %1: он изменился, пока его читали").arg(input()));
    QCOMPARE(readFile(rejects()), QByteArray());
}

void TestImportWays::rejectsMendedAreTheRest()
{
    const QByteArray bytes = QByteArray("20240115;\xff\xfe;1\0\n", 15) + bar + "20240115;1\r\n\xd0";
    QVERIFY(import(bytes, detailsOfSeries(0), {.rejects = rejects()}).outcome);
    QCOMPARE(readFile(rejects()), QByteArray("20240115;\xff\xfe;1\0\n", 15) + "20240115;1\r\n");
}

void TestImportWays::anImportThatFailsKeepsItsRejects()
{
    ImportDetails details = with(detailsOfSeries(0), ColumnRole::Value, 6);
    details.timeframe = 1;
    const QByteArray text = "x\n20240115;100001;1;1;1;1;30000000000000000\n"
                            "20240115;100002;1;1;1;1;30000000000000000\n";
    QVERIFY(!import(text, details, {.rejects = rejects()}).outcome);
    QCOMPARE(readFile(rejects()), QByteArray("x\n"));
}

// Whether there are any or not.
void TestImportWays::refusesAPlaceOfRejectsThatIsMissing()
{
    const QString out = m_input->filePath(QStringLiteral("missing/rejects.txt"));
    QVERIFY(import(bar, detailsOfSeries(0), {.rejects = out})
                .outcome.message()
                .startsWith(QStringLiteral("Невозможно открыть файл ") + out));
    QVERIFY(stored().isEmpty());
}

void TestImportWays::makesNoRejectsWithoutBadLines()
{
    QVERIFY(import(QByteArray(bar) + "\n", detailsOfSeries(0), {.rejects = rejects()}).outcome);
    QVERIFY(!QFile::exists(rejects()));
}

void TestImportWays::overwritesNoRejects()
{
    writeFile(rejects(), "of the user");
    QCOMPARE(import(QByteArray(bar) + "x\n", detailsOfSeries(0), {.rejects = rejects()})
                 .outcome.message(),
             QStringLiteral("Невозможно открыть файл ") + rejects());
    QCOMPARE(readFile(rejects()), QByteArray("of the user"));
    QVERIFY(QFile::remove(rejects()));
    // Nor what a link leads to that is not there yet.
    QVERIFY(QFile::link(path(QStringLiteral("other")), rejects()));
    QVERIFY(!import("x\n", detailsOfSeries(0), {.rejects = rejects()}).outcome);
    QVERIFY(!QFile::exists(path(QStringLiteral("other"))));
}

void TestImportWays::namesRejectsThatCannotBeWritten_data()
{
    QTest::addColumn<testsupport::SystemCall>("call");
    QTest::addColumn<int>("count");
    QTest::newRow("at the end") << testsupport::SystemCall::Write << 1;
    QTest::newRow("on the way") << testsupport::SystemCall::Write << 20'000;
    QTest::newRow("when it is closed") << testsupport::SystemCall::Close << 1;
}

void TestImportWays::namesRejectsThatCannotBeWritten()
{
    QFETCH(const testsupport::SystemCall, call);
    QFETCH(const int, count);
    for (const ImportMode mode : {ImportMode::Replace, ImportMode::Merge}) {
        const testsupport::Fault full(call, rejects(), ENOSPC);
        const ImportResult result =
            import(bar + QByteArray("x\n").repeated(count), detailsOfSeries(0),
                   {.mode = mode, .rejects = rejects()});
        QCOMPARE(result.outcome.message(), QStringLiteral("Невозможно записать файл ") + rejects());
        // Merging has changed nothing yet.
        QCOMPARE(stored(),
                 mode == ImportMode::Merge ? Tree() : Tree({{"20240115_60.iss", storedBar}}));
        cleanup();
        init();
    }
}

// Neither can be done to its end; what comes of the rejects follows from the other.
void TestImportWays::anUnreadableFileIsToldBeforeItsRejects()
{
    for (const ImportMode mode : {ImportMode::Replace, ImportMode::Merge}) {
        // The first block, and the beginning of the file for the bad line.
        const testsupport::Fault broken(testsupport::SystemCall::Read, input(), EIO, 2);
        const testsupport::Fault full(testsupport::SystemCall::Write, rejects(), ENOSPC);
        const ImportResult result =
            import("x\n" + QByteArray(bar).repeated(10'000), detailsOfSeries(0),
                   {.mode = mode, .rejects = rejects()});
        QVERIFY2(result.outcome.message().startsWith(QStringLiteral("Невозможно прочитать файл ") +
                                                     input()),
                 qPrintable(result.outcome.message()));
        QCOMPARE(result.badLines, 1);
        QVERIFY(full.failed() > 0);
        cleanup();
        init();
    }
}

void TestImportWays::refusesRejectsAmongTheDayFiles()
{
    const QString linked = m_input->filePath(QStringLiteral("series"));
    QVERIFY(QFile::link(m_store->path(), linked));
    for (const QString& out :
         {path(QStringLiteral("20240116_60.iss")), linked + QStringLiteral("/20240116_60")}) {
        const ImportResult result =
            import(QByteArray(bar) + "x\n", detailsOfSeries(0), {.rejects = out});
        QVERIFY2(result.outcome.message().contains(out), qPrintable(result.outcome.message()));
        QVERIFY(stored().isEmpty());
    }
    // Of another name, or elsewhere, it is a file like any other.
    const QString out = m_input->filePath(QStringLiteral("20240116_60.iss"));
    QVERIFY(import("x\n", detailsOfSeries(0), {.rejects = out}).outcome);
    QCOMPARE(readFile(out), QByteArray("x\n"));
    const QString beside = path(QStringLiteral("rejects.txt"));
    QVERIFY(import("y\n", detailsOfSeries(0), {.rejects = beside}).outcome);
    QCOMPARE(readFile(beside), QByteArray("y\n"));
}

void TestImportWays::changesTheClock()
{
    const FileClock clock{true, QTimeZone("Europe/Berlin"), QTimeZone("Europe/Moscow"), 30};
    const ImportResult result = import("20240115;212900;1;1;1;1\n20240115;212800;2;2;2;2\n",
                                       detailsOfSeries(0), {.clock = clock});
    QVERIFY(result.outcome);
    QCOMPARE(stored(), Tree({{"20240115_60.iss", "235900;2;2;2;2;0;0;0\n"},
                             {"20240116_60.iss", "000000;1;1;1;1;0;0;0\n"}}));
}

void TestImportWays::aSkippedTimeIsABadLine()
{
    const FileClock clock{false, QTimeZone("Europe/Berlin"), QTimeZone("UTC"), 0};
    const QByteArray text = "20240331;023000;1;1;1;1\n20240331;030000;1;1;1;1\n";
    QCOMPARE(import(text, detailsOfSeries(0), {.clock = clock}).outcome.message(),
             QStringLiteral("Ошибка при импорте 1-й строки:\nВремя '02:30:00' пропущено часами "
                            "зоны Europe/Berlin."));
    const ImportResult result =
        import(text, detailsOfSeries(0), {.clock = clock, .rejects = rejects()});
    QCOMPARE(result.badLines, 1);
    QCOMPARE(readFile(rejects()), QByteArray("20240331;023000;1;1;1;1\n"));
    QCOMPARE(stored(), Tree({{"20240331_60.iss", "010000;1;1;1;1;0;0;0\n"}}));
}

void TestImportWays::writesASeriesForEachTicker()
{
    const ImportResult result = import("20240115;100000;1;1;1;1;ВТБ\n20240116;100000;2;2;2;2;ВТБ\n"
                                       "20240115;100000;3;3;3;3;a b\n",
                                       tickerDetails(0));
    QVERIFY(result.outcome);
    QCOMPARE(result.days, 3);
    QCOMPARE(stored(), Tree({{"ВТБ/20240115_60.iss", storedBar},
                             {"ВТБ/20240116_60.iss", "100000;2;2;2;2;0;0;0\n"},
                             {"a b/20240115_60.iss", "100000;3;3;3;3;0;0;0\n"}}));
}

void TestImportWays::endsWhereATickerComesBack()
{
    const QByteArray text = "20240115;100000;1;1;1;1;A\n20240115;100000;1;1;1;1;B\n"
                            "20240115;100100;1;1;1;1;A\n";
    const ImportResult result = import(text, tickerDetails(0), {.skipsBad = true});
    QVERIFY2(
        result.outcome.message().startsWith(QStringLiteral("Ошибка при импорте 3-й строки:\n")) &&
            result.outcome.message().contains(QStringLiteral("--mode merge")),
        qPrintable(result.outcome.message()));
    QCOMPARE(stored(), Tree({{"A/20240115_60.iss", storedBar}, {"B/20240115_60.iss", storedBar}}));
    QCOMPARE(result.days, 2);
    const ImportResult merged = import(text, tickerDetails(0), {ImportMode::Merge});
    QVERIFY(merged.outcome);
    QCOMPARE(stored().value("A/20240115_60.iss"), QByteArray(storedBar) + "100100;1;1;1;1;0;0;0\n");
}

void TestImportWays::dropsTheLastMinuteOfEachTicker()
{
    ImportDetails details = tickerDetails(0);
    details.timeframe = 1;
    QVERIFY(import("20240115;100001;1;1;1;1;A\n20240116;100001;1;1;1;1;A\n"
                   "20240116;100101;1;1;1;1;A\n20240117;100001;1;1;1;1;B\n"
                   "20240117;100101;1;1;1;1;B\n",
                   details)
                .outcome);
    const QByteArray minute = "100100;1;1;1;1;0;0;0\n";
    QCOMPARE(stored().value("A/20240115_60"), minute);
    QCOMPARE(stored().value("A/20240116_60"), minute);
    QCOMPARE(stored().value("B/20240117_60"), minute);
}

void TestImportWays::aTickerHasItsOwnDecimals()
{
    ImportDetails details = tickerDetails(1);
    auto data = vexdesk::ReferenceData::demonstration();
    data.setSeries(QStringLiteral("S"), QStringLiteral("B"), QStringLiteral("ONE"), 1);
    data.setSeries(QStringLiteral("S"), QStringLiteral("B"), QStringLiteral("FIVE"), 5);
    vexdesk::ReferenceData::install(data);
    const auto describe = [](const QString& ticker, TADataDescription* series) {
        testsupport::setSeries(*series, "S", "B", ticker.toLatin1().constData());
    };
    // What five digits have no room for is a bad line of that ticker alone; blanks make a line one
    // that the quick parser leaves to the other.
    const QByteArray text = "20240115;100000;1;1;1;1;ONE\n20240115;100000;1;1;1;1;FIVE\n"
                            "20240115;100100;+1;1;1;1;FIVE\n"
                            "20240115;100200;900000000000000;1;1;1;FIVE\n"
                            "20240116;100000;900000000000000;1;1;1;ONE\n";
    for (const ImportMode mode : {ImportMode::Merge, ImportMode::Fill}) {
        const ImportResult result =
            import(text, details, {.mode = mode, .skipsBad = true}, describe);
        QVERIFY(result.outcome);
        QCOMPARE(result.badLines, 1);
    }
    QCOMPARE(stored().value("ONE/20240115_60.iss"), QByteArray("100000;1.0;1.0;1.0;1.0;0;0.0;0\n"));
    QCOMPARE(stored().value("FIVE/20240115_60.iss"),
             QByteArray("100000;1.00000;1.00000;1.00000;1.00000;0;0.00000;0\n"
                        "100100;1.00000;1.00000;1.00000;1.00000;0;0.00000;0\n"));
    QCOMPARE(stored().value("ONE/20240116_60.iss"),
             QByteArray("100000;900000000000000.0;1.0;1.0;1.0;0;0.0;0\n"));
}

// First for its tickers alone.
void TestImportWays::aFileOfTickersThatCannotBeReadIsAnError()
{
    const QByteArray text = "20240115;100000;1;1;1;1;A\n20240115;100000;1;1;1;1;B\n";
    for (const ImportMode mode : {ImportMode::Replace, ImportMode::Merge}) {
        for (const auto call : {testsupport::SystemCall::Open, testsupport::SystemCall::Read}) {
            const bool opens = call == testsupport::SystemCall::Open;
            // It is opened once more by the test, which writes it.
            const int first = opens ? 1 : 0;
            int passed = first;
            for (;; ++passed) {
                const testsupport::Fault broken(call, input(), EIO, passed);
                const QString error =
                    import(text, tickerDetails(0), {.mode = mode}).outcome.message();
                if (broken.failed() == 0)
                    break;
                QVERIFY2(error.startsWith((opens ? QStringLiteral("Невозможно открыть файл ")
                                                 : QStringLiteral("Невозможно прочитать файл ")) +
                                          input()),
                         qPrintable(error));
            }
            QVERIFY(passed - first >= 2);
        }
    }
}

void TestImportWays::refusesTickersThatNameNoDirectory_data()
{
    QTest::addColumn<QByteArray>("code");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("itself") << QByteArray(".");
    QTest::newRow("above") << QByteArray("..");
    QTest::newRow("path") << QByteArray("a/b");
    QTest::newRow("null") << QByteArray("a\0b", 3);
    QTest::newRow("too long") << QByteArray(251, 'x');
    QTest::newRow("no UTF-8") << QByteArray("\xd1\xc1\xc5\xd0");
}

void TestImportWays::refusesTickersThatNameNoDirectory()
{
    QFETCH(const QByteArray, code);
    for (const char* price : {"1", "+1"}) {
        const QByteArray text = "20240115;100000;1;1;1;1;OK\n20240115;100100;1;1;" +
                                QByteArray(price) + ";1;" + code + "\n";
        const QString error = import(text, tickerDetails(0)).outcome.message();
        QVERIFY2(error.startsWith(QStringLiteral("Ошибка при импорте 2-й строки:\nКод '")),
                 qPrintable(error));
        const ImportResult result = import(text, tickerDetails(0), {.skipsBad = true});
        QCOMPARE(result.badLines, 1);
        QCOMPARE(stored(), Tree({{"OK/20240115_60.iss", storedBar}}));
    }
}

// The lock beside it has as long a name as file systems take.
void TestImportWays::aTickerMayHaveTwoHundredFiftyBytes()
{
    for (const QByteArray& code : {QByteArray(250, 'x'), QByteArray("ж").repeated(125)}) {
        QVERIFY(import(QByteArray(bar).chopped(1) + ';' + code + '\n', tickerDetails(0)).outcome);
        QVERIFY(stored().contains(QString::fromUtf8(code) + QStringLiteral("/20240115_60.iss")));
    }
    const QByteArray tooLong = QByteArray("ж").repeated(125) + 'x';
    QVERIFY(!import(QByteArray(bar).chopped(1) + ';' + tooLong + '\n', tickerDetails(0)).outcome);
}

void TestImportWays::asksForAllDirectoriesBeforehand()
{
    const QByteArray text = "20240115;100000;1;1;1;1;B\n20240115;100000;1;1;1;1;A\nx\n"
                            "20240115;100100;1;1;1;1;B\n20240115;100100;1;1;1;1;C\n";
    QVERIFY(!import(text, tickerDetails(0), {.mode = ImportMode::Merge}).outcome);
    QVERIFY(import(text, tickerDetails(0), {.mode = ImportMode::Merge, .skipsBad = true}).outcome);
    QVERIFY(import(bar, detailsOfSeries(0)).outcome);
    QCOMPARE(m_asked, QList<QStringList>({{"B", "A"}, {"B", "A", "C"}, {QString()}}));
    QVERIFY(m_asked.last().first().isNull());
}

void TestImportWays::whoRefusesADirectoryEndsTheImport()
{
    for (const ImportMode mode : {ImportMode::Replace, ImportMode::Merge}) {
        writeFile(input(), QByteArray("x\n") + bar);
        const auto refuse = [](const QStringList&) -> vexdesk::Result<QList<QDir>> {
            return vexdesk::Failure{QStringLiteral("taken")};
        };
        const auto result =
            tadata::importByWays(input(), detailsOfSeries(0), {.mode = mode, .rejects = rejects()},
                                 {refuse, {}}, [](int) {});
        QCOMPARE(result.outcome.message(), QStringLiteral("taken"));
        QVERIFY(!QFile::exists(rejects()));
    }
}

void TestImportWays::tellsLinesAsTheyAre()
{
    ImportDetails details = tickerDetails(0);
    details.firstLineIsHeader = true;
    writeFile(input(), "head\n20240115;235900;1;2;0;1;A\n \t\r\n20240115;1;1\n"
                       "20240116;+1;2;2;2;2;B\n20240116;000000;7;7;7;7;A");
    FileBars file(input(), details, {true, {}, {}, 0});
    QVERIFY(file.open());
    FileLine line;
    QVERIFY(file.next(&line));
    QCOMPARE(line.number, 2);
    QVERIFY(!line.isBad() && !line.isBlank);
    QCOMPARE(line.text, QByteArrayView("20240115;235900;1;2;0;1;A"));
    QCOMPARE(line.bar.date, QDate(2024, 1, 16));
    QCOMPARE(line.bar.time, QTime(0, 0));
    QCOMPARE(line.writtenDate, QDate(2024, 1, 15));
    QCOMPARE(line.ticker, QStringLiteral("A"));
    QVERIFY(file.next(&line));
    QVERIFY(line.isBad() && line.isBlank);
    QVERIFY(file.next(&line));
    QVERIFY(line.isBad() && !line.isBlank);
    QCOMPARE(line.error(), QStringLiteral("Недостаточное количество столбцов"));
    QVERIFY(file.next(&line));
    QVERIFY(line.isBad() && !line.isBlank);
    QVERIFY(line.error().startsWith(QStringLiteral("Время '+1' не соответствует")));
    QVERIFY(file.next(&line));
    QVERIFY(!line.isBad());
    QVERIFY(line.error().isNull());
    QCOMPARE(line.bar.open, decimal(7, 0));
    QCOMPARE(line.ticker, QStringLiteral("A"));
    QVERIFY(!file.next(&line));
    QCOMPARE(file.lineCount(), 6);
    QCOMPARE(file.percentDone(), 100);
    QVERIFY(file.outcome());
}

void TestImportWays::tellsThatItsInputHasChangedMeanwhile()
{
    // More than one block is read of it, and so before and after the change.
    constexpr int lines = 2000;
    const testsupport::Meanwhile meanwhile(testsupport::SystemCall::Open,
                                           path(QStringLiteral("20240115_60.iss")), [this] {
                                               QFile file(input());
                                               QVERIFY(file.open(QIODevice::Append));
                                               file.write("20240116;100000;1;1;1;1\n");
                                           });
    const ImportResult result = import(QByteArray(bar).repeated(lines), detailsOfSeries(0));
    QCOMPARE(
        result.outcome.message(),
        QStringLiteral("Невозможно прочитать файл %1: он изменился, пока его читали").arg(input()));
    // What was read is stored: half a file would not be the better thing to have.
    QCOMPARE(stored().value(QStringLiteral("20240115_60.iss")),
             QByteArray(storedBar).repeated(lines));
}

QTEST_GUILESS_MAIN(TestImportWays)
#include "tst_importways.moc"
