// SPDX-License-Identifier: MIT
// The import that either comes to its end or has done nothing.
#include "safeimport.h"

#include "importfiles.h"
#include "importoutlook.h"
#include "support/faults.h"
#include "support/filetree.h"
#include "support/otheruser.h"
#include "support/strictlog.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QScopeGuard>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <cerrno>
#include <memory>

using tadata::runSafeImport;
using tadata::SafeImportOrder;
using tadata::SafeImportResult;
using testsupport::barFile;
using testsupport::choicesOf;
using testsupport::orderOf;
using testsupport::readTree;
using testsupport::writeFile;
using End = tadata::SafeImportResult::End;
using Tree = QMap<QString, QByteArray>;

Q_DECLARE_METATYPE(ImportMode)

namespace {

const QDate monday(2024, 1, 15);
const QDate tuesday(2024, 1, 16);
const QDate wednesday(2024, 1, 17);

} // namespace

class TestSafeImport final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dir.reset(); }

    void importsAndCounts();
    void countsWhatWasForetold_data();
    void countsWhatWasForetold();
    void countsWhatAFileReplacesItself();
    void aDayThatComesBackAsItIsStoredLosesNothing();
    void aDayOfSeveralFilesCountsOnce();
    void undoGivesBackWhatWas_data() { modes(); }
    void undoGivesBackWhatWas();
    void undoIsRefusedWhereTheFilesHaveChanged();
    void withoutPointsNothingCanBeUndone();
    void cancelAtEachMomentTakesEverythingBack_data() { modes(); }
    void cancelAtEachMomentTakesEverythingBack();
    void cancelAtEachCallOfTheSystem_data() { modes(); }
    void cancelAtEachCallOfTheSystem();
    void cancelEndsTheWaitForALock();
    void aLockedSeriesIsLeftAlone();
    void aLockThatCannotBeMadeIsSaid();
    void aFullDiskTakesEverythingBack_data() { modes(); }
    void aFullDiskTakesEverythingBack();
    void aStoreThatMayNotBeWrittenIsSaid_data() { modes(); }
    void aStoreThatMayNotBeWrittenIsSaid();
    void aSeriesThatCannotBeListedIsNamed();
    void aBadLineTakesEverythingBack();
    void aBadStoredLineIsNamedWithAWayOut();
    void badLinesAlonePassForNothing();
    void aFileThatHasChangedSinceIsNotImported();
    void aFileThatChangesMeanwhileIsTakenBack();
    void aStoreThatHasChangedSinceIsNotImportedInto_data() { modes(); }
    void aStoreThatHasChangedSinceIsNotImportedInto();
    void directoriesThatWereMadeGoToo_data() { modes(); }
    void directoriesThatWereMadeGoToo();
    void oneOfManyThatFailsTakesAllBack();
    void tickersGoToSeriesOfTheirOwn();
    void anUnknownTickerChangesNothing();
    void whatIsForetoldHappens_data();
    void whatIsForetoldHappens();
    void aTickerThatComesBackIsToldInWordsOfTheWindow();

private:
    static void modes();
    QString path(const char* name) const { return m_dir->filePath(QLatin1String(name)); }
    QDir root() const { return QDir(path("store")); }
    Tree store() const { return readTree(root()); }
    QStringList pointNames() const;
    SafeImportOrder order(const QStringList& files, ImportMode mode,
                          const char* series = "S/B/X") const
    {
        return orderOf(choicesOf(files, mode, series), root());
    }
    static SafeImportResult run(const SafeImportOrder& order);
    static tadata::ImportOutlook outlook(const SafeImportOrder& order);

    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestSafeImport::init()
{
    testsupport::failOnStrayWarnings();
    testsupport::knowSeries();
    QLocale::setDefault(QLocale::c());
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    writeFile(path("old.csv"), barFile({monday, tuesday}, 5, 100));
    writeFile(path("new.csv"), barFile({tuesday, wednesday}, 8, 200));
    const SafeImportResult stored = run(order({path("old.csv")}, ImportMode::Replace));
    QCOMPARE(stored.message, QString());
    QCOMPARE(store().size(), 2);
}

void TestSafeImport::modes()
{
    QTest::addColumn<ImportMode>("mode");
    QTest::newRow("replace") << ImportMode::Replace;
    QTest::newRow("merge") << ImportMode::Merge;
    QTest::newRow("fill") << ImportMode::Fill;
}

