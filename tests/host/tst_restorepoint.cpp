// SPDX-License-Identifier: MIT
#include <vexdesk/history/filestate.h>
#include <vexdesk/history/restorepoint.h>

#include "support/faults.h"
#include "support/filetree.h"
#include "support/otheruser.h"
#include "support/strictlog.h"

#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <functional>
#include <memory>

using testsupport::readFile;
using testsupport::readTree;
using testsupport::writeFile;
using vexdesk::RestorePlace;
using vexdesk::RestorePoint;
using vexdesk::RestorePointRecord;

using Tree = QMap<QString, QByteArray>;

namespace {

const QString monday = QStringLiteral("S/B/X/20240115_60.iss");
const QString tuesday = QStringLiteral("S/B/X/20240116_60.iss");
const QStringList series{QStringLiteral("S/B/X")};

// Changes what stands there to this, as a job does; null for removal.
using Changes = QMap<QString, QByteArray>;

QByteArray nameInJson(const QString& path)
{
    return '"' + path.toUtf8().replace('"', "\\\"") + "\":";
}

} // namespace

class TestRestorePoint final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dir.reset(); }
    void whatWasChangedRemovedAndMadeIsPutBack();
    void theRecordHasTheFilesInOrder();
    void theKeptCopyHasThePermissions();
    void aLinkStaysOneAndItsTargetReturns();
    void aJobThatTouchesNothingLeavesNothing();
    void whatWasNotTouchedAfterAllIsForgotten();
    void aFileIsKeptOnceAtItsFirstTouch();
    void aKilledJobIsPutBackByItsJournal();
    void aLineOfTheJournalWithoutItsEndDoesNotCount();
    void whatCannotBeKeptIsNotTouched();
    void theUndoOfAnUndoIsTheRedo();
    void newerPointsAndStrangersForbid();
    void theHashDecidesWhereOnlyTheTimeDiffers();
    void aBrokenPointTouchesNothing_data();
    void aBrokenPointTouchesNothing();
    void whatCannotBeReadIsNotTakenForAnotherContent_data();
    void whatCannotBeReadIsNotTakenForAnotherContent();
    void anIdThatIsNoneIsRefused_data();
    void anIdThatIsNoneIsRefused();
    void theOldestGo();
    void theNewestAndThoseAtWorkStay();
    void whatKilledProcessesHaveLeftGoes();
    void pointsOfOneSecondAreNumbered();
    void aClockThatWasAheadHidesNoPoint();
    void aPipeIsNoPoint();
    void aPlaceThatIsALostLinkIsNoPlace();
    void takingBackLeavesNoPoint();
    void takingBackNeedsNoRoom_data();
    void takingBackNeedsNoRoom();
    void aFullDiskDoesNotUseUpAPoint();
    void takingBackThatFailsNamesThePoint();
    void whatHasGoneWithItsDirectoryWasTouched();
    void nothingIsTakenBackIntoADirectoryThatHasGone();
    void whatWasMadeGoesBeforeAnythingComesBack();
    void whatCannotBeComparedWasTouched_data();
    void whatCannotBeComparedWasTouched();
    void theSameWrittenAgainWasTouched();
    void aDirectoryInPlaceOfAFileWasNotMade();
    void directoriesOfForgottenCopiesGo();
    void aPointThatCannotBeFinishedCanBePutBack_data();
    void aPointThatCannotBeFinishedCanBePutBack();
    void takingBackTakesNoCopyThatIsALink();
    void takingBackTakesNoCopyOfSomebodyElse_data();
    void takingBackTakesNoCopyOfSomebodyElse();
    void thoseWhoMayReadTheStoreMayReadThePoint();
    void waitsForWhoeverMakesAPoint();
    void aPlaceWithoutLocksOfTheSystemIsNobodys();

private:
    QString path(const QString& relative) const { return m_root + u'/' + relative; }
    void apply(const Changes& changes) const;
    // A job that makes these changes and ends.
    QString job(const QString& by, const Changes& changes, const QStringList& source = {}) const;
    QString putBack(const QString& id) const;
    QStringList forbidding(const QString& id) const;
    RestorePointRecord record(const QString& id) const { return *restorePoint(m_place, id); }
    QStringList ids() const;
    QStringList inPlace() const
    {
        QStringList names =
            QDir(m_place.path).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        names.removeAll(QStringLiteral("locks"));
        return names;
    }
    Tree stored() const { return readTree(QDir(m_root)); }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_root;
    RestorePlace m_place;
};

void TestRestorePoint::init()
{
    testsupport::failOnStrayWarnings();
    m_dir = std::make_unique<QTemporaryDir>();
    m_root = m_dir->filePath(QStringLiteral("store"));
    writeFile(path(monday), "old monday\n");
    const auto place = vexdesk::makeRestorePlace(QDir(m_root));
    QVERIFY(place);
    m_place = *place;
}

void TestRestorePoint::apply(const Changes& changes) const
{
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        if (change->isNull())
            QVERIFY(QFile::remove(path(change.key())));
        else
            writeFile(path(change.key()), *change);
    }
}

QString TestRestorePoint::job(const QString& by, const Changes& changes,
                              const QStringList& source) const
{
    RestorePoint point(m_place, by, series, source);
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        if (!point.keep({path(change.key())}))
            return QString();
    }
    apply(changes);
    return point.finish() ? point.id() : QString();
}

QString TestRestorePoint::putBack(const QString& id) const
{
    RestorePoint keeper(m_place, QStringLiteral("undo"), series, {id});
    vexdesk::PuttingBack puttingBack(m_place, record(id));
    const auto begun = puttingBack.begin();
    const auto back = begun ? puttingBack.run(&keeper) : begun;
    const auto finished = keeper.finish();
    return back && finished ? keeper.id() : back.message() + finished.message();
}

