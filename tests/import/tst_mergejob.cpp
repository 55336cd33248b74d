// SPDX-License-Identifier: MIT
#include "importjob.h"

#include "series.h"
#include "slowmerge.h"
#include "support/faults.h"
#include "support/filetree.h"
#include "support/otheruser.h"
#include "support/strictlog.h"
#include "temporaryplace.h"

#include <vexdesk/history/filekeeper.h>
#include <vexdesk/history/filestate.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <memory>

using tadata::ImportResult;
using testsupport::detailsOfSeries;
using testsupport::readFile;
using testsupport::readTree;
using testsupport::StoreTree;
using testsupport::with;
using testsupport::writeFile;

class TestMergeJob final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void doesWhatASlowTwinDoes_data();
    void doesWhatASlowTwinDoes();
    void mergingTwiceIsMergingOnce_data();
    void mergingTwiceIsMergingOnce();
    void fillChangesNoStoredTime_data();
    void fillChangesNoStoredTime();
    void theOrderOfTheInputDoesNotMatter();
    void sortsALargeFile();
    void aFileThatCannotBeSortedChangesNothing();
    void anEmptyStoreBecomesWhatAReplacementMakes_data();
    void anEmptyStoreBecomesWhatAReplacementMakes();
    void cutsSecondsIntoParts();
    void touchesNoDayThatStaysTheSame();
    void tellsOfBothFilesBeforeEitherIsTouched();
    void goesThroughLinksAndKeepsPermissions();
    void makesNoDirectoryBehindALink();
    void writesADayWholeOrNotAtAll();
    void dropsTheOpenMinuteOfTheLastWrittenDayAlone();
    void eachTickerHasItsOwnLastDay();
    void aBadLineOfTheInputComesBeforeABadStoredLine();
    void ofBadDaysTheEarliestIsNamed();
    void aSumThatDoesNotFitIsFoundBeforehand_data();
    void aSumThatDoesNotFitIsFoundBeforehand();
    void largeAmountsThatFitAreNoError();
    void minuteBarsAreNotAddedUp();
    void anInputThatChangesIsAnError();
    void anInputThatChangesAtTheEndIsAnError();
    void anInputThatCannotBeReadIsAnError_data();
    void anInputThatCannotBeReadIsAnError();
    void aStoredDayThatCannotBeReadIsAnError();
    void ofTwoFilesThatCannotBeWrittenTheFirstIsNamed();
    void refusesADayFileOfTheSeriesAsInput();
    void refusesItsInputWhereTheDirectoryCannotBeListed();
    void endsWhenItIsStopped();
    void tellsItsProgress();
    void makesTheDirectoryWithTheFirstDay();

private:
    ImportDetails details(int timeframe = 60) const;
    QString input() const { return m_input->filePath(QStringLiteral("bars.txt")); }
    QString path(const QString& name) const { return m_store->filePath(name); }
    ImportResult merge(const QByteArray& text, const ImportDetails& details,
                       const ImportWays& ways = {ImportMode::Merge},
                       const tadata::Surroundings& surroundings = {});
    void setStore(const StoreTree& tree);
    bool isExpected(const QString& error, const testsupport::SlowResult& wanted) const;
    StoreTree stored() const { return readTree(QDir(m_store->path())); }

    std::unique_ptr<QTemporaryDir> m_store;
    std::unique_ptr<QTemporaryDir> m_input;
    QList<int> m_progress;
};

namespace {

constexpr const char* dayFile = "20240115_60.iss";

class Keeper final : public vexdesk::FileKeeper
{
public:
    vexdesk::Outcome keep(const QStringList& paths) override
    {
        QStringList names;
        for (const QString& path : paths) {
            names.append(QFileInfo(path).fileName());
            wasThere.append(QFileInfo::exists(path));
        }
        calls.append(names);
        return answer;
    }

    QList<QStringList> calls;
    QList<bool> wasThere;
    vexdesk::Outcome answer;
};

QByteArray fileLine(const char* day, const char* time, int price)
{
    return QByteArray(day) + ';' + time + ';' +
           QByteArrayList(4, QByteArray::number(price) + ".00").join(';') + ";1;2.00;3\n";
}

QByteArray storedLine(const char* time, int price)
{
    return QByteArray(time) + ';' + QByteArrayList(4, QByteArray::number(price) + ".00").join(';') +
           ";1;2.00;3\n";
}

} // namespace

void TestMergeJob::init()
{
    testsupport::failOnStrayWarnings();
    m_store = std::make_unique<QTemporaryDir>();
    m_input = std::make_unique<QTemporaryDir>();
    m_progress.clear();
}

