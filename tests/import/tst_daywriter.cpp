// SPDX-License-Identifier: MIT
#include "daywriter.h"

#include "support/filetree.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

class TestDayWriter final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void derivesMinutes_data();
    void derivesMinutes();
    void makesItsDirectoryOnce();
};

void TestDayWriter::derivesMinutes_data()
{
    QTest::addColumn<QByteArray>("seconds");
    QTest::addColumn<QByteArray>("whole");
    QTest::addColumn<QByteArray>("open");
    const auto row = [](const char* name, const char* seconds, const char* whole,
                        const char* open) {
        QTest::newRow(name) << QByteArray(seconds) << QByteArray(whole) << QByteArray(open);
    };
    row("nothing", "", "", "");
    row("one", "100001;1;1;1;1;5;2.5;7\n", "", "100100;1;1;1;1;5;2.5;7\n");
    row("of one minute", "100001;1;1;1;1;5;2.5;7\n100100;2;3;0;2;5;2.5;8\n", "",
        "100100;1;3;0;2;10;5.0;8\n");
    row("of two minutes", "100001;1;1;1;1;5;2.5;7\n100101;2;3;0;2;5;2.5;8\n",
        "100100;1;1;1;1;5;2.5;7\n", "100200;2;3;0;2;5;2.5;8\n");
    row("what is no bar", "x\n100001;1;1;1;1;5;2.5;7\n\n", "", "100100;1;1;1;1;5;2.5;7\n");
}

void TestDayWriter::derivesMinutes()
{
    QFETCH(const QByteArray, seconds);
    const tadata::DerivedMinutes minutes = tadata::derivedMinutes(seconds);
    QTEST(minutes.whole, "whole");
    QTEST(minutes.open, "open");
}

// A disk that goes in between takes it along: the days after it must not lie elsewhere.
void TestDayWriter::makesItsDirectoryOnce()
{
    const QTemporaryDir store;
    const QDir series(store.filePath(QStringLiteral("S/B/X")));
    const QDate day(2024, 1, 15);
    tadata::DayWriter writer(series, 60, nullptr);
    QVERIFY(writer.write(day, "new\n", std::nullopt));
    QCOMPARE(testsupport::readFile(series.filePath(QStringLiteral("20240115_60.iss"))),
             QByteArray("new\n"));

    QVERIFY(
        QDir().rename(store.filePath(QStringLiteral("S")), store.filePath(QStringLiteral("T"))));
    const auto written = writer.write(day.addDays(1), "new\n", std::nullopt);
    QVERIFY(!written);
    QVERIFY(written.message().contains(series.filePath(QStringLiteral("20240116_60.iss"))));
    QVERIFY(!QFileInfo::exists(store.filePath(QStringLiteral("S"))));
}

QTEST_GUILESS_MAIN(TestDayWriter)
#include "tst_daywriter.moc"
