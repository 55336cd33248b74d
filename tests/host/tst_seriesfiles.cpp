// SPDX-License-Identifier: MIT
#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/filekeeper.h>
#include <vexdesk/history/filestate.h>
#include <vexdesk/history/links.h>
#include <vexdesk/history/seriesfiles.h>

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <cerrno>
#include <functional>
#include <memory>

using testsupport::readTree;
using testsupport::writeFile;
using vexdesk::barFiles;
using vexdesk::FileKeeper;
using vexdesk::hasBarFiles;
using vexdesk::Outcome;

using Change = std::function<Outcome(const QDir&, const QDir&, const QStringList&, FileKeeper*)>;
Q_DECLARE_METATYPE(Change)

namespace {

const QString day = QStringLiteral("20240115_60.iss");
const QString other = QStringLiteral("20240116_60.iss");
const QString missing = QStringLiteral("20240117_60.iss");

const Change removal = [](const QDir& from, const QDir&, const QStringList& names,
                          FileKeeper* keeper) {
    return vexdesk::removeBarFiles(from, names, keeper);
};
const Change copying = vexdesk::copyBarFiles;
const Change moving = vexdesk::moveBarFiles;

// Remembers what it was told, and refuses it if it is to.
struct Listener final : FileKeeper
{
    Outcome keep(const QStringList& paths) override
    {
        told += paths;
        return refuses ? Outcome(vexdesk::Failure{QStringLiteral("refused")}) : Outcome();
    }

    QStringList told;
    bool refuses = false;
};

} // namespace

class TestSeriesFiles final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dir.reset(); }
    void theKeeperIsToldBeforeAnythingIsTouched_data();
    void theKeeperIsToldBeforeAnythingIsTouched();
    void aLinkThatLeadsNowhereIsNotTouched_data();
    void aLinkThatLeadsNowhereIsNotTouched();
    void theFirstThatCannotBeChangedEndsTheWork_data();
    void theFirstThatCannotBeChangedEndsTheWork();
    void whatStandsInTheWayIsSaid_data();
    void whatStandsInTheWayIsSaid();
    void aDirectoryThatCannotBeMadeIsSaid_data();
    void aDirectoryThatCannotBeMadeIsSaid();
    void aMovedFileIsTheSameFile();
    void aMovedLinkLeavesWhatItLedTo();
    void whateverHasTheNameIsABarFile();
    void whatCannotBeReadIsSaid();
    void listsBarFilesInOrder();

private:
    QDir m_from;
    QDir m_to;
    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestSeriesFiles::init()
{
    testsupport::failOnStrayWarnings();
    m_dir = std::make_unique<QTemporaryDir>();
    m_from = QDir(m_dir->filePath(QStringLiteral("S/B/X")));
    m_to = QDir(m_dir->filePath(QStringLiteral("S/B/Y")));
    writeFile(m_from.filePath(day), "day\n");
    writeFile(m_from.filePath(other), "other\n");
}

void TestSeriesFiles::theKeeperIsToldBeforeAnythingIsTouched_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QStringList>("told");
    const QStringList names{QStringLiteral("X/") + day, QStringLiteral("X/") + other};
    const QStringList copies{QStringLiteral("Y/") + day, QStringLiteral("Y/") + other};
    QTest::newRow("removal") << removal << names;
    QTest::newRow("copying") << copying << copies;
    QTest::newRow("moving") << moving << names + copies;
}

void TestSeriesFiles::theKeeperIsToldBeforeAnythingIsTouched()
{
    QFETCH(const Change, change);
    QFETCH(QStringList, told);
    for (QString& name : told)
        name = m_dir->filePath(QStringLiteral("S/B/")) + name;
    const auto before = readTree(QDir(m_dir->path()));
    Listener keeper;
    keeper.refuses = true;
    QCOMPARE(change(m_from, m_to, {day, other}, &keeper).message(), QStringLiteral("refused"));
    QCOMPARE(keeper.told, told);
    QCOMPARE(readTree(QDir(m_dir->path())), before);
    QVERIFY(!m_to.exists());
    keeper.refuses = false;
    QVERIFY(change(m_from, m_to, {day, other}, &keeper));
    QCOMPARE(keeper.told, told + told);
    QVERIFY(readTree(QDir(m_dir->path())) != before);
}

void TestSeriesFiles::aLinkThatLeadsNowhereIsNotTouched_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("removal") << removal;
    QTest::newRow("copying") << copying;
    QTest::newRow("moving") << moving;
}

// Nor is anything beside it.
void TestSeriesFiles::aLinkThatLeadsNowhereIsNotTouched()
{
    QFETCH(const Change, change);
    const QString link = m_from.filePath(missing);
    QVERIFY(QFile::link(QStringLiteral("/nonexistent"), link));
    Listener keeper;
    const Outcome changed = change(m_from, m_to, {day, missing, other}, &keeper);
    QCOMPARE(changed.message(), vexdesk::lostLink(link).message);
    QVERIFY(keeper.told.isEmpty());
    QCOMPARE(*barFiles(m_from), QStringList({day, other, missing}));
    QVERIFY(!m_to.exists());
}

