// SPDX-License-Identifier: MIT
// What a restore point has on disk, and how its files come back.
#include <vexdesk/history/restorepoint.h>

#include "support/faults.h"
#include "support/filetree.h"
#include "support/localzone.h"
#include "support/otheruser.h"
#include "support/strictlog.h"

#include <vexdesk/history/filekeeper.h>
#include <vexdesk/history/filestate.h>

#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <memory>

using testsupport::Fault;
using testsupport::readFile;
using testsupport::SystemCall;
using testsupport::writeFile;
using vexdesk::fileState;
using vexdesk::Outcome;
using vexdesk::PuttingBack;
using vexdesk::RestorePlace;
using vexdesk::RestorePoint;
using vexdesk::RestorePointRecord;
using vexdesk::Result;

namespace {

const QString day = QStringLiteral("S/B/X/20240115_60.iss");
const QString other = QStringLiteral("S/B/X/20240116_60.iss");
const QString newer = QStringLiteral("более новой версией");
const QString wrong = QStringLiteral("не то, что должно быть");
const QString unreadable = QStringLiteral("не читается");

} // namespace

class TestPuttingBack final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dir.reset(); }
    void aDirectoryIsAPointByItsName_data();
    void aDirectoryIsAPointByItsName();
    void theTimeOfAPointIsNotThatOfTheClockOnTheWall();
    void aPointThatIsOlderDoesNotHoldTheClockBack();
    void saysWhatIsWrongWithARecord_data();
    void saysWhatIsWrongWithARecord();
    void saysWhatIsWrongWithAJournal_data();
    void saysWhatIsWrongWithAJournal();
    void aJournalThatCannotBeReadIsNotPassedOver_data();
    void aJournalThatCannotBeReadIsNotPassedOver();
    void anUnfinishedPointWithoutAJournalHasNoFiles();
    void aCopyThatIsGoneHasNoSize();
    void aCopyThatCannotBeLookedAtIsTold();
    void aFileIsWrittenInPlaceWhereItsDirectoryRefuses_data();
    void aFileIsWrittenInPlaceWhereItsDirectoryRefuses();
    void aFileOfSomebodyElseIsWrittenInPlace();
    void saysWhyAFileDidNotComeBack_data();
    void saysWhyAFileDidNotComeBack();
    void whatStandsInItsPlaceStays_data();
    void whatStandsInItsPlaceStays();
    void eachByteOfACopyCounts();
    void aLargeFileComesBackWhole_data();
    void aLargeFileComesBackWhole();
    void aLinkThatLeadsNowhereIsNotFollowed();
    void whatIsGoneAlreadyNeedNotBeRemoved();
    void aPointWithoutSumsIsPutBackAsItIs();
    void aFinishedPointNeedsNoJournal();
    void saysWhyAFileIsNotKept_data();
    void saysWhyAFileIsNotKept();
    void whatIsNoDayFileIsNotKept();
    void theFirstOfSeveralFilesIsNamed();
    void aRecordIsNotWrittenOfWhatCannotBeLookedAt();
    void aPlaceThatIsNoDirectoryIsSaid_data();
    void aPlaceThatIsNoDirectoryIsSaid();
    void aPlaceThatMayNotBeReadIsSaid_data();
    void aPlaceThatMayNotBeReadIsSaid();
    void aSeriesThatMayNotBeEnteredIsSaid();
    void whatIsNotKeptTakesNoRoom();
    void aPointGoesWithItsSums();
    void aPointThatCannotBeRemovedIsSaid();
    void newerPointsForbidAnUnfinishedOne();
    void aNewerPointThatCannotBeReadMayForbid();
    void aRecordMayBeOfAnyLength();
    void saysThatThereIsNoSuchPoint();
    void aCopyThatIsNoFileIsNotPutBack();
    void aPointIsNotPutBackWhileItsJobRuns();
    void aChangeOfTheSameMomentCounts();
    void theKeeperIsToldBeforeAnythingComesBack();
    void theFirstThatDoesNotComeBackEndsTheWork();
    void aCopyWithoutASumIsNotWhatItWas();
    void theNewestIsKnownThoughItIsBroken();

private:
    QString path(const QString& relative) const { return m_root + u'/' + relative; }
    QString inPoint(const QString& id, const QString& name) const
    {
        return m_place.path + u'/' + id + u'/' + name;
    }
    // A job that writes this into a file, and ends if it is to.
    QString job(const QString& relative, const QByteArray& content, bool ends = true) const;
    void renamePoint(const QString& from, const QString& to) const;
    void changeRecord(const QString& id, const QByteArray& from, const QByteArray& to) const;
    QString putBack(const QString& id) const;

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_root;
    RestorePlace m_place;
};

void TestPuttingBack::init()
{
    testsupport::failOnStrayWarnings();
    m_dir = std::make_unique<QTemporaryDir>();
    m_root = m_dir->filePath(QStringLiteral("store"));
    writeFile(path(day), "old\n");
    const auto place = vexdesk::makeRestorePlace(QDir(m_root));
    QVERIFY(place);
    m_place = *place;
}

