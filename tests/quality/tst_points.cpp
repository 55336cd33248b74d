// SPDX-License-Identifier: MIT
// What is shown of restore points, without a window.

#include "changedstore.h"
#include "pointfilesmodel.h"
#include "pointsmodel.h"
#include "pointwords.h"
#include "prunepreview.h"
#include "storepoints.h"
#include "undo.h"

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QLocale>
#include <QtCore/QTemporaryDir>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <memory>

using tadata::PointFile;
using testsupport::changeStore;
using vexdesk::RestorePointRecord;

namespace {

const QString monday = QStringLiteral("NORD/MAIN/ALFA/20240115_60.iss");
const QString tuesday = QStringLiteral("NORD/MAIN/ALFA/20240116_60.iss");
const QString derived = QStringLiteral("NORD/MAIN/ALFA/20240117_60");

QList<RestorePointRecord> points(const QList<qint64>& bytes)
{
    QList<RestorePointRecord> list;
    for (const qint64 one : bytes) {
        RestorePointRecord point;
        point.id = QString::number(list.size());
        point.bytes = one;
        list.append(point);
    }
    return list;
}

QString textAt(const QAbstractItemModel& model, int row, int column)
{
    return model.index(row, column).data().toString();
}

} // namespace

class TestPoints final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dir.reset(); }

    void tellsWhatACommandDid();
    void showsPoints();
    void showsNothingAnewThatIsAsItWas();
    void showsFiles();
    void datesAreThoseOfTheLanguage();
    void previewsPruning_data();
    void previewsPruning();
    void previewIsWhatPruningRemoves();
    void previewLeavesWhatIsAtWork();
    void tellsInterruptedFromRunning();
    void whatWasPutRightIsNotTold_data();
    void whatWasPutRightIsNotTold();
    void putsBack();
    void refusesWithTheNamesOfFiles();
    void putsBackByForce();
    void refusesWhileSomebodyElseIsAtWork();

private:
    QDir root() const { return QDir(m_dir->filePath(QStringLiteral("store"))); }
    vexdesk::RestorePlace place() const { return *vexdesk::restorePlace(root()); }
    RestorePointRecord point(const QString& id) const
    {
        return vexdesk::restorePoint(place(), id).valueOr(RestorePointRecord());
    }
    QByteArray stored(const QString& path) const
    {
        return testsupport::readFile(root().filePath(path));
    }

    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestPoints::init()
{
    testsupport::failOnStrayWarnings();
    QLocale::setDefault(QLocale::c()); // dates
    m_dir = std::make_unique<QTemporaryDir>();
    testsupport::writeFile(root().filePath(monday), "old monday");
    testsupport::writeFile(root().filePath(tuesday), "old tuesday");
}

void TestPoints::tellsWhatACommandDid()
{
    const QString id = changeStore(root(), QStringLiteral("import"),
                                   {{monday, "new"}, {tuesday, QByteArray()}, {derived, "made"}});
    const std::vector<PointFile> files = tadata::filesOf(point(id));
    QCOMPARE(files.size(), size_t(3));
    QCOMPARE(files[0].path, monday);
    QCOMPARE(files[0].series, QStringLiteral("NORD/MAIN/ALFA"));
    QCOMPARE(files[0].day, QDate(2024, 1, 15));
    QCOMPARE(files[0].timeframe, 60);
    QVERIFY(files[0].done == PointFile::Done::Changed && files[0].returns());
    QVERIFY(files[1].done == PointFile::Done::Removed && files[1].returns());
    QVERIFY(files[2].done == PointFile::Done::Created && !files[2].returns());
    QCOMPARE(files[2].timeframe, 0);
    QCOMPARE(files[2].day, QDate(2024, 1, 17));
}

