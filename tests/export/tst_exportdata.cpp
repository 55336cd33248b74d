// SPDX-License-Identifier: MIT
// The export as the command runs it: behind a dialog whose progress it goes on from.

#include "exportertadata.h"

#include "support/child.h"
#include "support/filetree.h"
#include "support/series.h"
#include "support/strictlog.h"

#include <vexdesk/history/storepaths.h>
#include <vexdesk/terminal/core.h>
#include <vexdesk/terminal/deals.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QProgressDialog>

#include <mutex>

using testsupport::readFile;

class TestExportData final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void showsProgressFromWhereTheDialogStands();
    void exportsThePastDaysOfTheStore();
    void anIntervalWithoutDatesIsEmpty_data();
    void anIntervalWithoutDatesIsEmpty();
    void leavesADayFileOfTheStoreAlone();

private:
    ExportDetails details() const;
    void addDeals(int count) const;
    QString output() const { return m_dir->filePath(QStringLiteral("out.txt")); }
    QString dayFile() const
    {
        return vexdesk::seriesPath(vexdesk::storePlace(), QStringLiteral("NORD"),
                                   QStringLiteral("MAIN"), QStringLiteral("ALFA")) +
               QStringLiteral("/20240115_60.iss");
    }

    std::unique_ptr<vexdesk::Core> m_core;
    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestExportData::init()
{
    testsupport::failOnStrayWarnings();
    vexdesk::ReferenceData::install(vexdesk::ReferenceData::demonstration());
    m_core = std::make_unique<vexdesk::Core>();
    m_dir = std::make_unique<QTemporaryDir>();
    testsupport::writeFile(dayFile(), "100000;1;1;1;1;0;0;0\n");
}

void TestExportData::cleanup()
{
    m_dir.reset();
    m_core.reset();
    QVERIFY(ICore::getDir(QString(), false).removeRecursively());
}

ExportDetails TestExportData::details() const
{
    ExportDetails details;
    testsupport::setSeries(details, "NORD", "MAIN", "ALFA");
    details.timeframe = 60;
    details.separator = QStringLiteral(",");
    details.dateFormat = QStringLiteral("yyyyMMdd");
    details.timeFormat = QStringLiteral("hhmmss");
    details.lineFormat = QStringLiteral("OPEN");
    details.dateFrom = QDate(2024, 1, 15);
    details.dateTo = QDate(2024, 1, 15);
    details.outputPath = output();
    return details;
}

void TestExportData::addDeals(int count) const
{
    Table* const table = vexdesk::dealsTable(*m_core->database());
    const vexdesk::DealWriter writer(table);
    const ExportDetails series = details();
    vexdesk::Deal deal;
    deal.stockId = series.stockId;
    deal.boardId = series.boardId;
    deal.securityId = series.securityId;
    deal.price = decimal(5, 0);
    deal.moment =
        datetime(QDateTime(QDate::currentDate(), QTime(10, 0), Qt::UTC).toMSecsSinceEpoch());
    const std::lock_guard lock(*table);
    for (int i = 0; i < count; ++i)
        table->insert(writer.row(deal));
}

void TestExportData::showsProgressFromWhereTheDialogStands()
{
    addDeals(2500);
    QProgressDialog dialog;
    dialog.setAutoReset(false);
    dialog.setMinimumDuration(1000 * 1000);
    dialog.setValue(40);
    const QSignalSpy shown(testsupport::child<QProgressBar>(&dialog), &QProgressBar::valueChanged);
    ExportDetails today = details();
    today.dateFrom = today.dateTo = QDate::currentDate();
    QCOMPARE(exportData(&dialog, today), QString());
    QCoreApplication::processEvents();
    QList<int> values;
    for (const QVariantList& value : shown)
        values.append(value.first().toInt());
    // 1000 and 2000 of 2500 on the way from 40 to 100.
    QCOMPARE(values, QList<int>({64, 88, 100}));
    QCOMPARE(readFile(output()), QByteArray("\xef\xbb\xbf"
                                            "5\n"));
}

void TestExportData::exportsThePastDaysOfTheStore()
{
    QProgressDialog dialog;
    dialog.setMinimumDuration(1000 * 1000);
    QCOMPARE(exportData(&dialog, details()), QString());
    QCOMPARE(readFile(output()), QByteArray("\xef\xbb\xbf"
                                            "1\n"));
}

void TestExportData::anIntervalWithoutDatesIsEmpty_data()
{
    QTest::addColumn<QDate>("from");
    QTest::addColumn<QDate>("to");
    QTest::newRow("none") << QDate() << QDate();
    QTest::newRow("no first day") << QDate() << QDate(2024, 1, 15);
    QTest::newRow("no last day") << QDate(2024, 1, 15) << QDate();
}

void TestExportData::anIntervalWithoutDatesIsEmpty()
{
    QFETCH(const QDate, from);
    QFETCH(const QDate, to);
    QProgressDialog dialog;
    dialog.setMinimumDuration(1000 * 1000);
    ExportDetails series = details();
    series.dateFrom = from;
    series.dateTo = to;
    QCOMPARE(exportData(&dialog, series), QString());
    QCOMPARE(readFile(output()), QByteArray(""));
    // And the settings as they are made.
    ExportDetails defaults;
    defaults.outputPath = output();
    QCOMPARE(exportData(&dialog, defaults), QString());
    QCOMPARE(readFile(output()), QByteArray(""));
}

void TestExportData::leavesADayFileOfTheStoreAlone()
{
    QProgressDialog dialog;
    dialog.setMinimumDuration(1000 * 1000);
    ExportDetails series = details();
    series.outputPath = dayFile();
    const QString error = exportData(&dialog, series);
    QVERIFY2(error.contains(dayFile()), qPrintable(error));
    QCOMPARE(readFile(dayFile()), QByteArray("100000;1;1;1;1;0;0;0\n"));
}

QTEST_MAIN(TestExportData)
#include "tst_exportdata.moc"