void TestMergeJob::cleanup()
{
    m_store.reset();
    m_input.reset();
}

ImportDetails TestMergeJob::details(int timeframe) const
{
    ImportDetails details =
        with(with(with(detailsOfSeries(2), ColumnRole::Volume, 6), ColumnRole::Value, 7),
             ColumnRole::OpenInterest, 8);
    details.timeframe = timeframe;
    return details;
}

ImportResult TestMergeJob::merge(const QByteArray& text, const ImportDetails& details,
                                 const ImportWays& ways, const tadata::Surroundings& surroundings)
{
    writeFile(input(), text);
    const auto directories = [this](const QStringList& tickers) -> vexdesk::Result<QList<QDir>> {
        QList<QDir> found;
        for (const QString& ticker : tickers)
            found.append(ticker.isNull() ? QDir(m_store->path()) : QDir(path(ticker)));
        return found;
    };
    return tadata::importByWays(
        input(), details, ways, {directories, {}},
        [this](int percent) { m_progress.append(percent); }, surroundings);
}

void TestMergeJob::setStore(const StoreTree& tree)
{
    for (const QString& name : QDir(m_store->path()).entryList(QDir::Files))
        QVERIFY(QFile::remove(path(name)));
    for (auto file = tree.begin(); file != tree.end(); ++file)
        writeFile(path(file.key()), *file);
}

void TestMergeJob::doesWhatASlowTwinDoes_data()
{
    QTest::addColumn<int>("timeframe");
    QTest::addColumn<ImportMode>("mode");
    QTest::addColumn<bool>("skipsBad");
    for (const int timeframe : {60, 1}) {
        for (const ImportMode mode : {ImportMode::Merge, ImportMode::Fill}) {
            for (const bool skips : {false, true})
                QTest::addRow("%d %s%s", timeframe, mode == ImportMode::Fill ? "fill" : "merge",
                              skips ? ", past bad lines" : "")
                    << timeframe << mode << skips;
        }
    }
}

void TestMergeJob::doesWhatASlowTwinDoes()
{
    QFETCH(const int, timeframe);
    QFETCH(const ImportMode, mode);
    QFETCH(const bool, skipsBad);
    const ImportDetails details = this->details(timeframe);
    QRandomGenerator random(static_cast<quint32>(timeframe));
    for (int round = 0; round < 250; ++round) {
        const StoreTree store = testsupport::randomStore(random, timeframe, 4);
        const auto file =
            testsupport::randomFile(random, timeframe, skipsBad || random.bounded(6) == 0);
        const auto wanted = testsupport::slowMerge(store, file, mode, skipsBad, timeframe);
        setStore(store);
        const ImportResult result =
            merge(testsupport::textOf(file), details, {.mode = mode, .skipsBad = skipsBad});
        const QString error = result.outcome.message();
        const QByteArray where = "round " + QByteArray::number(round) + '\n' +
                                 testsupport::textOf(file) + error.toUtf8();
        QVERIFY2(isExpected(error, wanted), where.constData());
        QVERIFY2(stored() == wanted.store, where.constData());
        if (!error.isNull())
            continue;
        QVERIFY2(result.days == wanted.days, where.constData());
        QCOMPARE(result.bars, wanted.bars);
        QCOMPARE(result.badLines, wanted.badLines);
    }
}

bool TestMergeJob::isExpected(const QString& error, const testsupport::SlowResult& wanted) const
{
    if (wanted.badInputLine > 0)
        return error.startsWith(
            QStringLiteral("Ошибка при импорте %1-й строки:\n").arg(wanted.badInputLine));
    if (!wanted.badFile.isNull())
        return error == QStringLiteral("Файл %1, строка %2: не запись бара")
                            .arg(path(wanted.badFile), QString::number(wanted.badStoredLine));
    return error.isNull();
}

void TestMergeJob::mergingTwiceIsMergingOnce_data()
{
    QTest::addColumn<ImportMode>("mode");
    QTest::newRow("merge") << ImportMode::Merge;
    QTest::newRow("fill") << ImportMode::Fill;
}

void TestMergeJob::mergingTwiceIsMergingOnce()
{
    QFETCH(const ImportMode, mode);
    QRandomGenerator random(3);
    for (int round = 0; round < 100; ++round) {
        const int timeframe = round % 2 == 0 ? 60 : 1;
        setStore(testsupport::randomStore(random, timeframe, 0));
        const QByteArray text =
            testsupport::textOf(testsupport::randomFile(random, timeframe, false));
        QVERIFY(merge(text, details(timeframe), {mode}).outcome);
        const StoreTree once = stored();
        Keeper keeper;
        const ImportResult again = merge(text, details(timeframe), {mode}, {.keeper = &keeper});
        QVERIFY(again.outcome);
        QCOMPARE(again.days, 0);
        QVERIFY(keeper.calls.isEmpty());
        QCOMPARE(stored(), once);
    }
}

