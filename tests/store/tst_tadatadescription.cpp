// SPDX-License-Identifier: MIT
// The settings of jobs as plain records: their fields and the order in which they stand. Programs
// that are compiled with the headers fill them by position.

#include "exportdetails.h"
#include "importdetails.h"
#include "support/strictlog.h"
#include "tadatadescription.h"

#include <QtTest/QTest>

class TestTADataDescription final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void hasItsFieldsInTheirOrder();
    void beginsTheSettingsOfTheJobs();
};

namespace {

TADataDescription filled()
{
    return {1,
            2,
            3,
            QStringLiteral("stock"),
            QStringLiteral("board"),
            QStringLiteral("security"),
            60,
            QStringLiteral(";"),
            QStringLiteral("date"),
            QStringLiteral("time"),
            QStringLiteral("date title"),
            QStringLiteral("time title")};
}

} // namespace

void TestTADataDescription::hasItsFieldsInTheirOrder()
{
    const TADataDescription series = filled();
    QCOMPARE(series.stockId, 1);
    QCOMPARE(series.boardId, 2);
    QCOMPARE(series.securityId, 3);
    QCOMPARE(series.stockCode, QStringLiteral("stock"));
    QCOMPARE(series.boardCode, QStringLiteral("board"));
    QCOMPARE(series.securityName, QStringLiteral("security"));
    QCOMPARE(series.timeframe, 60);
    QCOMPARE(series.separator, QStringLiteral(";"));
    QCOMPARE(series.dateFormat, QStringLiteral("date"));
    QCOMPARE(series.timeFormat, QStringLiteral("time"));
    QCOMPARE(series.dateFormatTitle, QStringLiteral("date title"));
    QCOMPARE(series.timeFormatTitle, QStringLiteral("time title"));
}

void TestTADataDescription::beginsTheSettingsOfTheJobs()
{
    const ImportDetails import{filled(), true, {{1, 2}}};
    QCOMPARE(import.securityName, QStringLiteral("security"));
    QVERIFY(import.firstLineIsHeader);
    QCOMPARE(import.columns.value(1), 2);
    const ExportDetails to{filled(),
                           true,
                           QStringLiteral("DATE"),
                           QDate(2024, 1, 15),
                           QDate(2024, 1, 16),
                           QStringLiteral("out.txt")};
    QCOMPARE(to.stockId, 1);
    QVERIFY(to.addHeader);
    QCOMPARE(to.lineFormat, QStringLiteral("DATE"));
    QCOMPARE(to.dateFrom, QDate(2024, 1, 15));
    QCOMPARE(to.dateTo, QDate(2024, 1, 16));
    QCOMPARE(to.outputPath, QStringLiteral("out.txt"));
}

QTEST_GUILESS_MAIN(TestTADataDescription)
#include "tst_tadatadescription.moc"