QStringList TestRestorePoint::forbidding(const QString& id) const
{
    const auto paths = whatForbidsPuttingBack(m_place, record(id));
    return paths ? *paths : QStringList(paths.message());
}

QStringList TestRestorePoint::ids() const
{
    QStringList found;
    const auto points = restorePoints(m_place);
    if (!points)
        return {points.message()};
    for (const RestorePointRecord& point : points->points)
        found.append(point.id);
    return found;
}

void TestRestorePoint::whatWasChangedRemovedAndMadeIsPutBack()
{
    writeFile(path(tuesday), "old tuesday\n");
    const QString derived = QStringLiteral("S/B/X/20240117_60");
    const Tree before = stored();
    const QString id = job(QStringLiteral("import"),
                           {{monday, "new\n"}, {tuesday, QByteArray()}, {derived, "made\n"}},
                           {QStringLiteral("file.csv")});
    const RestorePointRecord made = record(id);
    QCOMPARE(made.by, QStringLiteral("import"));
    QCOMPARE(made.series, series);
    QCOMPARE(made.source, QStringList(QStringLiteral("file.csv")));
    QCOMPARE(made.kept, QStringList({monday, tuesday}));
    QCOMPARE(made.created, QStringList(derived));
    QCOMPARE(made.left.keys(), QStringList({monday, derived}));
    QVERIFY(made.isComplete);
    QCOMPARE(made.bytes, 23);
    const QString undone = putBack(id);
    QCOMPARE(undone, ids().first());
    QCOMPARE(stored(), before);
}

// Whatever kind of file they are, and in whatever order the job has come to them.
void TestRestorePoint::theRecordHasTheFilesInOrder()
{
    const QStringList kept{QStringLiteral("S/B/X Y/20240115_60.iss"),
                           QStringLiteral("S/B/X/20231231_60"),
                           QStringLiteral("S/B/X/20240115_1.iss"),
                           QStringLiteral("S/B/X/20240115_300.iss"),
                           QStringLiteral("S/B/X/20240115_60"),
                           QStringLiteral("S/B/\uff61/20240115_60.iss"),
                           QStringLiteral("S/B/\U0001f600/20240115_60.iss")};
    QStringList created;
    for (const QString& path : kept)
        created.append(QString(path).replace(QStringLiteral("S/B"), QStringLiteral("S/C \"q\"")));

    RestorePoint point(m_place, QStringLiteral("merge"), series, {});
    for (qsizetype i = kept.size() - 1; i >= 0; --i) {
        writeFile(path(kept[i]), "old\n");
        QVERIFY(point.keep({path(created[i]), path(kept[i])}));
        writeFile(path(kept[i]), "new " + QByteArray::number(i));
        writeFile(path(created[i]), QByteArray::number(i));
    }
    QVERIFY(QFile::remove(path(kept.first())));
    QVERIFY(point.finish());

    const RestorePointRecord made = record(point.id());
    QCOMPARE(made.kept, kept);
    QCOMPARE(made.created, created);
    QCOMPARE(made.left.size(), 2 * kept.size() - 1);
    QCOMPARE(made.left.value(created.last()).size, 1);
    QCOMPARE(made.left.value(kept.last()).size, 5);
    QVERIFY(!made.left.contains(kept.first()));
    const QByteArray json =
        readFile(m_place.path + u'/' + point.id() + QStringLiteral("/point.json"));
    const qsizetype left = json.indexOf("\"left\":");
    for (const QStringList& paths : {kept.sliced(1), created}) {
        for (qsizetype i = 1; i < paths.size(); ++i)
            QVERIFY(json.indexOf(nameInJson(paths[i - 1]), left) <
                    json.indexOf(nameInJson(paths[i]), left));
    }
}

void TestRestorePoint::theKeptCopyHasThePermissions()
{
    constexpr mode_t mode = 0640;
    QCOMPARE(::chmod(QFile::encodeName(path(monday)).constData(), mode), 0);
    const QFileInfo before(path(monday));
    const QDateTime modified = before.lastModified();
    const QString id = job(QStringLiteral("delete"), {{monday, QByteArray()}});
    struct stat copy = {};
    QCOMPARE(::stat(QFile::encodeName(m_place.path + u'/' + id + u'/' + monday).constData(), &copy),
             0);
    QCOMPARE(copy.st_mode & 07777, mode);
    putBack(id);
    struct stat back = {};
    QCOMPARE(::stat(QFile::encodeName(path(monday)).constData(), &back), 0);
    QCOMPARE(back.st_mode & 07777, mode);
    QCOMPARE(QFileInfo(path(monday)).lastModified(), modified);
}

void TestRestorePoint::aLinkStaysOneAndItsTargetReturns()
{
    const QString target = m_dir->filePath(QStringLiteral("elsewhere"));
    writeFile(target, "behind\n");
    QVERIFY(QFile::link(target, path(tuesday)));
    const QString id = job(QStringLiteral("import"), {{tuesday, "new\n"}});
    QVERIFY(!QFileInfo(m_place.path + u'/' + id + u'/' + tuesday).isSymLink());
    QCOMPARE(readFile(target), QByteArray("new\n"));
    putBack(id);
    QVERIFY(QFileInfo(path(tuesday)).isSymLink());
    QCOMPARE(readFile(target), QByteArray("behind\n"));
}

void TestRestorePoint::aJobThatTouchesNothingLeavesNothing()
{
    RestorePoint point(m_place, QStringLiteral("import"), series, {});
    QVERIFY(point.finish());
    QVERIFY(point.id().isNull());
    QCOMPARE(readTree(QDir(m_place.path)), Tree());
    QCOMPARE(inPlace(), QStringList());
}

