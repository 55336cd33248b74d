// SPDX-License-Identifier: MIT
#include "importcheck.h"

#include "barspacing.h"
#include "dayvalues.h"
#include "importjob.h"
#include "problemtitles.h"
#include "series.h"
#include "support/faults.h"
#include "support/filetree.h"
#include "support/otheruser.h"
#include "support/strictlog.h"

#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QFile>
#include <QtCore/QRandomGenerator>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <algorithm>
#include <memory>
#include <set>

#ifdef __GLIBC__
#    include <malloc.h>
#endif

using tadata::CheckedDay;
using tadata::checkImport;
using tadata::DayValues;
using tadata::FileProblem;
using tadata::ImportCheck;
using tadata::ProblemKind;
using testsupport::detailsOfSeries;
using testsupport::readFile;
using testsupport::readTree;
using testsupport::with;
using testsupport::writeFile;

class TestImportCheck final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dir.reset(); }

    void takesAMissingStoreForAnEmptyOne();
    void countsTheWholeFilePastAStop();
    void keepsWhatReplacingWroteBeforeAStop();
    void losesTheEarlierRunOfADay();
    void losesStoredBarsThatAreReplaced();
    void isTheSameOnlyForEqualBytes_data();
    void isTheSameOnlyForEqualBytes();
    void comparesLongDaysToTheirEnds();
    void keepsRepeatedLinesWhereItFills();
    void mergesAndFills();
    void looksAtAllRunsOfADay();
    void touchesNothingWhereMergingStops();
    void namesABadStoredLineAtItsDaysFirstLine();
    void prefersABadLineToABadStoredOne();
    void prefersABadLineToADayThatCannotBeRead();
    void endsWhereASumDoesNotFit_data();
    void endsWhereASumDoesNotFit();
    void addsUpOnlyWhatIsWrittenAndOnlySeconds();
    void passesOverBadLines();
    void takesNoBadLineOfADayThatComesAgain();
    void takesNoFileOfBadLinesAlone();
    void listsTheProblemsOfALineInOrder();
    void saysWhichPricesAreImpossible_data();
    void saysWhichPricesAreImpossible();
    void saysWhenTheFileBeginsAndEnds();
    void aBarOfTheSameTimeIsNotOutOfOrder();
    void countsTheProblemsThatItDoesNotList();
    void eachKindOfProblemHasATitleOfItsOwn();
    void saysWhenBarsAreNotOfTheTimeframe_data();
    void saysWhenBarsAreNotOfTheTimeframe();
    void saysWhenDatesAreReadWrongly_data();
    void saysWhenDatesAreReadWrongly();
    void looksAtTimesAfterTheClock();
    void refusesADayFileOfTheSeries();
    void aRefusedSeriesIsToldBeforeABadLine();
    void failsWhereSomethingCannotBeRead();
    void failsWhereADirectoryCannotBeLookedInto();
    void failsWhereAStoredDayCannotBeReadAgain();
    void failsWhereTheFileCannotBeReadAgain_data();
    void failsWhereTheFileCannotBeReadAgain();
    void checksEachTickerByItself();
    void oneTickersFaultEndsTheImportOfAll();
    void aTickerThatComesBackEndsReplacing();
    void aBadLinePassedOverChangesNoTicker();
    void asksForNoSeriesOfBadLinesAlone();
    void saysOfAFileWithoutLinesThatItWouldBeImported();
    void looksAtThePlaceOfTheRejects();
    void keepsLittleOfEachOfManyTickers_data();
    void keepsLittleOfEachOfManyTickers();
    void farDistancesCountAsNearOnes();
    void endsOnceItIsStopped();
    void endsOnceItIsStoppedAmongDaysThatComeAgain();
    void tellsItsProgressWithEachRunOfADay();
    void countsBarsOnlyWhereThatIsWanted();
    void countsTheBarsOfTheLastRunAlone();
    void readsEachTickerWithItsOwnDecimals();
    void asksForNoDecimalsWithoutTickers();
    void saysWhatAnImportThenDoes_data();
    void saysWhatAnImportThenDoes();
    void saysWhatAnImportOfTickersThenDoes_data();
    void saysWhatAnImportOfTickersThenDoes();

private:
    QString path(const char* name) const { return m_dir->filePath(QLatin1String(name)); }
    QDir series() const { return QDir(path("store/S/B/X")); }
    void store(const char* name, const QByteArray& content) const
    {
        writeFile(series().filePath(QLatin1String(name)), content);
    }
    ImportCheck check(const QByteArray& content, const ImportWays& ways = {},
                      qint64 maxProblems = 100) const
    {
        return check(content, detailsOfSeries(2), ways, maxProblems);
    }
    ImportCheck check(const QByteArray& content, const ImportDetails& details,
                      const ImportWays& ways = {}, qint64 maxProblems = 100) const;
    std::vector<CheckedDay> countedDays(const ImportDetails& details, const ImportWays& ways) const;
    QString failure(const QString& file, const ImportWays& ways = {}) const;
    std::vector<tadata::TickerCheck> checkTickers(const QByteArray& content,
                                                  const ImportWays& ways = {}) const;

    vexdesk::Outcome outcomeOf(const ImportDetails& details, const ImportWays& ways) const;
    static void compareBars(const CheckedDay& said, const QByteArray& before, const QString& file);
    static void compareDays(const tadata::TickerCheck& one, const QByteArray& content,
                            const QMap<QString, QByteArray>& before,
                            const QMap<QString, QByteArray>& after);
    vexdesk::Result<QList<QDir>> tickerDirs(const QStringList& tickers) const;

    std::unique_ptr<QTemporaryDir> m_dir;
};

namespace {

const QByteArray bar1 = "20240115;100000;1;2;1;2\n";
const QByteArray bar2 = "20240115;100100;1;2;1;2\n";
const QByteArray bar3 = "20240116;100000;1;2;1;2\n";
const QByteArray stored1 = "100000;1.00;2.00;1.00;2.00;0;0.00;0\n";
const QByteArray stored2 = "100100;1.00;2.00;1.00;2.00;0;0.00;0\n";
constexpr char day1File[] = "20240115_60.iss";
constexpr char day2File[] = "20240116_60.iss";

ImportWays waysOf(ImportMode mode, bool skipsBad = false)
{
    ImportWays ways;
    ways.mode = mode;
    ways.skipsBad = skipsBad;
    return ways;
}

// "2024-01-15 bars 2 stored 0 result 2 lost 0 new"
QString shown(const CheckedDay& day)
{
    static const char* const outcomes[] = {"new", "same", "replaced", "merged"};
    return QStringLiteral("%1 bars %2 stored %3 result %4 lost %5 %6")
        .arg(day.day.toString(Qt::ISODate))
        .arg(day.bars)
        .arg(day.stored)
        .arg(day.result)
        .arg(day.lost)
        .arg(QLatin1String(outcomes[static_cast<int>(day.outcome)]));
}

QStringList shownDays(const ImportCheck& check)
{
    QStringList days;
    for (const CheckedDay& day : check.days)
        days.append(shown(day));
    return days;
}

// The kind's number and the line, in the order of the report.
QStringList shownProblems(const ImportCheck& check)
{
    QStringList problems;
    for (const FileProblem& problem : check.problems) {
        problems.append(QStringLiteral("%1:%2")
                            .arg(static_cast<int>(problem.kind))
                            .arg(problem.line.value_or(0)));
    }
    return problems;
}

QStringList days(const char* text)
{
    return QString::fromLatin1(text).split(u'|');
}

} // namespace

