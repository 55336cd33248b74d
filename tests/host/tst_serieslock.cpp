// SPDX-License-Identifier: MIT
#include <vexdesk/history/filekeeper.h>
#include <vexdesk/history/seriesfiles.h>
#include <vexdesk/history/storejob.h>

#include "support/faults.h"
#include "support/filetree.h"
#include "support/otheruser.h"
#include "support/strictlog.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QFileInfo>
#include <QtCore/QLockFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QScopeGuard>
#include <QtCore/QSysInfo>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <memory>
#include <utility>

using testsupport::readTree;
using testsupport::writeFile;
using vexdesk::barFiles;
using vexdesk::hasBarFiles;
using vexdesk::RestorePlace;
using vexdesk::restorePlace;
using vexdesk::SeriesLocks;
using vexdesk::StoreJob;

namespace {

const QString series = QStringLiteral("S/B/X");
constexpr std::chrono::milliseconds noWait{0};
constexpr std::chrono::minutes longWait{10};

// The number of a process that has ended.
pid_t deadProcess()
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(0);
    return ::waitpid(child, nullptr, 0) == child ? child : -1;
}

} // namespace

/// Locks of series, the place beside the store, and whole series that change.
class TestSeriesLock final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dir.reset(); }
    void aStoreHasOnePlaceWhateverItIsCalled();
    void aStoreThatIsNotThereYetHasItsPlace();
    void wherePlaceCannotBeBesideItIsInTheDataDirectory();
    void theSecondIsToldWhoHoldsIt();
    void allOfThemOrNone();
    void aLockThatCannotBeMadeIsAnErrorOfItsOwn();
    void aLockThatCannotBeLookedAtMayBeOne();
    void aLockOfADeadProcessDoesNotLast();
    void anUnfinishedLockDoesNotLast();
    void usersWithPlacesOfTheirOwnSeeEachOther();
    void leftoversOfDeadProcessesGo();
    void aJobWithoutPointsKeepsNothing();
    void aPointThatTheJobNeedsGoesAtItsEnd();
    void aJobThatHasNotBegunTouchesNothing();
    void tellsThePointOfAJob();
    void textsAreSortedByCodePoint();
    void theEndsOfThePlanesAreSortedByCodePoint();
    void textsThatBeginAlikeAreSorted();
    void leftDirectoriesGoWithWhatIsInThem();
    void aLockOfNobodyKnowsWhomIsNamed();
    void whoIsStoppedDoesNotWait();
    void aLockThatMayNotBeMadeIsNobodys();
    void tellsWhetherTheHolderMayRun_data();
    void tellsWhetherTheHolderMayRun();
    void aProcessOfSomebodyElseMayRun();
    void waitsUntilTheDirectoryIsFree_data();
    void waitsUntilTheDirectoryIsFree();
    void anUnfinishedLockLastsWhileSomebodyIsAtIt();
    void aLockOfOldIsNotUnfinished();
    void withoutLocksOfTheSystemTheFilesDecide();
    void leftoversAreKnownByTheirWholeName();
    void whatSomebodyElseIsAtWorkOnIsNoLeftover();
    void aSeriesThatMayNotBeReadCanBeLocked();
    void filesOfAnInterval();
    void aSeriesIsCopiedMovedAndRemoved();

private:
    QString path(const char* name) const { return m_dir->filePath(QLatin1String(name)); }
    RestorePlace place() const { return *vexdesk::makeRestorePlace(QDir(path("store"))); }
    QString lockFile() const { return path("store-restore/locks/S/B/X.lock"); }
    static void makeOld(const QString& file)
    {
        const std::array<timespec, 2> longAgo{timespec{1000, 0}, timespec{1000, 0}};
        const QByteArray name = QFile::encodeName(file);
        QCOMPARE(::utimensat(AT_FDCWD, name.constData(), longAgo.data(), 0), 0);
    }
    void writeLock(qint64 process, const QString& program, const QString& host) const
    {
        writeFile(lockFile(),
                  QStringLiteral("%1\n%2\n%3\n").arg(process).arg(program, host).toUtf8());
    }

    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestSeriesLock::init()
{
    testsupport::failOnStrayWarnings();
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir().mkpath(path("store/S/B/X")));
}