void TestSeriesFiles::theFirstThatCannotBeChangedEndsTheWork_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("text");
    QTest::newRow("removal") << removal << QStringLiteral("Файл %1 не удалён: ");
    QTest::newRow("copying") << copying << QStringLiteral("Файл %1 не скопирован в %2: ");
    QTest::newRow("moving") << moving << QStringLiteral("Файл %1 не скопирован в %2: ");
}

void TestSeriesFiles::theFirstThatCannotBeChangedEndsTheWork()
{
    QFETCH(const Change, change);
    QFETCH(QString, text);
    const Outcome changed = change(m_from, m_to, {day, missing, other}, nullptr);
    text.replace(QStringLiteral("%1"), m_from.filePath(missing));
    text.replace(QStringLiteral("%2"), m_to.filePath(missing));
    QCOMPARE(changed.message(), text + qt_error_string(ENOENT));
    // The one before it is done.
    QVERIFY(readTree(m_from).contains(other));
    QVERIFY(!readTree(m_to).contains(other));
    QVERIFY(readTree(m_to).contains(day) || !readTree(m_from).contains(day));
}

void TestSeriesFiles::whatStandsInTheWayIsSaid_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("copying") << copying;
    QTest::newRow("moving") << moving;
}

void TestSeriesFiles::whatStandsInTheWayIsSaid()
{
    QFETCH(const Change, change);
    QVERIFY(m_to.mkpath(day));
    const auto before = readTree(m_from);
    const Outcome changed = change(m_from, m_to, {day, other}, nullptr);
    QVERIFY2(changed.message().contains(m_to.filePath(day)), qPrintable(changed.message()));
    QCOMPARE(readTree(m_from), before);
    QCOMPARE(m_to.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList(day));
}

void TestSeriesFiles::aDirectoryThatCannotBeMadeIsSaid_data()
{
    whatStandsInTheWayIsSaid_data();
}

void TestSeriesFiles::aDirectoryThatCannotBeMadeIsSaid()
{
    QFETCH(const Change, change);
    const QDir to(m_from.filePath(day) + QStringLiteral("/below"));
    const Outcome changed = change(m_from, to, {day}, nullptr);
    QCOMPARE(changed.message(), QStringLiteral("Невозможно создать каталог ") + to.path());
}

// Where it stays on its disk; that may be full.
void TestSeriesFiles::aMovedFileIsTheSameFile()
{
    const auto before = vexdesk::fileState(m_from.filePath(day));
    QVERIFY(vexdesk::moveBarFiles(m_from, m_to, {day}, nullptr));
    const auto after = vexdesk::fileState(m_to.filePath(day));
    QVERIFY(before && after && after->isUnchanged(*before));
    QVERIFY(vexdesk::copyBarFiles(m_to, m_from, {day}, nullptr));
    QVERIFY(!vexdesk::fileState(m_from.filePath(day))->isSameFile(*after));
}

void TestSeriesFiles::aMovedLinkLeavesWhatItLedTo()
{
    const QString target = m_dir->filePath(QStringLiteral("target"));
    writeFile(target, "behind\n");
    QVERIFY(QFile::link(target, m_from.filePath(missing)));
    QVERIFY(vexdesk::moveBarFiles(m_from, m_to, {missing}, nullptr));
    QVERIFY(!QFileInfo(m_from.filePath(missing)).isSymLink());
    QVERIFY(!QFileInfo(m_to.filePath(missing)).isSymLink());
    QCOMPARE(testsupport::readFile(m_to.filePath(missing)), QByteArray("behind\n"));
    QCOMPARE(testsupport::readFile(target), QByteArray("behind\n"));
}

void TestSeriesFiles::whateverHasTheNameIsABarFile()
{
    QVERIFY(!*hasBarFiles(m_to));
    writeFile(m_to.filePath(QStringLiteral("notes")), "x");
    QVERIFY(!*hasBarFiles(m_to));
    QVERIFY(m_to.mkdir(QStringLiteral("20240115_60")));
    QVERIFY(*hasBarFiles(m_to));
    QVERIFY(barFiles(m_to)->isEmpty());
}

void TestSeriesFiles::whatCannotBeReadIsSaid()
{
    const QDir series(m_dir->filePath(QString(300, u'x')));
    QVERIFY(barFiles(series).message().contains(series.path()));
    QVERIFY(hasBarFiles(series).message().contains(series.path()));
}

void TestSeriesFiles::listsBarFilesInOrder()
{
    QStringList names;
    for (int number = 10; number < 30; ++number) {
        names << QStringLiteral("202312%1_1.iss").arg(number)
              << QStringLiteral("202312%1_60").arg(number);
        writeFile(m_to.filePath(names.last()), "x");
        QVERIFY(QFile::link(names.last(), m_to.filePath(names[names.size() - 2])));
    }
    QCOMPARE(*barFiles(m_to), names);
    QCOMPARE(*barFiles(m_to, {.timeframe = vexdesk::secondTimeframe}), names);
    QVERIFY(barFiles(m_to, {.timeframe = vexdesk::minuteTimeframe})->isEmpty());
}

QTEST_GUILESS_MAIN(TestSeriesFiles)
#include "tst_seriesfiles.moc"