void TestImportCheck::init()
{
    testsupport::failOnStrayWarnings();
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

ImportCheck TestImportCheck::check(const QByteArray& content, const ImportDetails& details,
                                   const ImportWays& ways, qint64 maxProblems) const
{
    writeFile(path("in.csv"), content);
    const auto before = readTree(QDir(m_dir->path()));
    int percent = -1;
    const auto progress = [&percent](int now) { percent = now; };
    const auto checked =
        checkImport(path("in.csv"), details, ways, series(), maxProblems, progress);
    if (!checked)
        QTest::qFail(qPrintable(checked.message()), __FILE__, __LINE__);
    if (readTree(QDir(m_dir->path())) != before || percent != 100)
        QTest::qFail("It has written something, or not come to its end", __FILE__, __LINE__);
    return checked.valueOr(ImportCheck());
}

// Of the file that was checked last.
std::vector<CheckedDay> TestImportCheck::countedDays(const ImportDetails& details,
                                                     const ImportWays& ways) const
{
    const tadata::CheckedSeries counted{.directory = [this](const QString&) { return series(); },
                                        .countsBars = true};
    const auto checks = tadata::checkTickers(
        path("in.csv"), details, ways, counted, 0, [](int) {}, nullptr);
    return checks ? checks->front().check.days : std::vector<CheckedDay>();
}

QString TestImportCheck::failure(const QString& file, const ImportWays& ways) const
{
    return checkImport(file, detailsOfSeries(2), ways, series(), 100, [](int) {}).message();
}

void TestImportCheck::takesAMissingStoreForAnEmptyOne()
{
    const ImportCheck checked = check(bar1 + bar2 + bar3);
    QVERIFY(!QFile::exists(path("store")));
    QVERIFY(checked.wouldImport && !checked.stop);
    QCOMPARE(shownDays(checked), days("2024-01-15 bars 2 stored 0 result 2 lost 0 new|"
                                      "2024-01-16 bars 1 stored 0 result 1 lost 0 new"));
    QCOMPARE(checked.lines, 3);
    QCOMPARE(checked.spacing, std::optional(60));
    QCOMPARE(checked.first->day, QDate(2024, 1, 15));
    QCOMPARE(checked.last->time, QTime(10, 0));
    const ImportCheck empty = check("");
    QVERIFY(empty.wouldImport && !empty.first && !empty.spacing && empty.days.empty());
}

void TestImportCheck::countsTheWholeFilePastAStop()
{
    const ImportCheck checked = check(bar1 + "bad\n" + bar2 + "worse\n" + bar3);
    QVERIFY(!checked.wouldImport);
    QCOMPARE(checked.stop->line, std::optional<qint64>(2));
    QCOMPARE(checked.stop->message,
             QStringLiteral("Ошибка при импорте 2-й строки:\nНедостаточное количество столбцов."));
    QCOMPARE(checked.bars, 3);
    QCOMPARE(checked.badLines, 2);
    QCOMPARE(shownProblems(checked), days("0:2|0:4"));
    QCOMPARE(checked.problems[0].text, QStringLiteral("Недостаточное количество столбцов"));
    QCOMPARE(checked.last->day, QDate(2024, 1, 16));
}

void TestImportCheck::keepsWhatReplacingWroteBeforeAStop()
{
    store(day1File, stored1 + stored2);
    const ImportCheck checked = check(bar1 + "bad\n" + bar2 + bar3);
    QCOMPARE(shownDays(checked), days("2024-01-15 bars 1 stored 2 result 1 lost 1 replaced"));
}

void TestImportCheck::losesTheEarlierRunOfADay()
{
    store(day1File, stored2);
    const ImportCheck checked = check(bar1 + bar3 + bar2);
    QCOMPARE(shownDays(checked), days("2024-01-15 bars 2 stored 1 result 1 lost 1 same|"
                                      "2024-01-16 bars 1 stored 0 result 1 lost 0 new"));
    QCOMPARE(checked.days[0].wiped, 1);
    QCOMPARE(checked.days[0].lostOfFile, 1);
    QCOMPARE(checked.days[1].wiped, 0);
    QCOMPARE(shownProblems(checked), days("1:3"));
    QCOMPARE(check(bar1 + bar3 + bar2, waysOf(ImportMode::Merge)).problems.size(), size_t(0));
}

void TestImportCheck::losesStoredBarsThatAreReplaced()
{
    store(day1File, stored1 + "nonsense\n" + stored2);
    QCOMPARE(shownDays(check(bar2)), days("2024-01-15 bars 1 stored 2 result 1 lost 1 replaced"));
}

void TestImportCheck::isTheSameOnlyForEqualBytes_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<bool>("isSame");
    QTest::newRow("equal") << stored1 + stored2 << true;
    QTest::newRow("another order") << stored2 + stored1 << false;
    QTest::newRow("no line end") << (stored1 + stored2).chopped(1) << false;
    QTest::newRow("carriage returns")
        << QByteArray(stored1 + stored2).replace("\n", "\r\n") << false;
    QTest::newRow("mark") << "\xef\xbb\xbf" + stored1 + stored2 << false;
    QTest::newRow("edited") << stored1 + "100100;1.00;2.00;1.00;2.00;0.00;0;0\n" << false;
}

void TestImportCheck::isTheSameOnlyForEqualBytes()
{
    QFETCH(const QByteArray, stored);
    QFETCH(const bool, isSame);
    store(day1File, stored);
    for (const ImportMode mode : {ImportMode::Replace, ImportMode::Merge, ImportMode::Fill}) {
        const ImportCheck checked = check(bar1 + bar2, waysOf(mode));
        QCOMPARE(checked.days.size(), size_t(1));
        QCOMPARE(checked.days[0].outcome == CheckedDay::Outcome::Same, isSame);
        QCOMPARE(checked.days[0].stored, 2);
    }
}

// A stored day is read in blocks, and no number of lines fills one.
void TestImportCheck::comparesLongDaysToTheirEnds()
{
    QByteArray file;
    QByteArray stored;
    for (int minute = 0; minute < 1440; ++minute) {
        const QTime time = QTime(0, 0).addSecs(60 * minute);
        const QByteArray text = time.toString(QStringLiteral("hhmmss")).toLatin1();
        file += "20240115;" + text + ";1;2;1;2\n";
        stored += text + ";1.00;2.00;1.00;2.00;0;0.00;0\n";
    }
    const auto isSame = [&](const QByteArray& day) {
        store(day1File, day);
        return check(file).days.at(0).outcome == CheckedDay::Outcome::Same;
    };
    QVERIFY(isSame(stored));
    QVERIFY(!isSame(stored + stored.last(37)));
    QVERIFY(!isSame(stored.chopped(1)));
    for (qsizetype place = 7; place < stored.size(); place += 1000) {
        QByteArray other = stored;
        other[place] = other[place] == '0' ? '3' : '0';
        QVERIFY2(!isSame(other), qPrintable(QString::number(place)));
    }
}

void TestImportCheck::keepsRepeatedLinesWhereItFills()
{
    store(day1File, stored1 + stored2 + stored2);
    const auto outcome = [this](ImportMode mode) {
        return shownDays(check(bar1 + bar2, waysOf(mode))).join(u'|');
    };
    const QString day = QStringLiteral("2024-01-15 bars 2 stored 2 result 2 lost 0 ");
    QCOMPARE(outcome(ImportMode::Replace), day + QStringLiteral("replaced"));
    QCOMPARE(outcome(ImportMode::Merge), day + QStringLiteral("merged"));
    QCOMPARE(outcome(ImportMode::Fill), day + QStringLiteral("same"));
}

void TestImportCheck::mergesAndFills()
{
    store(day1File, "100000;7.00;7.00;7.00;7.00;0;0.00;0\n");
    QCOMPARE(shownDays(check(bar1, waysOf(ImportMode::Merge))),
             days("2024-01-15 bars 1 stored 1 result 1 lost 0 merged"));
    QCOMPARE(shownDays(check(bar1, waysOf(ImportMode::Fill))),
             days("2024-01-15 bars 1 stored 1 result 1 lost 0 same"));
    QCOMPARE(shownDays(check(bar2 + bar3, waysOf(ImportMode::Fill))),
             days("2024-01-15 bars 1 stored 1 result 2 lost 0 merged|"
                  "2024-01-16 bars 1 stored 0 result 1 lost 0 new"));
}