void TestMergeJob::fillChangesNoStoredTime_data()
{
    QTest::addColumn<int>("timeframe");
    QTest::newRow("minutes") << 60;
    QTest::newRow("seconds") << 1;
}

void TestMergeJob::fillChangesNoStoredTime()
{
    QFETCH(const int, timeframe);
    QRandomGenerator random(4);
    for (int round = 0; round < 100; ++round) {
        const StoreTree before = testsupport::randomStore(random, timeframe, 0);
        setStore(before);
        const QByteArray text =
            testsupport::textOf(testsupport::randomFile(random, timeframe, false));
        QVERIFY(merge(text, details(timeframe), {ImportMode::Fill}).outcome);
        for (auto file = before.begin(); file != before.end(); ++file) {
            if (!file.key().endsWith(QStringLiteral(".iss")))
                continue;
            const QByteArray after = readFile(path(file.key()));
            for (const QByteArray& time : testsupport::storedTimes(*file))
                QCOMPARE(testsupport::storedLines(after, time),
                         testsupport::storedLines(*file, time));
        }
    }
}

void TestMergeJob::theOrderOfTheInputDoesNotMatter()
{
    QRandomGenerator random(5);
    QByteArrayList lines;
    for (int day = 15; day < 20; ++day) {
        for (int minute = 10; minute < 40; ++minute)
            lines.append(fileLine(QByteArray("202401" + QByteArray::number(day)).constData(),
                                  QByteArray("10" + QByteArray::number(minute) + "00").constData(),
                                  minute));
    }
    const StoreTree before = testsupport::randomStore(random, 60, 0);
    setStore(before);
    QVERIFY(merge(lines.join(), details()).outcome);
    const StoreTree inOrder = stored();
    QVERIFY(inOrder != before);
    for (int round = 0; round < 20; ++round) {
        std::shuffle(lines.begin(), lines.end(), random);
        setStore(before);
        QVERIFY(merge(lines.join(), details()).outcome);
        QCOMPARE(stored(), inOrder);
    }
}

namespace {

// Bars of each minute of so many days from 1 January 2024 on, more than are sorted in memory.
QByteArrayList linesOfDays(int days)
{
    QByteArrayList lines;
    for (int day = 0; day < days; ++day) {
        const QByteArray date =
            QDate(2024, 1, 1).addDays(day).toString(QStringLiteral("yyyyMMdd")).toLatin1();
        for (int minute = 0; minute < 24 * 60; ++minute) {
            const QTime time = QTime(0, 0).addSecs(60 * minute);
            lines.append(fileLine(date.constData(),
                                  time.toString(QStringLiteral("hhmmss")).toLatin1().constData(),
                                  100 + minute % 7));
        }
    }
    return lines;
}

} // namespace

void TestMergeJob::sortsALargeFile()
{
    QByteArrayList lines = linesOfDays(90);
    QVERIFY(merge(lines.join(), details()).outcome);
    const StoreTree inOrder = stored();
    QCOMPARE(inOrder.size(), 90);
    setStore({});
    QRandomGenerator random(6);
    std::shuffle(lines.begin(), lines.end(), random);
    const ImportResult result = merge(lines.join(), details());
    QVERIFY(result.outcome);
    QCOMPARE(result.bars, lines.size());
    QCOMPARE(result.days, 90);
    QVERIFY(stored() == inOrder);
}

void TestMergeJob::aFileThatCannotBeSortedChangesNothing()
{
    QByteArrayList lines = linesOfDays(90);
    std::reverse(lines.begin(), lines.end());
    // Which takes no file, whoever the user is.
    const testsupport::TemporaryPlace nowhere(QStringLiteral("/proc"));
    const QString error = merge(lines.join(), details()).outcome.message();
    QVERIFY2(error.startsWith(QStringLiteral("Временный файл для сортировки в /proc: ")),
             qPrintable(error));
    QVERIFY(stored().isEmpty());
}

void TestMergeJob::anEmptyStoreBecomesWhatAReplacementMakes_data()
{
    fillChangesNoStoredTime_data();
}