void TestPoints::showsPoints()
{
    const QString id = changeStore(root(), QStringLiteral("merge"), {{monday, "new"}},
                                   {QStringLiteral("/home/user/bars.csv")});
    PointsModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setPoints({point(id)});
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(textAt(model, 0, PointsModel::By), QStringLiteral("импорт со слиянием"));
    QCOMPARE(textAt(model, 0, PointsModel::Series), QStringLiteral("NORD/MAIN/ALFA"));
    QCOMPARE(textAt(model, 0, PointsModel::Source), QStringLiteral("bars.csv"));
    QCOMPARE(textAt(model, 0, PointsModel::Files), QStringLiteral("1"));
    QCOMPARE(textAt(model, 0, PointsModel::When),
             point(id).when.toLocalTime().toString(QStringLiteral("dd.MM.yyyy HH:mm:ss")));
    QCOMPARE(model.bytes(), qint64(10));
    QCOMPARE(model.rowOf(id), 0);
    QCOMPARE(model.rowOf(QStringLiteral("other")), -1);
    RestorePointRecord interrupted = point(id);
    interrupted.isComplete = false;
    interrupted.by = QStringLiteral("whatever");
    model.setPoints({interrupted});
    QCOMPARE(textAt(model, 0, PointsModel::By), QStringLiteral("whatever (прервано)"));
}

void TestPoints::showsNothingAnewThatIsAsItWas()
{
    PointsModel model;
    const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    model.setPoints(points({1, 2}));
    model.setPoints(points({1, 2}));
    QCOMPARE(resets.size(), 1);
    model.setPoints(points({1, 3}));
    QCOMPARE(resets.size(), 2);
}

void TestPoints::showsFiles()
{
    const QString id =
        changeStore(root(), QStringLiteral("import"), {{monday, "new"}, {derived, "made"}});
    PointFilesModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setFiles(tadata::filesOf(point(id)));
    QCOMPARE(textAt(model, 0, PointFilesModel::Day), QStringLiteral("15.01.2024"));
    QCOMPARE(textAt(model, 0, PointFilesModel::Bars), QStringLiteral("минуты"));
    QCOMPARE(textAt(model, 1, PointFilesModel::Bars), QStringLiteral("минуты из секунд"));
    QCOMPARE(textAt(model, 0, PointFilesModel::WasDone), QStringLiteral("изменён"));
    QCOMPARE(textAt(model, 1, PointFilesModel::WasDone), QStringLiteral("создан"));
    QCOMPARE(textAt(model, 0, PointFilesModel::WouldBeDone), QStringLiteral("вернётся прежний"));
    QCOMPARE(textAt(model, 1, PointFilesModel::WouldBeDone), QStringLiteral("будет удалён"));
    QCOMPARE(textAt(model, 0, PointFilesModel::Since), QStringLiteral("…"));
    testsupport::writeFile(root().filePath(monday), "by hand");
    const tadata::UndoCheck check = tadata::checkUndo(place(), point(id));
    model.setForbidding(tadata::belowRoot(place(), check.forbidding), true);
    QCOMPARE(textAt(model, 0, PointFilesModel::Since), QStringLiteral("изменился"));
    QCOMPARE(textAt(model, 1, PointFilesModel::Since), QStringLiteral("такой же"));
    // What a killed import has left nobody knows.
    model.setForbidding(tadata::belowRoot(place(), check.forbidding), false);
    QCOMPARE(textAt(model, 0, PointFilesModel::Since), QStringLiteral("изменился"));
    QCOMPARE(textAt(model, 1, PointFilesModel::Since), QStringLiteral("неизвестно"));
}

void TestPoints::datesAreThoseOfTheLanguage()
{
    const QString id = changeStore(root(), QStringLiteral("import"), {{monday, "new"}});
    QLocale::setDefault(QLocale(QStringLiteral("en_GB")));
    PointFilesModel files;
    files.setFiles(tadata::filesOf(point(id)));
    QCOMPARE(textAt(files, 0, PointFilesModel::Day), QStringLiteral("15/01/2024"));
    PointsModel model;
    model.setPoints({point(id)});
    const QString when =
        point(id).when.toLocalTime().toString(QStringLiteral("dd/MM/yyyy HH:mm:ss"));
    QCOMPARE(textAt(model, 0, PointsModel::When), when);
    QVERIFY(tadata::interruptionInWords(point(id)).contains(when));
}