// What the first run alone would change is no matter.
void TestImportCheck::looksAtAllRunsOfADay()
{
    store(day1File, stored1 + stored2);
    const QByteArray other = "20240115;100000;5;5;5;5\n";
    QCOMPARE(shownDays(check(other + bar3 + bar1, waysOf(ImportMode::Merge))),
             days("2024-01-15 bars 2 stored 2 result 2 lost 0 same|"
                  "2024-01-16 bars 1 stored 0 result 1 lost 0 new"));
    QCOMPARE(shownDays(check(bar1 + bar3 + other, waysOf(ImportMode::Merge))),
             days("2024-01-15 bars 2 stored 2 result 2 lost 0 merged|"
                  "2024-01-16 bars 1 stored 0 result 1 lost 0 new"));
}

void TestImportCheck::touchesNothingWhereMergingStops()
{
    for (const ImportMode mode : {ImportMode::Merge, ImportMode::Fill}) {
        const ImportCheck checked = check(bar1 + "bad\n", waysOf(mode));
        QVERIFY(checked.days.empty() && !checked.wouldImport);
        QCOMPARE(checked.stop->line, std::optional<qint64>(2));
    }
}

void TestImportCheck::namesABadStoredLineAtItsDaysFirstLine()
{
    store(day1File, stored1 + "x\n");
    store(day2File, "y\n");
    const ImportCheck checked = check(bar3 + bar3 + bar1 + bar2, waysOf(ImportMode::Merge));
    QCOMPARE(checked.stop->line, std::optional<qint64>(3));
    QCOMPARE(checked.stop->message, QStringLiteral("Файл %1, строка 2: не запись бара")
                                        .arg(series().filePath(QLatin1String(day1File))));
    QVERIFY(checked.stop->isOfStoredLine);
    QVERIFY(checked.days.empty());
}

void TestImportCheck::prefersABadLineToABadStoredOne()
{
    store(day1File, "x\n");
    QCOMPARE(check(bar1 + "bad\n", waysOf(ImportMode::Fill)).stop->line, std::optional<qint64>(2));
    const ImportCheck skipping = check(bar1 + "bad\n", waysOf(ImportMode::Fill, true));
    QCOMPARE(skipping.stop->line, std::optional<qint64>(1));
}

// Once the import has ended, no stored day matters.
void TestImportCheck::prefersABadLineToADayThatCannotBeRead()
{
    QVERIFY(QDir().mkpath(series().filePath(QLatin1String(day1File))));
    for (const ImportMode mode : {ImportMode::Merge, ImportMode::Fill}) {
        const ImportCheck checked = check(bar1 + "bad\n", waysOf(mode));
        QCOMPARE(checked.stop->line, std::optional<qint64>(2));
        QVERIFY(checked.days.empty());
    }
}

void TestImportCheck::endsWhereASumDoesNotFit_data()
{
    QTest::addColumn<ImportMode>("mode");
    QTest::addColumn<qint64>("line");
    QTest::addColumn<QStringList>("dayLines");
    QTest::newRow("replace") << ImportMode::Replace << qint64(3)
                             << days("2024-01-15 bars 2 stored 0 result 2 lost 0 new|"
                                     "2024-01-16 bars 1 stored 0 result 1 lost 0 new");
    QTest::newRow("merge") << ImportMode::Merge << qint64(2) << QStringList();
    QTest::newRow("fill") << ImportMode::Fill << qint64(2) << QStringList();
}

void TestImportCheck::endsWhereASumDoesNotFit()
{
    QFETCH(const ImportMode, mode);
    QFETCH(const qint64, line);
    ImportDetails details = with(detailsOfSeries(0), ColumnRole::Value, 6);
    details.timeframe = 1;
    const QByteArray large = ";1;1;1;1;36028797018963967\n";
    const ImportCheck checked = check("20240116;100001" + large + "20240115;100001" + large +
                                          "20240115;100002" + large + "20240115;100003" + large,
                                      details, waysOf(mode));
    QCOMPARE(checked.stop->line, std::optional(line));
    QCOMPARE(checked.stop->message,
             QStringLiteral("Ошибка при импорте %1-й строки:\nНекорректное число "
                            "'36028797018963967+36028797018963967'.")
                 .arg(line));
    QVERIFY(!checked.stop->isOfStoredLine);
    QTEST(shownDays(checked), "dayLines");
}

// Bars of minutes are never, and those of a day that stays as it is are not again.
void TestImportCheck::addsUpOnlyWhatIsWrittenAndOnlySeconds()
{
    ImportDetails details = with(detailsOfSeries(0), ColumnRole::Value, 6);
    const QByteArray large = ";1;1;1;1;36028797018963967\n";
    const QByteArray minutes = "20240115;100000" + large + "20240115;100100" + large;
    for (const ImportMode mode : {ImportMode::Replace, ImportMode::Merge, ImportMode::Fill})
        QVERIFY(check(minutes, details, waysOf(mode)).wouldImport);
    details.timeframe = 1;
    const QByteArray stored = "100001;1;1;1;1;0;36028797018963967;0\n"
                              "100002;1;1;1;1;0;36028797018963967;0\n";
    store("20240115_1.iss", stored);
    const QByteArray seconds = "20240115;100001" + large + "20240115;100002" + large;
    for (const ImportMode mode : {ImportMode::Merge, ImportMode::Fill}) {
        const ImportCheck checked = check(seconds, details, waysOf(mode));
        QCOMPARE(shownDays(checked), days("2024-01-15 bars 2 stored 2 result 2 lost 0 same"));
    }
}

void TestImportCheck::passesOverBadLines()
{
    const ImportCheck checked =
        check(bar1 + " \t\v\f\r\n\nbad\n" + bar2, waysOf(ImportMode::Replace, true));
    QVERIFY(checked.wouldImport);
    QCOMPARE(checked.lines, 5);
    QCOMPARE(checked.badLines, 1);
    QCOMPARE(shownProblems(checked), days("0:4"));
    QCOMPARE(check("\n").badLines, 1);
    ImportWays rejecting;
    rejecting.rejects = path("rejects");
    QVERIFY(check(bar1 + "bad\n", rejecting).wouldImport);
}

// The line has a time, which no bar of the day has.
void TestImportCheck::takesNoBadLineOfADayThatComesAgain()
{
    const ImportCheck checked =
        check(bar1 + bar3 + "20240115;103000;1;2;1;x\n" + bar2, waysOf(ImportMode::Merge, true));
    QCOMPARE(checked.badLines, 1);
    QCOMPARE(shownDays(checked), days("2024-01-15 bars 2 stored 0 result 2 lost 0 new|"
                                      "2024-01-16 bars 1 stored 0 result 1 lost 0 new"));
}

void TestImportCheck::takesNoFileOfBadLinesAlone()
{
    const ImportCheck checked = check("bad\n", waysOf(ImportMode::Merge, true));
    QVERIFY(!checked.wouldImport && !checked.stop);
    QVERIFY(check("\n", waysOf(ImportMode::Merge, true)).wouldImport);
}

void TestImportCheck::listsTheProblemsOfALineInOrder()
{
    const ImportDetails details = with(detailsOfSeries(0), ColumnRole::Volume, 6);
    const ImportCheck checked =
        check("20240115;100000;1;1;1;1;1\n20240115;000000;1;1;1;1;2147483647\n" + bar3.chopped(1) +
                  ";1\n20240115;100000;1;1;1;1;1\n20240115;000000;2.5;2;2;2;2147483648\n",
              details);
    const QStringList wanted = days("2:2|7:2|1:4|3:4|2:5|3:5|4:5|5:5|6:5|7:5");
    QCOMPARE(shownProblems(checked), wanted);
    // 2.4 becomes 2, which is not above the high.
    QCOMPARE(check("20240115;100000;2.4;2;2;2;1\n", details).count(ProblemKind::Prices), 0);
}

void TestImportCheck::saysWhichPricesAreImpossible_data()
{
    QTest::addColumn<QByteArray>("prices");
    QTest::addColumn<bool>("areImpossible");
    for (const char* prices : {"1;1;1;1", "1;2;1;2", "2;2;1;1", "2;3;1;2", "-2;-1;-3;-2"})
        QTest::newRow(prices) << QByteArray(prices) << false;
    for (const char* prices : {"3;2;1;1", "1;2;1;3", "1;3;2;3", "3;3;2;1", "2;1;3;2", "3;2;1;3",
                               "1;3;2;1", "-2;-3;-3;-3"})
        QTest::newRow(prices) << QByteArray(prices) << true;
}