void TestSeriesLock::aStoreHasOnePlaceWhateverItIsCalled()
{
    QVERIFY(QFile::link(path("store"), path("link")));
    QVERIFY(QFile::link(path("store/S/B"), path("deep")));
    const QString before = QDir::currentPath();
    const auto back = qScopeGuard([&before] { QDir::setCurrent(before); });
    QVERIFY(QDir::setCurrent(m_dir->path()));
    const QString wanted = QFileInfo(path("store")).canonicalFilePath();
    for (const char* name :
         {"store", "store/", "./store//", "link", "link/", "link/../store", "deep/../.."}) {
        const RestorePlace found = *restorePlace(QDir(QLatin1String(name)));
        QCOMPARE(found.root, wanted);
        QCOMPARE(found.path, wanted + QStringLiteral("-restore"));
    }
}

void TestSeriesLock::aStoreThatIsNotThereYetHasItsPlace()
{
    QVERIFY(QFile::link(path("store"), path("link")));
    const RestorePlace found = *restorePlace(QDir(path("link/new/one/")));
    QCOMPARE(found.root, QFileInfo(path("store")).canonicalFilePath() + "/new/one");
    QCOMPARE(found.path, found.root + QStringLiteral("-restore"));
    QVERIFY(!QFileInfo::exists(path("store/new")));
}

void TestSeriesLock::wherePlaceCannotBeBesideItIsInTheDataDirectory()
{
    writeFile(path("store-restore"), "in the way");
    const QString root = QFileInfo(path("store")).canonicalFilePath();
    const QByteArray sum =
        QCryptographicHash::hash(QFile::encodeName(root), QCryptographicHash::Sha256).toHex();
    const RestorePlace made = place();
    const auto clean = qScopeGuard([&made] { QDir(made.path).removeRecursively(); });
    QCOMPARE(made.root, root);
    QVERIFY2(made.path.endsWith(QStringLiteral("/restore/") + QString::fromLatin1(sum)),
             qPrintable(made.path));
    QVERIFY(QFileInfo(made.path).isDir());
    // Those that only look find it there, too.
    QCOMPARE(restorePlace(QDir(path("store")))->path, made.path);
}

void TestSeriesLock::theSecondIsToldWhoHoldsIt()
{
    SeriesLocks first;
    QVERIFY(first.take(place(), {series}, noWait));
    SeriesLocks second;
    const auto refused = second.take(place(), {series}, noWait);
    QVERIFY(!refused);
    QVERIFY2(refused.message().contains(QString::number(::getpid())) &&
                 refused.message().contains(lockFile()),
             qPrintable(refused.message()));
    QVERIFY(lockHolder(place(), series)->runsHere);
    SeriesLocks other;
    QVERIFY(other.take(place(), {QStringLiteral("S/B/Y")}, noWait));
    first.release();
    QVERIFY(!lockHolder(place(), series));
    QVERIFY(second.take(place(), {series}, noWait));
}

void TestSeriesLock::allOfThemOrNone()
{
    SeriesLocks held;
    QVERIFY(held.take(place(), {QStringLiteral("S/B/Z")}, noWait));
    SeriesLocks both;
    QVERIFY(!both.take(place(), {QStringLiteral("S/B/Z"), series}, noWait));
    QVERIFY(!lockHolder(place(), series));
    held.release();
    QVERIFY(both.take(place(), {QStringLiteral("S/B/Z"), series, series}, noWait));
}

void TestSeriesLock::aLockThatCannotBeMadeIsAnErrorOfItsOwn()
{
    writeFile(path("store-restore/locks/S"), "in the way");
    SeriesLocks locks;
    const auto refused = locks.take(place(), {series}, noWait);
    QVERIFY2(refused.message().contains(lockFile()), qPrintable(refused.message()));
    QVERIFY(!refused.message().contains(QString::number(::getpid())));
}

void TestSeriesLock::aLockThatCannotBeLookedAtMayBeOne()
{
    const testsupport::OtherUser user;
    const QTemporaryDir dir;
    const RestorePlace made =
        *vexdesk::makeRestorePlace(QDir(dir.filePath(QStringLiteral("store"))));
    QVERIFY(!lockHolder(made, series));
    const testsupport::Permissions closed(made.path, 0);
    QVERIFY(lockHolder(made, series));
    QVERIFY(vexdesk::removeLock(made, series).message().contains(made.path));
}