QStringList TestSafeImport::pointNames() const
{
    QStringList names;
    const auto found = vexdesk::restorePoints(*vexdesk::restorePlace(root()));
    for (const auto& point : found->points)
        names.append(point.id);
    return names;
}

SafeImportResult TestSafeImport::run(const SafeImportOrder& order)
{
    const std::atomic<bool> goesOn = false;
    return runSafeImport(
        order, [](int) {}, goesOn);
}

tadata::ImportOutlook TestSafeImport::outlook(const SafeImportOrder& order)
{
    const std::atomic<bool> goesOn = false;
    const auto checked = tadata::checkChoices(
        order.choices, order.files, order.root, 10, [](int) {}, goesOn);
    return tadata::outlookOf(checked.valueOr(std::vector<tadata::FileOutlook>()));
}

void TestSafeImport::importsAndCounts()
{
    int percent = -1;
    const std::atomic<bool> goesOn = false;
    const SafeImportResult result = runSafeImport(
        order({path("new.csv")}, ImportMode::Merge), [&](int now) { percent = now; }, goesOn);
    QCOMPARE(result.message, QString());
    QVERIFY(result.end == End::Done && !result.isCancelled);
    QCOMPARE(result.bars, 16);
    QCOMPARE(result.days, 2);
    QCOMPARE(result.badLines, 0);
    QCOMPARE(percent, 100);
    QVERIFY(pointNames().contains(result.point));
    QCOMPARE(store().size(), 3);
    QCOMPARE(store().value(QStringLiteral("S/B/X/20240117_60.iss")).count('\n'), 8);
}

// The store has five bars of the day, from 10:00 on, of another price.
void TestSafeImport::countsWhatAFileReplacesItself()
{
    QLocale::setDefault(QLocale::c());
    const auto bars = [](const QDate& day, int minutes) {
        const QByteArray text = barFile({day}, minutes, 200);
        return text.mid(text.indexOf('\n') + 1);
    };
    writeFile(path("in.csv"), barFile({tuesday}, 7, 200) + bars(wednesday, 3) + bars(tuesday, 2));
    SafeImportOrder wanted = order({path("in.csv")}, ImportMode::Replace);
    const tadata::ImportOutlook foretold = outlook(wanted);
    wanted.wiped = foretold.wiped;
    wanted.lostOfFile = foretold.lostOfFile;
    const SafeImportResult result = run(wanted);
    QCOMPARE(result.message, QString());
    // Two of tuesday stay, with other values; three of the store and two of the file are lost.
    const QList<qint64> counts{3, 2, 5, 7, 0};
    QCOMPARE((QList<qint64>{foretold.added, foretold.replaced, foretold.lost, foretold.wiped,
                            foretold.idle()}),
             counts);
    QCOMPARE(
        (QList<qint64>{result.added, result.replaced, result.lost, result.wiped, result.idle()}),
        counts);
    const QString told = tadata::sentencesOf(foretold).join(u'\n');
    for (const char* const part :
         {"Пропадёт баров: 5", "возвращается к их дню: 7", "из них ничего не изменят: 0"})
        QVERIFY2(told.contains(QString::fromUtf8(part)), qPrintable(told));
}

// The first run of tuesday would lose bars, the second is what the store has.
void TestSafeImport::aDayThatComesBackAsItIsStoredLosesNothing()
{
    QByteArray content = barFile({tuesday, wednesday}, 1, 200);
    for (const QByteArray& line : barFile({monday, tuesday}, 5, 100).split('\n')) {
        if (line.contains("20240116"))
            content += line + '\n';
    }
    writeFile(path("in.csv"), content);
    SafeImportOrder wanted = order({path("in.csv")}, ImportMode::Replace);
    const tadata::ImportOutlook foretold = outlook(wanted);
    QCOMPARE(foretold.count(tadata::CheckedDay::Outcome::Same), 1);
    QCOMPARE(foretold.lost, 0);
    QCOMPARE(foretold.lostOfFile, 0);
    wanted.wiped = foretold.wiped;
    wanted.lostOfFile = foretold.lostOfFile;
    const SafeImportResult result = run(wanted);
    QCOMPARE(result.message, QString());
    QCOMPARE(result.sameDays, 1);
    QCOMPARE(result.lost, 0);
}