void TestRestorePoint::whatWasNotTouchedAfterAllIsForgotten()
{
    {
        RestorePoint point(m_place, QStringLiteral("import"), series, {});
        QVERIFY(point.keep({path(monday), path(tuesday)}));
        QVERIFY(point.finish());
    }
    QCOMPARE(inPlace(), QStringList());

    RestorePoint point(m_place, QStringLiteral("import"), series, {});
    QVERIFY(point.keep({path(monday), path(tuesday)}));
    writeFile(path(tuesday), "made\n");
    QVERIFY(point.finish());
    QCOMPARE(record(point.id()).paths(), QStringList(tuesday));
    QCOMPARE(readTree(QDir(m_place.path + u'/' + point.id())).keys(),
             QStringList(QStringLiteral("point.json")));
}

void TestRestorePoint::aFileIsKeptOnceAtItsFirstTouch()
{
    RestorePoint point(m_place, QStringLiteral("import"), series, {});
    QVERIFY(point.keep({path(monday)}));
    writeFile(path(monday), "between\n");
    QVERIFY(point.keep({path(monday)}));
    writeFile(path(monday), "last\n");
    QVERIFY(point.finish());
    putBack(point.id());
    QCOMPARE(readFile(path(monday)), QByteArray("old monday\n"));
}

void TestRestorePoint::aKilledJobIsPutBackByItsJournal()
{
    const Tree before = stored();
    QString id;
    {
        RestorePoint point(m_place, QStringLiteral("import"), series, {});
        QVERIFY(point.keep({path(monday), path(tuesday)}));
        id = point.id();
        apply({{monday, "half"}, {tuesday, "made"}});
    }
    const RestorePointRecord killed = record(id);
    QVERIFY(!killed.isComplete);
    QCOMPARE(killed.kept, QStringList(monday));
    QCOMPARE(killed.created, QStringList(tuesday));
    QCOMPARE(killed.bytes, 11);
    QVERIFY(forbidding(id).isEmpty());
    putBack(id);
    QCOMPARE(stored(), before);
}

void TestRestorePoint::aLineOfTheJournalWithoutItsEndDoesNotCount()
{
    QString id;
    {
        RestorePoint point(m_place, QStringLiteral("import"), series, {});
        QVERIFY(point.keep({path(monday)}));
        id = point.id();
    }
    const QString journal = m_place.path + u'/' + id + QStringLiteral("/journal");
    QCOMPARE(readFile(journal), "K " + monday.toUtf8() + '\n');
    writeFile(journal, readFile(journal) + "C S/B/X/2024");
    QCOMPARE(record(id).paths(), QStringList(monday));
}

void TestRestorePoint::whatCannotBeKeptIsNotTouched()
{
    const testsupport::Fault full(testsupport::SystemCall::Write, monday, ENOSPC);
    RestorePoint point(m_place, QStringLiteral("import"), series, {});
    const auto kept = point.keep({path(monday)});
    QVERIFY(!kept);
    QVERIFY2(kept.message().contains(path(monday)), qPrintable(kept.message()));
    // Whoever goes on nevertheless is refused what could be kept, too.
    QVERIFY(!point.keep({path(tuesday)}));
    QVERIFY(point.finish());
    QCOMPARE(inPlace(), QStringList());
}

void TestRestorePoint::theUndoOfAnUndoIsTheRedo()
{
    const Tree before = stored();
    const QString id = job(QStringLiteral("import"), {{monday, "new\n"}, {tuesday, "made\n"}});
    const Tree after = stored();
    const QString undone = putBack(id);
    QCOMPARE(record(undone).source, QStringList(id));
    QCOMPARE(stored(), before);
    putBack(undone);
    QCOMPARE(stored(), after);
    // The first job counts again, and can be taken back again.
    QVERIFY(forbidding(id).isEmpty());
    putBack(id);
    QCOMPARE(stored(), before);
}

void TestRestorePoint::newerPointsAndStrangersForbid()
{
    const QString first = job(QStringLiteral("import"), {{monday, "first\n"}});
    const QString second = job(QStringLiteral("import"), {{monday, "2nd\n"}, {tuesday, "t\n"}});
    QCOMPARE(forbidding(first), QStringList(path(monday)));
    QVERIFY(forbidding(second).isEmpty());
    // One that is put back does not count, nor does the undo that did it.
    const QString undone = putBack(second);
    QVERIFY(forbidding(first).isEmpty());
    putBack(undone);
    QCOMPARE(forbidding(first), QStringList(path(monday)));

    QVERIFY(QFile::remove(path(tuesday)));
    QCOMPARE(forbidding(second), QStringList(path(tuesday)));
    writeFile(path(monday), "2nd\n!");
    QCOMPARE(forbidding(second), QStringList({path(monday), path(tuesday)}));
}

void TestRestorePoint::theHashDecidesWhereOnlyTheTimeDiffers()
{
    const QString id = job(QStringLiteral("import"), {{monday, "abc"}});
    writeFile(path(monday), "abc");
    QCOMPARE(forbidding(id), QStringList(path(monday)));
    const QString file = m_place.path + u'/' + id + QStringLiteral("/point.json");
    QByteArray json = readFile(file);
    json.replace("\"sha256\":null",
                 "\"sha256\":\"ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad\"");
    writeFile(file, json);
    QVERIFY(forbidding(id).isEmpty());
    writeFile(path(monday), "abd");
    QCOMPARE(forbidding(id), QStringList(path(monday)));
}

using Harm = std::function<void(const QString& directory)>;
Q_DECLARE_METATYPE(Harm)

