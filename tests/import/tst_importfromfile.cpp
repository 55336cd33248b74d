// SPDX-License-Identifier: MIT
#include "importertadata.h"

#include "series.h"
#include "support/child.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QProgressDialog>

#include <QtConcurrent/QtConcurrent>

using testsupport::detailsOfSeries;

class TestImportFromFile final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void showsItsProgressOnTheThreadOfTheDialog();
    void makesTheSeriesDirectoryEvenForAHeaderAlone();
    void makesNothingForAMissingFile();
    void writesNothingOutsideTheStore();

private:
    QDir m_user;
};

void TestImportFromFile::init()
{
    testsupport::failOnStrayWarnings();
    m_user = testsupport::newUserFolder();
}

void TestImportFromFile::cleanup()
{
    QVERIFY(m_user.removeRecursively());
}

void TestImportFromFile::showsItsProgressOnTheThreadOfTheDialog()
{
    const QTemporaryDir input;
    const QString file = input.filePath(QStringLiteral("bars.txt"));
    testsupport::writeFile(file, "20240115;100000;1;1;1;1\n20240116;100000;2;2;2;2\n");

    QProgressDialog dialog;
    dialog.setRange(0, 100);
    dialog.setAutoReset(false);
    dialog.setAutoClose(false);
    QList<int> values;
    QList<QThread*> threads;
    connect(
        testsupport::child<QProgressBar>(&dialog), &QProgressBar::valueChanged, &dialog,
        [&](int value) {
            values.append(value);
            threads.append(QThread::currentThread());
        },
        Qt::DirectConnection);

    QFuture<QString> job = QtConcurrent::run(importFromFile, &dialog, file, detailsOfSeries(0));
    QVERIFY(job.result().isNull());
    QTRY_COMPARE(dialog.value(), 100);
    QCOMPARE(values.last(), 100);
    for (const QThread* thread : threads)
        QCOMPARE(thread, QThread::currentThread());

    const QDir series(m_user.filePath(QStringLiteral("tadata/S/B/X")));
    QCOMPARE(testsupport::readTree(series),
             (QMap<QString, QByteArray>{{"20240115_60.iss", "100000;1;1;1;1;0;0;0\n"},
                                        {"20240116_60.iss", "100000;2;2;2;2;0;0;0\n"}}));
}

void TestImportFromFile::makesTheSeriesDirectoryEvenForAHeaderAlone()
{
    const QTemporaryDir input;
    const QString file = input.filePath(QStringLiteral("bars.txt"));
    testsupport::writeFile(file, "<DATE>;<TIME>\n");
    ImportDetails details = detailsOfSeries(0);
    details.firstLineIsHeader = true;
    QProgressDialog dialog;
    QVERIFY(importFromFile(&dialog, file, details).isNull());
    const QDir series(m_user.filePath(QStringLiteral("tadata/S/B/X")));
    QVERIFY(series.exists());
    QVERIFY(series.isEmpty());
}

void TestImportFromFile::makesNothingForAMissingFile()
{
    const QTemporaryDir input;
    const QString file = input.filePath(QStringLiteral("missing.txt"));
    QProgressDialog dialog;
    QCOMPARE(importFromFile(&dialog, file, detailsOfSeries(0)),
             QString(QStringLiteral("Невозможно открыть файл ") + file));
    QVERIFY(!m_user.exists());
}

void TestImportFromFile::writesNothingOutsideTheStore()
{
    testsupport::writeFile(m_user.filePath(QStringLiteral("tadata/S/B")), "in the way");
    const QTemporaryDir input;
    const QString file = input.filePath(QStringLiteral("bars.txt"));
    testsupport::writeFile(file, "20240115;100000;1;1;1;1\n");
    QProgressDialog dialog;
    const QString blocked = m_user.absoluteFilePath(QStringLiteral("tadata/S/B/X/20240115_60.iss"));
    QCOMPARE(importFromFile(&dialog, file, detailsOfSeries(0)),
             QString(QStringLiteral("Невозможно открыть файл ") + blocked));
    QCOMPARE(testsupport::readTree(m_user),
             (QMap<QString, QByteArray>{{"tadata/S/B", "in the way"}}));
}

QTEST_MAIN(TestImportFromFile)
#include "tst_importfromfile.moc"