QString TestPuttingBack::job(const QString& relative, const QByteArray& content, bool ends) const
{
    RestorePoint point(m_place, QStringLiteral("import"), {QStringLiteral("S/B/X")}, {});
    if (!point.keep({path(relative)}))
        return QString();
    writeFile(path(relative), content);
    return !ends || point.finish() ? point.id() : QString();
}

void TestPuttingBack::renamePoint(const QString& from, const QString& to) const
{
    QVERIFY(QDir(m_place.path).rename(from, to));
    changeRecord(to, from.toUtf8(), to.toUtf8());
}

void TestPuttingBack::changeRecord(const QString& id, const QByteArray& from,
                                   const QByteArray& to) const
{
    const QString file = inPoint(id, QStringLiteral("point.json"));
    const QByteArray old = readFile(file);
    QVERIFY2(old.contains(from), old.constData());
    writeFile(file, QByteArray(old).replace(from, to));
}

// With nothing that would keep what is there now.
QString TestPuttingBack::putBack(const QString& id) const
{
    const Result<RestorePointRecord> point = restorePoint(m_place, id);
    if (!point)
        return point.message();
    PuttingBack back(m_place, *point);
    const Outcome begun = back.begin();
    return begun ? back.run(nullptr).message() : begun.message();
}

void TestPuttingBack::aDirectoryIsAPointByItsName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isPoint");
    for (const char* name : {"20240115-100000-1", "20240115-100000-10", "20240229-235959-909"})
        QTest::newRow(name) << name << true;
    for (const char* name :
         {"20240115-100000", "20240115-100000-", "20240115-100000-0", "20240115-100000-01",
          "20240115-100000--1", "20240115-100000-+1", "20240115-100000- 1",
          "20240115-100000-1:", "20240115-100000-1/", "20240115-100000-x", "20240115-100000_1",
          "20240230-100000-1", "20240115-240000-1", "20240115100000-1", "x20240115-100000-1",
          "20240115-100000-99999999999999999999"})
        QTest::newRow(name) << QString::fromLatin1(name).replace(u'/', u'.') << false;
}

void TestPuttingBack::aDirectoryIsAPointByItsName()
{
    QFETCH(const QString, name);
    QFETCH(const bool, isPoint);
    renamePoint(job(day, "new\n"), name);
    const auto points = restorePoints(m_place);
    QVERIFY(points && points->problems.isEmpty());
    QCOMPARE(points->points.size(), isPoint ? 1 : 0);
    QCOMPARE(bool(restorePoint(m_place, name)), isPoint);
}

void TestPuttingBack::theTimeOfAPointIsNotThatOfTheClockOnTheWall()
{
    const testsupport::LocalZone zone("America/New_York");
    const QString id = job(day, "new\n");
    const QDateTime when = restorePoint(m_place, id)->when;
    QVERIFY(std::abs(when.secsTo(QDateTime::currentDateTimeUtc())) < 3600);
    // There the clock went from two to three.
    const QString skipped = QStringLiteral("20240310-023000-1");
    renamePoint(id, skipped);
    QVERIFY(restorePoint(m_place, skipped));
}

void TestPuttingBack::aPointThatIsOlderDoesNotHoldTheClockBack()
{
    const testsupport::LocalZone zone("America/New_York");
    const QString form = QStringLiteral("yyyyMMdd-hhmmss");
    const QDateTime hourAgo = QDateTime::currentDateTimeUtc().addSecs(-3600);
    const QString old = hourAgo.toString(form) + QStringLiteral("-1");
    renamePoint(job(day, "new\n"), old);
    const QString next = job(day, "newest\n");
    QVERIFY(next > hourAgo.addSecs(1800).toString(form));
    QVERIFY(next.endsWith(QStringLiteral("-1")));
}

// NOLINTNEXTLINE(readability-function-size): a table
void TestPuttingBack::saysWhatIsWrongWithARecord_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<QString>("message");
    const auto row = [](const char* from, const char* to, const QString& message) {
        QTest::newRow(to) << QByteArray(from) << QByteArray(to) << message;
    };
    row("{\"by\"", "[\"by\"", unreadable);
    row("{\"by\"", "{\"also\":1,\"by\"", newer);
    row("\"import\"", "\"dream\"", newer);
    row("\"by\":\"import\",", "", wrong);
    row("\"import\"", "1", wrong);
    row("\"complete\":true", "\"complete\":1", wrong);
    row("\"complete\":true", "\"complete\":\"true\"", wrong);
    row("\"complete\":true,", "", wrong);
    row("\"created\":[]", "\"created\":{}", wrong);
    row("\"created\":[]", "\"created\":[1]", wrong);
    row("\"created\":[]", "\"created\":[\"S/B/X/notes\"]", wrong);
    for (const char* path : {"S/B\\nC/X", "S/B\\u0000/X", "S//X", "S/./X", "S/../X"})
        QTest::newRow(path) << QByteArray("\"created\":[]")
                            << "\"created\":[\"" + QByteArray(path) + "/20240115_60.iss\"]"
                            << wrong;
    row("\"kept\":[\"S/", "\"kept\":[\"/", wrong);
    row("\"kept\":[\"S/", "\"kept\":[1,\"S/", wrong);
    row("\"id\":\"2", "\"id\":\"3", wrong);
    row("\"left\":{", "\"left\":[],\"also\":{", newer);
    row("\"modified\":", "\"modified\":\"1\",\"was\":", wrong);
    row("\"size\":4", "\"size\":\"4\"", wrong);
    row("\"sha256\":null", "\"sha256\":4", wrong);
    row("\"sha256\":null", "\"sha256\":[]", wrong);
    row("\"series\":[", "\"series\":[4,", wrong);
    row("\"series\":[\"S/B/X\"]", "\"series\":\"S/B/X\"", wrong);
    row("\"source\":[]", "\"source\":[null]", wrong);
    row("\"source\":[]", "\"source\":\"file.csv\"", wrong);
    row("\"when\":\"2", "\"when\":\"x", wrong);
    row("\"when\":\"2", "\"when\":2,\"was\":\"", newer);
}