void TestMergeJob::anEmptyStoreBecomesWhatAReplacementMakes()
{
    QFETCH(const int, timeframe);
    QByteArray text;
    for (const char* day : {"20240115", "20240116"}) {
        for (int i = 0; i < 800; ++i) {
            const QTime time = QTime(10, 0).addSecs(i * timeframe);
            if (time >= QTime(10, 0))
                text +=
                    fileLine(day, time.toString(QStringLiteral("hhmmss")).toLatin1().constData(),
                             i % 90 + 1);
        }
    }
    const auto replaced = tadata::importByWays(
        (writeFile(input(), text), input()), details(timeframe), {},
        {[this](const QStringList&) { return QList<QDir>{QDir(m_store->path())}; }, {}},
        [](int) {});
    QVERIFY(replaced.outcome);
    const StoreTree wanted = stored();
    setStore({});
    const ImportResult merged = merge(text, details(timeframe));
    QVERIFY(merged.outcome);
    QCOMPARE(merged.days, replaced.days);
    QCOMPARE(merged.bars, replaced.bars);
    QVERIFY(stored() == wanted);
    QCOMPARE(wanted.size(), timeframe == 1 ? 4 : 2);
}

// What a day file cannot hold is no key of its own.
void TestMergeJob::cutsSecondsIntoParts()
{
    ImportDetails details = this->details();
    details.timeFormat = QStringLiteral("hhmmss.zzz");
    const QByteArray text =
        fileLine("20240115", "100000.750", 1) + fileLine("20240115", "100000.250", 2);
    QVERIFY(merge(text, details).outcome);
    QCOMPARE(stored(), StoreTree({{dayFile, storedLine("100000", 2)}}));
}

void TestMergeJob::touchesNoDayThatStaysTheSame()
{
    setStore({{dayFile, storedLine("100000", 1)}, {"20240116_60.iss", storedLine("100000", 2)}});
    const auto before = vexdesk::fileState(path(dayFile));
    Keeper keeper;
    const ImportResult result =
        merge(fileLine("20240115", "100000", 9) + fileLine("20240116", "100100", 3), details(),
              {ImportMode::Fill}, {.keeper = &keeper});
    QVERIFY(result.outcome);
    QCOMPARE(result.bars, 2);
    QCOMPARE(result.days, 1);
    QCOMPARE(result.unchanged, QStringList{path(dayFile)});
    QCOMPARE(keeper.calls, QList<QStringList>({{"20240116_60.iss"}}));
    QVERIFY(vexdesk::fileState(path(dayFile))->isUnchanged(*before));
    QCOMPARE(stored().value("20240116_60.iss"), storedLine("100000", 2) + storedLine("100100", 3));
}

void TestMergeJob::tellsOfBothFilesBeforeEitherIsTouched()
{
    Keeper keeper;
    const QByteArray text = fileLine("20240116", "100001", 1) + fileLine("20240115", "100001", 2);
    QVERIFY(merge(text, details(1), {ImportMode::Merge}, {.keeper = &keeper}).outcome);
    QCOMPARE(keeper.calls, QList<QStringList>({{"20240115_1.iss", "20240115_60"},
                                               {"20240116_1.iss", "20240116_60"}}));
    QCOMPARE(keeper.wasThere, QList<bool>(4, false));
    // What may not be kept may not be touched.
    Keeper refusing;
    refusing.answer = vexdesk::Failure{QStringLiteral("no")};
    const StoreTree before = stored();
    const auto result = merge(fileLine("20240115", "110000", 1), details(1), {ImportMode::Merge},
                              {.keeper = &refusing});
    QCOMPARE(result.outcome.message(), QStringLiteral("no"));
    QCOMPARE(result.days, 0);
    QCOMPARE(stored(), before);
}

// The disk that it leads to is not there now.
void TestMergeJob::makesNoDirectoryBehindALink()
{
    const QDir archive(m_input->filePath(QStringLiteral("archive")));
    QVERIFY(QFile::link(archive.filePath(dayFile), path(dayFile)));
    for (const ImportMode mode : {ImportMode::Merge, ImportMode::Fill}) {
        const auto result = merge(fileLine("20240115", "100100", 2), details(), {mode});
        QVERIFY(result.outcome.message().contains(path(dayFile)));
        QVERIFY(!archive.exists());
    }
    QVERIFY(QDir().mkpath(archive.path()));
    QVERIFY(merge(fileLine("20240115", "100100", 2), details()).outcome);
    QCOMPARE(readFile(archive.filePath(dayFile)), storedLine("100100", 2));
}