void TestRestorePoint::aBrokenPointTouchesNothing_data()
{
    QTest::addColumn<Harm>("harm");
    const auto copy = [](const QByteArray& content) -> Harm {
        return
            [content](const QString& directory) { writeFile(directory + u'/' + monday, content); };
    };
    QTest::newRow("copy cut") << copy("old\n");
    QTest::newRow("copy of the same size") << copy("OLD monday\n");
    QTest::newRow("copy longer") << copy("old monday\n!");
    QTest::newRow("copy gone") << Harm(
        [](const QString& directory) { QVERIFY(QFile::remove(directory + u'/' + monday)); });
    QTest::newRow("copy is a link") << Harm([](const QString& directory) {
        QVERIFY(QFile::remove(directory + u'/' + monday));
        QVERIFY(QFile::link(directory + QStringLiteral("/point.json"), directory + u'/' + monday));
    });
    const auto json = [](const QByteArray& from, const QByteArray& to) -> Harm {
        return [from, to](const QString& directory) {
            const QString file = directory + QStringLiteral("/point.json");
            const QByteArray old = readFile(file);
            QVERIFY2(old.contains(from), old.constData());
            writeFile(file, QByteArray(old).replace(from, to));
        };
    };
    QTest::newRow("no JSON") << json("{\"by\"", "{by");
    QTest::newRow("newer version") << json("{\"by\"", "{\"also\":1,\"by\"");
    QTest::newRow("a job of a newer version") << json("\"import\"", "\"dream\"");
    QTest::newRow("a key missing") << json("\"complete\":true,", "");
    QTest::newRow("another id") << json("\"id\":\"2", "\"id\":\"3");
    QTest::newRow("kept is no list") << json("\"created\":[]", "\"created\":{}");
    for (const char* path : {"../../X/20240115_60.iss", "/etc/X/20240115_60.iss", "S/B/X/notes",
                             "S/B/X/Y/20240115_60.iss", "S/B/../20240115_60.iss"})
        QTest::newRow(path) << json("\"created\":[]", "\"created\":[\"" + QByteArray(path) + "\"]");
}

void TestRestorePoint::aBrokenPointTouchesNothing()
{
    QFETCH(const Harm, harm);
    const QString id = job(QStringLiteral("import"), {{monday, "new\n"}});
    harm(m_place.path + u'/' + id);
    const Tree before = stored();
    const auto point = restorePoint(m_place, id);
    if (point) {
        vexdesk::PuttingBack puttingBack(m_place, *point);
        const auto begun = puttingBack.begin();
        QVERIFY(!begun);
        QVERIFY2(begun.message().contains(monday), qPrintable(begun.message()));
    } else {
        QVERIFY2(point.message().contains(id), qPrintable(point.message()));
    }
    QCOMPARE(stored(), before);
}

void TestRestorePoint::whatCannotBeReadIsNotTakenForAnotherContent_data()
{
    QTest::addColumn<testsupport::SystemCall>("call");
    QTest::addColumn<QString>("file");
    QTest::newRow("copy opened") << testsupport::SystemCall::Open << monday;
    QTest::newRow("copy read") << testsupport::SystemCall::Read << monday;
    QTest::newRow("sums opened") << testsupport::SystemCall::Open << QStringLiteral("sums/%1");
    QTest::newRow("sums read") << testsupport::SystemCall::Read << QStringLiteral("sums/%1");
    QTest::newRow("point opened") << testsupport::SystemCall::Open << QStringLiteral("point.json");
    QTest::newRow("point read") << testsupport::SystemCall::Read << QStringLiteral("point.json");
    QTest::newRow("directory") << testsupport::SystemCall::Open
                               << QStringLiteral("store-restore/%1");
}

void TestRestorePoint::whatCannotBeReadIsNotTakenForAnotherContent()
{
    QFETCH(const testsupport::SystemCall, call);
    QFETCH(const QString, file);
    const QString id = job(QStringLiteral("import"), {{monday, "new\n"}});
    const Tree before = stored();
    const QString pathEnd = u'/' + QString(file).replace(QStringLiteral("%1"), id);
    const auto whyNot = [&]() -> QString {
        const testsupport::Fault broken(call, pathEnd, EIO);
        const auto point = restorePoint(m_place, id);
        if (!point)
            return point.message();
        return vexdesk::PuttingBack(m_place, *point).begin().message();
    };
    const QString message = whyNot();
    QVERIFY2(message.contains(id) && message.contains(pathEnd.section(u'/', -1)),
             qPrintable(message));
    QVERIFY2(message.contains(qt_error_string(EIO)), qPrintable(message));
    QCOMPARE(stored(), before);
    const QString undone = putBack(id);
    QCOMPARE(undone, ids().first());
}

void TestRestorePoint::anIdThatIsNoneIsRefused_data()
{
    QTest::addColumn<QString>("id");
    for (const char* id : {"", ".", "..", "../x", "20240115-100000", "20240115-100000-0",
                           "20240115-100000-01", "20240230-100000-1", "20240115-100000-1"})
        QTest::newRow(id) << id;
}

void TestRestorePoint::anIdThatIsNoneIsRefused()
{
    QFETCH(const QString, id);
    QVERIFY(!restorePoint(m_place, id));
}

void TestRestorePoint::theOldestGo()
{
    QStringList made;
    for (const char* content : {"1111\n", "2222\n", "3333\n", "4444\n"})
        made.prepend(job(QStringLiteral("import"), {{monday, content}}));
    QCOMPARE(ids(), made);
    // The kept files have 5 bytes each, the first 11.
    QVERIFY(pruneRestorePoints(m_place, {.keep = 20, .bytes = 15}));
    QCOMPARE(ids(), made.first(3));
    QVERIFY(pruneRestorePoints(m_place, {.keep = 2, .bytes = 15}));
    QCOMPARE(ids(), made.first(2));
    QVERIFY(pruneRestorePoints(m_place, {.keep = 2, .bytes = 9}));
    QCOMPARE(ids(), made.first(1));
}