void TestPuttingBack::saysWhatIsWrongWithARecord()
{
    QFETCH(const QByteArray, from);
    QFETCH(const QByteArray, to);
    QFETCH(const QString, message);
    const QString id = job(day, "new\n");
    changeRecord(id, from, to);
    const QString told = restorePoint(m_place, id).message();
    QVERIFY2(told.contains(message), qPrintable(told));
    QVERIFY2(told.contains(m_place.path + u'/' + id), qPrintable(told));
}

void TestPuttingBack::saysWhatIsWrongWithAJournal_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("isRight");
    const QByteArray name = other.toUtf8();
    QTest::newRow("kept") << "K " + name << true;
    QTest::newRow("made") << "C " + name << true;
    QTest::newRow("neither") << "D " + name << false;
    QTest::newRow("no mark") << name << false;
    QTest::newRow("kept, outside of the store") << QByteArray("K ../B/X/20240115_60.iss") << false;
    QTest::newRow("made, no bar file") << QByteArray("C S/B/X/notes") << false;
    QTest::newRow("empty") << QByteArray() << false;
}

void TestPuttingBack::saysWhatIsWrongWithAJournal()
{
    QFETCH(const QByteArray, line);
    QFETCH(const bool, isRight);
    const QString id = job(day, "new\n", false);
    const QString journal = inPoint(id, QStringLiteral("journal"));
    writeFile(journal, readFile(journal) + line + '\n');
    const Result<RestorePointRecord> point = restorePoint(m_place, id);
    QCOMPARE(bool(point), isRight);
    if (isRight)
        QCOMPARE(point->paths(), QStringList({day, other}));
    else
        QVERIFY2(point.message().contains(QStringLiteral("journal ") + unreadable),
                 qPrintable(point.message()));
}

void TestPuttingBack::aJournalThatCannotBeReadIsNotPassedOver_data()
{
    QTest::addColumn<SystemCall>("call");
    QTest::newRow("opening") << SystemCall::Open;
    QTest::newRow("reading") << SystemCall::Read;
}

void TestPuttingBack::aJournalThatCannotBeReadIsNotPassedOver()
{
    QFETCH(const SystemCall, call);
    const QString id = job(day, "new\n", false);
    const Fault fault(call, QStringLiteral("/journal"), EIO);
    const Result<RestorePointRecord> point = restorePoint(m_place, id);
    QVERIFY(!point);
    QVERIFY2(point.message().contains(qt_error_string(EIO)), qPrintable(point.message()));
}

void TestPuttingBack::anUnfinishedPointWithoutAJournalHasNoFiles()
{
    const QString id = job(day, "new\n", false);
    QVERIFY(QFile::remove(inPoint(id, QStringLiteral("journal"))));
    const Result<RestorePointRecord> point = restorePoint(m_place, id);
    QVERIFY2(point, qPrintable(point.message()));
    QVERIFY(!point->isComplete && point->paths().isEmpty());
}

void TestPuttingBack::aCopyThatIsGoneHasNoSize()
{
    const QString id = job(day, "new\n");
    QCOMPARE(restorePoint(m_place, id)->bytes, 4);
    QVERIFY(QFile::remove(inPoint(id, day)));
    QCOMPARE(restorePoint(m_place, id)->bytes, 0);
}

// No file system has a name of that length.
void TestPuttingBack::aCopyThatCannotBeLookedAtIsTold()
{
    const QString id = job(day, "new\n");
    const QByteArray endless(300, 'x');
    changeRecord(id, "\"kept\":[\"S/B/X/", "\"kept\":[\"S/B/" + endless + '/');
    const QString message = restorePoint(m_place, id).message();
    QVERIFY2(message.contains(QString::fromLatin1(endless)), qPrintable(message));
}

void TestPuttingBack::aFileIsWrittenInPlaceWhereItsDirectoryRefuses_data()
{
    QTest::addColumn<QByteArray>("old");
    QTest::addColumn<SystemCall>("call");
    QTest::addColumn<int>("error");
    for (const char* old : {"", "old\n"}) {
        QTest::addRow("no new file, %d bytes", int(qstrlen(old)))
            << QByteArray(old) << SystemCall::Open << EACCES;
        QTest::addRow("nothing in its place, %d bytes", int(qstrlen(old)))
            << QByteArray(old) << SystemCall::Rename << EBUSY;
    }
}

