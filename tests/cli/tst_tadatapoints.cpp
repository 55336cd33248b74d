// SPDX-License-Identifier: MIT
// What is taken back, and the commands that change whole series.

#include "commandtest.h"

#include "support/filetree.h"
#include "support/otheruser.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>
#include <QtCore/QStorageInfo>
#include <QtTest/QTest>

using namespace testsupport;

namespace {

constexpr auto first = "20240115,100000,1,1,1,1\n20240116,100000,1,1,1,1\n";
constexpr auto second = "20240116,100000,2,2,2,2\n20240117,100000,2,2,2,2\n";
const QString alfa = QStringLiteral("NORD/MAIN/ALFA");

} // namespace

class TadataPointsTest final : public CommandTest
{
    Q_OBJECT

private Q_SLOTS:
    void pointsAreListed();
    void aStoreWithoutPointsHasNone();
    void anUndoPutsTheNewestBackAndIsUndone();
    void anOlderPointIsRefusedByName();
    void aDryRunTouchesNothing();
    void whatIsNoPointIsRefused_data();
    void whatIsNoPointIsRefused();
    void aBrokenPointIsNamedBesideTheOthers();
    void anImportThatFailsIsPutBack();
    void aPointWithoutFilesPutsNothingBack();
    void nobodyReadsWhatIsPrinted();
    void anImportWithoutAPoint();
    void optionsDecideHowManyStay();
    void settingsDecideHowManyStay();
    void aStoreBesideWhichNothingMayBeMade();
    void aStoreOnAnotherFileSystem_data();
    void aStoreOnAnotherFileSystem();
    void daysAreDeleted();
    void aDeletionSaysWhatOf_data();
    void aDeletionSaysWhatOf();
    void seriesAreCopiedAndRenamed();
    void whatCannotBeCopiedIsLeftAlone_data();
    void whatCannotBeCopiedIsLeftAlone();

private:
    Outcome run(const QString& command, const QStringList& more = {}) const
    {
        return runTadata(words(qPrintable(command)) + more + words("--store") << path("store"));
    }
    // Two imports into this store, of which the second is put back, by a program with a data
    // directory of its own.
    void checkThatAnImportIsPutBack(const QString& store) const;
    QJsonArray points() const;
    QString newest() const;
    QString pointsPath(const QString& name) const { return path("store-restore/" + name); }
};

QJsonArray TadataPointsTest::points() const
{
    return QJsonDocument::fromJson(run(QStringLiteral("points --json")).out)
        .object()
        .value(QStringLiteral("points"))
        .toArray();
}

QString TadataPointsTest::newest() const
{
    return points().first().toObject().value(QStringLiteral("id")).toString();
}

void TadataPointsTest::pointsAreListed()
{
    QCOMPARE(import(first), succeeded());
    QCOMPARE(import(second), succeeded());
    const Outcome listed = run(QStringLiteral("points --json"));
    const QString point = QStringLiteral(
        R"(\{"by":"import","bytes":%1,"complete":true,"files":%2,"id":"\d{8}-\d{6}-\d+",)"
        R"("series":\["NORD/MAIN/ALFA"\],"source":\["%3"\],)"
        R"("when":"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d"\})");
    const QString source = QRegularExpression::escape(path("bars.csv"));
    const QRegularExpression wanted(
        QStringLiteral("^\\{\"points\":\\[%1,%2\\]\\}\n$")
            .arg(point.arg(QStringLiteral("36"), QStringLiteral("1"), source),
                 point.arg(QStringLiteral("0"), QStringLiteral("0"), source)));
    QCOMPARE(listed, succeeded(listed.out));
    QVERIFY2(wanted.match(QString::fromUtf8(listed.out)).hasMatch(), listed.out.constData());

    const Outcome text = run(QStringLiteral("points"));
    QCOMPARE(text, succeeded(text.out));
    const QByteArrayList lines = text.out.split('\n');
    QCOMPARE(lines.size(), 3);
    QVERIFY2(lines[0].endsWith("\timport\tзакончено\t1\t36\tNORD/MAIN/ALFA\t" +
                               path("bars.csv").toUtf8()),
             text.out.constData());
}