void TestRestorePoint::theNewestAndThoseAtWorkStay()
{
    const QString gone = job(QStringLiteral("import"), {{monday, "1\n"}});
    RestorePoint running(m_place, QStringLiteral("import"), series, {});
    QVERIFY(running.keep({path(monday)}));
    const QString backed = job(QStringLiteral("import"), {{tuesday, "1\n"}});
    vexdesk::PuttingBack puttingBack(m_place, record(backed));
    QVERIFY(puttingBack.begin());
    const QString newest = job(QStringLiteral("import"), {{tuesday, "22\n"}});
    QVERIFY(pruneRestorePoints(m_place, {.keep = 0, .bytes = 0}));
    QCOMPARE(ids(), QStringList({newest, backed, running.id()}));
    QVERIFY(!ids().contains(gone));
}

// Half a point that was about to be made, or to go.
void TestRestorePoint::whatKilledProcessesHaveLeftGoes()
{
    const pid_t dead = ::fork();
    if (dead == 0)
        ::_exit(0);
    QCOMPARE(::waitpid(dead, nullptr, 0), dead);
    const QString form = m_place.path + QStringLiteral("/.tadata-%1-77.tmp/S/B/X/20240115_60.iss");
    writeFile(form.arg(dead), "x");
    writeFile(form.arg(::getpid()), "x");
    QVERIFY(pruneRestorePoints(m_place, {}));
    QCOMPARE(readTree(QDir(m_place.path)).keys(),
             QStringList(QDir(m_place.path).relativeFilePath(form.arg(::getpid()))));
    // Where there is no place none is made.
    QVERIFY(QDir(m_place.path).removeRecursively());
    QVERIFY(pruneRestorePoints(m_place, {}));
    QVERIFY(!QFileInfo::exists(m_place.path));
}

void TestRestorePoint::pointsOfOneSecondAreNumbered()
{
    QVERIFY(QDir(m_place.path).mkpath(QStringLiteral("notes")));
    for (int i = 0; i < 12; ++i)
        job(QStringLiteral("import"), {{monday, QByteArray::number(i)}});
    const QStringList found = ids();
    QCOMPARE(found.size(), 12);
    for (int i = 0; i < 12; ++i)
        QCOMPARE(readFile(m_place.path + u'/' + found[i] + u'/' + monday),
                 i == 11 ? QByteArray("old monday\n") : QByteArray::number(10 - i));
}

void TestRestorePoint::aClockThatWasAheadHidesNoPoint()
{
    const QString before = job(QStringLiteral("import"), {{monday, "new\n"}});
    const QString ahead =
        QDateTime::currentDateTimeUtc().addDays(7).toString(QStringLiteral("yyyyMMdd-hhmmss")) +
        QStringLiteral("-1");
    const QDir place(m_place.path);
    QVERIFY(QDir().rename(place.filePath(before), place.filePath(ahead)));
    QVERIFY(QFile::rename(place.filePath(QStringLiteral("sums/") + before),
                          place.filePath(QStringLiteral("sums/") + ahead)));
    const QString json = place.filePath(ahead + QStringLiteral("/point.json"));
    writeFile(json, readFile(json).replace(before.toUtf8(), ahead.toUtf8()));
    const QString last = job(QStringLiteral("delete"), {{monday, QByteArray()}});
    QCOMPARE(ids(), QStringList({last, ahead}));
    QVERIFY(record(last).when.secsTo(QDateTime::currentDateTimeUtc()) < 3600);
    QVERIFY(pruneRestorePoints(m_place, {.keep = 1}));
    QCOMPARE(ids(), QStringList(last));
    QVERIFY(!putBack(last).isEmpty());
    QCOMPARE(stored().value(monday), QByteArray("new\n"));
}

// To open it would be to wait for somebody who writes.
void TestRestorePoint::aPipeIsNoPoint()
{
    const QString id = job(QStringLiteral("import"), {{monday, "new\n"}});
    const QDir point(m_place.path + u'/' + id);
    const auto makePipe = [](const QString& path) {
        QVERIFY(QFile::remove(path) || !QFileInfo::exists(path));
        QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    };
    const QByteArray json = readFile(point.filePath(QStringLiteral("point.json")));
    makePipe(m_place.path + QStringLiteral("/sums/") + id);
    QVERIFY(!vexdesk::PuttingBack(m_place, record(id)).begin());
    makePipe(point.filePath(QStringLiteral("point.json")));
    const auto points = restorePoints(m_place);
    QVERIFY(points && points->points.isEmpty());
    QVERIFY(points->problems.join(u' ').contains(QStringLiteral("point.json")));
    QVERIFY(QFile::remove(point.filePath(QStringLiteral("point.json"))));
    writeFile(point.filePath(QStringLiteral("point.json")),
              QByteArray(json).replace("\"complete\":true", "\"complete\":false"));
    makePipe(point.filePath(QStringLiteral("journal")));
    QVERIFY(restorePoint(m_place, id).message().contains(QStringLiteral("journal")));
}