void TestImportCheck::saysWhichPricesAreImpossible()
{
    QFETCH(const QByteArray, prices);
    const ImportCheck checked = check("20240115;100000;" + prices + '\n');
    QCOMPARE(checked.bars, 1);
    QTEST(checked.count(ProblemKind::Prices) == 1, "areImpossible");
}

// A bar of midnight alone is the first and the last of its file.
void TestImportCheck::saysWhenTheFileBeginsAndEnds()
{
    const auto ends = [this](const QByteArray& times) {
        QByteArray content;
        for (const QByteArray& time : times.split(' '))
            content += time + ";1;2;1;2\n";
        const ImportCheck checked = check(content);
        return checked.first->day.toString(QStringLiteral("dd ")) +
               checked.first->time.toString(QStringLiteral("hhmmss ")) +
               checked.last->day.toString(QStringLiteral("dd ")) +
               checked.last->time.toString(QStringLiteral("hhmmss"));
    };
    QCOMPARE(ends("20240115;000000"), QStringLiteral("15 000000 15 000000"));
    QCOMPARE(ends("20240115;235959"), QStringLiteral("15 235959 15 235959"));
    QCOMPARE(ends("20240115;100000 20240115;095959 20240115;100001 20240115;100000"),
             QStringLiteral("15 095959 15 100001"));
    QCOMPARE(ends("20240116;100000 20240116;110000 20240115;120000 20240115;130000"),
             QStringLiteral("15 120000 16 110000"));
}

void TestImportCheck::aBarOfTheSameTimeIsNotOutOfOrder()
{
    QCOMPARE(shownProblems(check(bar1 + bar1)), days("3:2"));
    QCOMPARE(shownProblems(check(bar2 + bar1 + bar2)), days("2:2|3:3"));
}

void TestImportCheck::countsTheProblemsThatItDoesNotList()
{
    const ImportCheck checked = check("bad\nbad\nbad\n", {}, 2);
    QCOMPARE(shownProblems(checked), days("0:1|0:2"));
    QCOMPARE(checked.count(ProblemKind::BadLine), 3);
    QVERIFY(check("bad\n", {}, 0).problems.empty());
}

void TestImportCheck::eachKindOfProblemHasATitleOfItsOwn()
{
    std::set<QString> titles;
    for (size_t kind = 0; kind < tadata::problemKinds; ++kind)
        titles.insert(tadata::titleOf(static_cast<ProblemKind>(kind)));
    QCOMPARE(titles.size(), tadata::problemKinds);
    QVERIFY(!titles.contains(QString()));
    QCOMPARE(tadata::titleOf(ProblemKind::DayAgain),
             QStringLiteral("Файл возвращается к дню, прежние бары дня пропадут"));
}

void TestImportCheck::saysWhenBarsAreNotOfTheTimeframe_data()
{
    QTest::addColumn<int>("timeframe");
    QTest::addColumn<int>("distance");
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("isStrange");
    QTest::newRow("minutes as minutes") << 60 << 60 << 30 << false;
    QTest::newRow("seconds as minutes") << 60 << 7 << 21 << true;
    QTest::newRow("five minutes as minutes") << 60 << 300 << 21 << true;
    QTest::newRow("two minutes as minutes") << 60 << 120 << 21 << false;
    QTest::newRow("minutes as seconds") << 1 << 60 << 21 << true;
    QTest::newRow("seconds as seconds") << 1 << 7 << 21 << false;
    QTest::newRow("too few") << 1 << 60 << 20 << false;
}

void TestImportCheck::saysWhenBarsAreNotOfTheTimeframe()
{
    QFETCH(const int, timeframe);
    QFETCH(const int, distance);
    QFETCH(const int, count);
    ImportDetails details = detailsOfSeries(2);
    details.timeframe = timeframe;
    QByteArray content;
    for (int i = 0; i < count; ++i) {
        const QTime time = QTime(10, 0).addSecs(i * distance);
        content += "20240115;" + time.toString(QStringLiteral("hhmmss")).toLatin1() + ";1;1;1;1\n";
    }
    const ImportCheck checked = check(content, details);
    QTEST(checked.count(ProblemKind::Spacing) == 1, "isStrange");
    QCOMPARE(checked.spacing, std::optional(distance));
}

void TestImportCheck::saysWhenDatesAreReadWrongly_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("dates");
    QTest::addColumn<bool>("isWrong");
    const auto row = [](const char* name, const char* format, const char* dates, bool isWrong) {
        QTest::newRow(name) << QString::fromLatin1(format) << QByteArray(dates) << isWrong;
    };
    row("days read as months", "dd/MM/yyyy", "01/10/2024 01/11/2024 01/12/2024", true);
    row("months of a year", "dd/MM/yyyy", "01/10/2024 01/11/2024 01/12/2024 13/12/2024", false);
    row("days in order", "MM/dd/yyyy", "01/10/2024 01/11/2024 01/12/2024", false);
    row("leaps both ways", "dd/MM/yyyy", "01/01/2024 06/06/2024", false);
    row("a fortnight", "yyMMdd", "100110 240110", true);
    row("a day more", "yyMMdd", "100110 250110", false);
    row("years read as days", "ddMMyy", "240110 240111 240112", true);
    row("days read as years", "yyMMdd", "101124 111124 121124", true);
    row("no date", "ddMMyy", "", false);
}

void TestImportCheck::saysWhenDatesAreReadWrongly()
{
    QFETCH(const QString, format);
    QFETCH(const QByteArray, dates);
    ImportDetails details = detailsOfSeries(2);
    details.dateFormat = format;
    QByteArray content;
    for (const QByteArray& date : dates.split(' ')) {
        if (!date.isEmpty())
            content += date + ";100000;1;1;1;1\n";
    }
    // Before the clock: a day later or earlier makes no difference.
    ImportWays ways;
    ways.clock.shiftMinutes = 1440;
    const ImportCheck checked = check(content, details, ways);
    QTEST(checked.count(ProblemKind::DateOrder) == 1, "isWrong");
    QCOMPARE(checked.badLines, 0);
}

void TestImportCheck::looksAtTimesAfterTheClock()
{
    ImportWays ways;
    ways.clock.stampsBegin = true;
    const ImportCheck checked = check("20240115;235800;1;1;1;1\n20240115;235900;1;1;1;1\n", ways);
    QCOMPARE(shownDays(checked), days("2024-01-15 bars 1 stored 0 result 1 lost 0 new|"
                                      "2024-01-16 bars 1 stored 0 result 1 lost 0 new"));
    QCOMPARE(shownProblems(checked), days("7:2"));
    QCOMPARE(checked.problems[0].day, QDate(2024, 1, 16));
}

void TestImportCheck::refusesADayFileOfTheSeries()
{
    store(day1File, bar1 + bar2);
    const auto checked = checkImport(series().filePath(QLatin1String(day1File)), detailsOfSeries(2),
                                     {}, series(), 100, [](int) {});
    QVERIFY(checked && !checked->wouldImport && !checked->stop->line && checked->days.empty());
    QVERIFY(checked->stop->message.contains(QStringLiteral("импорт стёр бы его")));
    QCOMPARE(checked->bars, 2);
}

// Since the import does not even come to the line.
void TestImportCheck::aRefusedSeriesIsToldBeforeABadLine()
{
    store(day1File, bar1 + "bad\n");
    for (const ImportMode mode : {ImportMode::Replace, ImportMode::Merge}) {
        const auto checked =
            checkImport(series().filePath(QLatin1String(day1File)), detailsOfSeries(2),
                        waysOf(mode), series(), 100, [](int) {});
        QVERIFY(checked && !checked->stop->line);
        QVERIFY(checked->stop->message.contains(QStringLiteral("импорт стёр бы его")));
        QCOMPARE(checked->badLines, 1);
    }
}

