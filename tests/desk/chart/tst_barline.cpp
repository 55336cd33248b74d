// SPDX-License-Identifier: MIT
// The fast reader of imported lines: what it reads is what the reader of all lines reads, to the
// last bit of a number.

#include "desk/chart/barline.h"
#include "desk/chart/wallclock.h"
#include "support/strictlog.h"

#include <QtCore/QRandomGenerator>
#include <QtTest/QTest>

#include <algorithm>

using vexdesk::BarLine;
using vexdesk::readBarLine;
using vexdesk::readImportedLine;
using vexdesk::wallTime;

namespace {

const QDate day(2024, 1, 15);

std::optional<BarLine> fast(QByteArrayView line)
{
    return readImportedLine(line, wallTime(day));
}

QByteArray digits(QRandomGenerator& random, int most)
{
    QByteArray text;
    for (int i = 1 + random.bounded(most); i > 0; --i)
        text += static_cast<char>('0' + random.bounded(10));
    return text;
}

QByteArray number(QRandomGenerator& random)
{
    const QByteArray sign = random.bounded(8) == 0 ? "-" : "";
    const QByteArray fraction = random.bounded(4) == 0 ? "" : '.' + digits(random, 9);
    return sign + digits(random, 8) + fraction;
}

QByteArray randomLine(QRandomGenerator& random)
{
    QByteArray line = QTime(0, 0).addSecs(random.bounded(86400)).toString(u"hhmmss").toLatin1();
    for (int i = 0; i < 4; ++i)
        line += ';' + number(random);
    line += ';' + digits(random, 10);
    line += ';' + number(random);
    return line + ';' + digits(random, 10);
}

// A sign more, less, or another one.
QByteArray spoiled(QRandomGenerator& random, QByteArray line)
{
    constexpr char signs[] = "0123456789;;;;...--++ e\txT:";
    const int at = random.bounded(static_cast<int>(line.size()));
    const char sign = signs[random.bounded(static_cast<int>(sizeof(signs)) - 1)];
    switch (random.bounded(4)) {
    case 0:
        return line.insert(at, sign);
    case 1:
        return line.remove(at, 1);
    case 2:
        line[at] = sign;
        return line;
    default:
        return line.left(at);
    }
}

} // namespace

class TestBarLine final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void readsAsTheReaderOfAllLines();
    void takesWhatImportsWrite_data();
    void takesWhatImportsWrite();
    void leavesTheRest_data();
    void leavesTheRest();
};

void TestBarLine::readsAsTheReaderOfAllLines()
{
    QRandomGenerator random(5);
    int taken = 0;
    int left = 0;
    for (int i = 0; i < 60000; ++i) {
        QByteArray line = randomLine(random);
        for (int faults = random.bounded(3); faults > 0 && !line.isEmpty(); --faults)
            line = spoiled(random, line);
        const std::optional<BarLine> read = fast(line);
        if (!read) {
            ++left;
            continue;
        }
        ++taken;
        const std::optional<BarLine> wanted = readBarLine(line, day);
        if (!wanted || !(read->bar == wanted->bar) || read->decimals != wanted->decimals)
            QFAIL(line.constData());
    }
    QVERIFY2(taken > 10000 && left > 10000, qPrintable(QString::number(taken)));
}

void TestBarLine::takesWhatImportsWrite_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("usual") << QByteArray("102000;120.03;120.06;120.01;120.05;180;21609.00;7");
    QTest::newRow("midnight") << QByteArray("000000;1;1;1;1;0;0;0");
    QTest::newRow("last second") << QByteArray("235959;1;1;1;1;0;0;0");
    QTest::newRow("below nothing") << QByteArray("102000;-1.5;-0.05;-37.63;0.00;1;-1.00;0");
    QTest::newRow("as long as it may be")
        << QByteArray("102000;123456789012345;0.12345678901234;1.00000000000001;1234567.89012345;"
                      "999999999;123456789012.345;999999999");
}

void TestBarLine::takesWhatImportsWrite()
{
    QFETCH(const QByteArray, line);
    const std::optional<BarLine> read = fast(line);
    QVERIFY(read.has_value());
    const std::optional<BarLine> wanted = readBarLine(line, day);
    QVERIFY(read->bar == wanted->bar);
    QCOMPARE(read->decimals, wanted->decimals);
}

void TestBarLine::leavesTheRest_data()
{
    QTest::addColumn<QByteArray>("line");
    for (const char* const line : {"",
                                   "text",
                                   "10200;1;1;1;1;1;1;1",
                                   "240000;1;1;1;1;1;1;1",
                                   "106000;1;1;1;1;1;1;1",
                                   "100060;1;1;1;1;1;1;1",
                                   "102000",
                                   "102000;1;1;1;1",
                                   "102000;1;1;1;1;1;1",
                                   "102000;1;1;1;1;1;1;1;",
                                   "102000;1;1;1;1;1;1;1 ",
                                   "102000;1.;1;1;1;1;1;1",
                                   "102000;.5;1;1;1;1;1;1",
                                   "102000;+1;1;1;1;1;1;1",
                                   "102000;--1;1;1;1;1;1;1",
                                   "102000;1;1;;1;1;1;1",
                                   "102000;1;1;x;1;1;1;1",
                                   "102000;1234567890123456;1;1;1;1;1;1",
                                   "102000;1.234567890123456;1;1;1;1;1;1",
                                   "102000;1;1;1;1;1.00;1;1",
                                   "102000;1;1;1;1;1234567890;1;1",
                                   "102000;1;1;1;1;-1;1;1",
                                   "102000;1;1;1;1;1;1;-1"})
        QTest::newRow(line) << QByteArray(line);
}

void TestBarLine::leavesTheRest()
{
    QFETCH(const QByteArray, line);
    QVERIFY(!fast(line));
}

QTEST_GUILESS_MAIN(TestBarLine)
#include "tst_barline.moc"