void TestSeriesLock::aLockOfADeadProcessDoesNotLast()
{
    const pid_t child = ::fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        SeriesLocks locks;
        const bool isTaken = bool(locks.take(place(), {series}, noWait));
        ::_exit(isTaken ? 0 : 1);
    }
    int status = 0;
    QCOMPARE(::waitpid(child, &status, 0), child);
    QCOMPARE(status, 0);
    const auto holder = lockHolder(place(), series);
    QVERIFY(holder);
    QCOMPARE(holder->process, qint64(child));
    QVERIFY(!holder->runsHere);
    SeriesLocks locks;
    QVERIFY(locks.take(place(), {series}, noWait));
}

// Of a process that ended between making the file and writing who it is.
void TestSeriesLock::anUnfinishedLockDoesNotLast()
{
    writeFile(lockFile(), "");
    SeriesLocks locks;
    QVERIFY(!locks.take(place(), {series}, noWait));
    makeOld(lockFile());
    constexpr std::chrono::seconds shortWait{1};
    QVERIFY(locks.take(place(), {series}, shortWait));
}

// Those who can make nothing beside the store have their lock files where nobody else looks.
void TestSeriesLock::usersWithPlacesOfTheirOwnSeeEachOther()
{
    const RestorePlace shared = place();
    const RestorePlace one{shared.root, path("one")};
    const RestorePlace two{shared.root, path("two")};
    SeriesLocks first;
    QVERIFY(first.take(one, {series}, noWait));
    for (const RestorePlace& other : {two, shared}) {
        SeriesLocks second;
        const auto refused = second.take(other, {series}, noWait);
        QVERIFY2(refused.message().contains(shared.root + QStringLiteral("/S/B/X")),
                 qPrintable(refused.message()));
        QVERIFY(!lockHolder(other, series));
        QVERIFY(second.take(other, {QStringLiteral("S/B/NEW")}, noWait));
    }
    first.release();
    SeriesLocks ofAll;
    QVERIFY(ofAll.take(shared, {series}, noWait));
    QVERIFY(!first.take(one, {series}, noWait));
    // Where all see the lock file, removing it is enough.
    QVERIFY(vexdesk::removeLock(shared, series));
    SeriesLocks next;
    QVERIFY(next.take(shared, {series}, noWait));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("own lock file")));
}

void TestSeriesLock::leftoversOfDeadProcessesGo()
{
    const pid_t child = deadProcess();
    QVERIFY(child > 0);
    const QString dir = path("store/S/B/X/");
    const QString dead = QStringLiteral(".tadata-%1-77.tmp").arg(child);
    const QString alive = QStringLiteral(".tadata-%1-77.tmp").arg(::getpid());
    for (const QString& name : {dead, alive, QStringLiteral(".tadata-x-77.tmp"),
                                QStringLiteral(".tadata-77"), QStringLiteral("20240115_60.iss")})
        writeFile(dir + name, "x");
    // Whichever of them the directory has first.
    for (int number = 1; number <= 20; ++number)
        writeFile(dir + QStringLiteral(".tadata-%1-%2.tmp").arg(child).arg(number), "x");
    SeriesLocks locks;
    QVERIFY(locks.take(place(), {series}, noWait));
    QStringList left{QStringLiteral(".tadata-77"), alive, QStringLiteral(".tadata-x-77.tmp"),
                     QStringLiteral("20240115_60.iss")};
    left.sort();
    QCOMPARE(readTree(QDir(dir)).keys(), left);
}

void TestSeriesLock::aJobWithoutPointsKeepsNothing()
{
    writeFile(path("store/S/B/X/20240115_60.iss"), "old\n");
    StoreJob job({.by = QStringLiteral("delete"), .makesPoint = false});
    QVERIFY(job.begin(QDir(path("store")), {series}));
    QVERIFY(vexdesk::removeBarFiles(QDir(path("store/S/B/X")), {QStringLiteral("20240115_60.iss")},
                                    job.keeper()));
    QVERIFY(job.end());
    QVERIFY(restorePoints(place())->points.isEmpty());
    QVERIFY(!lockHolder(place(), series));
}