void TestImportCheck::failsWhereSomethingCannotBeRead()
{
    QCOMPARE(failure(path("nothing")),
             QStringLiteral("Невозможно открыть файл %1").arg(path("nothing")));
    writeFile(path("in.csv"), bar1);
    QVERIFY(QDir().mkpath(series().filePath(QLatin1String(day1File))));
    for (const ImportMode mode : {ImportMode::Replace, ImportMode::Merge}) {
        QCOMPARE(failure(path("in.csv"), waysOf(mode)),
                 QStringLiteral("Невозможно открыть файл %1")
                     .arg(series().filePath(QLatin1String(day1File))));
    }
    QVERIFY(QDir(path("store")).removeRecursively());
    writeFile(path("store"), "no directory");
    QCOMPARE(failure(path("in.csv")),
             QStringLiteral("Невозможно прочитать каталог %1").arg(path("store")));
}

void TestImportCheck::failsWhereADirectoryCannotBeLookedInto()
{
    cleanup();
    const testsupport::OtherUser nobody;
    init(); // in directories of his own
    writeFile(path("in.csv"), bar1);
    QVERIFY(QDir().mkpath(series().path()));
    for (const mode_t mode : {0600, 0300}) { // not to be entered, and not to be listed
        const testsupport::Permissions closed(series().path(), mode);
        const QString error = failure(path("in.csv"));
        QVERIFY2(error.startsWith(
                     QStringLiteral("Невозможно прочитать каталог %1").arg(series().path())),
                 qPrintable(error));
    }
    QCOMPARE(failure(path("in.csv")), QString());
    // The disk that a link leads to is not there now.
    QVERIFY(QDir(path("store/S")).removeRecursively());
    QVERIFY(QFile::link(path("elsewhere"), path("store/S")));
    QCOMPARE(failure(path("in.csv")),
             QStringLiteral("Невозможно прочитать каталог %1").arg(path("store/S")));
    cleanup();
}

// A day that is another one is read once more, for its times or for its bars.
void TestImportCheck::failsWhereAStoredDayCannotBeReadAgain()
{
    writeFile(path("in.csv"), bar1);
    store(day1File, stored2);
    for (const bool counts : {false, true}) {
        const tadata::CheckedSeries into{.directory = [this](const QString&) { return series(); },
                                         .countsBars = counts};
        int passed = 0;
        for (;; ++passed) {
            const testsupport::Fault broken(testsupport::SystemCall::Read, QLatin1String(day1File),
                                            EIO, passed);
            const auto checks = tadata::checkTickers(
                path("in.csv"), detailsOfSeries(2), {}, into, 100, [](int) {}, nullptr);
            if (broken.failed() == 0)
                break;
            QVERIFY2(
                checks.message().startsWith(QStringLiteral("Невозможно прочитать файл %1:")
                                                .arg(series().filePath(QLatin1String(day1File)))),
                qPrintable(checks.message()));
        }
        QVERIFY(passed >= 2);
    }
}

void TestImportCheck::failsWhereTheFileCannotBeReadAgain_data()
{
    QTest::addColumn<testsupport::SystemCall>("call");
    QTest::addColumn<QString>("beginning");
    QTest::newRow("open") << testsupport::SystemCall::Open
                          << QStringLiteral("Невозможно открыть файл ");
    QTest::newRow("read") << testsupport::SystemCall::Read
                          << QStringLiteral("Невозможно прочитать файл ");
}

// As it is for the days that it comes back to.
void TestImportCheck::failsWhereTheFileCannotBeReadAgain()
{
    QFETCH(const testsupport::SystemCall, call);
    QFETCH(const QString, beginning);
    writeFile(path("in.csv"), bar1 + bar3 + bar2);
    int passed = 0;
    for (;; ++passed) {
        const testsupport::Fault broken(call, path("in.csv"), EIO, passed);
        const QString error = failure(path("in.csv"), waysOf(ImportMode::Merge));
        if (broken.failed() == 0)
            break;
        QVERIFY2(error.startsWith(beginning + path("in.csv")), qPrintable(error));
    }
    QVERIFY(passed >= 2);
    QCOMPARE(failure(path("in.csv"), waysOf(ImportMode::Merge)), QString());
}

// Of lines whose last column is the ticker; its series is S/B/<ticker>.
std::vector<tadata::TickerCheck> TestImportCheck::checkTickers(const QByteArray& content,
                                                               const ImportWays& ways) const
{
    writeFile(path("in.csv"), content);
    const ImportDetails details = with(detailsOfSeries(2), ColumnRole::Ticker, 6);
    const tadata::CheckedSeries ofTickers{
        [this](const QString& ticker) { return QDir(path("store/S/B")).filePath(ticker); }};
    const auto checked = tadata::checkTickers(
        path("in.csv"), details, ways, ofTickers, 100, [](int) {}, nullptr);
    if (!checked)
        QTest::qFail(qPrintable(checked.message()), __FILE__, __LINE__);
    return checked.valueOr(std::vector<tadata::TickerCheck>());
}

void TestImportCheck::checksEachTickerByItself()
{
    store(day1File, stored1);
    for (const ImportMode mode : {ImportMode::Replace, ImportMode::Merge}) {
        const auto checks = checkTickers(bar2.chopped(1) + ";X\n" + bar3.chopped(1) + ";X\n" +
                                             bar1.chopped(1) + ";Y\n",
                                         waysOf(mode));
        QCOMPARE(checks.size(), size_t(2));
        QCOMPARE(checks[0].ticker, QStringLiteral("X"));
        QCOMPARE(checks[0].check.days.size(), size_t(2));
        QCOMPARE(checks[0].check.days[0].stored, 1);
        QCOMPARE(checks[0].check.days[0].result, mode == ImportMode::Merge ? 2 : 1);
        QCOMPARE(checks[1].ticker, QStringLiteral("Y"));
        QCOMPARE(shownDays(checks[1].check),
                 days("2024-01-15 bars 1 stored 0 result 1 lost 0 new"));
        QVERIFY(checks[0].check.wouldImport && checks[1].check.wouldImport);
    }
    // Days that come again are looked at by the lines of their ticker alone.
    const auto again = checkTickers(bar1.chopped(1) + ";X\n" + bar3.chopped(1) + ";X\n" +
                                        bar1.chopped(1) + ";Y\n" + bar2.chopped(1) + ";X\n",
                                    waysOf(ImportMode::Merge));
    QCOMPARE(shownDays(again[0].check), days("2024-01-15 bars 2 stored 1 result 2 lost 0 merged|"
                                             "2024-01-16 bars 1 stored 0 result 1 lost 0 new"));
}

void TestImportCheck::oneTickersFaultEndsTheImportOfAll()
{
    store(day1File, "nonsense\n");
    const QByteArray content = bar3.chopped(1) + ";Y\n" + bar1.chopped(1) + ";X\n";
    const auto stored = checkTickers(content, waysOf(ImportMode::Merge));
    for (const tadata::TickerCheck& one : stored) {
        QVERIFY2(!one.check.wouldImport, qPrintable(one.ticker));
        QVERIFY(one.check.stop && one.check.days.empty());
    }
    const auto bad = checkTickers(bar3.chopped(1) + ";Y\nbad\n" + bar1.chopped(1) + ";X\n",
                                  waysOf(ImportMode::Merge));
    QCOMPARE(bad.size(), size_t(2));
    QVERIFY(!bad[0].check.wouldImport && bad[0].check.days.empty());
    QCOMPARE(bad[0].check.badLines, 1);
}

void TestImportCheck::aTickerThatComesBackEndsReplacing()
{
    const QByteArray content =
        bar1.chopped(1) + ";X\n" + bar1.chopped(1) + ";Y\n" + bar2.chopped(1) + ";X\n";
    const auto replacing = checkTickers(content);
    QCOMPARE(replacing.size(), size_t(2));
    for (const tadata::TickerCheck& one : replacing) {
        QVERIFY(!one.check.wouldImport);
        QCOMPARE(one.check.stop->line, std::optional<qint64>(3));
        QCOMPARE(one.check.days.size(), size_t(1)); // that came before
    }
    for (const tadata::TickerCheck& one : checkTickers(content, waysOf(ImportMode::Fill)))
        QVERIFY(one.check.wouldImport);
}