void TestSafeImport::aDayOfSeveralFilesCountsOnce()
{
    // The second has one bar more for a day, and nothing new for another.
    writeFile(path("first.csv"), barFile({tuesday, wednesday}, 6, 100));
    writeFile(path("second.csv"), barFile({wednesday}, 7, 100));
    writeFile(path("third.csv"), barFile({monday, tuesday}, 5, 100));
    const SafeImportResult result =
        run(order({path("first.csv"), path("second.csv"), path("third.csv")}, ImportMode::Merge));
    QCOMPARE(result.message, QString());
    QCOMPARE(result.days, 2);
    QCOMPARE(result.sameDays, 1);
}

void TestSafeImport::countsWhatWasForetold_data()
{
    QTest::addColumn<ImportMode>("mode");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QList<qint64>>("counts"); // added, replaced, lost, idle
    const QByteArray more = barFile({tuesday, wednesday}, 8, 200);
    QTest::newRow("more, merged") << ImportMode::Merge << more << QList<qint64>{11, 5, 0, 0};
    QTest::newRow("more, filled") << ImportMode::Fill << more << QList<qint64>{11, 0, 0, 5};
    QTest::newRow("more, replaced") << ImportMode::Replace << more << QList<qint64>{11, 5, 0, 0};
    const QByteArray fewer = barFile({tuesday}, 3, 200);
    QTest::newRow("fewer, merged") << ImportMode::Merge << fewer << QList<qint64>{0, 3, 0, 0};
    QTest::newRow("fewer, filled") << ImportMode::Fill << fewer << QList<qint64>{0, 0, 0, 3};
    QTest::newRow("fewer, replaced") << ImportMode::Replace << fewer << QList<qint64>{0, 3, 2, 0};
    const QByteArray mixed = barFile({monday}, 2, 100) +
                             barFile({monday}, 4, 200).sliced(barFile({monday}, 2, 200).size());
    QTest::newRow("mixed, merged") << ImportMode::Merge << mixed << QList<qint64>{0, 2, 0, 2};
    QTest::newRow("mixed, replaced") << ImportMode::Replace << mixed << QList<qint64>{0, 2, 1, 2};
    const QByteArray same = barFile({monday, tuesday}, 5, 100);
    for (const ImportMode mode : {ImportMode::Merge, ImportMode::Fill, ImportMode::Replace})
        QTest::addRow("same, %d", int(mode)) << mode << same << QList<qint64>{0, 0, 0, 10};
}

void TestSafeImport::countsWhatWasForetold()
{
    QFETCH(const ImportMode, mode);
    QFETCH(const QByteArray, content);
    QFETCH(const QList<qint64>, counts);
    writeFile(path("in.csv"), content);
    const SafeImportOrder wanted = order({path("in.csv")}, mode);
    const tadata::ImportOutlook foretold = outlook(wanted);
    const SafeImportResult result = run(wanted);
    QCOMPARE(result.message, QString());
    QCOMPARE((QList<qint64>{result.added, result.replaced, result.lost, result.idle()}), counts);
    const qint64 same = foretold.count(tadata::CheckedDay::Outcome::Same);
    QCOMPARE(result.sameDays, same);
    QCOMPARE(result.days, static_cast<qint64>(foretold.days.size()) - same);
    QCOMPARE((QList<qint64>{foretold.added, foretold.replaced, foretold.lost, foretold.idle()}),
             counts);
    const bool isTold = tadata::sentencesOf(foretold).join(u'\n').contains(
        QStringLiteral("Новых баров: %1, заменит значения баров: %2")
            .arg(counts[0])
            .arg(counts[1]));
    QVERIFY(isTold);
}

void TestSafeImport::undoGivesBackWhatWas()
{
    QFETCH(const ImportMode, mode);
    const Tree before = store();
    const SafeImportResult result = run(order({path("new.csv")}, mode));
    QVERIFY(store() != before);
    const std::atomic<bool> goesOn = false;
    QCOMPARE(tadata::undoSafeImport(root(), result.point, {}, goesOn).message(), QString());
    QCOMPARE(store(), before);
}

void TestSafeImport::undoIsRefusedWhereTheFilesHaveChanged()
{
    const SafeImportResult result = run(order({path("new.csv")}, ImportMode::Merge));
    const QString day = root().filePath(QStringLiteral("S/B/X/20240116_60.iss"));
    writeFile(day, "100000;1.00;1.00;1.00;1.00;1;0.00;0\n");
    const Tree changed = store();
    const std::atomic<bool> goesOn = false;
    const auto undone = tadata::undoSafeImport(root(), result.point, {}, goesOn);
    QVERIFY2(undone.message().contains(day), qPrintable(undone.message()));
    QCOMPARE(store(), changed);
}