void TestPoints::previewsPruning_data()
{
    QTest::addColumn<QList<qint64>>("bytes");
    QTest::addColumn<int>("keep");
    QTest::addColumn<qint64>("most");
    QTest::addColumn<qint64>("count");
    QTest::addColumn<qint64>("freed");
    QTest::newRow("none") << QList<qint64>() << 1 << qint64(0) << qint64(0) << qint64(0);
    QTest::newRow("the newest stays")
        << QList<qint64>{50} << 0 << qint64(0) << qint64(0) << qint64(0);
    QTest::newRow("by number") << QList<qint64>{1, 2, 3, 4} << 2 << qint64(100) << qint64(2)
                               << qint64(7);
    QTest::newRow("by size") << QList<qint64>{50, 30, 30, 1} << 20 << qint64(100) << qint64(2)
                             << qint64(31);
    QTest::newRow("just as large as allowed")
        << QList<qint64>{50, 30, 20} << 20 << qint64(100) << qint64(0) << qint64(0);
}

void TestPoints::previewsPruning()
{
    QFETCH(QList<qint64>, bytes);
    QFETCH(int, keep);
    QFETCH(qint64, most);
    QFETCH(qint64, count);
    QFETCH(qint64, freed);
    const tadata::PrunePreview preview = tadata::previewOfPruning(points(bytes), {}, {keep, most});
    QCOMPARE(preview.points, count);
    QCOMPARE(preview.bytes, freed);
}

void TestPoints::previewIsWhatPruningRemoves()
{
    for (int i = 0; i < 5; ++i)
        changeStore(root(), QStringLiteral("edit"), {{monday, QByteArray(i * 10 + 3, 'x')}});
    for (const vexdesk::RestoreLimits& limits :
         {vexdesk::RestoreLimits{4, 1000}, vexdesk::RestoreLimits{4, 40}}) {
        const auto before = vexdesk::restorePoints(place());
        const tadata::PrunePreview preview = tadata::previewOfPruning(before->points, {}, limits);
        QVERIFY(preview.points > 0);
        QVERIFY(vexdesk::pruneRestorePoints(place(), limits));
        const auto after = vexdesk::restorePoints(place());
        QCOMPARE(before->points.size() - after->points.size(), preview.points);
    }
}

void TestPoints::previewLeavesWhatIsAtWork()
{
    const QString other = QStringLiteral("NORD/MAIN/VEGA/20240115_60.iss");
    const auto running =
        testsupport::beginCommand(root(), QStringLiteral("import"), {{monday, "half"}});
    for (const char* const content : {"1", "2", "3"})
        changeStore(root(), QStringLiteral("edit"), {{other, content}});
    const auto before = tadata::storePoints(root());
    QCOMPARE(before->running.size(), 1);
    const vexdesk::RestoreLimits limits{1, 1000};
    const tadata::PrunePreview preview =
        tadata::previewOfPruning(before->found.points, before->running, limits);
    QCOMPARE(preview.points, 2);
    QVERIFY(vexdesk::pruneRestorePoints(place(), limits));
    QCOMPARE(vexdesk::restorePoints(place())->points.size(), 2);
}

void TestPoints::tellsInterruptedFromRunning()
{
    auto running = testsupport::beginCommand(root(), QStringLiteral("import"), {{monday, "half"}});
    const auto atWork = tadata::storePoints(root());
    QVERIFY(atWork);
    QCOMPARE(atWork->found.points.size(), 1);
    const QString id = atWork->found.points.first().id;
    QCOMPARE(atWork->running, QSet<QString>{id});
    QVERIFY(atWork->interrupted.empty());
    PointsModel model;
    model.setPoints(atWork->found.points, atWork->running);
    QCOMPARE(textAt(model, 0, PointsModel::By), QStringLiteral("импорт (идёт)"));
    running.reset(); // killed
    const auto killed = tadata::storePoints(root());
    QVERIFY(killed && killed->running.empty());
    QCOMPARE(killed->interrupted.size(), 1);
    QCOMPARE(killed->interrupted.first().id, id);
    model.setPoints(killed->found.points, killed->running);
    QCOMPARE(textAt(model, 0, PointsModel::By), QStringLiteral("импорт (прервано)"));
    QVERIFY(tadata::interruptionInWords(killed->interrupted.first())
                .contains(QStringLiteral("импорт")));
}