void TestSeriesLock::aPointThatTheJobNeedsGoesAtItsEnd()
{
    const QString day = path("store/S/B/X/20240115_60.iss");
    writeFile(day, "old\n");
    const auto work = [this](StoreJob& job) {
        return job.begin(QDir(path("store")), {series}) &&
               vexdesk::removeBarFiles(QDir(path("store/S/B/X")),
                                       {QStringLiteral("20240115_60.iss")}, job.keeper());
    };
    const vexdesk::StoreJobSettings settings{
        .by = QStringLiteral("import"), .limits = {.keep = 0}, .needsPoint = true};
    StoreJob failed(settings);
    QVERIFY(work(failed));
    QVERIFY(!QFileInfo::exists(day));
    QVERIFY(failed.takeBack());
    QCOMPARE(testsupport::readFile(day), QByteArray("old\n"));
    StoreJob done(settings);
    QVERIFY(work(done));
    QVERIFY(done.end());
    QVERIFY(!QFileInfo::exists(day));
    QVERIFY(restorePoints(place())->points.isEmpty());
}

void TestSeriesLock::aJobThatHasNotBegunTouchesNothing()
{
    SeriesLocks held;
    QVERIFY(held.take(place(), {series}, noWait));
    writeFile(path("store-restore/20240115-100000-1/point.json"), "");
    writeFile(path("store-restore/20240115-100000-2/point.json"), "");
    StoreJob job({.by = QStringLiteral("import"), .limits = {.keep = 1}, .wait = noWait});
    QVERIFY(job.end());
    QVERIFY(job.takeBack());
    // Longer than the name of any file.
    const QDir unknown(m_dir->filePath(QString(300, u'x')));
    QVERIFY2(job.begin(unknown, {series}).message().contains(unknown.path()), "another reason");
    QVERIFY(job.end());
    QVERIFY(!job.begin(QDir(path("store")), {series}));
    QVERIFY(job.end());
    QVERIFY(job.pointId().isNull());
    QVERIFY(lockHolder(place(), series));
    QCOMPARE(restorePoints(place())->problems.size(), 2);
}

void TestSeriesLock::tellsThePointOfAJob()
{
    const QString day = path("store/S/B/X/20240115_60.iss");
    writeFile(day, "old\n");
    for (const int keep : {0, 1}) {
        StoreJob job({.by = QStringLiteral("delete"), .limits = {.keep = keep}});
        QVERIFY(job.begin(QDir(path("store")), {series}));
        QVERIFY(job.pointId().isNull());
        QVERIFY(job.keeper()->keep({day}));
        QCOMPARE(job.pointId().isNull(), keep == 0);
        QVERIFY(QFile::remove(day));
        const QString id = job.pointId();
        QVERIFY(job.end());
        QVERIFY(job.pointId().isNull());
        QVERIFY(!lockHolder(place(), series));
        const auto points = restorePoints(place())->points;
        QCOMPARE(points.size(), keep);
        if (keep == 1)
            QCOMPARE(points.first().id, id);
        writeFile(day, "old\n");
    }
}

void TestSeriesLock::textsAreSortedByCodePoint()
{
    const QStringList sorted{QStringLiteral("A"),      QStringLiteral("A/"),
                             QStringLiteral("a"),      QStringLiteral("Я"),
                             QStringLiteral("\uffee"), QStringLiteral("\U0001f40e")};
    QCOMPARE(vexdesk::sortedByCodePoint(
                 {sorted[5], sorted[4], sorted[2], sorted[3], sorted[1], sorted[0], sorted[2]}),
             sorted);
}