void TestPuttingBack::aFileIsWrittenInPlaceWhereItsDirectoryRefuses()
{
    QFETCH(const QByteArray, old);
    QFETCH(const SystemCall, call);
    QFETCH(const int, error);
    constexpr mode_t mode = 0640;
    const QByteArray file = QFile::encodeName(path(other));
    writeFile(path(other), old);
    QCOMPARE(::chmod(file.constData(), mode), 0);
    const vexdesk::FileState before = *fileState(path(other));
    const QString id = job(other, "new and longer than it was\n");
    QCOMPARE(::chmod(file.constData(), 0600), 0);
    {
        const Fault refused(call, call == SystemCall::Open ? QStringLiteral(".tmp") : path(other),
                            error);
        QCOMPARE(putBack(id), QString());
        QCOMPARE(refused.failed(), 1);
    }
    QCOMPARE(readFile(path(other)), old);
    QVERIFY(fileState(path(other))->isUnchanged(before));
    struct stat status = {};
    QCOMPARE(::stat(file.constData(), &status), 0);
    QCOMPARE(status.st_mode & 07777, mode);
}

// Who may write to it need not be allowed to change its permissions and its time.
void TestPuttingBack::aFileOfSomebodyElseIsWrittenInPlace()
{
    if (::geteuid() != 0)
        QSKIP("Only the superuser has files of somebody else.");
    const testsupport::Permissions seen(m_dir->path(), 0755);
    const testsupport::Permissions writable(path(day), 0666);
    const QString id = job(day, "new and longer\n");
    {
        const testsupport::OtherUser user;
        QCOMPARE(putBack(id), QString());
    }
    QCOMPARE(readFile(path(day)), QByteArray("old\n"));
}

void TestPuttingBack::saysWhyAFileDidNotComeBack_data()
{
    QTest::addColumn<SystemCall>("call");
    QTest::addColumn<QString>("pathEnd");
    QTest::addColumn<int>("passed");
    QTest::addColumn<bool>("isRefused");
    const QString file = QStringLiteral("/store/") + day;
    const QString copy = QStringLiteral("/store-restore/%1/") + day;
    QTest::newRow("the copy is not opened") << SystemCall::Open << copy << 1 << false;
    QTest::newRow("the old file is not opened") << SystemCall::Open << file << 0 << false;
    QTest::newRow("the new file is not made")
        << SystemCall::Open << QStringLiteral(".tmp") << 0 << false;
    QTest::newRow("the new file is not written")
        << SystemCall::Write << QStringLiteral(".tmp") << 0 << false;
    QTest::newRow("the new file is not closed")
        << SystemCall::Close << QStringLiteral(".tmp") << 0 << false;
    QTest::newRow("the new file is not named") << SystemCall::Rename << file << 0 << false;
    QTest::newRow("in place, not opened") << SystemCall::Open << file << 1 << true;
    QTest::newRow("in place, not written") << SystemCall::Write << file << 0 << true;
    // The first one that is closed was opened to know what stood there.
    QTest::newRow("in place, not closed") << SystemCall::Close << file << 0 << true;
}

void TestPuttingBack::saysWhyAFileDidNotComeBack()
{
    QFETCH(const SystemCall, call);
    QFETCH(const QString, pathEnd);
    QFETCH(const int, passed);
    QFETCH(const bool, isRefused);
    const QString id = job(day, "new\n");
    std::unique_ptr<Fault> refusal;
    if (isRefused)
        refusal = std::make_unique<Fault>(SystemCall::Open, QStringLiteral(".tmp"), EACCES);
    const QString where = QString(pathEnd).replace(QStringLiteral("%1"), id);
    const Fault fault(call, where, EIO, passed);
    const QString message = putBack(id);
    QVERIFY2(message.contains(
                 QStringLiteral("Файл %1 не возвращён: %2").arg(path(day), qt_error_string(EIO))),
             qPrintable(message));
}

void TestPuttingBack::whatStandsInItsPlaceStays_data()
{
    QTest::addColumn<bool>("wasMade");
    QTest::addColumn<bool>("isDirectory");
    for (const bool wasMade : {false, true}) {
        const char* const name = wasMade ? "a file to remove" : "a file to write";
        QTest::addRow("%s, a directory", name) << wasMade << true;
        QTest::addRow("%s, a link that leads to itself", name) << wasMade << false;
    }
}

void TestPuttingBack::whatStandsInItsPlaceStays()
{
    QFETCH(const bool, wasMade);
    QFETCH(const bool, isDirectory);
    const QString name = path(wasMade ? other : day);
    const QString id = job(wasMade ? other : day, "new\n");
    QVERIFY(QFile::remove(name));
    if (isDirectory)
        QVERIFY(QDir().mkdir(name));
    else
        QVERIFY(QFile::link(name, name));
    const QString message = putBack(id);
    QVERIFY2(message.contains(name), qPrintable(message));
    const QString why = isDirectory ? QStringLiteral("не обычный файл") : qt_error_string(ELOOP);
    QVERIFY2(message.contains(why), qPrintable(message));
    QCOMPARE(QFileInfo(name).isSymLink(), !isDirectory);
    QCOMPARE(QFileInfo(name).isDir(), isDirectory);
}