void TestImportCheck::aBadLinePassedOverChangesNoTicker()
{
    const QByteArray x1 = bar1.chopped(1) + ";X\n";
    const QByteArray x2 = bar2.chopped(1) + ";X\n";
    const auto foreign =
        checkTickers(x1 + "20240115;bad;1;2;1;2;Y\n" + x2, waysOf(ImportMode::Replace, true));
    QCOMPARE(foreign.size(), size_t(2));
    QVERIFY(foreign[0].check.wouldImport && foreign[1].check.wouldImport);
    QCOMPARE(shownDays(foreign[0].check), days("2024-01-15 bars 2 stored 0 result 2 lost 0 new"));
    QCOMPARE(foreign[1].ticker, QStringLiteral("Y"));
    QCOMPARE(foreign[1].check.badLines, 1);
    QVERIFY(foreign[1].check.days.empty());
    const auto again = checkTickers(x1 + bar1.chopped(1) + ";Y\n20240115;bad;1;2;1;2;X\n" +
                                        bar2.chopped(1) + ";Y\n",
                                    waysOf(ImportMode::Replace, true));
    QVERIFY(again[0].check.wouldImport && again[1].check.wouldImport);
    QCOMPARE(again[0].check.badLines, 1);
    QCOMPARE(shownDays(again[1].check), days("2024-01-15 bars 2 stored 0 result 2 lost 0 new"));
}

void TestImportCheck::asksForNoSeriesOfBadLinesAlone()
{
    const ImportDetails details = with(detailsOfSeries(2), ColumnRole::Ticker, 6);
    QStringList asked;
    const tadata::CheckedSeries ofTickers{[&](const QString& ticker) {
        asked.append(ticker);
        return QDir(path("store/S/B")).filePath(ticker);
    }};
    const auto check = [&](const QByteArray& content) {
        writeFile(path("in.csv"), content);
        return tadata::checkTickers(
            path("in.csv"), details, waysOf(ImportMode::Replace, true), ofTickers, 100, [](int) {},
            nullptr);
    };
    // The first line has no ticker, and the name of the second leads out of the store.
    const auto some = check("bad\n" + bar1.chopped(1) + ";..\n" + bar1.chopped(1) + ";X\n");
    QVERIFY(some);
    QCOMPARE(asked, QStringList{QStringLiteral("X")});
    for (const tadata::TickerCheck& one : *some)
        QVERIFY(one.check.wouldImport);
    asked.clear();
    const auto none = check("20240115;bad;1;2;1;2;X\n");
    QVERIFY(none && !none->front().check.wouldImport && asked.isEmpty());
    QVERIFY(!none->front().check.stop);
}

void TestImportCheck::saysOfAFileWithoutLinesThatItWouldBeImported()
{
    const auto checks = checkTickers("");
    QCOMPARE(checks.size(), size_t(1));
    QVERIFY(checks[0].ticker.isNull() && checks[0].check.wouldImport && !checks[0].check.stop);
}

// As an import does, whether it comes to a series or not.
void TestImportCheck::looksAtThePlaceOfTheRejects()
{
    ImportWays ways;
    ways.rejects = path("missing/rejects");
    const QByteArray good = bar1.chopped(1) + ";X\n";
    const QByteArray bad = "20240115;bad;1;2;1;2;Y\n";
    for (const QByteArray& content : {bad, good, good + bad, QByteArray()}) {
        for (const tadata::TickerCheck& one : checkTickers(content, ways)) {
            QVERIFY(!one.check.wouldImport && one.check.days.empty());
            QCOMPARE(one.check.stop->line, std::nullopt);
            QCOMPARE(one.check.stop->message,
                     QStringLiteral("Невозможно открыть файл %1").arg(ways.rejects));
        }
    }
}

namespace {

// What is allocated; the same at all times where that is not known.
size_t allocated()
{
#ifdef __GLIBC__
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
#else
    return 0;
#endif
}

} // namespace

void TestImportCheck::keepsLittleOfEachOfManyTickers_data()
{
    QTest::addColumn<ImportMode>("mode");
    QTest::newRow("replace") << ImportMode::Replace;
    QTest::newRow("merge") << ImportMode::Merge;
}

void TestImportCheck::keepsLittleOfEachOfManyTickers()
{
    QFETCH(const ImportMode, mode);
    constexpr size_t tickers = 3000;
    constexpr size_t mostOfOne = 10'000;
    QByteArray content;
    for (size_t i = 0; i < tickers; ++i) {
        const QByteArray end = ";T" + QByteArray::number(qulonglong(i)) + '\n';
        content += bar1.chopped(1) + end + "20240115;180000;1;2;1;2" + end;
    }
    writeFile(path("in.csv"), content);
    const ImportDetails details = with(detailsOfSeries(2), ColumnRole::Ticker, 6);
    const tadata::CheckedSeries ofTickers{
        [this](const QString& ticker) { return QDir(path("store/S/B")).filePath(ticker); }};
    const size_t before = allocated();
    size_t most = before;
    const auto checks = tadata::checkTickers(
        path("in.csv"), details, waysOf(mode), ofTickers, 100,
        [&most](int) { most = std::max(most, allocated()); }, nullptr);
    QVERIFY(checks);
    QCOMPARE(checks->size(), tickers);
    for (const tadata::TickerCheck& one : *checks) {
        QVERIFY(one.check.wouldImport);
        QCOMPARE(shownDays(one.check), days("2024-01-15 bars 2 stored 0 result 2 lost 0 new"));
        QCOMPARE(one.check.spacing, std::optional(8 * 3600));
    }
    if (most == before)
        QSKIP("This allocator does not tell");
    QVERIFY2(most - before < tickers * mostOfOne,
             qPrintable(QString::number((most - before) / tickers)));
}

void TestImportCheck::farDistancesCountAsNearOnes()
{
    tadata::BarSpacing spacing;
    QVERIFY(!spacing.usual());
    spacing.add(0);
    spacing.add(-60);
    QVERIFY(!spacing.usual());
    for (const int distance : {86399, 301, 301, 86399, 300})
        spacing.add(distance);
    QCOMPARE(spacing.usual(), std::optional(301));
    spacing.add(300);
    QCOMPARE(spacing.usual(), std::optional(300));
    tadata::BarSpacing hours;
    for (int i = 0; i < 20; ++i)
        hours.add(3600);
    QVERIFY(hours.isStrangeFor(60) && hours.isStrangeFor(1));
    hours.add(302);
    QVERIFY(hours.isStrangeFor(60) && !hours.isStrangeFor(1));
    // One that is no multiple of five minutes is enough.
    tadata::BarSpacing fives;
    for (int i = 0; i < 20; ++i)
        fives.add(300);
    QVERIFY(fives.isStrangeFor(60));
    fives.add(60);
    QVERIFY(!fives.isStrangeFor(60));
    tadata::BarSpacing seconds;
    seconds.add(1);
    QCOMPARE(seconds.usual(), std::optional(1));
}

void TestImportCheck::endsOnceItIsStopped()
{
    writeFile(path("in.csv"), bar1 + bar2 + bar3);
    std::atomic<bool> stop = false;
    const tadata::CheckedSeries into{[this](const QString&) { return series(); }};
    // It is told of its progress with each day, and cancelled at the first.
    const auto checked = tadata::checkTickers(
        path("in.csv"), detailsOfSeries(2), {}, into, 100, [&stop](int) { stop = true; }, &stop);
    QVERIFY(!checked);
}

void TestImportCheck::endsOnceItIsStoppedAmongDaysThatComeAgain()
{
    writeFile(path("in.csv"), bar1 + bar3 + bar2);
    store(day2File, stored1);
    std::atomic<bool> stop = false;
    // The last day of the file is looked at once all its lines were read.
    const testsupport::Meanwhile meanwhile(testsupport::SystemCall::Open, QLatin1String(day2File),
                                           [&stop] { stop = true; });
    const tadata::CheckedSeries into{[this](const QString&) { return series(); }};
    const auto checked = tadata::checkTickers(
        path("in.csv"), detailsOfSeries(2), waysOf(ImportMode::Merge), into, 100, [](int) {},
        &stop);
    QVERIFY(stop);
    QCOMPARE(checked.message(), QStringLiteral("Импорт прерван"));
}