void TestSeriesLock::filesOfAnInterval()
{
    const QDir dir(path("store/S/B/X"));
    const QStringList all{QStringLiteral("20240115_1.iss"), QStringLiteral("20240115_60"),
                          QStringLiteral("20240115_60.iss"), QStringLiteral("20240116_60.iss"),
                          QStringLiteral("20240117_60.iss")};
    for (const QString& name : all + QStringList(QStringLiteral("notes")))
        writeFile(dir.filePath(name), "x");
    QVERIFY(dir.mkdir(QStringLiteral("20240118_60.iss")));
    const QDate first(2024, 1, 15);
    const QDate last(2024, 1, 16);
    QCOMPARE(*barFiles(dir), all);
    QCOMPARE(*barFiles(dir, {.to = first}), all.first(3));
    QCOMPARE(*barFiles(dir, {.from = last}), all.last(2));
    QCOMPARE(*barFiles(dir, {.from = last, .to = last}), all.mid(3, 1));
    QCOMPARE(*barFiles(dir, {.timeframe = 1}), all.first(2));
    QCOMPARE(*barFiles(dir, {.timeframe = 60}), all.last(3));
}

void TestSeriesLock::aSeriesIsCopiedMovedAndRemoved()
{
    const QDir from(path("store/S/B/X"));
    const QDir to(path("store/S/C/Y"));
    const QDir third(path("store/T/C/Y"));
    const QString day = QStringLiteral("20240115_60.iss");
    const QString linked = QStringLiteral("20240116_60.iss");
    writeFile(from.filePath(day), "day\n");
    QCOMPARE(::chmod(QFile::encodeName(from.filePath(day)).constData(), 0640), 0);
    QVERIFY(QFile::link(day, from.filePath(linked)));
    const QMap<QString, QByteArray> both{{day, "day\n"}, {linked, "day\n"}};

    QVERIFY(!*hasBarFiles(to));
    QVERIFY(vexdesk::copyBarFiles(from, to, *barFiles(from), nullptr));
    QCOMPARE(readTree(from), both);
    QCOMPARE(readTree(to), both);
    QVERIFY(*hasBarFiles(to));
    struct stat copy = {};
    QCOMPARE(::stat(QFile::encodeName(to.filePath(day)).constData(), &copy), 0);
    QCOMPARE(copy.st_mode & 07777, mode_t(0640));

    // A link that leads to a file beside it does not lead there from another directory.
    QVERIFY(vexdesk::moveBarFiles(from, third, QStringList({linked, day}), nullptr));
    QCOMPARE(readTree(third), both);
    QVERIFY(readTree(from).isEmpty());
    QVERIFY(from.exists());

    QVERIFY(vexdesk::removeBarFiles(to, {day}, nullptr));
    QCOMPARE(readTree(to).keys(), QStringList(linked));
    QVERIFY(!vexdesk::removeBarFiles(to, {day}, nullptr));
}

void TestSeriesLock::theEndsOfThePlanesAreSortedByCodePoint()
{
    const QStringList sorted{QStringLiteral("a"),          QStringLiteral("\ud7ff"),
                             QStringLiteral("\ue000"),     QStringLiteral("\ue001"),
                             QStringLiteral("\ufffd"),     QStringLiteral("\U00010000"),
                             QStringLiteral("\U00010400"), QStringLiteral("\U0010fffd")};
    QStringList texts = sorted;
    std::reverse(texts.begin(), texts.end());
    QCOMPARE(vexdesk::sortedByCodePoint(texts), sorted);
    QCOMPARE(vexdesk::sortedByCodePoint(texts + sorted), sorted);
}

void TestSeriesLock::textsThatBeginAlikeAreSorted()
{
    const QStringList sorted{QStringLiteral("A"), QStringLiteral("A/"), QStringLiteral("AB"),
                             QStringLiteral("AC"), QStringLiteral("ACA")};
    QStringList texts = sorted;
    do
        QCOMPARE(vexdesk::sortedByCodePoint(texts), sorted);
    while (std::next_permutation(texts.begin(), texts.end()));
}

void TestSeriesLock::leftDirectoriesGoWithWhatIsInThem()
{
    const pid_t child = deadProcess();
    QVERIFY(child > 0);
    const QDir dir(path("store/S/B/X"));
    const QString directory = QStringLiteral(".tadata-%1-77.tmp").arg(child);
    const QString link = QStringLiteral(".tadata-%1-78.tmp").arg(child);
    writeFile(dir.filePath(directory + QStringLiteral("/file")), "x");
    writeFile(path("kept/file"), "x");
    QVERIFY(QFile::link(path("kept"), dir.filePath(link)));
    SeriesLocks locks;
    QVERIFY(locks.take(place(), {series}, noWait));
    QCOMPARE(dir.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot),
             QStringList());
    QVERIFY(QFileInfo::exists(path("kept/file")));
}