void TestPuttingBack::eachByteOfACopyCounts()
{
    QByteArray content;
    for (int i = 0; i < 200; ++i)
        content += static_cast<char>('0' + i % 10);
    writeFile(path(day), content);
    const QString id = job(day, "new\n");
    const QString copy = inPoint(id, day);
    const RestorePointRecord point = *restorePoint(m_place, id);
    for (qsizetype i = 0; i < content.size(); ++i) {
        QByteArray changed = content;
        changed[i] = '!';
        writeFile(copy, changed);
        QVERIFY2(!PuttingBack(m_place, point).begin(), qPrintable(QString::number(i)));
    }
    writeFile(copy, content);
    QVERIFY(PuttingBack(m_place, point).begin());
}

void TestPuttingBack::aLargeFileComesBackWhole_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {65'535, 65'536, 65'537, 131'072, 300'000})
        QTest::addRow("%d bytes", size) << size;
}

void TestPuttingBack::aLargeFileComesBackWhole()
{
    QFETCH(const int, size);
    QByteArray content;
    for (int i = 0; content.size() < size; ++i)
        content += QByteArray::number(i) + '\n';
    content.truncate(size);
    writeFile(path(day), content);
    const QString id = job(day, "new\n");
    QCOMPARE(putBack(id), QString());
    QVERIFY(readFile(path(day)) == content);
}

// Who connects the disk again finds there what was there.
void TestPuttingBack::aLinkThatLeadsNowhereIsNotFollowed()
{
    const QString disk = m_dir->filePath(QStringLiteral("disk"));
    writeFile(disk + QStringLiteral("/bars"), "old\n");
    QVERIFY(QFile::link(disk + QStringLiteral("/bars"), path(other)));
    const QString id = job(other, "new\n");
    QVERIFY(QDir(disk).removeRecursively());
    const QString message = putBack(id);
    QVERIFY2(message.contains(QStringLiteral("никуда не ведёт")), qPrintable(message));
    QVERIFY(!QFileInfo::exists(disk));
}

void TestPuttingBack::whatIsGoneAlreadyNeedNotBeRemoved()
{
    const QString id = job(other, "new\n");
    QVERIFY(QFile::remove(path(other)));
    QCOMPARE(putBack(id), QString());
}

void TestPuttingBack::aPointWithoutSumsIsPutBackAsItIs()
{
    const QString id = job(day, "new\n");
    QVERIFY(QFile::remove(m_place.path + QStringLiteral("/sums/") + id));
    QCOMPARE(putBack(id), QString());
    QCOMPARE(readFile(path(day)), QByteArray("old\n"));
}

void TestPuttingBack::aFinishedPointNeedsNoJournal()
{
    const QString id = job(day, "new\n");
    writeFile(inPoint(id, QStringLiteral("journal")), "K " + other.toUtf8() + '\n');
    QCOMPARE(restorePoint(m_place, id)->paths(), QStringList(day));
}

void TestPuttingBack::saysWhyAFileIsNotKept_data()
{
    QTest::addColumn<SystemCall>("call");
    QTest::addColumn<QString>("pathEnd");
    QTest::addColumn<int>("passed");
    QTest::newRow("it is not opened") << SystemCall::Open << QStringLiteral("/store/") + day << 0;
    QTest::newRow("it is not read") << SystemCall::Read << day << 0;
    QTest::newRow("the copy is not made") << SystemCall::Open << day << 1;
    QTest::newRow("the copy is not written") << SystemCall::Write << day << 0;
    QTest::newRow("the copy is not closed") << SystemCall::Close << day << 0;
    const QString journal = QStringLiteral("/journal");
    QTest::newRow("the journal is not made") << SystemCall::Open << journal << 0;
    QTest::newRow("the journal is not written") << SystemCall::Write << journal << 0;
    const QString temporary = QStringLiteral(".tmp");
    QTest::newRow("the record is not made") << SystemCall::Open << temporary << 1;
    QTest::newRow("the record is not written") << SystemCall::Write << temporary << 0;
    QTest::newRow("the point is not opened") << SystemCall::Open << temporary << 0;
    QTest::newRow("the place is not opened") << SystemCall::Open << QStringLiteral("/locks") << 0;
}

void TestPuttingBack::saysWhyAFileIsNotKept()
{
    QFETCH(const SystemCall, call);
    QFETCH(const QString, pathEnd);
    QFETCH(const int, passed);
    RestorePoint point(m_place, QStringLiteral("import"), {}, {});
    const Fault fault(call, pathEnd, EIO, passed);
    const Outcome kept = point.keep({path(day)});
    QVERIFY(!kept);
    QVERIFY2(kept.message().contains(QStringLiteral("Файл %1 не тронут").arg(path(day))),
             qPrintable(kept.message()));
    QVERIFY2(kept.message().contains(m_place.path) && kept.message().contains(qt_error_string(EIO)),
             qPrintable(kept.message()));
    // Nothing is left of a point that was not made.
    QStringList names =
        QDir(m_place.path).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    names.removeOne(point.id());
    QCOMPARE(names, QStringList(QStringLiteral("locks")));
}