void TadataPointsTest::aStoreWithoutPointsHasNone()
{
    QCOMPARE(run(QStringLiteral("points --json")), succeeded("{\"points\":[]}\n"));
    QCOMPARE(run(QStringLiteral("points")), succeeded());
    QCOMPARE(run(QStringLiteral("undo")),
             failed(QStringLiteral("В каталоге %1 нет ни одной точки возврата")
                        .arg(path("store-restore"))));
    QVERIFY(!QFileInfo::exists(path("store-restore")));
}

void TadataPointsTest::anUndoPutsTheNewestBackAndIsUndone()
{
    QCOMPARE(import(first), succeeded());
    const Tree before = stored();
    QCOMPARE(import(second), succeeded());
    const Tree after = stored();
    const QString id = newest();
    QCOMPARE(
        run(QStringLiteral("undo")),
        succeeded(QStringLiteral("Точка %1: возвращено файлов: 1, удалено: 1\n").arg(id).toUtf8()));
    QCOMPARE(stored(), before);
    const QJsonObject undone = points().first().toObject();
    QCOMPARE(undone.value(QStringLiteral("by")).toString(), QStringLiteral("undo"));
    QCOMPARE(undone.value(QStringLiteral("source")).toArray(), QJsonArray({id}));
    QCOMPARE(run(QStringLiteral("undo")).exitCode, 0);
    QCOMPARE(stored(), after);
    QCOMPARE(run(QStringLiteral("undo"), {id}).exitCode, 0);
    QCOMPARE(stored(), before);
}

void TadataPointsTest::anOlderPointIsRefusedByName()
{
    QCOMPARE(import(first), succeeded());
    const QString id = newest();
    QCOMPARE(import(second), succeeded());
    const Tree before = stored();
    const Tree place = readTree(QDir(path("store-restore")));
    for (const QStringList& options : {QStringList(), words("--dry-run")}) {
        QCOMPARE(run(QStringLiteral("undo"), options + QStringList(id)),
                 failed(QStringLiteral("Точка %1 не возвращена: эти файлы с тех пор изменились; "
                                       "вернуть всё равно: --force\n%2")
                            .arg(id, path("store/NORD/MAIN/ALFA/20240116_60.iss"))));
        QCOMPARE(stored(), before);
        QCOMPARE(readTree(QDir(path("store-restore"))), place);
    }
    QCOMPARE(run(QStringLiteral("undo --force"), {id}).exitCode, 0);
    QCOMPARE(stored().keys(), QStringList(QStringLiteral("NORD/MAIN/ALFA/20240117_60.iss")));
}

void TadataPointsTest::aDryRunTouchesNothing()
{
    QCOMPARE(import(first), succeeded());
    QCOMPARE(import(second), succeeded());
    const Tree before = readTree(directory());
    QCOMPARE(run(QStringLiteral("undo --dry-run")),
             succeeded("вернуть NORD/MAIN/ALFA/20240116_60.iss\n"
                       "удалить NORD/MAIN/ALFA/20240117_60.iss\n"));
    QCOMPARE(readTree(directory()), before);
}

void TadataPointsTest::whatIsNoPointIsRefused_data()
{
    QTest::addColumn<QString>("id");
    for (const char* id : {"../store", "..", "locks", "20240101-000000-1", "20240101-000000-0"})
        QTest::newRow(id) << id;
}

void TadataPointsTest::whatIsNoPointIsRefused()
{
    QFETCH(const QString, id);
    QCOMPARE(import(first), succeeded());
    const Tree before = readTree(directory());
    QCOMPARE(
        run(QStringLiteral("undo --force"), {id}),
        failed(
            QStringLiteral("Точки возврата %1 в каталоге %2 нет").arg(id, path("store-restore"))));
    QCOMPARE(readTree(directory()), before);
}

void TadataPointsTest::aBrokenPointIsNamedBesideTheOthers()
{
    QCOMPARE(import(first), succeeded());
    const QString good = newest();
    QCOMPARE(import(second), succeeded());
    const QString bad = newest();
    writeFile(pointsPath(bad + "/point.json"), "{");
    const QString message =
        QStringLiteral("Точка возврата %1 испорчена: point.json не читается").arg(pointsPath(bad));
    const Outcome listed = run(QStringLiteral("points"));
    QCOMPARE(listed.exitCode, 1);
    QVERIFY(listed.out.startsWith(good.toUtf8()));
    QCOMPARE(listed.err, message.toUtf8() + '\n');
    const Tree before = stored();
    QCOMPARE(run(QStringLiteral("undo")), failed(message));
    QCOMPARE(stored(), before);
}

