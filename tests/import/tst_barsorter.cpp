// SPDX-License-Identifier: MIT
#include "barsorter.h"

#include "support/faults.h"
#include "temporaryplace.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <algorithm>
#include <functional>
#include <utility>

using tadata::BarSorter;

class TestBarSorter final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsTheOrderWithinADay_data();
    void keepsTheOrderWithinADay();
    void givesTheBarsAgain();
    void beginsAgainBeforeItsEnd();
    void isEmptyWithoutBars();
    void saysThatItsFileCannotBeMade();
    void saysThatItsFileCannotBeWritten();
};

namespace {

using Bars = QList<std::pair<qint64, QByteArray>>;

Bars barsOfDays(int count, const std::function<qint64(int)>& dayOf)
{
    Bars bars;
    for (int i = 0; i < count; ++i)
        bars.append({dayOf(i), QByteArray::number(i).leftJustified(60, '.')});
    return bars;
}

// Some megabytes of a hundred thousand go into a temporary file.
Bars randomBars(int count)
{
    QRandomGenerator random(7);
    return barsOfDays(count, [&random](int) { return random.bounded(50); });
}

vexdesk::Outcome addAll(BarSorter& sorter, const Bars& bars)
{
    for (const auto& [day, line] : bars) {
        if (vexdesk::Outcome added = sorter.add({day, int(line.size()), line}); !added)
            return added;
    }
    return {};
}

Bars takeAll(BarSorter& sorter)
{
    Bars bars;
    while (const BarSorter::Bar* bar = sorter.current()) {
        bars.append({bar->day, bar->line.toByteArray()});
        if (bar->second != bar->line.size() || !sorter.advance())
            break;
    }
    return bars;
}

} // namespace

void TestBarSorter::keepsTheOrderWithinADay_data()
{
    QTest::addColumn<Bars>("bars");
    QTest::newRow("one") << randomBars(1);
    QTest::newRow("in memory") << randomBars(1000);
    QTest::newRow("in a file") << randomBars(300'000);
    // Each part of the file begins earlier than the one before.
    QTest::newRow("in a file, the last day first")
        << barsOfDays(300'000, [](int i) { return 300 - i / 1000; });
}

void TestBarSorter::keepsTheOrderWithinADay()
{
    QFETCH(Bars, bars);
    BarSorter sorter;
    QVERIFY(addAll(sorter, bars));
    QVERIFY(sorter.begin());
    const Bars given = takeAll(sorter);
    std::stable_sort(bars.begin(), bars.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    QCOMPARE(given.size(), bars.size());
    QVERIFY(given == bars);
}

void TestBarSorter::givesTheBarsAgain()
{
    for (const int count : {1000, 200'000}) {
        BarSorter sorter;
        QVERIFY(addAll(sorter, randomBars(count)));
        QVERIFY(sorter.begin());
        const Bars first = takeAll(sorter);
        QVERIFY(sorter.begin());
        QVERIFY(takeAll(sorter) == first);
        QCOMPARE(first.size(), count);
    }
}

void TestBarSorter::beginsAgainBeforeItsEnd()
{
    for (const int count : {1000, 200'000}) {
        BarSorter sorter;
        QVERIFY(addAll(sorter, randomBars(count)));
        for (int round = 0; round < 2; ++round) {
            QVERIFY(sorter.begin());
            for (int i = 0; i < 100; ++i)
                QVERIFY(sorter.advance());
        }
        QVERIFY(sorter.begin());
        QCOMPARE(takeAll(sorter).size(), count);
    }
}

void TestBarSorter::isEmptyWithoutBars()
{
    BarSorter sorter;
    QVERIFY(sorter.begin());
    QVERIFY(!sorter.current());
}

void TestBarSorter::saysThatItsFileCannotBeMade()
{
    const QTemporaryDir dir;
    // Which takes no file, whoever the user is; and one that is not there.
    for (const QString& place :
         {QStringLiteral("/proc"), dir.filePath(QStringLiteral("missing"))}) {
        const testsupport::TemporaryPlace nowhere(place);
        BarSorter sorter;
        const QString error = addAll(sorter, randomBars(200'000)).message();
        QVERIFY2(error.startsWith(QStringLiteral("Временный файл для сортировки в ") + place),
                 qPrintable(error));
    }
}

void TestBarSorter::saysThatItsFileCannotBeWritten()
{
    BarSorter sorter;
    // Any file: this one has no name.
    const testsupport::Fault full(testsupport::SystemCall::Write, QString(), ENOSPC);
    const vexdesk::Outcome added = addAll(sorter, randomBars(200'000));
    QVERIFY2(added.message().startsWith(QStringLiteral("Временный файл для сортировки")),
             qPrintable(added.message()));
}

QTEST_GUILESS_MAIN(TestBarSorter)
#include "tst_barsorter.moc"