void TestSeriesLock::aLockOfNobodyKnowsWhomIsNamed()
{
    const QString text =
        QStringLiteral("Серию S/B/X сейчас меняет другая программа; блокировка: %1");
    writeFile(lockFile(), "");
    SeriesLocks locks;
    QCOMPARE(locks.take(place(), {series}, noWait).message(), text.arg(lockFile()));
    QVERIFY(QFile::remove(lockFile()));

    const RestorePlace own{place().root, path("own")};
    QVERIFY(locks.take(own, {series}, noWait));
    SeriesLocks second;
    QCOMPARE(second.take(place(), {series}, noWait).message(),
             text.arg(place().root + QStringLiteral("/S/B/X")));
}

void TestSeriesLock::whoIsStoppedDoesNotWait()
{
    constexpr std::chrono::hours longTime{1};
    const std::atomic<bool> stop = true;
    SeriesLocks held;
    QVERIFY(held.take(place(), {series}, noWait, &stop));
    SeriesLocks second;
    QVERIFY(!second.take(place(), {series}, longTime, &stop));
    // The lock file of the other one is elsewhere.
    QVERIFY(!second.take({place().root, path("own")}, {series}, longTime, &stop));
}

void TestSeriesLock::aLockThatMayNotBeMadeIsNobodys()
{
    const testsupport::OtherUser user;
    const QTemporaryDir dir;
    const RestorePlace made =
        *vexdesk::makeRestorePlace(QDir(dir.filePath(QStringLiteral("store"))));
    QVERIFY(QDir().mkpath(made.path + QStringLiteral("/locks/S/B")));
    const testsupport::Permissions readOnly(made.path + QStringLiteral("/locks/S/B"), 0555);
    SeriesLocks locks;
    const auto refused = locks.take(made, {series}, noWait);
    QVERIFY(!refused);
    QVERIFY2(refused.message().contains(QStringLiteral("Невозможно создать файл блокировки")),
             qPrintable(refused.message()));
}

void TestSeriesLock::tellsWhetherTheHolderMayRun_data()
{
    QTest::addColumn<qint64>("process");
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("host");
    QTest::addColumn<bool>("mayRun");
    const qint64 own = ::getpid();
    const qint64 dead = deadProcess();
    const QString program = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
    const QString here = QSysInfo::machineHostName();
    const QString elsewhere = here + QStringLiteral("-2");
    QTest::newRow("this process") << own << program << here << true;
    QTest::newRow("this process, on a host without a name") << own << program << QString() << true;
    QTest::newRow("another program, by now") << own << QStringLiteral("other") << here << false;
    QTest::newRow("another host") << own << program << elsewhere << false;
    QTest::newRow("a process that has ended") << dead << program << here << false;
}

void TestSeriesLock::tellsWhetherTheHolderMayRun()
{
    QFETCH(const qint64, process);
    QFETCH(const QString, program);
    QFETCH(const QString, host);
    writeLock(process, program, host);
    const auto holder = lockHolder(place(), series);
    QVERIFY(holder);
    QCOMPARE(holder->process, process);
    QCOMPARE(holder->program, program);
    QCOMPARE(holder->host, host);
    QVERIFY(holder->since > 0);
    QTEST(holder->runsHere, "mayRun");
}

// The system says nothing about it but that it is there.
void TestSeriesLock::aProcessOfSomebodyElseMayRun()
{
    m_dir.reset();
    const testsupport::OtherUser user;
    init();
    if (!QFile::symLinkTarget(QStringLiteral("/proc/1/exe")).isEmpty())
        QSKIP("Here the first process is the user's own.");
    writeLock(1, QStringLiteral("first"), QSysInfo::machineHostName());
    QVERIFY(lockHolder(place(), series)->runsHere);
    m_dir.reset();
}

void TestSeriesLock::waitsUntilTheDirectoryIsFree_data()
{
    QTest::addColumn<bool>("canBeStopped");
    QTest::newRow("to the end") << false;
    QTest::newRow("until it is stopped") << true;
}