void TestSafeImport::withoutPointsNothingCanBeUndone()
{
    SafeImportOrder wanted = order({path("new.csv")}, ImportMode::Merge);
    wanted.limits.keep = 0;
    const QStringList points = pointNames();
    const SafeImportResult result = run(wanted);
    QVERIFY(result.end == End::Done);
    QCOMPARE(result.point, QString());
    // Those of other jobs go as well, but for the newest.
    QVERIFY(pointNames().size() <= points.size());
}

// The progress is told at each day; at each of these moments somebody cancels.
void TestSafeImport::cancelAtEachMomentTakesEverythingBack()
{
    QFETCH(const ImportMode, mode);
    writeFile(path("more.csv"), barFile({monday, wednesday}, 3, 300));
    const Tree before = store();
    const QStringList points = pointNames();
    QCOMPARE(points.size(), 1); // or those of others would go where none are kept
    int moment = 0;
    for (;; ++moment) {
        SafeImportOrder wanted = order({path("new.csv"), path("more.csv")}, mode);
        // Where no points are kept it makes one for itself all the same.
        wanted.limits.keep = moment % 2 == 0 ? 20 : 0;
        std::atomic<bool> stop = moment == 0;
        int told = 0;
        const auto cancel = [&](int) {
            if (++told == moment)
                stop = true;
        };
        const SafeImportResult result = runSafeImport(wanted, cancel, stop);
        QCOMPARE(result.isCancelled, stop.load());
        if (!result.isCancelled)
            break;
        QVERIFY(result.end == End::TakenBack);
        QCOMPARE(store(), before);
        QCOMPARE(pointNames(), points);
        QCOMPARE(result.point, QString());
        QCOMPARE(result.bars, 0);
    }
    QVERIFY(store() != before);
    QVERIFY(moment > 4);
}

// Whoever cancels between two calls of the system finds the store as it was, or as it is to be.
void TestSafeImport::cancelAtEachCallOfTheSystem()
{
    QFETCH(const ImportMode, mode);
    using testsupport::SystemCall;
    const Tree before = store();
    const SafeImportResult whole = run(order({path("new.csv")}, mode));
    QVERIFY(whole.end == End::Done);
    const Tree wanted = store();
    const std::atomic<bool> goesOn = false;
    QVERIFY(tadata::undoSafeImport(root(), whole.point, {}, goesOn));
    int taken = 0;
    for (const SystemCall call :
         {SystemCall::Open, SystemCall::Write, SystemCall::Close, SystemCall::Rename}) {
        for (const char* const file : {"new.csv", "20240116_60.iss", "20240117_60.iss", ".json"}) {
            std::atomic<bool> stop = false;
            SafeImportResult result;
            {
                const testsupport::Meanwhile cancel(call, QLatin1String(file),
                                                    [&stop] { stop = true; });
                result = runSafeImport(
                    order({path("new.csv")}, mode), [](int) {}, stop);
            }
            if (result.end == End::TakenBack) {
                QVERIFY(result.isCancelled);
                QCOMPARE(store(), before);
                ++taken;
                continue;
            }
            QVERIFY2(result.end == End::Done, qPrintable(result.message));
            QCOMPARE(store(), wanted);
            QVERIFY(tadata::undoSafeImport(root(), result.point, {}, goesOn));
        }
    }
    QVERIFY(taken > 3);
}

void TestSafeImport::cancelEndsTheWaitForALock()
{
    vexdesk::SeriesLocks others;
    QVERIFY(others.take(*vexdesk::restorePlace(root()), {QStringLiteral("S/B/X")},
                        std::chrono::milliseconds(0)));
    SafeImportOrder wanted = order({path("new.csv")}, ImportMode::Merge);
    wanted.wait = std::chrono::hours(1);
    const std::atomic<bool> stop = true;
    const SafeImportResult result = runSafeImport(
        wanted, [](int) {}, stop);
    QVERIFY(result.isCancelled && result.end == End::TakenBack);
}

