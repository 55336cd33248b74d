// SPDX-License-Identifier: MIT
// What is found out in the background, and the list of what is wrong.
#include "importpreparation.h"

#include "importfiles.h"
#include "importrunner.h"
#include "importwatch.h"
#include "problemsmodel.h"
#include "support/eventually.h"
#include "support/filetree.h"
#include "support/otheruser.h"
#include "support/strictlog.h"

#include <QtCore/QEventLoop>
#include <QtCore/QTemporaryDir>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <functional>
#include <memory>

using tadata::ImportChoices;
using tadata::ImportPreparation;
using tadata::ImportRunner;
using tadata::ImportWatch;
using tadata::ProblemsModel;
using testsupport::barFile;
using testsupport::choicesOf;
using testsupport::readTree;
using testsupport::writeFile;

class TestImportPreparation final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dir.reset(); }

    void findsTheLayoutAndThenTheOutlook();
    void onlyTheLastChoicesAreTold();
    void mayGoAtAnyTime();
    void listsProblemsByKind();
    void runsAndUndoes();
    void theRunnersEndTakesEverythingBack();
    void seesWhatBecomesOfASeries_data();
    void seesWhatBecomesOfASeries();
    void seesRightsThatComeBack();
    void seesTheLastOfManySeries();
    void seesWhatBecomesOfAFile();

private:
    QString path(const char* name) const { return m_dir->filePath(QLatin1String(name)); }
    QDir root() const { return QDir(path("store")); }

    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestImportPreparation::init()
{
    testsupport::failOnStrayWarnings();
    testsupport::knowSeries();
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    writeFile(path("in.csv"), barFile({QDate(2024, 1, 15), QDate(2024, 1, 16)}, 9, 100));
    QList<QDate> days;
    for (int day = 0; day < 400; ++day)
        days.append(QDate(2022, 1, 1).addDays(day));
    writeFile(path("large.csv"), barFile(days, 300, 100));
}

void TestImportPreparation::findsTheLayoutAndThenTheOutlook()
{
    ImportPreparation preparation(root());
    QSignalSpy layouts(&preparation, &ImportPreparation::layoutsFound);
    QSignalSpy checks(&preparation, &ImportPreparation::checked);
    preparation.setChoices(choicesOf({path("in.csv")}, ImportMode::Merge));
    QVERIFY(!preparation.isChecked());
    EVENTUALLY_EQUAL(checks.size(), 1);
    QCOMPARE(layouts.size(), 1);
    QVERIFY(preparation.isChecked());
    QCOMPARE(preparation.files().size(), size_t(1));
    QCOMPARE(preparation.outlooks().size(), size_t(1));
    QCOMPARE(preparation.outlook().days.size(), size_t(2));
    QVERIFY(preparation.outlook().wouldImport);
    QVERIFY(!root().exists());
}

void TestImportPreparation::onlyTheLastChoicesAreTold()
{
    ImportPreparation preparation(root());
    QSignalSpy checks(&preparation, &ImportPreparation::checked);
    QSignalSpy failures(&preparation, &ImportPreparation::failed);
    const ImportChoices large = choicesOf({path("large.csv")}, ImportMode::Merge);
    const ImportChoices last = choicesOf({path("in.csv")}, ImportMode::Fill);
    // Some are ended while they guess, others at the first that is heard of their check: that comes
    // before its end can be told, however late this thread hears of either.
    int ended = 0;
    connect(&preparation, &ImportPreparation::progressed, this, [&] {
        if (preparation.choices().files == last.files)
            return;
        ++ended;
        preparation.setChoices(last);
        if (ended < 5)
            preparation.setChoices(large);
        QVERIFY(!preparation.isChecked());
    });
    preparation.setChoices(large);
    EVENTUALLY_EQUAL(checks.size(), 1);
    QCOMPARE(ended, 5);
    QCOMPARE(preparation.outlooks()[0].path, path("in.csv"));
    QCOMPARE(failures.size(), 0);
}