void TestRestorePoint::aPlaceThatIsALostLinkIsNoPlace()
{
    const QString id = job(QStringLiteral("import"), {{monday, "new\n"}});
    const QString away = m_dir->filePath(QStringLiteral("away"));
    const QString disk = m_dir->filePath(QStringLiteral("disk"));
    QVERIFY(QDir().rename(m_place.path, disk));
    QVERIFY(QFile::link(disk, m_place.path));
    QCOMPARE(vexdesk::restorePlace(QDir(m_root))->path, m_place.path);
    QVERIFY(QDir().rename(disk, away));
    QVERIFY(vexdesk::restorePlace(QDir(m_root)).message().contains(m_place.path));
    QVERIFY(!vexdesk::makeRestorePlace(QDir(m_root)));
    QVERIFY(QDir().rename(away, disk));
    QCOMPARE(ids(), QStringList(id));
}

void TestRestorePoint::takingBackLeavesNoPoint()
{
    const Tree before = stored();
    RestorePoint point(m_place, QStringLiteral("import"), series, {});
    QVERIFY(point.keep({path(monday), path(tuesday)}));
    apply({{monday, "half"}, {tuesday, "made"}});
    QVERIFY(point.takeBack());
    QCOMPARE(stored(), before);
    QCOMPARE(inPlace(), QStringList());
}

void TestRestorePoint::takingBackNeedsNoRoom_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("a full disk") << ENOSPC;
    QTest::newRow("as much as the user may have") << EDQUOT;
}

void TestRestorePoint::takingBackNeedsNoRoom()
{
    QFETCH(const int, error);
    const Tree before = stored();
    RestorePoint point(m_place, QStringLiteral("import"), series, {});
    QVERIFY(point.keep({path(monday), path(tuesday)}));
    apply({{monday, "half"}, {tuesday, "made"}});
    const testsupport::Fault full(testsupport::SystemCall::Write, QStringLiteral(".tmp"), error);
    QVERIFY(point.takeBack());
    QCOMPARE(stored(), before);
    QCOMPARE(inPlace(), QStringList());
    QCOMPARE(QFileInfo(path(monday)).isSymLink(), false);
}

// It may be put back once more.
void TestRestorePoint::aFullDiskDoesNotUseUpAPoint()
{
    const QString id = job(QStringLiteral("import"), {{monday, "new\n"}});
    vexdesk::PuttingBack back(m_place, record(id));
    QVERIFY(back.begin());
    {
        const testsupport::Fault full(testsupport::SystemCall::Write, QStringLiteral(".tmp"),
                                      ENOSPC);
        const auto put = back.run(nullptr);
        QVERIFY2(put.message().contains(qt_error_string(ENOSPC)), qPrintable(put.message()));
    }
    QCOMPARE(readFile(path(monday)), QByteArray("new\n"));
    QCOMPARE(vexdesk::fileState(m_place.path + u'/' + id + u'/' + monday)->links, 1U);
    QVERIFY(back.run(nullptr));
    QCOMPARE(readFile(path(monday)), QByteArray("old monday\n"));
}

void TestRestorePoint::takingBackThatFailsNamesThePoint()
{
    RestorePoint point(m_place, QStringLiteral("import"), series, {});
    QVERIFY(point.keep({path(monday)}));
    apply({{monday, "half"}});
    const QString id = point.id();
    {
        const testsupport::Fault broken(testsupport::SystemCall::Write, QStringLiteral(".tmp"),
                                        EIO);
        const auto back = point.takeBack();
        QVERIFY(!back && back.message().contains(id) && back.message().contains(path(monday)));
    }
    QCOMPARE(ids(), QStringList(id));
    QVERIFY(!putBack(id).isEmpty());
    QCOMPARE(readFile(path(monday)), QByteArray("old monday\n"));
}

// A disk that is away: it may have what the job has made.
void TestRestorePoint::whatHasGoneWithItsDirectoryWasTouched()
{
    const QString directory = QFileInfo(path(tuesday)).path();
    RestorePoint point(m_place, QStringLiteral("import"), series, {});
    QVERIFY(point.keep({path(tuesday)}));
    writeFile(path(tuesday), "made\n");
    QVERIFY(QDir().rename(directory, directory + u'2'));
    QVERIFY(point.finish());
    QCOMPARE(record(point.id()).paths(), QStringList(tuesday));
}

void TestRestorePoint::nothingIsTakenBackIntoADirectoryThatHasGone()
{
    const Tree before = stored();
    const QString directory = QFileInfo(path(monday)).path();
    RestorePoint point(m_place, QStringLiteral("import"), series, {});
    QVERIFY(point.keep({path(monday), path(tuesday)}));
    apply({{monday, "half"}, {tuesday, "made"}});
    const QString id = point.id();
    QVERIFY(QDir().rename(directory, directory + u'2'));
    const auto back = point.takeBack();
    QVERIFY(!back && back.message().contains(id) && back.message().contains(directory));
    QVERIFY(!QFileInfo::exists(directory));
    QCOMPARE(ids(), QStringList(id));

    QVERIFY(QDir().rename(directory + u'2', directory));
    QVERIFY(!putBack(id).isEmpty());
    QCOMPARE(stored(), before);
}

// On a full disk that makes room; where it fails nothing else is touched.
void TestRestorePoint::whatWasMadeGoesBeforeAnythingComesBack()
{
    m_dir.reset();
    const testsupport::OtherUser user;
    init();
    RestorePoint point(m_place, QStringLiteral("import"), series, {});
    QVERIFY(point.keep({path(monday), path(tuesday)}));
    apply({{monday, "half"}, {tuesday, "made"}});
    const QString id = point.id();
    {
        const testsupport::Permissions closed(path(series.first()), 0555);
        const auto back = point.takeBack();
        QVERIFY2(back.message().contains(path(tuesday)), qPrintable(back.message()));
    }
    QCOMPARE(readFile(path(monday)), QByteArray("half"));
    QVERIFY(record(id).isComplete);
    QVERIFY(!isJobRunning(m_place, id));
    QVERIFY(!putBack(id).isEmpty());
    QCOMPARE(stored(), Tree({{monday, "old monday\n"}}));
    m_dir.reset();
}