void TestSafeImport::aLockedSeriesIsLeftAlone()
{
    const Tree before = store();
    vexdesk::SeriesLocks others;
    QVERIFY(others.take(*vexdesk::restorePlace(root()), {QStringLiteral("S/B/X")},
                        std::chrono::milliseconds(0)));
    QString told;
    const std::atomic<bool> goesOn = false;
    const SafeImportResult result = runSafeImport(
        order({path("new.csv")}, ImportMode::Merge), [](int) {}, goesOn,
        [&told](const QString& sentence) { told = sentence; });
    QVERIFY(result.end == End::Failed && !result.isCancelled);
    QVERIFY2(result.message.contains(QStringLiteral("S/B/X")), qPrintable(result.message));
    QVERIFY2(told.contains(QStringLiteral("освободит серию S/B/X")), qPrintable(told));
    QVERIFY2(told.contains(QString::number(QCoreApplication::applicationPid())), qPrintable(told));
    QCOMPARE(store(), before);
    others.release();
    QVERIFY(run(order({path("new.csv")}, ImportMode::Merge)).end == End::Done);
}

void TestSafeImport::aLockThatCannotBeMadeIsSaid()
{
    const QString locks = path("store-restore") + QStringLiteral("/locks");
    QVERIFY(QDir(locks).removeRecursively());
    writeFile(locks, "");
    const SafeImportResult result = run(order({path("new.csv")}, ImportMode::Merge));
    QVERIFY(result.end == End::Failed);
    for (const QString& part : {locks + QStringLiteral("/S/B/X.lock"), qt_error_string(ENOTDIR)})
        QVERIFY2(result.message.contains(part), qPrintable(result.message));
    // By the lock itself.
    QVERIFY(QFile::remove(locks));
    QVERIFY(QDir().mkpath(locks + QStringLiteral("/S/B")));
    const testsupport::Fault full(testsupport::SystemCall::Open, QStringLiteral("/X.lock"), ENOSPC);
    const QString message = run(order({path("new.csv")}, ImportMode::Merge)).message;
    QVERIFY2(message.endsWith(qt_error_string(ENOSPC)), qPrintable(message));
}

void TestSafeImport::aFullDiskTakesEverythingBack()
{
    QFETCH(const ImportMode, mode);
    const Tree before = store();
    // Each of the writes into the store is the first that finds no room.
    int passed = 0;
    for (bool hasFailed = true; hasFailed; ++passed) {
        SafeImportResult result;
        {
            const testsupport::Fault full(testsupport::SystemCall::Write,
                                          QStringLiteral("20240117_60.iss"), ENOSPC, passed);
            const testsupport::Fault fullToo(testsupport::SystemCall::Write, QStringLiteral(".tmp"),
                                             ENOSPC, passed);
            result = run(order({path("new.csv")}, mode));
            hasFailed = full.failed() + fullToo.failed() > 0;
        }
        if (!hasFailed) {
            QVERIFY(result.end == End::Done);
            break;
        }
        // All was written but the record of the point: it can be put back as it is.
        if (result.end == End::Done) {
            QVERIFY(!result.message.isEmpty());
            const std::atomic<bool> goesOn = false;
            QCOMPARE(tadata::undoSafeImport(root(), result.point, {}, goesOn).message(), QString());
            QCOMPARE(store(), before);
            continue;
        }
        QVERIFY2(result.message.contains(qt_error_string(ENOSPC)), qPrintable(result.message));
        QVERIFY2(result.end == End::TakenBack, qPrintable(result.message));
        QVERIFY2(result.message.contains(m_dir->path()), qPrintable(result.message));
        QVERIFY2(result.message.contains(qt_error_string(ENOSPC)), qPrintable(result.message));
        QCOMPARE(store(), before);
    }
    QVERIFY(passed > 0);
}

// It must not pass for one of which nothing is stored.
void TestSafeImport::aStoreThatMayNotBeWrittenIsSaid()
{
    QFETCH(const ImportMode, mode);
    m_dir.reset();
    const testsupport::OtherUser user;
    const auto remove = qScopeGuard([this] { m_dir.reset(); });
    m_dir = std::make_unique<QTemporaryDir>();
    writeFile(path("new.csv"), barFile({wednesday}, 8, 200));
    writeFile(root().filePath(QStringLiteral("S/B/X/20240115_60.iss")), "");
    const auto check = [&](const char* barred, const char* series, const QString& named) {
        const testsupport::Permissions readOnly(path(barred), 0555);
        const Tree before = store();
        const SafeImportResult result = run(order({path("new.csv")}, mode, series));
        QVERIFY2(result.end == End::TakenBack, qPrintable(result.message));
        QVERIFY2(result.message.contains(qt_error_string(EACCES)), qPrintable(result.message));
        QVERIFY2(result.message.contains(named), qPrintable(result.message));
        QCOMPARE(store(), before);
    };
    check("store/S/B/X", "S/B/X", root().filePath(QStringLiteral("S/B/X/20240117_60.iss")));
    check("store/S/B", "S/B/Y", root().filePath(QStringLiteral("S/B/Y")));
}

