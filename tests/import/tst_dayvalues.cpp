// SPDX-License-Identifier: MIT
#include "dayvalues.h"

#include "support/faults.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

using tadata::DayChange;
using tadata::DayValues;
using testsupport::writeFile;

class TestDayValues final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void comparesBarsByTheirTimes_data();
    void comparesBarsByTheirTimes();
    void seesEachValueOfABar_data();
    void seesEachValueOfABar();
    void addsChangesUp();
    void readsAStoredDay();
    void failsForWhatCannotBeRead();
};

namespace {

const QDate day(2024, 1, 15);

// "10a 11b": bars of these hours, which are alike where their letters are.
QByteArray linesOf(const QByteArray& names)
{
    QByteArray lines;
    for (const QByteArray& name : names.split(' ')) {
        if (!name.isEmpty())
            lines +=
                name.first(2) + "0000;1;1;1;1;" + QByteArray::number(int(name.back())) + ";2.5;0\n";
    }
    return lines;
}

DayValues valuesOf(const QByteArray& lines)
{
    DayValues values;
    values.addLines(lines, day);
    return values;
}

} // namespace

void TestDayValues::comparesBarsByTheirTimes_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<DayChange>("change");
    const auto row = [](const char* name, const char* before, const char* after,
                        const DayChange& change) {
        QTest::newRow(name) << QByteArray(before) << QByteArray(after) << change;
    };
    row("nothing", "", "", {0, 0, 0});
    row("the same", "10a 11b", "10a 11b", {0, 0, 0});
    row("another order", "10a 11b", "11b 10a", {0, 0, 0});
    row("all new", "", "10a 11b", {2, 0, 0});
    row("all lost", "10a 11b", "", {0, 0, 2});
    row("another value", "10a 11b", "10a 11c", {0, 1, 0});
    row("one new", "10a 12b", "10a 11c 12b", {1, 0, 0});
    row("new at the ends", "11a", "10a 11a 12a", {2, 0, 0});
    row("one lost", "10a 11b 12c", "10a 12c", {0, 0, 1});
    row("all of it", "10a 11b 12c", "09a 10b 12c 13c", {2, 1, 1});
    row("the last of a time", "10a 10b", "10b", {0, 0, 0});
    row("the last of a time, apart", "10a 11a 10b", "10b 11a", {0, 0, 0});
    row("the last of the new ones", "10b", "10a 10b", {0, 0, 0});
    row("not the first of a time", "10a 10b", "10a", {0, 1, 0});
}

void TestDayValues::comparesBarsByTheirTimes()
{
    QFETCH(const QByteArray, before);
    QFETCH(const QByteArray, after);
    QFETCH(const DayChange, change);
    const DayChange seen = valuesOf(linesOf(before)).changeTo(valuesOf(linesOf(after)));
    QCOMPARE(seen.added, change.added);
    QCOMPARE(seen.replaced, change.replaced);
    QCOMPARE(seen.lost, change.lost);
}

void TestDayValues::seesEachValueOfABar_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("isOther");
    const auto row = [](const char* line, bool isOther) {
        QTest::newRow(line) << QByteArray(line) << isOther;
    };
    row("100000;1;4;1;2;5;2.5;7", false);
    row("100000;2;4;1;2;5;2.5;7", true);
    row("100000;1;5;1;2;5;2.5;7", true);
    row("100000;1;4;0;2;5;2.5;7", true);
    row("100000;1;4;1;3;5;2.5;7", true);
    row("100000;1;4;1;2;6;2.5;7", true);
    row("100000;1;4;1;2;5;2.6;7", true);
    row("100000;1;4;1;2;5;2.5;8", true);
    row("100000;1.0;4;1;2;5;2.5;7", true); // an import would write another text
    row("100000;01;4;1;2;5;2.5;7", false);
    row("100000;1;4;1;2;2.5;5;7", false); // by the editor
    row("100000;4;1;1;2;5;2.5;7", true);
}

void TestDayValues::seesEachValueOfABar()
{
    QFETCH(const QByteArray, line);
    const DayChange change = valuesOf("100000;1;4;1;2;5;2.5;7\n").changeTo(valuesOf(line));
    QTEST(change.replaced == 1, "isOther");
    QCOMPARE(change.added + change.lost, 0);
}

void TestDayValues::addsChangesUp()
{
    DayChange change{1, 2, 3};
    change += {10, 20, 30};
    QCOMPARE(change.added, 11);
    QCOMPARE(change.replaced, 22);
    QCOMPARE(change.lost, 33);
}

// Lines that are no bars are passed over, and an end of the last line is not needed.
void TestDayValues::readsAStoredDay()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("20240115_60.iss"));
    const QByteArray bars = linesOf("10a 11b 23c");
    for (const QByteArray& content :
         {bars, bars.chopped(1), "x\n" + bars + "\n", '\n' + bars, "\xef\xbb\xbf" + bars}) {
        writeFile(path, content);
        const auto values = DayValues::ofFile(path, day);
        QVERIFY(values);
        QVERIFY(values->changeTo(valuesOf(bars)) == DayChange());
        QCOMPARE(values->times().count(), 3);
        QVERIFY(values->times().contains(36000) && values->times().contains(82800));
        const auto times = tadata::storedTimes(path, day);
        QVERIFY(times);
        QCOMPARE(times->count(), 3);
        QVERIFY(times->contains(39600));
    }
    DayValues values = valuesOf('\n' + bars.chopped(1));
    QCOMPARE(values.times().count(), 3);
    values.clear();
    QCOMPARE(values.times().count(), 0);
    // Nothing that only a text stream would take for bars.
    writeFile(path, bars.chopped(1) + '\xd0');
    QCOMPARE(tadata::storedTimes(path, day)->count(), 2);
}

void TestDayValues::failsForWhatCannotBeRead()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("20240115_60.iss"));
    const QString notOpened = QStringLiteral("Невозможно открыть файл ") + path;
    QCOMPARE(tadata::storedTimes(path, day).message(), notOpened);
    QCOMPARE(DayValues::ofFile(path, day).message(), notOpened);
    writeFile(path, linesOf("10a"));
    const testsupport::Fault broken(testsupport::SystemCall::Read, path);
    const QString beginning = QStringLiteral("Невозможно прочитать файл %1:").arg(path);
    QVERIFY(tadata::storedTimes(path, day).message().startsWith(beginning));
    QVERIFY(DayValues::ofFile(path, day).message().startsWith(beginning));
}

QTEST_GUILESS_MAIN(TestDayValues)
#include "tst_dayvalues.moc"
