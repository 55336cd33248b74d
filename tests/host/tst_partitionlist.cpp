// SPDX-License-Identifier: MIT
#include <vexdesk/database/partitionlist.h>

#include "support/strictlog.h"

#include <QtTest/QTest>

#include <map>
#include <memory>
#include <random>

namespace {

using List = PartitionList<int>;
constexpr int several = static_cast<int>(List::partitionSize) * 5;

std::vector<int> items(const List& list)
{
    return {list.begin(), list.end()};
}

void insertSorted(List* list, int item)
{
    list->insert(item, [item](int other) { return other <= item; });
}

} // namespace

class PartitionListTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void isEmptyAtFirst();
    void appendsInOrder();
    void findsThePartitionPoint();
    void insertsInOrder_data();
    void insertsInOrder();
    void equalKeysStandInTheOrderOfInsertion();
    void removes_data();
    void removes();
    void isUsableAfterRemovals();
    void clears();
    void holdsItemsThatOnlyMove();
    void agreesWithASortedList();
};

void PartitionListTest::isEmptyAtFirst()
{
    const List list;
    QVERIFY(list.isEmpty());
    QCOMPARE(list.count(), 0);
    QVERIFY(list.begin() == list.end());
    QVERIFY(list.partitionPoint([](int) { return true; }) == list.end());
}

void PartitionListTest::appendsInOrder()
{
    List list;
    std::vector<int> expected;
    for (int i = 0; i < several; ++i) {
        list.append(i);
        expected.push_back(i);
        QCOMPARE(list.count(), i + 1);
    }
    QCOMPARE(list.size(), several);
    QVERIFY(!list.isEmpty());
    QVERIFY(items(list) == expected);
}

void PartitionListTest::findsThePartitionPoint()
{
    List list;
    for (int i = 0; i < several; ++i)
        list.append(i * 2);
    for (int key = -1; key <= several * 2; ++key) {
        const auto found = list.partitionPoint([key](int item) { return item < key; });
        const int expected = key < 0 ? 0 : (key + 1) / 2 * 2;
        if (expected >= several * 2)
            QVERIFY(found == list.end());
        else
            QCOMPARE(*found, expected);
    }
}

void PartitionListTest::insertsInOrder_data()
{
    QTest::addColumn<int>("step");
    // Each step has no common factor with the count, so that every number comes once.
    QTest::newRow("ascending") << 1;
    QTest::newRow("descending") << several - 1;
    QTest::newRow("in jumps") << 777;
}

void PartitionListTest::insertsInOrder()
{
    QFETCH(int, step);
    List list;
    for (int i = 0; i < several; ++i)
        insertSorted(&list, static_cast<int>(static_cast<long long>(i) * step % several));
    QCOMPARE(list.count(), several);
    int expected = 0;
    for (const int item : list)
        QCOMPARE(item, expected++);
}

void PartitionListTest::equalKeysStandInTheOrderOfInsertion()
{
    PartitionList<std::pair<int, int>> list;
    for (int i = 0; i < several; ++i) {
        const int key = i % 3;
        list.insert({key, i},
                    [key](const std::pair<int, int>& other) { return other.first <= key; });
    }
    std::pair<int, int> before(-1, -1);
    for (const std::pair<int, int>& item : list) {
        QVERIFY(before < item);
        before = item;
    }
}

void PartitionListTest::removes_data()
{
    QTest::addColumn<int>("keptFrom");
    QTest::addColumn<int>("keptEvery");
    QTest::newRow("nothing") << 0 << 1;
    QTest::newRow("every other") << 0 << 2;
    QTest::newRow("the first half") << several / 2 << 1;
    QTest::newRow("almost all") << several - 1 << 1;
    QTest::newRow("all") << several << 1;
}

void PartitionListTest::removes()
{
    QFETCH(int, keptFrom);
    QFETCH(int, keptEvery);
    const auto isKept = [&](int item) { return item >= keptFrom && item % keptEvery == 0; };
    List list;
    std::vector<int> expected;
    for (int i = 0; i < several; ++i) {
        list.append(i);
        if (isKept(i))
            expected.push_back(i);
    }
    const qsizetype removed = list.removeIf([&](int item) { return !isKept(item); });
    QCOMPARE(removed, several - static_cast<qsizetype>(expected.size()));
    QCOMPARE(list.count(), static_cast<qsizetype>(expected.size()));
    QCOMPARE(list.begin() == list.end(), expected.empty());
    QVERIFY(items(list) == expected);
}

void PartitionListTest::isUsableAfterRemovals()
{
    List list;
    for (int i = 0; i < several; ++i)
        list.append(i);
    list.removeIf([](int item) { return item % 7 != 0; });
    for (int i = 0; i < several; ++i) {
        if (i % 7 != 0)
            insertSorted(&list, i);
    }
    QCOMPARE(list.count(), several);
    int expected = 0;
    for (const int item : list)
        QCOMPARE(item, expected++);
}

void PartitionListTest::clears()
{
    List list;
    for (int i = 0; i < several; ++i)
        list.append(i);
    list.clear();
    QVERIFY(list.isEmpty());
    QVERIFY(list.begin() == list.end());
    list.append(5);
    QVERIFY(items(list) == std::vector<int>{5});
}

void PartitionListTest::holdsItemsThatOnlyMove()
{
    PartitionList<std::unique_ptr<int>> list;
    for (int i = several; i > 0; --i)
        list.insert(std::make_unique<int>(i),
                    [i](const std::unique_ptr<int>& other) { return *other <= i; });
    int expected = 0;
    for (const std::unique_ptr<int>& item : list)
        QCOMPARE(*item, ++expected);
    QCOMPARE(expected, several);
}

void PartitionListTest::agreesWithASortedList()
{
    std::mt19937 random(3);
    PartitionList<std::pair<int, int>> list;
    std::multimap<int, int> expected;
    int longest = 0;
    for (int i = 0; i < 60000; ++i) {
        const int key = static_cast<int>(random() % 5000);
        // Now and then a range of keys goes.
        if (random() % 3000 == 0) {
            const auto isGone = [key](int other) { return other >= key && other < key + 2500; };
            const qsizetype removed =
                list.removeIf([&](const std::pair<int, int>& item) { return isGone(item.first); });
            QCOMPARE(removed, static_cast<qsizetype>(std::erase_if(
                                  expected, [&](const auto& item) { return isGone(item.first); })));
            continue;
        }
        list.insert({key, i}, [key](const std::pair<int, int>& o) { return o.first <= key; });
        expected.insert({key, i});
        longest = qMax(longest, static_cast<int>(list.count()));
    }
    QCOMPARE(list.count(), static_cast<qsizetype>(expected.size()));
    QVERIFY(longest > several);
    QVERIFY(std::equal(list.begin(), list.end(), expected.begin(), expected.end(),
                       [](const std::pair<int, int>& a, const std::pair<const int, int>& b) {
                           return a.first == b.first && a.second == b.second;
                       }));
}

QTEST_GUILESS_MAIN(PartitionListTest)
#include "tst_partitionlist.moc"