void TestImportPreparation::mayGoAtAnyTime()
{
    for (int i = 0; i < 6; ++i) {
        ImportPreparation preparation(root());
        QSignalSpy progress(&preparation, &ImportPreparation::progressed);
        preparation.setChoices(choicesOf({path("large.csv")}, ImportMode::Merge));
        if (i % 2 == 1)
            EVENTUALLY(!progress.isEmpty());
    }
}

void TestImportPreparation::listsProblemsByKind()
{
    const std::atomic<bool> goesOn = false;
    const QByteArray good = barFile({QDate(2024, 1, 15)}, 30, 100);
    writeFile(path("bad.csv"), good + "bad\nworse\n" + good.mid(good.indexOf('\n') + 1));
    const auto choices = choicesOf({path("bad.csv")}, ImportMode::Merge);
    const auto order = testsupport::orderOf(choices, root());
    ProblemsModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    const auto show = [&](qint64 most) {
        model.setOutlooks(*tadata::checkChoices(
            choices, order.files, root(), most, [](int) {}, goesOn));
    };
    show(100);
    QCOMPARE(model.rowCount(), 3); // bad lines, out of order, duplicates
    const QModelIndex bad = model.index(0, 0);
    QVERIFY(bad.data().toString().endsWith(QStringLiteral(": 2")));
    QCOMPARE(model.rowCount(bad), 2);
    QCOMPARE(model.index(1, 0, bad).data(ProblemsModel::LineRole).toLongLong(), 33);
    QCOMPARE(model.index(1, 0, bad).data(ProblemsModel::FileRole).toString(), path("bad.csv"));
    QCOMPARE(model.noticesOf(path("bad.csv")).size(), 32);
    QVERIFY(model.noticesOf(path("other.csv")).isEmpty());
    // Line 34 is earlier than the one before, and its time has been there.
    QVERIFY(model.noticesOf(path("bad.csv")).value(34).contains(u'\n'));
    show(1);
    QCOMPARE(model.rowCount(model.index(0, 0)), 2);
    const QModelIndex more = model.index(1, 0, model.index(0, 0));
    QVERIFY(more.data().toString().contains(u'1'));
    QVERIFY(!more.data(ProblemsModel::LineRole).isValid());
    model.setOutlooks({});
    QCOMPARE(model.rowCount(), 0);
}

void TestImportPreparation::runsAndUndoes()
{
    ImportRunner runner;
    QSignalSpy ended(&runner, &ImportRunner::finished);
    QSignalSpy undone(&runner, &ImportRunner::undone);
    runner.start(testsupport::orderOf(choicesOf({path("in.csv")}, ImportMode::Merge), root()));
    QVERIFY(runner.isRunning() && !runner.canUndo());
    EVENTUALLY_EQUAL(ended.size(), 1);
    QVERIFY(runner.canUndo());
    QCOMPARE(readTree(root()).size(), 2);
    runner.undo();
    QVERIFY(runner.isRunning());
    EVENTUALLY_EQUAL(undone.size(), 1);
    QVERIFY(!runner.canUndo() && !runner.isRunning());
    QCOMPARE(readTree(root()).size(), 0);
}

void TestImportPreparation::theRunnersEndTakesEverythingBack()
{
    for (int i = 0; i < 4; ++i) {
        ImportRunner runner;
        QEventLoop untilMuchIsDone;
        int told = 0;
        connect(&runner, &ImportRunner::progressed, this, [&] {
            if (++told == 10)
                untilMuchIsDone.quit();
        });
        runner.start(
            testsupport::orderOf(choicesOf({path("large.csv")}, ImportMode::Replace), root()));
        if (i % 2 == 1)
            untilMuchIsDone.exec();
        if (i == 3)
            runner.cancel();
    }
    QCOMPARE(readTree(root()).size(), 0);
}

void TestImportPreparation::seesWhatBecomesOfASeries_data()
{
    QTest::addColumn<int>("deed");
    QTest::newRow("a day in its place") << 0;
    QTest::newRow("a day comes") << 1;
    QTest::newRow("a day goes") << 2;
    QTest::newRow("what bars a day goes") << 3;
    QTest::newRow("the series goes") << 4;
}