void TestMergeJob::goesThroughLinksAndKeepsPermissions()
{
    const QString elsewhere = m_input->filePath(QStringLiteral("elsewhere"));
    writeFile(elsewhere, storedLine("100000", 1));
    QVERIFY(
        QFile::setPermissions(elsewhere, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
    QVERIFY(QFile::link(elsewhere, path(dayFile)));
    QVERIFY(merge(fileLine("20240115", "100100", 2), details()).outcome);
    QVERIFY(QFileInfo(path(dayFile)).isSymLink());
    QCOMPARE(readFile(elsewhere), storedLine("100000", 1) + storedLine("100100", 2));
    QCOMPARE(int(QFile::permissions(elsewhere) & (QFile::ReadGroup | QFile::ReadOther)),
             int(QFile::ReadGroup));
    QCOMPARE(QDir(m_store->path()).entryList(QDir::Files | QDir::Hidden), QStringList({dayFile}));
}

void TestMergeJob::writesADayWholeOrNotAtAll()
{
    setStore({{dayFile, storedLine("100000", 1)}, {"20240116_60.iss", storedLine("100000", 1)}});
    const StoreTree before = stored();
    for (const auto call : {testsupport::SystemCall::Write, testsupport::SystemCall::Rename}) {
        const bool renames = call == testsupport::SystemCall::Rename;
        const testsupport::Fault full(
            call, renames ? QStringLiteral("20240116_60.iss") : QStringLiteral(".tmp"), ENOSPC,
            renames ? 0 : 1);
        setStore(before);
        const auto result =
            merge(fileLine("20240115", "100100", 2) + fileLine("20240116", "100100", 2), details());
        QVERIFY2(result.outcome.message().contains(path(QStringLiteral("20240116_60.iss"))),
                 qPrintable(result.outcome.message()));
        QCOMPARE(result.days, 1);
        StoreTree wanted = before;
        wanted[dayFile] += storedLine("100100", 2);
        QCOMPARE(stored(), wanted);
    }
}

void TestMergeJob::dropsTheOpenMinuteOfTheLastWrittenDayAlone()
{
    // The last day of the file stays the same: it is not the last that is written.
    setStore({{"20240117_1.iss", storedLine("100001", 5)}});
    const QByteArray text = fileLine("20240117", "100001", 5) + fileLine("20240115", "100001", 1) +
                            fileLine("20240115", "100101", 2) + fileLine("20240116", "100001", 3) +
                            fileLine("20240116", "100101", 4);
    QVERIFY(merge(text, details(1)).outcome);
    QCOMPARE(stored().value("20240115_60"), storedLine("100100", 1) + storedLine("100200", 2));
    QCOMPARE(stored().value("20240116_60"), storedLine("100100", 3));
    QVERIFY(!stored().contains("20240117_60"));
}

void TestMergeJob::eachTickerHasItsOwnLastDay()
{
    const ImportDetails details = with(this->details(1), ColumnRole::Ticker, 9);
    const auto line = [](const char* ticker, const char* day, const char* time, int price) {
        return fileLine(day, time, price).chopped(1) + ';' + ticker + '\n';
    };
    QByteArray text;
    for (const char* day : {"20240115", "20240116"}) {
        for (const char* time : {"100001", "100101"}) {
            for (const char* ticker : {"B", "A"})
                text += line(ticker, day, time, ticker[0]);
        }
    }
    text += line("A", "20240117", "100001", 1);
    const ImportResult result = merge(text, details);
    QVERIFY(result.outcome);
    QCOMPARE(result.bars, 9);
    QCOMPARE(result.days, 5);
    QCOMPARE(stored().value("B/20240115_60"),
             storedLine("100100", 'B') + storedLine("100200", 'B'));
    QCOMPARE(stored().value("B/20240116_60"), storedLine("100100", 'B'));
    QCOMPARE(stored().value("A/20240116_60"),
             storedLine("100100", 'A') + storedLine("100200", 'A'));
    QCOMPARE(stored().value("A/20240117_60"), QByteArray(""));
    QCOMPARE(stored().value("B/20240116_1.iss"),
             storedLine("100001", 'B') + storedLine("100101", 'B'));
}

void TestMergeJob::aBadLineOfTheInputComesBeforeABadStoredLine()
{
    setStore({{dayFile, "text\n"}, {"20240114_60.iss", storedLine("100000", 1)}});
    const StoreTree before = stored();
    const QByteArray text =
        fileLine("20240114", "100100", 1) + fileLine("20240115", "100000", 1) + "x\ny\n";
    QCOMPARE(merge(text, details()).outcome.message(),
             QStringLiteral("Ошибка при импорте 3-й строки:\nНедостаточное количество столбцов."));
    QCOMPARE(stored(), before);
    QCOMPARE(
        merge(text, details(), {.mode = ImportMode::Merge, .skipsBad = true}).outcome.message(),
        QStringLiteral("Файл %1, строка 1: не запись бара").arg(path(dayFile)));
    QCOMPARE(stored(), before);
    QVERIFY(m_progress.isEmpty()); // and never at its end
}

void TestMergeJob::ofBadDaysTheEarliestIsNamed()
{
    setStore({{dayFile, storedLine("100000", 1) + "\n"}, {"20240116_60.iss", "text\n"}});
    const QByteArray text = fileLine("20240116", "100100", 1) + fileLine("20240115", "100000", 1);
    QCOMPARE(merge(text, details()).outcome.message(),
             QStringLiteral("Файл %1, строка 2: не запись бара").arg(path(dayFile)));
}

namespace {

QByteArray secondOf(const char* day, const char* time, const char* money)
{
    return QByteArray(day) + ';' + time + ";1;1;1;1;1;" + money + ";3\n";
}

} // namespace

void TestMergeJob::aSumThatDoesNotFitIsFoundBeforehand_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<QByteArray>("text");
    const QByteArray first = secondOf("20240114", "100001", "1");
    const QByteArray large = secondOf("20240115", "100001", "30000000000000000");
    const QByteArray next = secondOf("20240115", "100002", "30000000000000000");
    QTest::newRow("in the file") << QByteArray() << first + first + large + next;
    QTest::newRow("in any order") << QByteArray() << next + first + large + first;
    QTest::newRow("with a stored bar")
        << QByteArray("100001;1;1;1;1;1;30000000000000000;3\n") << first + first + next;
    const QByteArray small = secondOf("20240115", "100003", "1");
    QTest::newRow("of stored bars alone")
        << QByteArray("100001;1;1;1;1;1;30000000000000000;3\n").repeated(2)
        << first + first + small;
    QTest::newRow("of many stored bars")
        << QByteArray("100001;1;1;1;1;1;1000000000000000;3\n").repeated(40)
        << first + first + small;
    QTest::newRow("with an edited one")
        << QByteArray("100001;1;1;1;1;3000000000000000.5;1;3\n").repeated(3)
        << first + first + next;
}

void TestMergeJob::aSumThatDoesNotFitIsFoundBeforehand()
{
    QFETCH(const QByteArray, stored);
    QFETCH(const QByteArray, text);
    ImportDetails details = this->details(1);
    detailsOfSeries(0);
    if (!stored.isEmpty())
        setStore({{"20240115_1.iss", stored}});
    const StoreTree before = this->stored();
    const qint64 line = text.startsWith("20240115") ? 1 : 3;
    const QString error = merge(text, details).outcome.message();
    QVERIFY2(error.startsWith(
                 QStringLiteral("Ошибка при импорте %1-й строки:\nНекорректное число '").arg(line)),
             qPrintable(error));
    QCOMPARE(this->stored(), before);
}

void TestMergeJob::largeAmountsThatFitAreNoError()
{
    ImportDetails details = this->details(1);
    detailsOfSeries(0);
    const QByteArray text = secondOf("20240115", "100001", "30000000000000000") +
                            secondOf("20240115", "100101", "30000000000000000") +
                            secondOf("20240115", "100201", "30000000000000000");
    const ImportResult result = merge(text, details);
    QVERIFY2(result.outcome, qPrintable(result.outcome.message()));
    QCOMPARE(stored().value("20240115_60").count('\n'), 2);
    // They are added up before anything is written, and the days are gone through once more for it.
    const ImportResult again = merge(text + secondOf("20240116", "100001", "1"), details);
    QVERIFY(again.outcome);
    QCOMPARE(again.days, 1);
    QCOMPARE(again.unchanged, QStringList{path(QStringLiteral("20240115_1.iss"))});
}

// No minute is derived from them, however large the amounts of two that follow each other are.
void TestMergeJob::minuteBarsAreNotAddedUp()
{
    ImportDetails details = this->details();
    detailsOfSeries(0);
    const QByteArray large = secondOf("20240115", "100000", "30000000000000000") +
                             secondOf("20240115", "100100", "30000000000000000");
    const ImportResult fromFile = merge(large, details);
    QVERIFY2(fromFile.outcome, qPrintable(fromFile.outcome.message()));
    const ImportResult amongStored = merge(secondOf("20240115", "110000", "1"), details);
    QVERIFY2(amongStored.outcome, qPrintable(amongStored.outcome.message()));
    QCOMPARE(stored().value(dayFile).count('\n'), 3);
}

void TestMergeJob::anInputThatChangesIsAnError()
{
    setStore({{dayFile, storedLine("100000", 1)}});
    const StoreTree before = stored();
    const testsupport::Meanwhile meanwhile(testsupport::SystemCall::Open, path(dayFile), [this] {
        QFile file(input());
        QVERIFY(file.open(QIODevice::Append));
        file.write(fileLine("20240116", "100000", 1));
    });
    const QString error = merge(fileLine("20240115", "100100", 1), details()).outcome.message();
    QCOMPARE(
        error,
        QStringLiteral("Невозможно прочитать файл %1: он изменился, пока его читали").arg(input()));
    QCOMPARE(stored(), before);
}

// What was read before is written then.
void TestMergeJob::anInputThatChangesAtTheEndIsAnError()
{
    setStore({{dayFile, storedLine("100000", 1)}});
    const testsupport::Meanwhile meanwhile(testsupport::SystemCall::Rename, path(dayFile), [this] {
        QFile file(input());
        QVERIFY(file.open(QIODevice::Append));
        file.write(fileLine("20240116", "100000", 1));
    });
    QCOMPARE(
        merge(fileLine("20240115", "100100", 1), details()).outcome.message(),
        QStringLiteral("Невозможно прочитать файл %1: он изменился, пока его читали").arg(input()));
    QCOMPARE(stored().value(dayFile), storedLine("100000", 1) + storedLine("100100", 1));
}

void TestMergeJob::anInputThatCannotBeReadIsAnError_data()
{
    QTest::addColumn<testsupport::SystemCall>("call");
    QTest::addColumn<QString>("beginning");
    QTest::newRow("open") << testsupport::SystemCall::Open
                          << QStringLiteral("Невозможно открыть файл ");
    QTest::newRow("read") << testsupport::SystemCall::Read
                          << QStringLiteral("Невозможно прочитать файл ");
}

// It is read twice, and may fail each time.
void TestMergeJob::anInputThatCannotBeReadIsAnError()
{
    QFETCH(const testsupport::SystemCall, call);
    QFETCH(const QString, beginning);
    setStore({{dayFile, storedLine("100000", 1)}});
    const StoreTree before = stored();
    const QByteArray text = fileLine("20240115", "100100", 1);
    // It is opened once more by the test, which writes it.
    const int first = call == testsupport::SystemCall::Open ? 1 : 0;
    int passed = first;
    for (;; ++passed) {
        const testsupport::Fault broken(call, input(), EIO, passed);
        const QString error = merge(text, details()).outcome.message();
        if (broken.failed() == 0)
            break;
        QVERIFY2(error.startsWith(beginning + input()), qPrintable(error));
        QCOMPARE(stored(), before);
    }
    QVERIFY(passed - first >= 2);
    QVERIFY(stored() != before);
}

void TestMergeJob::aStoredDayThatCannotBeReadIsAnError()
{
    setStore({{dayFile, storedLine("100000", 1)}});
    const QByteArray text = fileLine("20240115", "100100", 1) + fileLine("20240116", "100000", 1);
    {
        const testsupport::Fault broken(testsupport::SystemCall::Read, path(dayFile));
        const QString error = merge(text, details()).outcome.message();
        QVERIFY2(error.startsWith(QStringLiteral("Невозможно прочитать файл ") + path(dayFile)),
                 qPrintable(error));
    }
    QVERIFY(QDir(m_store->path()).mkdir(QStringLiteral("20240116_60.iss")));
    QCOMPARE(merge(text, details()).outcome.message(),
             QStringLiteral("Невозможно открыть файл ") + path(QStringLiteral("20240116_60.iss")));
    QCOMPARE(readFile(path(dayFile)), storedLine("100000", 1));
}

// The minutes of a day are written with the next one, or at the end.
void TestMergeJob::ofTwoFilesThatCannotBeWrittenTheFirstIsNamed()
{
    setStore(
        {{"20240115_1.iss", ""}, {"20240115_60", ""}, {"20240116_1.iss", ""}, {"20240116_60", ""}});
    const testsupport::Fault day(testsupport::SystemCall::Rename, QStringLiteral("20240116_1.iss"),
                                 ENOSPC);
    const testsupport::Fault minutes(testsupport::SystemCall::Rename, QStringLiteral("20240115_60"),
                                     ENOSPC);
    const auto result =
        merge(fileLine("20240115", "100001", 1) + fileLine("20240116", "100001", 1), details(1));
    QVERIFY2(result.outcome.message().contains(path(QStringLiteral("20240116_1.iss"))),
             qPrintable(result.outcome.message()));
    QCOMPARE(result.days, 1);
    QCOMPARE(minutes.failed(), 1);
}

void TestMergeJob::refusesADayFileOfTheSeriesAsInput()
{
    const QByteArray content = fileLine("20240115", "100000", 1);
    writeFile(path(dayFile), content);
    QVERIFY(QFile::link(path(dayFile), input()));
    const QString error = merge(content, details()).outcome.message();
    QVERIFY2(error.contains(QStringLiteral("лежит в хранилище")), qPrintable(error));
    QCOMPARE(readFile(path(dayFile)), content);
}

// What cannot be found beforehand shows when the day is read.
void TestMergeJob::refusesItsInputWhereTheDirectoryCannotBeListed()
{
    cleanup();
    const testsupport::OtherUser nobody;
    init(); // in directories of his own
    const QString series = path(QStringLiteral("S"));
    const QString day = series + u'/' + QLatin1String(dayFile);
    const QByteArray content = fileLine("20240115", "100000", 1).chopped(1) + ";S\n";
    writeFile(day, content);
    QCOMPARE(::link(QFile::encodeName(day).constData(), QFile::encodeName(input()).constData()), 0);
    QString error;
    {
        const testsupport::Permissions closed(series, 0311);
        error = merge(content, with(details(), ColumnRole::Ticker, 9)).outcome.message();
    }
    QVERIFY2(error.contains(day) && error.contains(QStringLiteral("лежит в хранилище")),
             qPrintable(error));
    QCOMPARE(readFile(input()), content);
    cleanup();
}

void TestMergeJob::endsWhenItIsStopped()
{
    const std::atomic<bool> stop = true;
    const auto result = merge(fileLine("20240115", "100000", 1) + "x\n", details(),
                              {ImportMode::Merge}, {.stop = &stop});
    QCOMPARE(result.outcome.message(), QStringLiteral("Импорт прерван"));
    QVERIFY(stored().isEmpty());
    // Also between two of the days that are stored.
    setStore({{dayFile, storedLine("100000", 1)}, {"20240116_60.iss", "text\n"}});
    std::atomic<bool> stopsLater = false;
    const testsupport::Meanwhile meanwhile(testsupport::SystemCall::Open, path(dayFile),
                                           [&stopsLater] { stopsLater = true; });
    const auto later = merge(fileLine("20240115", "100100", 1) + fileLine("20240116", "100000", 1),
                             details(), {ImportMode::Merge}, {.stop = &stopsLater});
    QCOMPARE(later.outcome.message(), QStringLiteral("Импорт прерван"));
    QCOMPARE(stored().value(dayFile), storedLine("100000", 1));
    // And between two that are written.
    setStore({{dayFile, storedLine("100000", 1)}});
    std::atomic<bool> stopsAtLast = false;
    const testsupport::Meanwhile written(testsupport::SystemCall::Rename, path(dayFile),
                                         [&stopsAtLast] { stopsAtLast = true; });
    const auto atLast =
        merge(fileLine("20240115", "100100", 1) + fileLine("20240116", "100000", 1) +
                  fileLine("20240117", "100000", 1),
              details(), {ImportMode::Merge}, {.stop = &stopsAtLast});
    QCOMPARE(atLast.outcome.message(), QStringLiteral("Импорт прерван"));
    QVERIFY(!stored().contains("20240117_60.iss"));
}

void TestMergeJob::tellsItsProgress()
{
    QVERIFY(merge(linesOfDays(12).join(), details()).outcome);
    QVERIFY(m_progress.size() > 10);
    QVERIFY(std::is_sorted(m_progress.begin(), m_progress.end()));
    QCOMPARE(std::unique(m_progress.begin(), m_progress.end()), m_progress.end());
    QVERIFY(m_progress.first() < 50);
    QCOMPARE(m_progress.count(100), 1);
    QCOMPARE(m_progress.last(), 100);
    // While the last day is written.
    QCOMPARE(m_progress.at(m_progress.size() - 2), 99);
    // What is told once is not told of the next day again.
    m_progress.clear();
    QVERIFY(merge(fileLine("20240115", "100000", 1) + fileLine("20240116", "100000", 1), details())
                .outcome);
    QCOMPARE(m_progress, QList<int>({99, 100}));
}

void TestMergeJob::makesTheDirectoryWithTheFirstDay()
{
    const ImportDetails details = with(this->details(), ColumnRole::Ticker, 9);
    const QByteArray line = fileLine("20240115", "100000", 1).chopped(1) + ";NEW\n";
    QVERIFY(!merge(line + "x\n", details).outcome);
    QVERIFY(!QFileInfo::exists(path(QStringLiteral("NEW"))));
    QVERIFY(merge(line, details).outcome);
    QCOMPARE(stored(), StoreTree({{QStringLiteral("NEW/") + dayFile, storedLine("100000", 1)}}));
}

QTEST_GUILESS_MAIN(TestMergeJob)
#include "tst_mergejob.moc"