void TestSeriesLock::waitsUntilTheDirectoryIsFree()
{
    QFETCH(const bool, canBeStopped);
    SeriesLocks held;
    QVERIFY(held.take({place().root, path("own")}, {series}, noWait));
    const testsupport::Meanwhile ends(testsupport::SystemCall::LockRefused,
                                      QStringLiteral("/S/B/X"), [&held] { held.release(); });
    const std::atomic<bool> stop = false;
    SeriesLocks next;
    QVERIFY(next.take(place(), {series}, longWait, canBeStopped ? &stop : nullptr));
}

// It has the file locked by the system, and writes who it is next.
void TestSeriesLock::anUnfinishedLockLastsWhileSomebodyIsAtIt()
{
    writeFile(lockFile(), "");
    makeOld(lockFile());
    const int file = ::open(QFile::encodeName(lockFile()).constData(), O_RDWR | O_CLOEXEC);
    QVERIFY(file >= 0);
    QCOMPARE(::flock(file, LOCK_EX), 0);
    SeriesLocks locks;
    QVERIFY(!locks.take(place(), {series}, noWait));
    QVERIFY(QFileInfo::exists(lockFile()));
    const testsupport::Meanwhile ends(testsupport::SystemCall::LockRefused,
                                      QStringLiteral("/X.lock"), [file] { ::close(file); });
    const std::atomic<bool> stop = false;
    QVERIFY(locks.take(place(), {series}, longWait, &stop));
}

void TestSeriesLock::aLockOfOldIsNotUnfinished()
{
    const QString program = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
    writeLock(::getpid(), program, QSysInfo::machineHostName());
    makeOld(lockFile());
    SeriesLocks locks;
    QVERIFY(!locks.take(place(), {series}, noWait));
    QVERIFY(QFileInfo::exists(lockFile()));
    QCOMPARE(lockHolder(place(), series)->since, 1000 * qint64(1'000'000'000));
}

void TestSeriesLock::withoutLocksOfTheSystemTheFilesDecide()
{
    const testsupport::Fault none(testsupport::SystemCall::Lock, QStringLiteral("/S/B/X"), ENOLCK);
    SeriesLocks locks;
    QVERIFY(locks.take(place(), {series}, noWait));
    SeriesLocks second;
    QVERIFY(!second.take(place(), {series}, noWait));
}

void TestSeriesLock::leftoversAreKnownByTheirWholeName()
{
    const pid_t dead = deadProcess();
    QVERIFY(dead > 0);
    QStringList names;
    for (const char* form : {".tadata-%1-77", ".tadata-%1-77.tmp~", "tadata-%1-77.tmp",
                             "x.tadata-%1-77.tmp", ".tadata--%1-77.tmp", ".tadata-0%1x-77.tmp"})
        names.append(QString::fromLatin1(form).arg(dead));
    names.sort();
    const QString dir = path("store/S/B/X/");
    for (const QString& name : std::as_const(names))
        writeFile(dir + name, "x");
    writeFile(dir + QStringLiteral(".tadata-%1-77.tmp").arg(dead), "x");
    SeriesLocks locks;
    QVERIFY(locks.take(place(), {series}, noWait));
    QCOMPARE(readTree(QDir(dir)).keys(), names);
}

void TestSeriesLock::whatSomebodyElseIsAtWorkOnIsNoLeftover()
{
    m_dir.reset();
    const testsupport::OtherUser user;
    init();
    const QString name = path("store/S/B/X/.tadata-1-77.tmp");
    writeFile(name, "x");
    SeriesLocks locks;
    QVERIFY(locks.take(place(), {series}, noWait));
    QVERIFY(QFileInfo::exists(name));
    locks.release();
    m_dir.reset();
}

// Whoever wants its files is told then.
void TestSeriesLock::aSeriesThatMayNotBeReadCanBeLocked()
{
    m_dir.reset();
    const testsupport::OtherUser user;
    init();
    {
        const testsupport::Permissions closed(path("store/S/B/X"), 0);
        SeriesLocks locks;
        QVERIFY(locks.take(place(), {series}, noWait));
        SeriesLocks second;
        QVERIFY(!second.take(place(), {series}, noWait));
    }
    m_dir.reset();
}

QTEST_GUILESS_MAIN(TestSeriesLock)
#include "tst_serieslock.moc"