void TestImportPreparation::seesWhatBecomesOfASeries()
{
    QFETCH(const int, deed);
    const QString series = root().filePath(QStringLiteral("S/B/X"));
    const QString day = series + QStringLiteral("/20240115_60.iss");
    const QString bar = series + QStringLiteral("/20240116_60.iss");
    writeFile(day, "first\n");
    QVERIFY(QDir().mkpath(bar));
    ImportWatch watch;
    QSignalSpy store(&watch, &ImportWatch::storeChanged);
    QSignalSpy files(&watch, &ImportWatch::filesChanged);
    watch.follow({}, {{series, tadata::dayStamp(QDir(series))}});
    const QList<std::function<bool()>> deeds{
        [&] {
            QFile file(day);
            return file.open(QIODevice::ReadWrite) && file.write("other\n") == 6;
        },
        [&] {
            writeFile(series + QStringLiteral("/20240117_60.iss"), "new\n");
            return true;
        },
        [&] { return QFile::remove(day); },
        [&] { return QDir().rmdir(bar); },
        [&] { return QDir(series).removeRecursively(); },
    };
    QVERIFY(deeds[deed]());
    EVENTUALLY_EQUAL(store.size(), 1);
    QCOMPARE(files.size(), 0);
}

void TestImportPreparation::seesRightsThatComeBack()
{
    const testsupport::OtherUser user;
    const QTemporaryDir dir;
    const QString series = dir.filePath(QStringLiteral("store/S/B/X"));
    const QString day = series + QStringLiteral("/20240115_60.iss");
    writeFile(day, "first\n");
    const QString file = dir.filePath(QStringLiteral("in.csv"));
    writeFile(file, barFile({QDate(2024, 1, 15)}, 9, 100));
    const std::atomic<bool> goesOn = false;
    for (const QString& barred : {day, series, dir.filePath(QStringLiteral("store")), file}) {
        ImportWatch watch;
        QSignalSpy changes(&watch, barred == file ? &ImportWatch::filesChanged
                                                  : &ImportWatch::storeChanged);
        {
            const testsupport::Permissions none(barred, 0);
            watch.follow(tadata::layOutFiles({file}, {}, goesOn),
                         {{series, tadata::dayStamp(QDir(series))}});
        }
        EVENTUALLY_EQUAL(changes.size(), 1);
    }
}

void TestImportPreparation::seesTheLastOfManySeries()
{
    tadata::DayStamps stamps;
    QString last;
    for (int series = 0; series < 300; ++series) {
        last = root().filePath(QStringLiteral("S/B/X%1").arg(series));
        writeFile(last + QStringLiteral("/20240115_60.iss"), "first\n");
        stamps.insert(last, tadata::dayStamp(QDir(last)));
    }
    last = stamps.keys().constLast();
    ImportWatch watch;
    QSignalSpy changes(&watch, &ImportWatch::storeChanged);
    watch.follow({}, stamps);
    writeFile(last + QStringLiteral("/20240116_60.iss"), "second\n");
    EVENTUALLY_EQUAL(changes.size(), 1);
}

void TestImportPreparation::seesWhatBecomesOfAFile()
{
    const std::atomic<bool> goesOn = false;
    ImportWatch watch;
    QSignalSpy changes(&watch, &ImportWatch::filesChanged);
    const auto follow = [&] {
        watch.follow(tadata::layOutFiles({path("large.csv"), path("in.csv")}, {}, goesOn));
    };
    follow();
    writeFile(path("in.csv"), barFile({QDate(2024, 1, 15)}, 8, 100));
    EVENTUALLY_EQUAL(changes.size(), 1);
    follow();
    QVERIFY(QFile::remove(path("in.csv")));
    EVENTUALLY_EQUAL(changes.size(), 2);
    follow();
    writeFile(path("in.csv"), barFile({QDate(2024, 1, 15)}, 8, 100));
    EVENTUALLY_EQUAL(changes.size(), 3);
}

QTEST_GUILESS_MAIN(TestImportPreparation)
#include "tst_importpreparation.moc"