void TadataPointsTest::anImportThatFailsIsPutBack()
{
    QCOMPARE(import(first), succeeded());
    const Tree before = stored();
    const QJsonArray pointsBefore = points();
    const QByteArray content = second + QByteArray("rubbish\n");
    for (const QStringList& keep : {QStringList(), words("--keep 0")}) {
        QCOMPARE(import(content, words("--undo-on-error") + keep).exitCode, 1);
        QCOMPARE(stored(), before);
        QCOMPARE(points(), pointsBefore);
    }
    QVERIFY(import(content, words("--undo-on-error")).err.contains("возвращено"));
    QCOMPARE(import(content).exitCode, 1);
    QVERIFY(stored() != before);
    QVERIFY(points().first().toObject().value(QStringLiteral("complete")).toBool());
    QCOMPARE(run(QStringLiteral("undo")).exitCode, 0);
    QCOMPARE(stored(), before);
    QCOMPARE(import(content, words("--undo-on-error --no-restore-point")),
             refused(QStringLiteral("--undo-on-error нельзя вместе с --no-restore-point")));
}

// It was killed before it touched anything. Who takes it back does not mean the one before it, but
// is told how to.
void TadataPointsTest::aPointWithoutFilesPutsNothingBack()
{
    const QString id = QStringLiteral("20990101-000000-1");
    const auto killed = [&] {
        writeFile(pointsPath(id + QStringLiteral("/point.json")),
                  R"({"by":"delete","complete":false,"created":[],"id":")" + id.toUtf8() +
                      R"(","kept":[],"left":{},"series":["S/B/X"],"source":[],)"
                      R"("when":"2099-01-01T00:00:00"})"
                      "\n");
        writeFile(pointsPath(id + QStringLiteral("/journal")), "");
    };
    const QString told = QStringLiteral("Точка %1: возвращено файлов: 0, удалено: 0\n"
                                        "Команда, которую она сохранила, ничего не изменила.")
                             .arg(id);
    killed();
    QCOMPARE(run(QStringLiteral("undo")), succeeded(told.toUtf8() + '\n'));
    QVERIFY(QDir(pointsPath(id)).removeRecursively());
    const Tree before = stored();
    QCOMPARE(import(first), succeeded());
    const QString imported = newest();
    const Tree after = stored();
    killed();
    QCOMPARE(points().size(), 2);
    QCOMPARE(run(QStringLiteral("undo")),
             succeeded(QStringLiteral("%1 Вернуть то, что изменила предыдущая (import, "
                                      "NORD/MAIN/ALFA): tadata undo %2\n")
                           .arg(told, imported)
                           .toUtf8()));
    QCOMPARE(stored(), after);
    QCOMPARE(run(QStringLiteral("undo"), {imported}).exitCode, 0);
    QCOMPARE(stored(), before);
}

// As by "2>&1 | head": the signal for it would end the import before all is put back.
void TadataPointsTest::nobodyReadsWhatIsPrinted()
{
    QCOMPARE(import(first), succeeded());
    const Tree before = stored();
    const QJsonArray pointsBefore = points();
    writeFile(path("bars.csv"), second + QByteArray("rubbish\n"));
    const QStringList shell{
        QStringLiteral("-c"),
        QStringLiteral("mkfifo pipe; exec 3<>pipe 4>pipe 3>&-; \"$@\" >&4 2>&4"),
        QStringLiteral("bash"), tadataProgram()};
    const Outcome outcome = runProgram(
        QStringLiteral("bash"), shell + importLine(path("bars.csv"), words("--undo-on-error")),
        testsupport::plainEnvironment(), directory().path());
    QCOMPARE(outcome, (Outcome{1, QByteArray(), QByteArray()}));
    QCOMPARE(stored(), before);
    QCOMPARE(points(), pointsBefore);
    QVERIFY(readTree(QDir(pointsPath(QStringLiteral("locks")))).isEmpty());
}

void TadataPointsTest::anImportWithoutAPoint()
{
    QCOMPARE(import(first), succeeded());
    const QJsonArray before = points();
    QCOMPARE(import(second, words("--no-restore-point")), succeeded());
    QCOMPARE(points(), before);
    QCOMPARE(import(first, words("--undo-on-error --keep 0")), succeeded());
    QCOMPARE(points(), before);
}

