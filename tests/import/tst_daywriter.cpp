// SPDX-License-Identifier: MIT
#include "daywriter.h"

#include <QtTest/QTest>

class TestDayWriter final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void derivesMinutes_data();
    void derivesMinutes();
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

QTEST_GUILESS_MAIN(TestDayWriter)
#include "tst_daywriter.moc"