void TestPuttingBack::whatIsNoDayFileIsNotKept()
{
    RestorePoint point(m_place, QStringLiteral("import"), {}, {});
    QVERIFY(QDir().mkdir(path(other)));
    QVERIFY(point.keep({path(other)}));
    QVERIFY(point.id().isEmpty());
    const QString notes = path(QStringLiteral("S/B/X/notes"));
    writeFile(notes, "");
    const QString message = point.keep({notes}).message();
    QVERIFY2(message.contains(notes) && message.contains(QStringLiteral("это не файл дня")),
             qPrintable(message));
    QVERIFY(point.id().isEmpty());
    // No file system has a name of that length.
    RestorePoint next(m_place, QStringLiteral("import"), {}, {});
    const QString endless = path(QStringLiteral("S/B/%1/20240115_60.iss").arg(QString(300, u'x')));
    const QString why = next.keep({endless}).message();
    QVERIFY2(why.contains(endless) && why.contains(qt_error_string(ENAMETOOLONG)), qPrintable(why));
    QVERIFY(next.id().isEmpty());
}

// They are written into the journal at once.
void TestPuttingBack::theFirstOfSeveralFilesIsNamed()
{
    writeFile(path(other), "old\n");
    RestorePoint point(m_place, QStringLiteral("import"), {}, {});
    const Fault fault(SystemCall::Write, QStringLiteral("/journal"), EIO);
    const QString message = point.keep({path(other), path(day)}).message();
    QVERIFY2(message.contains(path(other)), qPrintable(message));
    QVERIFY2(message.contains(m_place.path + u'/' + point.id()), qPrintable(message));
}

// It would be taken for removed.
void TestPuttingBack::aRecordIsNotWrittenOfWhatCannotBeLookedAt()
{
    m_dir.reset();
    const testsupport::OtherUser user;
    init();
    RestorePoint point(m_place, QStringLiteral("import"), {}, {});
    QVERIFY(point.keep({path(day)}));
    writeFile(path(day), "new\n");
    {
        const testsupport::Permissions barred(path(QStringLiteral("S/B/X")), 0);
        const Outcome finished = point.finish();
        QVERIFY(!finished);
        QVERIFY2(
            finished.message().contains(path(day) + QStringLiteral(": ") + qt_error_string(EACCES)),
            qPrintable(finished.message()));
    }
    QVERIFY(!restorePoint(m_place, point.id())->isComplete);
    m_dir.reset();
}

void TestPuttingBack::aPlaceThatIsNoDirectoryIsSaid_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("a file") << 0644;
    QTest::newRow("a program") << 0755;
}

void TestPuttingBack::aPlaceThatIsNoDirectoryIsSaid()
{
    QFETCH(const int, mode);
    QVERIFY(QDir(m_place.path).removeRecursively());
    writeFile(m_place.path, "");
    QCOMPARE(::chmod(QFile::encodeName(m_place.path).constData(), static_cast<mode_t>(mode)), 0);
    const auto points = restorePoints(m_place);
    QVERIFY(!points);
    QVERIFY2(points.message().contains(m_place.path), qPrintable(points.message()));
}

void TestPuttingBack::aPlaceThatMayNotBeReadIsSaid_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("not listed") << 0111;
    QTest::newRow("not entered") << 0444;
}

void TestPuttingBack::aPlaceThatMayNotBeReadIsSaid()
{
    QFETCH(const int, mode);
    m_dir.reset();
    const testsupport::OtherUser user;
    init();
    const QString id = job(day, "new\n");
    {
        const testsupport::Permissions barred(m_place.path, static_cast<mode_t>(mode));
        const auto points = restorePoints(m_place);
        QVERIFY(!points);
        QVERIFY2(points.message().contains(m_place.path), qPrintable(points.message()));
        RestorePoint next(m_place, QStringLiteral("import"), {}, {});
        QVERIFY(!next.keep({path(day)}));
        const Result<RestorePointRecord> point = restorePoint(m_place, id);
        QCOMPARE(bool(point), (mode & 0100) != 0);
        if (!point)
            QVERIFY2(point.message().contains(unreadable) &&
                         point.message().endsWith(qt_error_string(EACCES)),
                     qPrintable(point.message()));
    }
    m_dir.reset();
}

void TestPuttingBack::aSeriesThatMayNotBeEnteredIsSaid()
{
    m_dir.reset();
    const testsupport::OtherUser user;
    init();
    const QString changed = job(day, "new\n");
    const QString made = job(other, "made\n");
    for (const char* directory : {"S/B/X", "S/B"}) {
        const testsupport::Permissions barred(path(QLatin1String(directory)), 0);
        for (const QString& id : {changed, made}) {
            const QString message = putBack(id);
            QVERIFY2(message.contains(path(id == made ? other : day)), qPrintable(message));
            QVERIFY2(message.endsWith(qt_error_string(EACCES)), qPrintable(message));
        }
    }
    m_dir.reset();
}