void TestSafeImport::aSeriesThatCannotBeListedIsNamed()
{
    const testsupport::OtherUser user;
    const QTemporaryDir own;
    const QDir store(own.filePath(QStringLiteral("store")));
    const QString file = own.filePath(QStringLiteral("new.csv"));
    writeFile(file, barFile({monday}, 5, 100));
    QVERIFY(run(orderOf(choicesOf({file}, ImportMode::Replace), store)).end == End::Done);
    const Tree before = readTree(store);
    for (const ImportMode mode : {ImportMode::Replace, ImportMode::Merge, ImportMode::Fill}) {
        const SafeImportOrder wanted = orderOf(choicesOf({file}, mode), store);
        const std::atomic<bool> goesOn = false;
        const testsupport::Permissions none(store.filePath(QStringLiteral("S/B/X")), 0);
        const auto outlooks = tadata::checkChoices(
            wanted.choices, wanted.files, store, 10, [](int) {}, goesOn);
        QVERIFY2(outlooks, qPrintable(outlooks.message()));
        QVERIFY2(outlooks->front().refusal.contains(store.filePath(QStringLiteral("S/B/X"))),
                 qPrintable(outlooks->front().refusal));
        const SafeImportResult result = run(wanted);
        QVERIFY(result.end != End::Done);
        QVERIFY2(result.message.contains(store.filePath(QStringLiteral("S/B/X"))),
                 qPrintable(result.message));
    }
    QCOMPARE(readTree(store), before);
}

void TestSafeImport::aBadLineTakesEverythingBack()
{
    const Tree before = store();
    writeFile(path("bad.csv"), barFile({tuesday, wednesday}, 20, 200) + "nonsense\n");
    const SafeImportResult result = run(order({path("bad.csv")}, ImportMode::Replace));
    QVERIFY(result.end == End::TakenBack && !result.isCancelled);
    QVERIFY2(result.message.contains(QStringLiteral("42")), qPrintable(result.message));
    QCOMPARE(store(), before);

    SafeImportOrder passing = order({path("bad.csv")}, ImportMode::Replace);
    passing.choices.ways.skipsBad = true;
    const SafeImportResult passed = run(passing);
    QVERIFY(passed.end == End::Done);
    QCOMPARE(passed.badLines, 1);
}

void TestSafeImport::aBadStoredLineIsNamedWithAWayOut()
{
    const QString day = root().filePath(QStringLiteral("S/B/X/20240116_60.iss"));
    writeFile(day, "garbage\n");
    for (const ImportMode mode : {ImportMode::Merge, ImportMode::Fill}) {
        const tadata::ImportOutlook stopped = outlook(order({path("new.csv")}, mode));
        QVERIFY(!stopped.wouldImport);
        const QString why = tadata::whyItStops(stopped);
        for (const QString& part : {day, QStringLiteral("«Заменить дни»")})
            QVERIFY2(why.contains(part), qPrintable(why));
    }
    const SafeImportOrder replacing = order({path("new.csv")}, ImportMode::Replace);
    QVERIFY(outlook(replacing).wouldImport);
    const SafeImportResult result = run(replacing);
    QCOMPARE(result.message, QString());
    QVERIFY(result.end == End::Done);
    QVERIFY(outlook(order({path("new.csv")}, ImportMode::Merge)).wouldImport);
}

void TestSafeImport::badLinesAlonePassForNothing()
{
    writeFile(path("bad.csv"), barFile({tuesday}, 8, 200));
    SafeImportOrder wanted = order({path("bad.csv")}, ImportMode::Merge);
    wanted.choices.ways.skipsBad = true;
    wanted.files[0].layout.details.dateFormat = QStringLiteral("dd.MM.yy");
    const SafeImportResult result = run(wanted);
    QVERIFY(result.end != End::Done);
    QVERIFY(!result.message.isEmpty());
}