void TestRestorePoint::whatCannotBeComparedWasTouched_data()
{
    QTest::addColumn<testsupport::SystemCall>("call");
    QTest::addColumn<QString>("pathEnd");
    QTest::addColumn<QByteArray>("content");
    for (const char* content : {"", "old monday\n"}) {
        const auto row = [content](const char* name, testsupport::SystemCall call,
                                   const QString& pathEnd) {
            QTest::addRow("%s, %d bytes", name, int(qstrlen(content)))
                << call << pathEnd << QByteArray(content);
        };
        const QString file = QStringLiteral("/store/") + monday;
        row("file not opened", testsupport::SystemCall::Open, file);
        row("file not read", testsupport::SystemCall::Read, file);
        row("copy not opened", testsupport::SystemCall::Open, QStringLiteral("-1/") + monday);
        row("copy not read", testsupport::SystemCall::Read, QStringLiteral("-1/") + monday);
    }
}

void TestRestorePoint::whatCannotBeComparedWasTouched()
{
    QFETCH(const testsupport::SystemCall, call);
    QFETCH(const QString, pathEnd);
    QFETCH(const QByteArray, content);
    writeFile(path(monday), content);
    RestorePoint point(m_place, QStringLiteral("import"), series, {});
    QVERIFY(point.keep({path(monday)}));
    const testsupport::Fault fault(call, pathEnd, EIO);
    QVERIFY(point.finish());
    QVERIFY(fault.failed() > 0);
    QCOMPARE(record(point.id()).kept, QStringList(monday));
}

void TestRestorePoint::theSameWrittenAgainWasTouched()
{
    RestorePoint point(m_place, QStringLiteral("import"), series, {});
    QVERIFY(point.keep({path(monday)}));
    QVERIFY(QFile::remove(path(monday)));
    writeFile(path(monday), "old monday\n");
    QVERIFY(point.finish());
    QCOMPARE(record(point.id()).kept, QStringList(monday));
}

// No job makes one.
void TestRestorePoint::aDirectoryInPlaceOfAFileWasNotMade()
{
    RestorePoint point(m_place, QStringLiteral("import"), series, {});
    QVERIFY(point.keep({path(tuesday)}));
    QVERIFY(QDir().mkdir(path(tuesday)));
    QVERIFY(point.finish());
    QVERIFY(point.id().isNull());
    QVERIFY(QFileInfo(path(tuesday)).isDir());
}

void TestRestorePoint::directoriesOfForgottenCopiesGo()
{
    const QString forgotten = QStringLiteral("S/C/X/20240115_60.iss");
    const QString besideMonday = QStringLiteral("S/B/Y/20240115_60.iss");
    writeFile(path(forgotten), "other\n");
    writeFile(path(besideMonday), "another\n");
    writeFile(path(tuesday), "tuesday\n");
    RestorePoint point(m_place, QStringLiteral("import"), series, {});
    QVERIFY(point.keep({path(monday), path(tuesday), path(forgotten), path(besideMonday)}));
    writeFile(path(monday), "new\n");
    QVERIFY(point.finish());
    const QDir directory(m_place.path + u'/' + point.id());
    QCOMPARE(readTree(directory).keys(), QStringList({monday, QStringLiteral("point.json")}));
    const auto below = [&directory](const char* name) {
        return QDir(directory.filePath(QLatin1String(name)))
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    };
    QCOMPARE(below("S"), QStringList(QStringLiteral("B")));
    QCOMPARE(below("S/B"), QStringList(QStringLiteral("X")));
}

using Obstacle = std::function<std::unique_ptr<testsupport::Fault>(const QString& directory)>;
Q_DECLARE_METATYPE(Obstacle)

void TestRestorePoint::aPointThatCannotBeFinishedCanBePutBack_data()
{
    QTest::addColumn<Obstacle>("obstacle");
    const auto fault = [](testsupport::SystemCall call, const char* pathEnd) -> Obstacle {
        return [call, pathEnd](const QString&) {
            return std::make_unique<testsupport::Fault>(call, QLatin1String(pathEnd), EIO);
        };
    };
    using testsupport::SystemCall;
    QTest::newRow("no new file") << fault(SystemCall::Open, ".tmp");
    QTest::newRow("nothing written") << fault(SystemCall::Write, ".tmp");
    QTest::newRow("not closed") << fault(SystemCall::Close, ".tmp");
    QTest::newRow("record not named") << fault(SystemCall::Rename, "/point.json");
    QTest::newRow("no directory for the sums") << Obstacle([](const QString& directory) {
        writeFile(directory + QStringLiteral("/../sums"), "in the way");
        return nullptr;
    });
    QTest::newRow("journal not removed") << Obstacle([](const QString& directory) {
        const QString journal = directory + QStringLiteral("/journal");
        if (QFile::rename(journal, journal + QStringLiteral("-2")))
            QDir().mkdir(journal);
        return nullptr;
    });
}

void TestRestorePoint::aPointThatCannotBeFinishedCanBePutBack()
{
    QFETCH(const Obstacle, obstacle);
    const Tree before = stored();
    RestorePoint point(m_place, QStringLiteral("import"), series, {});
    QVERIFY(point.keep({path(monday), path(tuesday)}));
    apply({{monday, "new\n"}, {tuesday, "made\n"}});
    const QString directory = m_place.path + u'/' + point.id();
    {
        const auto fault = obstacle(directory);
        const auto finished = point.finish();
        const QString text = QStringLiteral("Точка возврата %1 не дописана: ").arg(directory);
        QVERIFY2(finished.message().startsWith(text), qPrintable(finished.message()));
        QVERIFY2(!fault || finished.message().contains(qt_error_string(EIO)),
                 qPrintable(finished.message()));
    }
    QVERIFY(!isJobRunning(m_place, point.id()));
    QFile::remove(m_place.path + QStringLiteral("/sums"));
    QCOMPARE(record(point.id()).paths(), QStringList({monday, tuesday}));
    QVERIFY(!putBack(point.id()).isEmpty());
    QCOMPARE(stored(), before);
}