// What a job has made is not there, and of a broken point nobody knows.
void TestPuttingBack::whatIsNotKeptTakesNoRoom()
{
    RestorePoint oldest(m_place, QStringLiteral("import"), {}, {});
    QVERIFY(oldest.keep({path(day), path(other)}));
    writeFile(path(day), "new\n");
    writeFile(path(other), "made\n");
    QVERIFY(oldest.finish());
    const QString broken = job(day, "next\n");
    writeFile(inPoint(broken, QStringLiteral("point.json")), "");
    QVERIFY(QFile::remove(m_place.path + QStringLiteral("/sums/") + broken));
    const QString newest = job(day, "last\n");
    const QDir place(m_place.path);
    QVERIFY(pruneRestorePoints(m_place, {.keep = 3, .bytes = 9}));
    for (const QString& id : {oldest.id(), broken, newest})
        QVERIFY(place.exists(id));
    QVERIFY(pruneRestorePoints(m_place, {.keep = 3, .bytes = 8}));
    QVERIFY(!place.exists(oldest.id()) && place.exists(broken) && place.exists(newest));
    QVERIFY(pruneRestorePoints(m_place, {.keep = 1, .bytes = 8}));
    QVERIFY(!place.exists(broken) && place.exists(newest));
}

void TestPuttingBack::aPointGoesWithItsSums()
{
    const QDir place(m_place.path);
    RestorePoint point(m_place, QStringLiteral("import"), {}, {});
    QVERIFY(point.keep({path(day)}));
    writeFile(path(day), "new\n");
    QVERIFY(point.finish());
    const QString sums = QStringLiteral("sums/") + point.id();
    QVERIFY(place.exists(sums));
    point.remove();
    QVERIFY(point.id().isEmpty());
    QVERIFY(!place.exists(QStringLiteral("sums")));
    QCOMPARE(place.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList(QStringLiteral("locks")));
}

void TestPuttingBack::aPointThatCannotBeRemovedIsSaid()
{
    const QString first = job(day, "new\n");
    job(day, "newer\n");
    const Fault fault(SystemCall::Rename, QStringLiteral(".tmp"), EIO);
    const Outcome pruned = pruneRestorePoints(m_place, {.keep = 1, .bytes = 100});
    QVERIFY(!pruned);
    QVERIFY2(pruned.message().contains(m_place.path + u'/' + first) &&
                 pruned.message().contains(qt_error_string(EIO)),
             qPrintable(pruned.message()));
    QCOMPARE(restorePoints(m_place)->points.size(), 2);
}

// Nobody knows what it had left.
void TestPuttingBack::newerPointsForbidAnUnfinishedOne()
{
    const QString unfinished = job(day, "half\n", false);
    const auto forbidding = [&] {
        return *whatForbidsPuttingBack(m_place, *restorePoint(m_place, unfinished));
    };
    QCOMPARE(forbidding(), QStringList());
    job(other, "new\n");
    QCOMPARE(forbidding(), QStringList());
    const QString newest = job(day, "newer\n");
    QCOMPARE(forbidding(), QStringList(path(day)));
    // An undo that was not finished has not put it back.
    RestorePoint undo(m_place, QStringLiteral("undo"), {}, {newest});
    QVERIFY(undo.keep({path(other)}));
    writeFile(path(other), "undone\n");
    QCOMPARE(forbidding(), QStringList(path(day)));
    QVERIFY(undo.finish());
    QCOMPARE(forbidding(), QStringList());
}

void TestPuttingBack::aNewerPointThatCannotBeReadMayForbid()
{
    const QString first = job(day, "new\n");
    const RestorePointRecord point = *restorePoint(m_place, first);
    const QString broken = job(other, "newer\n");
    writeFile(inPoint(broken, QStringLiteral("point.json")), "");
    const auto forbidding = whatForbidsPuttingBack(m_place, point);
    QVERIFY(!forbidding);
    QVERIFY2(forbidding.message().contains(broken), qPrintable(forbidding.message()));
    QVERIFY(QDir(m_place.path).removeRecursively());
    writeFile(m_place.path, "");
    QVERIFY(!whatForbidsPuttingBack(m_place, point));
}