void TestSafeImport::aFileThatHasChangedSinceIsNotImported()
{
    const SafeImportOrder wanted = order({path("new.csv")}, ImportMode::Replace);
    const Tree before = store();
    writeFile(path("new.csv"), barFile({tuesday, wednesday}, 9, 200));
    const SafeImportResult result = run(wanted);
    QVERIFY(result.end == End::TakenBack);
    QVERIFY2(result.message.contains(path("new.csv")), qPrintable(result.message));
    QCOMPARE(store(), before);
}

void TestSafeImport::aFileThatChangesMeanwhileIsTakenBack()
{
    const Tree before = store();
    const SafeImportOrder wanted = order({path("new.csv")}, ImportMode::Replace);
    const testsupport::Meanwhile grows(testsupport::SystemCall::Write,
                                       QStringLiteral("20240117_60.iss"), [this] {
                                           QFile file(path("new.csv"));
                                           QVERIFY(file.open(QIODevice::Append));
                                           file.write("20240118,100000,1.00,1.00,1.00,1.00,1\n");
                                       });
    const SafeImportResult result = run(wanted);
    QVERIFY2(result.end == End::TakenBack, qPrintable(result.message));
    QCOMPARE(store(), before);
}

// A day may be written anew in its place, so that its directory is the same.
void TestSafeImport::aStoreThatHasChangedSinceIsNotImportedInto()
{
    QFETCH(const ImportMode, mode);
    SafeImportOrder wanted = order({path("new.csv")}, mode);
    const std::atomic<bool> goesOn = false;
    const auto looks = tadata::checkChoices(
        wanted.choices, wanted.files, root(), 10, [](int) {}, goesOn);
    QVERIFY(looks);
    wanted.stamps = looks->front().stamps;
    QCOMPARE(wanted.stamps.size(), 1);
    QFile day(path("store/S/B/X/20240116_60.iss"));
    QVERIFY(day.open(QIODevice::Append));
    day.write("235900;1;1;1;1;0;0;0\n");
    day.close();
    const Tree before = store();
    const SafeImportResult result = run(wanted);
    QVERIFY(result.end == End::TakenBack && !result.isCancelled);
    QVERIFY2(result.message.contains(path("store/S/B/X")), qPrintable(result.message));
    QCOMPARE(store(), before);
    // Who has looked again imports.
    wanted.stamps = tadata::checkChoices(
                        wanted.choices, wanted.files, root(), 10, [](int) {}, goesOn)
                        ->front()
                        .stamps;
    QVERIFY(run(wanted).end == End::Done);
}

void TestSafeImport::directoriesThatWereMadeGoToo()
{
    QFETCH(const ImportMode, mode);
    QVERIFY(QDir(path("store/S")).removeRecursively());
    writeFile(path("bad.csv"), barFile({tuesday, wednesday}, 20, 200) + "nonsense\n");
    const SafeImportResult result = run(order({path("bad.csv")}, mode));
    QVERIFY(result.end == End::TakenBack);
    QVERIFY(!QFileInfo::exists(path("store/S")));
    QVERIFY(QFileInfo::exists(path("store")));
}

void TestSafeImport::oneOfManyThatFailsTakesAllBack()
{
    writeFile(path("bad.csv"), barFile({wednesday}, 30, 200) + "nonsense\n");
    const Tree before = store();
    const SafeImportResult result =
        run(order({path("new.csv"), path("bad.csv")}, ImportMode::Merge));
    QVERIFY(result.end == End::TakenBack);
    QCOMPARE(store(), before);
}

void TestSafeImport::tickersGoToSeriesOfTheirOwn()
{
    const QByteArray ofY = barFile({monday}, 4, 300, "Y");
    writeFile(path("both.csv"), barFile({wednesday}, 4, 200, "X") + ofY.mid(ofY.indexOf('\n') + 1));
    const SafeImportResult result =
        run(order({path("both.csv")}, ImportMode::Replace, "S/B/{ticker}"));
    QCOMPARE(result.message, QString());
    QCOMPARE(result.days, 2);
    QVERIFY(store().contains(QStringLiteral("S/B/X/20240117_60.iss")));
    QVERIFY(store().contains(QStringLiteral("S/B/Y/20240115_60.iss")));
}

void TestSafeImport::anUnknownTickerChangesNothing()
{
    const Tree before = store();
    writeFile(path("z.csv"), barFile({wednesday}, 4, 200, "Z"));
    const SafeImportResult result =
        run(order({path("z.csv")}, ImportMode::Replace, "S/B/{ticker}"));
    QVERIFY(result.end == End::Failed);
    QVERIFY2(result.message.contains(QStringLiteral("S/B/Z")), qPrintable(result.message));
    QCOMPARE(store(), before);
}