void TestPoints::whatWasPutRightIsNotTold_data()
{
    QTest::addColumn<QByteArray>("since");
    QTest::addColumn<int>("told");
    QTest::newRow("nothing since") << QByteArray() << 1;
    QTest::newRow("put back") << QByteArray("undo") << 0;
    QTest::newRow("all of its files changed since") << QByteArray("all") << 0;
    QTest::newRow("one of its files changed since") << QByteArray("one") << 1;
    QTest::newRow("another one was interrupted") << QByteArray("kill") << 2;
}

void TestPoints::whatWasPutRightIsNotTold()
{
    QFETCH(const QByteArray, since);
    QFETCH(const int, told);
    const testsupport::StoreFiles files{{monday, "half"}, {tuesday, "half"}};
    const QString id = testsupport::interruptCommand(root(), QStringLiteral("import"), files);
    if (since == "undo")
        QVERIFY(tadata::undo(root(), id, false, {}).isDone());
    else if (since == "all")
        changeStore(root(), QStringLiteral("import"), {{monday, "whole"}, {tuesday, "whole"}});
    else if (since == "one")
        changeStore(root(), QStringLiteral("import"), {{monday, "whole"}});
    else if (since == "kill")
        testsupport::interruptCommand(root(), QStringLiteral("import"), files);
    const auto points = tadata::storePoints(root());
    QVERIFY(points);
    QCOMPARE(points->interrupted.size(), told);
}

void TestPoints::putsBack()
{
    const QString id = changeStore(root(), QStringLiteral("import"),
                                   {{monday, "new"}, {tuesday, QByteArray()}, {derived, "made"}});
    const tadata::UndoResult result = tadata::undo(root(), id, false, {});
    QVERIFY(result.isDone());
    QCOMPARE(result.returned, qsizetype(2));
    QCOMPARE(result.removed, qsizetype(1));
    QCOMPARE(stored(monday), QByteArray("old monday"));
    QCOMPARE(stored(tuesday), QByteArray("old tuesday"));
    QVERIFY(!QFileInfo::exists(root().filePath(derived)));
    // And that as well.
    const auto newest = vexdesk::restorePoints(place());
    QCOMPARE(newest->points.first().by, QStringLiteral("undo"));
    QVERIFY(tadata::undo(root(), newest->newest, false, {}).isDone());
    QCOMPARE(stored(monday), QByteArray("new"));
}

void TestPoints::refusesWithTheNamesOfFiles()
{
    const QString id =
        changeStore(root(), QStringLiteral("import"), {{monday, "new"}, {tuesday, "new"}});
    testsupport::writeFile(root().filePath(tuesday), "by hand");
    const tadata::UndoResult result = tadata::undo(root(), id, false, {});
    QVERIFY(!result.isDone());
    QCOMPARE(tadata::belowRoot(place(), result.forbidding), QSet<QString>{tuesday});
    QCOMPARE(stored(monday), QByteArray("new"));
    QCOMPARE(stored(tuesday), QByteArray("by hand"));
}

void TestPoints::putsBackByForce()
{
    const QString id = changeStore(root(), QStringLiteral("import"), {{monday, "new"}});
    testsupport::writeFile(root().filePath(monday), "by hand");
    QVERIFY(tadata::undo(root(), id, true, {}).isDone());
    QCOMPARE(stored(monday), QByteArray("old monday"));
}

void TestPoints::refusesWhileSomebodyElseIsAtWork()
{
    const QString id = changeStore(root(), QStringLiteral("import"), {{monday, "new"}});
    vexdesk::SeriesLocks locks;
    QVERIFY(locks.take(place(), {QStringLiteral("NORD/MAIN/ALFA")}, std::chrono::seconds(0)));
    const tadata::UndoResult result =
        tadata::undo(root(), id, false, {.wait = std::chrono::milliseconds(0)});
    QVERIFY(!result.isDone());
    QVERIFY2(result.work.message().contains(QStringLiteral("ALFA.lock")),
             qPrintable(result.work.message()));
    QCOMPARE(stored(monday), QByteArray("new"));
}

QTEST_GUILESS_MAIN(TestPoints)
#include "tst_points.moc"