void TestRestorePoint::takingBackTakesNoCopyThatIsALink()
{
    RestorePoint point(m_place, QStringLiteral("import"), series, {});
    QVERIFY(point.keep({path(monday)}));
    apply({{monday, "half"}});
    const QString copy = m_place.path + u'/' + point.id() + u'/' + monday;
    const QString aside = m_dir->filePath(QStringLiteral("aside"));
    QVERIFY(QFile::rename(copy, aside));
    QVERIFY(QFile::link(aside, copy));
    const testsupport::Fault full(testsupport::SystemCall::Write, QStringLiteral(".tmp"), ENOSPC);
    const auto back = point.takeBack();
    QVERIFY2(back.message().contains(qt_error_string(ENOSPC)), qPrintable(back.message()));
    QCOMPARE(QFileInfo(path(monday)).isSymLink(), false);
    QCOMPARE(readFile(path(monday)), QByteArray("half"));
}

void TestRestorePoint::takingBackTakesNoCopyOfSomebodyElse_data()
{
    QTest::addColumn<uid_t>("user");
    QTest::addColumn<gid_t>("group");
    QTest::newRow("of another user") << testsupport::nobody << gid_t(0);
    QTest::newRow("of another group") << uid_t(0) << testsupport::noGroup;
}

// Full as the disk is: who may read the file would be another one.
void TestRestorePoint::takingBackTakesNoCopyOfSomebodyElse()
{
    QFETCH(const uid_t, user);
    QFETCH(const gid_t, group);
    if (::geteuid() != 0)
        QSKIP("Only the superuser gives files away.");
    const QByteArray file = QFile::encodeName(path(monday));
    RestorePoint point(m_place, QStringLiteral("import"), series, {});
    QVERIFY(point.keep({path(monday)}));
    apply({{monday, "half"}});
    QCOMPARE(::chown(file.constData(), user, group), 0);
    {
        const testsupport::Fault full(testsupport::SystemCall::Write, QStringLiteral(".tmp"),
                                      ENOSPC);
        QVERIFY(!point.takeBack());
    }
    QCOMPARE(readFile(path(monday)), QByteArray("half"));
    // With room on the disk it comes back, and stays theirs.
    const QString undone = putBack(ids().first());
    QCOMPARE(undone, ids().first());
    QCOMPARE(readFile(path(monday)), QByteArray("old monday\n"));
    struct stat status = {};
    QCOMPARE(::stat(file.constData(), &status), 0);
    QCOMPARE(status.st_uid, user);
    QCOMPARE(status.st_gid, group);
}

void TestRestorePoint::thoseWhoMayReadTheStoreMayReadThePoint()
{
    const mode_t mask = ::umask(027);
    const QString id = job(QStringLiteral("import"), {{monday, "new\n"}});
    RestorePoint running(m_place, QStringLiteral("import"), series, {});
    QVERIFY(running.keep({path(monday)}));
    ::umask(mask);
    const auto modeOf = [this](const QString& name) {
        struct stat status = {};
        const QByteArray file = QFile::encodeName(m_place.path + u'/' + name);
        return ::stat(file.constData(), &status) == 0 ? status.st_mode & 07777 : 0;
    };
    QCOMPARE(modeOf(id), mode_t(0750));
    QCOMPARE(modeOf(id + QStringLiteral("/point.json")), mode_t(0640));
    QCOMPARE(modeOf(QStringLiteral("sums/") + id), mode_t(0640));
    QCOMPARE(modeOf(running.id() + QStringLiteral("/journal")), mode_t(0640));
}

void TestRestorePoint::waitsForWhoeverMakesAPoint()
{
    const QString locks = m_place.path + QStringLiteral("/locks");
    QVERIFY(QDir().mkpath(locks));
    const int directory =
        ::open(QFile::encodeName(locks).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    QVERIFY(directory >= 0);
    QCOMPARE(::flock(directory, LOCK_EX), 0);
    const testsupport::Meanwhile ends(testsupport::SystemCall::LockRefused,
                                      QStringLiteral("/locks"),
                                      [directory] { ::close(directory); });
    const QString id = job(QStringLiteral("import"), {{monday, "new\n"}});
    QVERIFY(!id.isNull());
    QCOMPARE(ids(), QStringList(id));
}

void TestRestorePoint::aPlaceWithoutLocksOfTheSystemIsNobodys()
{
    const testsupport::Fault none(testsupport::SystemCall::Lock, QString(), ENOLCK);
    const QString first = job(QStringLiteral("import"), {{monday, "new\n"}});
    RestorePoint running(m_place, QStringLiteral("import"), series, {});
    QVERIFY(running.keep({path(monday)}));
    writeFile(path(monday), "newer\n");
    QVERIFY(!isJobRunning(m_place, running.id()));
    QVERIFY(!putBack(first).isEmpty());
    QCOMPARE(readFile(path(monday)), QByteArray("old monday\n"));
    QVERIFY(none.failed() > 0);
    QVERIFY(pruneRestorePoints(m_place, {.keep = 1}));
    QCOMPARE(ids().size(), 1);
}

QTEST_GUILESS_MAIN(TestRestorePoint)
#include "tst_restorepoint.moc"