void TestSafeImport::whatIsForetoldHappens_data()
{
    QTest::addColumn<QByteArrayList>("contents");
    QTest::addColumn<QByteArray>("series");
    QTest::addColumn<int>("writtenSeries"); // -1: it does not begin
    const QByteArray one = "S/B/X";
    const QByteArray many = "S/B/{ticker}";
    const QByteArray good = barFile({wednesday}, 30, 200);
    const QByteArray header = good.left(good.indexOf('\n') + 1);
    const QByteArray bad = header + "20240117,100000,1.00,x,1.00,1.00,1\n";
    const QByteArray goodX = barFile({wednesday}, 30, 200, "X");
    const QByteArray badLine = "20240117,110000,1.00,x,1.00,1.00,1,";
    QTest::newRow("good and bad") << QByteArrayList{good, bad} << one << 1;
    QTest::newRow("bad alone") << QByteArrayList{bad, bad} << one << -1;
    QTest::newRow("unknown, bad") << QByteArrayList{goodX + badLine + "Z\n"} << many << 1;
    QTest::newRow("known, bad") << QByteArrayList{goodX + badLine + "Y\n"} << many << 1;
    QTest::newRow("unknown, good")
        << QByteArrayList{goodX + badLine + "Z\n20240117,120000,1.00,1.00,1.00,1.00,1,Z\n"} << many
        << -1;
    QTest::newRow("tickers bad") << QByteArrayList{goodX.left(goodX.indexOf('\n') + 1) + badLine +
                                                   "X\n" + badLine + "Z\n"}
                                 << many << -1;
}

void TestSafeImport::whatIsForetoldHappens()
{
    QFETCH(const QByteArrayList, contents);
    QFETCH(const QByteArray, series);
    QFETCH(const int, writtenSeries);
    // What bad lines leave to be guessed is given.
    writeFile(
        path("whole.csv"),
        barFile({wednesday}, 30, 200, series.contains("ticker") ? QByteArray("X") : QByteArray()));
    const auto whole = order({path("whole.csv")}, ImportMode::Merge, series.constData());
    const auto& known = whole.files.front().layout.details;
    QStringList files;
    for (const QByteArray& content : contents) {
        files.append(m_dir->filePath(QStringLiteral("%1.csv").arg(files.size())));
        writeFile(files.last(), content);
    }
    for (const ImportMode mode : {ImportMode::Merge, ImportMode::Fill, ImportMode::Replace}) {
        auto choices = choicesOf(files, mode, series.constData());
        choices.ways.skipsBad = true;
        choices.given = {.separator = known.separator,
                         .dateFormat = known.dateFormat,
                         .timeFormat = known.timeFormat,
                         .hasHeader = true,
                         .timeframe = 60,
                         .columns = known.columns};
        const SafeImportOrder wanted = orderOf(choices, root());
        const tadata::ImportOutlook foretold = outlook(wanted);
        const SafeImportResult result = run(wanted);
        QVERIFY2(foretold.wouldImport == (writtenSeries > 0),
                 qPrintable(foretold.stops.join(u'\n')));
        QVERIFY2((result.end == End::Done) == foretold.wouldImport, qPrintable(result.message));
        if (foretold.wouldImport)
            QCOMPARE(foretold.series, writtenSeries);
    }
}

void TestSafeImport::aTickerThatComesBackIsToldInWordsOfTheWindow()
{
    const auto linesOf = [](const char* ticker) {
        const QByteArray file = barFile({wednesday}, 4, 200, ticker);
        return file.mid(file.indexOf('\n') + 1);
    };
    writeFile(path("again.csv"), barFile({wednesday}, 4, 200, "X") + linesOf("Y") + linesOf("X"));
    const tadata::ImportOutlook foretold =
        outlook(order({path("again.csv")}, ImportMode::Replace, "S/B/{ticker}"));
    QVERIFY(!foretold.wouldImport);
    const QString why = tadata::whyItStops(foretold);
    QVERIFY2(why.contains(QStringLiteral("«Добавить»")) && !why.contains(QStringLiteral("--")),
             qPrintable(why));
}

QTEST_GUILESS_MAIN(TestSafeImport)
#include "tst_safeimport.moc"