void TestPuttingBack::aRecordMayBeOfAnyLength()
{
    constexpr int files = 400;
    const QStringList source{QString(40'000, u'x'), QStringLiteral("y")};
    RestorePoint point(m_place, QStringLiteral("import"), {QString(20'000, u'z')}, source);
    QStringList made;
    for (int i = 0; i < files; ++i)
        made.append(QStringLiteral("S/B/X%1/20240115_60.iss").arg(i, 3, 10, QChar(u'0')));
    for (const QString& relative : std::as_const(made)) {
        QVERIFY(point.keep({path(relative)}));
        writeFile(path(relative), "new\n");
    }
    QVERIFY(point.finish());
    const Result<RestorePointRecord> record = restorePoint(m_place, point.id());
    QVERIFY2(record, qPrintable(record.message()));
    QCOMPARE(record->created, made);
    QCOMPARE(record->source, source);
    QCOMPARE(record->left.size(), files);
}

void TestPuttingBack::saysThatThereIsNoSuchPoint()
{
    const QString id = QStringLiteral("20240115-100000-1");
    const QString text =
        QStringLiteral("Точки возврата %1 в каталоге %2 нет").arg(id, m_place.path);
    QCOMPARE(restorePoint(m_place, id).message(), text);
    writeFile(m_place.path + u'/' + id, "");
    QCOMPARE(restorePoint(m_place, id).message(), text);
}

void TestPuttingBack::aCopyThatIsNoFileIsNotPutBack()
{
    const QString id = job(day, "new\n");
    QVERIFY(QFile::remove(inPoint(id, day)));
    QVERIFY(QDir().mkdir(inPoint(id, day)));
    const QString message = putBack(id);
    QVERIFY2(message.contains(inPoint(id, day) + QStringLiteral(" уже не тот")),
             qPrintable(message));
}

void TestPuttingBack::aPointIsNotPutBackWhileItsJobRuns()
{
    RestorePoint point(m_place, QStringLiteral("import"), {}, {});
    QVERIFY(point.keep({path(day)}));
    writeFile(path(day), "new\n");
    QVERIFY(isJobRunning(m_place, point.id()));
    const QString message = putBack(point.id());
    QVERIFY2(message.contains(QStringLiteral("занята")), qPrintable(message));
    QCOMPARE(readFile(path(day)), QByteArray("new\n"));
    QVERIFY(point.finish());
    QVERIFY(!isJobRunning(m_place, point.id()));
    QCOMPARE(putBack(point.id()), QString());
    QCOMPARE(readFile(path(day)), QByteArray("old\n"));
}

// The file has the size and the time that it had.
void TestPuttingBack::aChangeOfTheSameMomentCounts()
{
    struct stat before = {};
    const QByteArray file = QFile::encodeName(path(day));
    QCOMPARE(::stat(file.constData(), &before), 0);
    RestorePoint point(m_place, QStringLiteral("import"), {}, {});
    QVERIFY(point.keep({path(day)}));
    writeFile(path(day), "new\n");
    const std::array<timespec, 2> times{before.st_atim, before.st_mtim};
    QCOMPARE(::utimensat(AT_FDCWD, file.constData(), times.data(), 0), 0);
    QVERIFY(point.finish());
    QVERIFY(!point.id().isEmpty());
    QCOMPARE(restorePoint(m_place, point.id())->kept, QStringList(day));
}

void TestPuttingBack::theKeeperIsToldBeforeAnythingComesBack()
{
    struct Listener final : vexdesk::FileKeeper
    {
        Outcome keep(const QStringList& paths) override
        {
            told += paths;
            return vexdesk::Failure{QStringLiteral("refused")};
        }
        QStringList told;
    };
    RestorePoint point(m_place, QStringLiteral("import"), {}, {});
    QVERIFY(point.keep({path(day), path(other)}));
    writeFile(path(day), "new\n");
    writeFile(path(other), "made\n");
    QVERIFY(point.finish());
    PuttingBack back(m_place, *restorePoint(m_place, point.id()));
    QVERIFY(back.begin());
    Listener keeper;
    QCOMPARE(back.run(&keeper).message(), QStringLiteral("refused"));
    QCOMPARE(keeper.told, QStringList({path(day), path(other)}));
    QCOMPARE(readFile(path(day)), QByteArray("new\n"));
    QCOMPARE(readFile(path(other)), QByteArray("made\n"));
}

void TestPuttingBack::theFirstThatDoesNotComeBackEndsTheWork()
{
    const QString second = QStringLiteral("S/B/Y/20240115_60.iss");
    const QString made = QStringLiteral("S/B/A/20240115_60.iss");
    writeFile(path(second), "old\n");
    RestorePoint point(m_place, QStringLiteral("import"), {}, {});
    QVERIFY(point.keep({path(day), path(second), path(other), path(made)}));
    for (const QString& relative : {day, second, other, made})
        writeFile(path(relative), "new\n");
    QVERIFY(point.finish());
    for (const QString& relative : {day, made}) {
        const QString name = path(relative);
        QVERIFY(QFile::rename(name, m_dir->filePath(QStringLiteral("aside"))));
        QVERIFY(QDir().mkdir(name));
        const QString message = putBack(point.id());
        QVERIFY2(message.contains(name), qPrintable(message));
        QCOMPARE(readFile(path(second)), QByteArray(relative == day ? "new\n" : "old\n"));
        QCOMPARE(readFile(path(other)), QByteArray("new\n"));
        QVERIFY(QDir().rmdir(name));
        QVERIFY(QFile::rename(m_dir->filePath(QStringLiteral("aside")), name));
    }
    QCOMPARE(putBack(point.id()), QString());
    QVERIFY(!fileState(path(other)) && !fileState(path(made)));
}

void TestPuttingBack::aCopyWithoutASumIsNotWhatItWas()
{
    const QString id = job(day, "new\n");
    writeFile(m_place.path + QStringLiteral("/sums/") + id, "4\n");
    const QString message = putBack(id);
    QVERIFY2(message.contains(inPoint(id, day) + QStringLiteral(" уже не тот")),
             qPrintable(message));
}

void TestPuttingBack::theNewestIsKnownThoughItIsBroken()
{
    QVERIFY(restorePoints(m_place)->newest.isNull());
    const QString first = job(day, "new\n");
    QCOMPARE(restorePoints(m_place)->newest, first);
    const QString second = job(day, "newer\n");
    writeFile(inPoint(second, QStringLiteral("point.json")), "");
    const auto points = restorePoints(m_place);
    QCOMPARE(points->newest, second);
    QCOMPARE(points->points.size(), 1);
    QCOMPARE(points->points.first().id, first);
    QCOMPARE(points->problems.size(), 1);
}

QTEST_GUILESS_MAIN(TestPuttingBack)
#include "tst_puttingback.moc"