void TestImportCheck::tellsItsProgressWithEachRunOfADay()
{
    writeFile(path("in.csv"), bar1 + bar2 + bar3 + bar2);
    for (const ImportMode mode : {ImportMode::Replace, ImportMode::Merge}) {
        int told = 0;
        QVERIFY(checkImport(path("in.csv"), detailsOfSeries(2), waysOf(mode), series(), 100,
                            [&told](int) { ++told; }));
        QCOMPARE(told, 4); // and at the end
    }
}

void TestImportCheck::countsBarsOnlyWhereThatIsWanted()
{
    store(day1File, "100100;1.00;9.00;1.00;2.00;0;0.00;0\n");
    for (const ImportMode mode : {ImportMode::Replace, ImportMode::Merge}) {
        const std::vector<CheckedDay> all = check(bar1 + bar2 + bar3, waysOf(mode)).days;
        QCOMPARE(all.at(0).added, 0);
        QCOMPARE(all.at(0).replaced, 0);
        const std::vector<CheckedDay> counted = countedDays(detailsOfSeries(2), waysOf(mode));
        QCOMPARE(counted.at(0).added, 1);
        QCOMPARE(counted.at(0).replaced, 1);
        QCOMPARE(counted.at(1).added, 1);
    }
}

// Of a run those that came before it are no part, whatever became of them.
void TestImportCheck::countsTheBarsOfTheLastRunAlone()
{
    store(day1File, stored1 + stored2);
    store(day2File, "100100;9.00;9.00;9.00;9.00;0;0.00;0\n");
    const QByteArray other = "20240115;100100;5;5;5;5\n";
    const auto counted = [this](const QByteArray& content) {
        check(content);
        const std::vector<CheckedDay> all =
            countedDays(detailsOfSeries(2), waysOf(ImportMode::Replace));
        QStringList texts;
        for (const CheckedDay& day : all)
            texts.append(QStringLiteral("added %1 replaced %2 lost %3")
                             .arg(day.added)
                             .arg(day.replaced)
                             .arg(day.lost));
        return texts;
    };
    QCOMPARE(counted(bar1 + bar2 + bar3),
             days("added 0 replaced 0 lost 0|added 1 replaced 0 lost 1"));
    QCOMPARE(counted(bar1 + bar2 + bar3 + bar1 + other),
             days("added 0 replaced 1 lost 0|added 1 replaced 0 lost 1"));
    QCOMPARE(counted(bar1 + other + bar3 + bar1 + bar2),
             days("added 0 replaced 0 lost 0|added 1 replaced 0 lost 1"));
}

// Also those of the days that the file comes back to.
void TestImportCheck::readsEachTickerWithItsOwnDecimals()
{
    const ImportDetails details = with(detailsOfSeries(2), ColumnRole::Ticker, 6);
    auto data = vexdesk::ReferenceData::demonstration();
    data.setSeries(QStringLiteral("S"), QStringLiteral("B"), QStringLiteral("X"), 2);
    data.setSeries(QStringLiteral("S"), QStringLiteral("B"), QStringLiteral("FIVE"), 5);
    vexdesk::ReferenceData::install(data);
    writeFile(path("store/S/B/FIVE/20240115_60.iss"),
              "100000;1.00000;2.00000;1.00000;2.00000;0;0.00000;0\n"
              "100100;1.00000;2.00000;1.00000;2.00000;0;0.00000;0\n");
    writeFile(path("in.csv"), bar1.chopped(1) + ";FIVE\n" + bar3.chopped(1) + ";FIVE\n" +
                                  bar2.chopped(1) + ";FIVE\n");
    const tadata::CheckedSeries ofTickers{
        .directory =
            [this](const QString& ticker) { return QDir(path("store/S/B")).filePath(ticker); },
        .describe =
            [](const QString& ticker, TADataDescription* series) {
                testsupport::setSeries(*series, "S", "B", ticker.toLatin1().constData());
            }};
    const auto checks = tadata::checkTickers(
        path("in.csv"), details, waysOf(ImportMode::Merge), ofTickers, 100, [](int) {}, nullptr);
    QVERIFY(checks);
    QCOMPARE(shownDays(checks->front().check),
             days("2024-01-15 bars 2 stored 2 result 2 lost 0 same|"
                  "2024-01-16 bars 1 stored 0 result 1 lost 0 new"));
}

void TestImportCheck::asksForNoDecimalsWithoutTickers()
{
    writeFile(path("in.csv"), bar1 + bar3 + bar2);
    int asked = 0;
    const tadata::CheckedSeries into{
        .directory = [this](const QString&) { return series(); },
        .describe = [&asked](const QString&, TADataDescription*) { ++asked; }};
    QVERIFY(tadata::checkTickers(
        path("in.csv"), detailsOfSeries(2), waysOf(ImportMode::Merge), into, 100, [](int) {},
        nullptr));
    QCOMPARE(asked, 0);
}

void TestImportCheck::saysWhatAnImportThenDoes_data()
{
    QTest::addColumn<ImportMode>("mode");
    QTest::addColumn<int>("timeframe");
    for (const int timeframe : {1, 60}) {
        QTest::addRow("replace %d", timeframe) << ImportMode::Replace << timeframe;
        QTest::addRow("merge %d", timeframe) << ImportMode::Merge << timeframe;
        QTest::addRow("fill %d", timeframe) << ImportMode::Fill << timeframe;
    }
}

namespace {

QByteArray randomFile(QRandomGenerator& random)
{
    QByteArray content;
    int day = 15;
    for (int count = random.bounded(20); count > 0; --count) {
        if (random.bounded(5) == 0)
            day = 15 + random.bounded(3);
        content += random.bounded(40) == 0
                       ? QByteArray("bad\n")
                       : "202401" + QByteArray::number(day) + ";1000" +
                             QByteArray::number(10 + random.bounded(4)) + ";1;1;1;" +
                             QByteArray::number(1 + random.bounded(2)) + '\n';
    }
    return content;
}

QByteArray randomDay(QRandomGenerator& random)
{
    QByteArray content;
    for (int count = random.bounded(5); count > 0; --count) {
        const QByteArray close = QByteArray::number(1 + random.bounded(2));
        content += "1000" + QByteArray::number(10 + random.bounded(4)) + ";1.00;1.00;1.00;" +
                   close + (random.bounded(9) == 0 ? ".00;0.00;0;0\n" : ".00;0;0.00;0\n");
    }
    return random.bounded(20) == 0 ? content + "bad\n" : content;
}

} // namespace

// What is said of a day, and what it was and is now.
void TestImportCheck::compareBars(const CheckedDay& said, const QByteArray& before,
                                  const QString& file)
{
    DayValues stored;
    stored.addLines(before, said.day);
    const DayValues now = DayValues::ofFile(file, said.day).valueOr(DayValues());
    QCOMPARE(now.times().count(), said.result);
    const tadata::DayChange change = stored.changeTo(now);
    QCOMPARE(said.added, change.added);
    QCOMPARE(said.replaced, change.replaced);
}

vexdesk::Outcome TestImportCheck::outcomeOf(const ImportDetails& details,
                                            const ImportWays& ways) const
{
    const auto directory = [this](const QStringList&) {
        return vexdesk::Result<QList<QDir>>(QList<QDir>{series()});
    };
    return tadata::importByWays(path("in.csv"), details, ways, {directory}, [](int) {}).outcome;
}