void TadataPointsTest::optionsDecideHowManyStay()
{
    for (int i = 0; i < 4; ++i)
        QCOMPARE(import(i % 2 == 0 ? first : second), succeeded());
    QCOMPARE(points().size(), 4);
    QCOMPARE(import(first, words("--keep 3")), succeeded());
    QCOMPARE(points().size(), 3);
    const QString last = newest();
    QCOMPARE(import("rubbish", words("--keep-megabytes 0")).exitCode, 1);
    QCOMPARE(points().size(), 1);
    QCOMPARE(newest(), last);
    QCOMPARE(import(second, words("--keep 0")), succeeded());
    QCOMPARE(newest(), last);
    for (const char* option : {"--keep", "--keep-megabytes", "--wait"})
        QCOMPARE(import(first, {QLatin1String(option), QStringLiteral("-1")}).exitCode, 2);
}

void TadataPointsTest::settingsDecideHowManyStay()
{
    const QString program = path("tadata");
    QVERIFY(QFile::copy(tadataProgram(), program));
    writeFile(path("user/vexdesk.ini"), "[TADataManager]\nRestorePoints\\keep=2\n");
    writeFile(path("bars.csv"), first);
    for (int i = 0; i < 4; ++i)
        QCOMPARE(runProgram(program, importLine(path("bars.csv"))), succeeded());
    QCOMPARE(points().size(), 2);
}

void TadataPointsTest::checkThatAnImportIsPutBack(const QString& store) const
{
    const QString program = path("tadata");
    QVERIFY(QFile::copy(tadataProgram(), program));
    const auto importInto = [&](const QByteArray& content) {
        writeFile(path("bars.csv"), content);
        return runProgram(program, importLine(path("bars.csv"), words("--store") << store));
    };
    QCOMPARE(importInto(first), succeeded());
    const Tree before = readTree(QDir(store));
    QCOMPARE(before.size(), 2);
    QCOMPARE(importInto(second), succeeded());
    QCOMPARE(readTree(QDir(store)).size(), 3);
    const Outcome undone = runProgram(program, words("undo --store") << store);
    QCOMPARE(undone, succeeded(undone.out));
    QCOMPARE(readTree(QDir(store)), before);
}

void TadataPointsTest::aStoreBesideWhichNothingMayBeMade()
{
    m_dir.reset();
    const OtherUser user;
    m_dir = std::make_unique<QTemporaryDir>();
    const QDir parent(path("parent"));
    QVERIFY(parent.mkpath(QStringLiteral("store")));
    const Permissions readOnly(parent.path(), 0555);
    checkThatAnImportIsPutBack(parent.filePath(QStringLiteral("store")));
    QCOMPARE(parent.entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList{"store"});
    // The points of both imports and of what put the second one back.
    const QDir places(path("user/restore"));
    const QStringList names = places.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    QCOMPARE(names.size(), 1);
    QCOMPARE(QDir(places.filePath(names.first())).entryList({QStringLiteral("2*")}).size(), 3);
}

void TadataPointsTest::aStoreOnAnotherFileSystem_data()
{
    QTest::addColumn<bool>("isPlaceTaken");
    QTest::newRow("points beside it") << false;
    QTest::newRow("points in the data directory") << true;
}

void TadataPointsTest::aStoreOnAnotherFileSystem()
{
    QFETCH(const bool, isPlaceTaken);
    const QTemporaryDir other(QStringLiteral("/dev/shm/tadata-XXXXXX"));
    if (!other.isValid() || QStorageInfo(other.path()) == QStorageInfo(m_dir->path()))
        QSKIP("there is no second file system");
    const QString place = other.filePath(QStringLiteral("store-restore"));
    if (isPlaceTaken)
        writeFile(place, "");
    checkThatAnImportIsPutBack(other.filePath(QStringLiteral("store")));
    QCOMPARE(QFileInfo(place).isDir(), !isPlaceTaken);
    QCOMPARE(QFileInfo(path("user/restore")).isDir(), isPlaceTaken);
}

