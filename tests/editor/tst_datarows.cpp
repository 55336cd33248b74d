// SPDX-License-Identifier: MIT
#include "datarows.h"

#include "support/dayfiles.h"
#include "support/strictlog.h"

#include <QtTest/QTest>

using tadata::DataRows;
using testsupport::barLine;
using testsupport::editedBarLine;

namespace {

const QDate day(2023, 1, 5);

void appendBar(DataRows& rows, const QTime& time, int number)
{
    rows.append(time.msecsSinceStartOfDay() / 1000, barLine(time, number).chopped(1));
}

} // namespace

class TestDataRows final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void hasNothingOfADayThatWasNotBegun();
    void takesBackADay();
    void tellsBlankRows();
    void keepsRowsWhileMemoryIsGivenBack();
    void givesBackWhatItDoesNotNeed();
    void givesBackTheRoomBehindItsTexts();
    void makesNoMoreRoomThanIsSensible();
};

void TestDataRows::hasNothingOfADayThatWasNotBegun()
{
    DataRows rows;
    QVERIFY(rows.rewritten(day).isEmpty());
    for (const int offset : {0, 4}) {
        rows.beginDay(day.addDays(offset));
        appendBar(rows, QTime(10, 0), offset);
    }
    for (const int offset : {-1, 1, 3, 5})
        QVERIFY(rows.rewritten(day.addDays(offset)).isEmpty());
    QCOMPARE(rows.rewritten(day), editedBarLine(QTime(10, 0), 0));
    QCOMPARE(rows.rewritten(day.addDays(4)), editedBarLine(QTime(10, 0), 4));
}

void TestDataRows::takesBackADay()
{
    DataRows rows;
    rows.beginDay(day);
    appendBar(rows, QTime(10, 0), 1);
    for (int time = 0; time < 2; ++time) {
        rows.beginDay(day.addDays(1));
        rows.appendBlank();
        appendBar(rows, QTime(10, 0), 2);
        rows.takeBackDay();
        QCOMPARE(rows.size(), 1);
        QVERIFY(rows.rewritten(day.addDays(1)).isEmpty());
    }
    // Nor does its text stay.
    constexpr qsizetype large = 100'000;
    const qsizetype memory = rows.memory();
    rows.beginDay(day.addDays(1), QByteArray(large, 'x'));
    rows.takeBackDay();
    QVERIFY(rows.memory() < memory + large);
    rows.beginDay(day.addDays(2));
    appendBar(rows, QTime(10, 0), 3);
    QCOMPARE(rows.size(), 2);
    QCOMPARE(rows.rewritten(day), editedBarLine(QTime(10, 0), 1));
    QCOMPARE(rows.rewritten(day.addDays(2)), editedBarLine(QTime(10, 0), 3));
}

void TestDataRows::tellsBlankRows()
{
    DataRows rows;
    rows.beginDay(day);
    appendBar(rows, QTime(0, 0), 1);
    rows.appendBlank();
    QVERIFY(!rows.isBlank(0));
    QVERIFY(rows.isBlank(1));
    QCOMPARE(rows.key(0), QStringLiteral("20230105 000000"));
    QCOMPARE(rows.key(1), QString());
}

// Wherever rows were removed before.
void TestDataRows::keepsRowsWhileMemoryIsGivenBack()
{
    for (const int removed : {0, 1, 4, 8, 9}) {
        DataRows rows;
        rows.beginDay(day);
        for (int minute = 0; minute < 10; ++minute)
            appendBar(rows, QTime(10, minute), minute);
        rows.remove(removed);
        QByteArray left = rows.rewritten(day);
        rows.squeeze();
        QCOMPARE(rows.size(), 9);
        QCOMPARE(rows.rewritten(day), left);
        rows.remove(8);
        rows.squeeze();
        left.resize(left.lastIndexOf('\n', left.size() - 2) + 1);
        QCOMPARE(rows.rewritten(day), left);
    }
}

void TestDataRows::givesBackWhatItDoesNotNeed()
{
    DataRows rows;
    rows.beginDay(day);
    appendBar(rows, QTime(10, 0), 1);
    const qsizetype before = rows.memory();
    rows.expectDays(1000);
    QVERIFY(rows.memory() >= before + 999 * 16);
    rows.squeeze();
    QVERIFY(rows.memory() <= before);
    QCOMPARE(rows.rewritten(day), editedBarLine(QTime(10, 0), 1));
}

// The texts of lines that came one by one.
void TestDataRows::givesBackTheRoomBehindItsTexts()
{
    constexpr int count = 1000;
    DataRows rows;
    rows.beginDay(day);
    qsizetype text = 0;
    for (int number = 0; number < count; ++number) {
        appendBar(rows, QTime(10, 0), number);
        text += barLine(QTime(10, 0), number).size();
    }
    rows.squeeze();
    QVERIFY(rows.memory() < text + count * 20);
}

void TestDataRows::makesNoMoreRoomThanIsSensible()
{
    DataRows rows;
    rows.beginDay(day);
    appendBar(rows, QTime(10, 0), 1);
    rows.expectDays(3'000'000);
    QVERIFY(rows.memory() > qsizetype(3) * 1000 * 1000 * 16);
    rows.squeeze();
    rows.expectDays(qsizetype(1) << 40);
    QVERIFY(rows.memory() < qsizetype(200) * 1000 * 1000);
}

QTEST_GUILESS_MAIN(TestDataRows)
#include "tst_datarows.moc"