void TestImportCheck::saysWhatAnImportThenDoes()
{
    QFETCH(const ImportMode, mode);
    QFETCH(const int, timeframe);
    ImportDetails details = detailsOfSeries(2);
    details.timeframe = timeframe;
    QRandomGenerator random(20240115);
    int replaced = 0;
    for (int i = 0; i < 150; ++i) {
        QDir(series().path()).removeRecursively();
        for (int day = 15; day < 18; ++day) {
            const QString name = QStringLiteral("202401%1_%2.iss").arg(day).arg(timeframe);
            if (random.bounded(3) > 0)
                store(qPrintable(name), randomDay(random));
        }
        const ImportWays ways = waysOf(mode, random.bounded(2) == 0);
        const ImportCheck checked = check(randomFile(random), details, ways);
        const std::vector<CheckedDay> counted = countedDays(details, ways);
        const auto before = readTree(series());
        QVERIFY(QDir().mkpath(series().path()));
        QCOMPARE(outcomeOf(details, ways).message(),
                 checked.stop ? checked.stop->message : QString());
        QMap<QString, CheckedDay> said;
        for (const CheckedDay& day : counted)
            said.insert(vexdesk::dayFileName(day.day, timeframe), day);
        for (int day = 15; day < 18; ++day) {
            const QDate date(2024, 1, day);
            const QString name = vexdesk::dayFileName(date, timeframe);
            const QString file = series().filePath(name);
            const bool changes = readFile(file) != before.value(name);
            if (!said.contains(name)) {
                QVERIFY(!changes);
                continue;
            }
            const CheckedDay& one = said[name];
            QCOMPARE(!before.contains(name), one.outcome == CheckedDay::Outcome::New);
            QCOMPARE(!changes, one.outcome == CheckedDay::Outcome::Same);
            compareBars(one, before.value(name), file);
            if (QTest::currentTestFailed())
                return;
            replaced += one.replaced;
        }
    }
    QCOMPARE(replaced > 0, mode != ImportMode::Fill);
}

void TestImportCheck::saysWhatAnImportOfTickersThenDoes_data()
{
    QTest::addColumn<ImportMode>("mode");
    QTest::addColumn<bool>("skipsBad");
    for (const bool skipsBad : {false, true}) {
        const char* const bad = skipsBad ? "passing over" : "ending";
        QTest::addRow("replace, %s", bad) << ImportMode::Replace << skipsBad;
        QTest::addRow("merge, %s", bad) << ImportMode::Merge << skipsBad;
        QTest::addRow("fill, %s", bad) << ImportMode::Fill << skipsBad;
    }
}

namespace {

// Few lines of few tickers, which mostly stand together, and bad ones with any ticker or none.
QByteArray randomTickers(QRandomGenerator& random)
{
    static const char* const bad[] = {"bad",
                                      "20240115;bad;1;1;1;1;X",
                                      "20240115;bad;1;1;1;1;Y",
                                      "20240115;bad;1;1;1;1;Z",
                                      "20240115;100010;1;1;1;1;..",
                                      ""};
    QByteArray content;
    char ticker = 'X';
    for (int count = random.bounded(10); count > 0; --count) {
        if (random.bounded(6) == 0)
            ticker = static_cast<char>('X' + random.bounded(3));
        if (random.bounded(5) == 0)
            content += bad[random.bounded(6)];
        else
            content += "202401" + QByteArray::number(15 + random.bounded(2)) + ";1000" +
                       QByteArray::number(10 + random.bounded(4)) + ";1;1;1;" +
                       QByteArray::number(1 + random.bounded(2)) + ';' + ticker;
        content += '\n';
    }
    return content;
}

void storeSome(QDir board, QRandomGenerator& random)
{
    board.removeRecursively();
    for (const char* const name : {"X/20240115_60.iss", "Y/20240116_60.iss"}) {
        if (random.bounded(2) == 0)
            writeFile(board.filePath(QLatin1String(name)), randomDay(random));
    }
}

// The times that the lines up to the stop have of a day of a ticker.
std::set<QByteArray> timesOf(const QByteArray& content, const tadata::TickerCheck& one,
                             const QDate& day)
{
    std::set<QByteArray> times;
    qint64 number = 0;
    for (const QByteArray& line : content.split('\n')) {
        const QList<QByteArray> fields = line.split(';');
        if (one.check.stop && ++number >= one.check.stop->line)
            break;
        if (fields.size() == 7 && fields[1] != "bad" && fields[6] == one.ticker.toLatin1() &&
            fields[0] == day.toString(QStringLiteral("yyyyMMdd")).toLatin1())
            times.insert(fields[1]);
    }
    return times;
}

std::set<QByteArray> timesOf(const QByteArray& stored)
{
    std::set<QByteArray> times;
    for (const QByteArray& line : stored.split('\n')) {
        if (line.size() > 6 && line[6] == ';')
            times.insert(line.first(6));
    }
    return times;
}

// Of minutes, below the directory of the board.
QString nameOf(const tadata::TickerCheck& one, const CheckedDay& day)
{
    constexpr int minute = 60;
    return one.ticker + u'/' + vexdesk::dayFileName(day.day, minute);
}

} // namespace

vexdesk::Result<QList<QDir>> TestImportCheck::tickerDirs(const QStringList& tickers) const
{
    QList<QDir> dirs;
    for (const QString& ticker : tickers) {
        dirs.append(QDir(QDir(path("store/S/B")).filePath(ticker)));
        if (!dirs.last().mkpath(QStringLiteral(".")))
            return vexdesk::Failure{ticker};
    }
    return dirs;
}

void TestImportCheck::compareDays(const tadata::TickerCheck& one, const QByteArray& content,
                                  const QMap<QString, QByteArray>& before,
                                  const QMap<QString, QByteArray>& after)
{
    for (const CheckedDay& day : one.check.days) {
        const QString name = nameOf(one, day);
        QCOMPARE(day.outcome == CheckedDay::Outcome::New, !before.contains(name));
        QCOMPARE(day.outcome == CheckedDay::Outcome::Same,
                 before.contains(name) && before.value(name) == after.value(name));
        std::set<QByteArray> all = timesOf(content, one, day.day);
        all.merge(timesOf(before.value(name)));
        const size_t left = timesOf(after.value(name)).size();
        QCOMPARE(day.result, int(left));
        QVERIFY2(day.lost == int(all.size() - left), content.constData());
    }
}

void TestImportCheck::saysWhatAnImportOfTickersThenDoes()
{
    QFETCH(const ImportMode, mode);
    QFETCH(const bool, skipsBad);
    const QDir board(path("store/S/B"));
    const ImportDetails details = with(detailsOfSeries(2), ColumnRole::Ticker, 6);
    const ImportWays ways = waysOf(mode, skipsBad);
    QRandomGenerator random(20240116);
    for (int i = 0; i < 400; ++i) {
        storeSome(board, random);
        const QByteArray content = randomTickers(random);
        const auto before = readTree(board);
        const auto checks = checkTickers(content, ways);
        const auto result = tadata::importByWays(
            path("in.csv"), details, ways,
            {[this](const QStringList& tickers) { return tickerDirs(tickers); }}, [](int) {});
        auto untouched = before;
        const auto after = readTree(board);
        auto changed = after;
        qint64 bars = 0;
        qint64 badLines = 0;
        qint64 allBars = 0;
        for (const tadata::TickerCheck& one : checks) {
            const QString stop = one.check.stop ? one.check.stop->message : QString();
            QVERIFY2(result.outcome.message() == stop, content.constData());
            badLines += one.check.badLines;
            allBars += one.check.bars;
            compareDays(one, content, before, after);
            if (QTest::currentTestFailed())
                return;
            for (const CheckedDay& day : one.check.days) {
                bars += day.bars;
                untouched.remove(nameOf(one, day));
                changed.remove(nameOf(one, day));
            }
        }
        QCOMPARE(changed, untouched);
        if (!result.outcome && mode != ImportMode::Replace)
            continue; // it has read and written nothing
        QCOMPARE(bars, result.bars);
        const bool isNothing = allBars == 0 && badLines > 0;
        for (const tadata::TickerCheck& one : checks)
            QCOMPARE(one.check.wouldImport, result.outcome && !(isNothing && one.check.badLines));
        if (result.outcome)
            QCOMPARE(badLines, result.badLines);
    }
}

QTEST_GUILESS_MAIN(TestImportCheck)
#include "tst_importcheck.moc"