void TadataPointsTest::daysAreDeleted()
{
    QCOMPARE(import(first), succeeded());
    QCOMPARE(import(first, words("--timeframe 1")), succeeded());
    const Tree before = stored();
    QCOMPARE(before.size(), 6);
    QCOMPARE(run(QStringLiteral("delete NORD/MAIN/ALFA --from 2024-01-16")), succeeded("3\n"));
    QCOMPARE(stored().keys(), QStringList({alfa + "/20240115_1.iss", alfa + "/20240115_60",
                                           alfa + "/20240115_60.iss"}));
    QCOMPARE(run(QStringLiteral("delete NORD/MAIN/ALFA --timeframe 1")), succeeded("2\n"));
    QCOMPARE(run(QStringLiteral("delete NORD/MAIN/ALFA --to 2024-01-14")), succeeded("0\n"));
    QCOMPARE(run(QStringLiteral("delete NORD/MAIN/ALFA --all")), succeeded("1\n"));
    QVERIFY(QFileInfo(path("store/NORD/MAIN/ALFA")).isDir());
    // Each deletion is the newest that was not yet put back.
    const QJsonArray deletions = points();
    for (int i = 0; i < 3; ++i) {
        const QString id = deletions.at(i).toObject().value(QStringLiteral("id")).toString();
        QCOMPARE(run(QStringLiteral("undo"), {id}).exitCode, 0);
    }
    QCOMPARE(stored(), before);
}

void TadataPointsTest::aDeletionSaysWhatOf_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("nothing said") << QStringLiteral("delete NORD/MAIN/ALFA") << 2;
    QTest::newRow("all and a day")
        << QStringLiteral("delete NORD/MAIN/ALFA --all --to 2024-01-16") << 2;
    QTest::newRow("no series") << QStringLiteral("delete --all") << 2;
    QTest::newRow("no name of a series") << QStringLiteral("delete NORD/../ALFA --all") << 2;
    QTest::newRow("another series") << QStringLiteral("delete NORD/MAIN/BETA --all") << 0;
}

void TadataPointsTest::aDeletionSaysWhatOf()
{
    QFETCH(const QString, line);
    QFETCH(const int, exitCode);
    QCOMPARE(import(first), succeeded());
    const Tree before = stored();
    QCOMPARE(run(line).exitCode, exitCode);
    QCOMPARE(stored(), before);
    QCOMPARE(points().size(), 1);
}

void TadataPointsTest::seriesAreCopiedAndRenamed()
{
    QCOMPARE(import(first), succeeded());
    const Tree before = stored();
    QCOMPARE(run(QStringLiteral("copy NORD/MAIN/ALFA WEST/X/BETA")), succeeded("2\n"));
    const Tree copied = stored();
    QCOMPARE(copied.size(), 4);
    for (auto file = before.begin(); file != before.end(); ++file) {
        QCOMPARE(copied.value(file.key()), *file);
        QCOMPARE(copied.value(QString(file.key()).replace(alfa, QStringLiteral("WEST/X/BETA"))),
                 *file);
    }
    QCOMPARE(points().first().toObject().value(QStringLiteral("series")).toArray(),
             QJsonArray({alfa, QStringLiteral("WEST/X/BETA")}));
    QCOMPARE(run(QStringLiteral("rename WEST/X/BETA NORD/MAIN/ZETA")), succeeded("2\n"));
    QCOMPARE(stored().keys().last(), QStringLiteral("NORD/MAIN/ZETA/20240116_60.iss"));
    QVERIFY(QFileInfo(path("store/WEST/X/BETA")).isDir());
    QCOMPARE(run(QStringLiteral("undo")).exitCode, 0);
    QCOMPARE(stored(), copied);
}

void TadataPointsTest::whatCannotBeCopiedIsLeftAlone_data()
{
    QTest::addColumn<QString>("words");
    QTest::newRow("no file") << QStringLiteral("NORD/MAIN/BETA NORD/MAIN/ZETA");
    QTest::newRow("file there") << QStringLiteral("NORD/MAIN/ALFA WEST/X/BETA");
    QTest::newRow("to itself") << QStringLiteral("NORD/MAIN/ALFA NORD/MAIN/ALFA");
}

void TadataPointsTest::whatCannotBeCopiedIsLeftAlone()
{
    QFETCH(const QString, words);
    QCOMPARE(import(first), succeeded());
    writeFile(path("store/WEST/X/BETA/20200101_60"), "x");
    const Tree before = stored();
    for (const char* command : {"copy ", "rename "}) {
        const Outcome outcome = run(QLatin1String(command) + words);
        QCOMPARE(outcome, failed(QString::fromUtf8(outcome.err).chopped(1)));
        QCOMPARE(stored(), before);
    }
    QCOMPARE(points().size(), 1);
}

QTEST_GUILESS_MAIN(TadataPointsTest)
#include "tst_tadatapoints.moc"
