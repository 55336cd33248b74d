// SPDX-License-Identifier: MIT
#include "usualtimes.h"

#include "support/strictlog.h"

#include <QtCore/QMap>
#include <QtCore/QRandomGenerator>
#include <QtCore/QSet>
#include <QtTest/QTest>

#include <algorithm>

using tadata::DayHealth;
using tadata::Gap;
using tadata::TimesOfDay;
using tadata::UsualTimes;

class TestUsualTimes final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void needsFiveOtherDays_data();
    void needsFiveOtherDays();
    void needsFourFifthsOfThem_data();
    void needsFourFifthsOfThem();
    void knowsTheWholeDay();
    void prefersTheEarlierOfEquallyNearDays();
    void findsGaps_data();
    void findsGaps();
    void judgesAsThePlainWay();
    void keepsFewDays();
};

namespace {

using Day = QSet<int>;
using Days = QMap<QDate, Day>;

constexpr int noon = 43200;

TimesOfDay timesOf(const Day& day)
{
    TimesOfDay times;
    for (const int second : day)
        times.insert(second);
    return times;
}

QMap<QDate, DayHealth> judged(const Days& days, int fewest = 5)
{
    const QList<QDate> dates = days.keys();
    UsualTimes usual({dates.begin(), dates.end()}, fewest);
    QMap<QDate, DayHealth> found;
    for (const QDate& date : dates) {
        for (int wanted = usual.wanted(); wanted >= 0; wanted = usual.wanted())
            usual.add(timesOf(days[dates[wanted]]));
        usual.judge(found[date]);
    }
    return found;
}

QList<int> plainUsualTimes(const Days& days, const QDate& date)
{
    QList<QDate> others = days.keys();
    others.removeAll(date);
    std::stable_sort(others.begin(), others.end(), [&date](const QDate& left, const QDate& right) {
        return std::abs(left.daysTo(date)) < std::abs(right.daysTo(date));
    });
    others = others.mid(0, 20);
    QMap<int, int> counts;
    for (const QDate& other : std::as_const(others)) {
        for (const int second : days[other])
            ++counts[second];
    }
    QList<int> usual;
    for (auto count = counts.begin(); others.size() >= 5 && count != counts.end(); ++count) {
        if (count.value() * 10 >= others.size() * 8)
            usual.append(count.key());
    }
    return usual;
}

std::vector<Gap> plainGaps(const QList<int>& usual, const Day& day, int fewest)
{
    std::vector<Gap> gaps;
    for (qsizetype begin = 0; begin < usual.size();) {
        qsizetype end = begin;
        while (end < usual.size() && !day.contains(usual[end]))
            ++end;
        if (end - begin >= fewest) {
            Gap gap{int(end - begin), usual[begin], usual[end - 1]};
            gap.unusual = int(std::count_if(day.begin(), day.end(), [&gap](int second) {
                return gap.from < second && second < gap.to;
            }));
            gaps.push_back(gap);
        }
        begin = end + 1;
    }
    return gaps;
}

Days weeks(int count, const Day& day)
{
    Days days;
    for (int week = 0; week < count; ++week)
        days[QDate(2024, 1, 1).addDays(week * 7)] = day;
    return days;
}

Day minutes(std::initializer_list<int> numbers)
{
    Day day;
    for (const int number : numbers)
        day.insert(noon + number * 60);
    return day;
}

} // namespace

void TestUsualTimes::needsFiveOtherDays_data()
{
    QTest::addColumn<int>("days");
    QTest::addColumn<int>("expected");
    QTest::newRow("one") << 1 << 0;
    QTest::newRow("five") << 5 << 0;
    QTest::newRow("six") << 6 << 3;
    QTest::newRow("forty") << 40 << 3;
}

void TestUsualTimes::needsFiveOtherDays()
{
    QFETCH(const int, days);
    const auto found = judged(weeks(days, minutes({0, 1, 2})));
    QCOMPARE(found.size(), days);
    for (const DayHealth& day : found)
        QTEST(day.expected, "expected");
}

void TestUsualTimes::needsFourFifthsOfThem_data()
{
    QTest::addColumn<int>("days");
    QTest::addColumn<int>("with");
    QTest::addColumn<int>("expected");
    QTest::newRow("4 of 5") << 6 << 4 << 1;
    QTest::newRow("3 of 5") << 6 << 3 << 0;
    QTest::newRow("5 of 6") << 7 << 5 << 1;
    QTest::newRow("4 of 6") << 7 << 4 << 0;
    QTest::newRow("16 of 20") << 21 << 16 << 1;
    QTest::newRow("15 of 20") << 21 << 15 << 0;
}

void TestUsualTimes::needsFourFifthsOfThem()
{
    QFETCH(const int, days);
    QFETCH(const int, with);
    Days stored = weeks(days, {});
    const QList<QDate> dates = stored.keys();
    for (int day = 1; day <= with; ++day)
        stored[dates[day]] = minutes({0});
    QTEST(judged(stored)[dates[0]].expected, "expected");
    QCOMPARE(judged(stored)[dates[0]].missing, judged(stored)[dates[0]].expected);
}

// From midnight to the second before the next one.
void TestUsualTimes::knowsTheWholeDay()
{
    Days days = weeks(6, {0, 60, 120, 86339, 86340, 86399});
    const QDate date = days.firstKey();
    days[date] = {120};
    const DayHealth health = judged(days, 1)[date];
    QCOMPARE(health.expected, 6);
    QCOMPARE(health.missing, 5);
    QCOMPARE(health.gaps.size(), size_t(2));
    QCOMPARE(health.gaps[0].from, 0);
    QCOMPARE(health.gaps[0].to, 60);
    QCOMPARE(health.gaps[1].from, 86339);
    QCOMPARE(health.gaps[1].to, 86399);
}

void TestUsualTimes::prefersTheEarlierOfEquallyNearDays()
{
    // Nineteen are nearer than the first and the last, which are equally near; fifteen of them have
    // the time.
    const QDate middle(2024, 6, 3);
    Days days;
    for (int week = -11; week <= 9; ++week)
        days[middle.addDays(week * 7)] = week >= 1 && week <= 4 ? Day{} : minutes({0});
    const QDate first = middle.addDays(-11 * 7);
    const QDate last = middle.addDays(11 * 7);
    days[last] = {};
    QCOMPARE(judged(days)[middle].expected, 1);
    days[first] = {};
    days[last] = minutes({0});
    QCOMPARE(judged(days)[middle].expected, 0);
}

void TestUsualTimes::findsGaps_data()
{
    QTest::addColumn<Day>("day");
    QTest::addColumn<int>("missing");
    QTest::addColumn<QList<QPair<int, int>>>("gaps");
    using Gaps = QList<QPair<int, int>>;
    QTest::newRow("nothing missing") << minutes({0, 1, 2, 3, 10, 11, 12, 13}) << 0 << Gaps{};
    QTest::newRow("too short") << minutes({0, 3, 10, 11, 12, 13}) << 2 << Gaps{};
    QTest::newRow("neighbours among the usual") << minutes({0, 1, 2, 12, 13}) << 3 << Gaps{{3, 11}};
    QTest::newRow("at the start") << minutes({3, 10, 11, 12, 13}) << 3 << Gaps{{0, 2}};
    QTest::newRow("at the end") << minutes({0, 1, 2, 3, 10}) << 3 << Gaps{{11, 13}};
    QTest::newRow("no bar at all") << minutes({}) << 8 << Gaps{{0, 13}};
    QTest::newRow("two") << minutes({0, 10}) << 6 << Gaps{{1, 3}, {11, 13}};
    QTest::newRow("around an unusual one") << minutes({0, 1, 5, 12, 13}) << 4 << Gaps{{2, 11}};
}

void TestUsualTimes::findsGaps()
{
    QFETCH(const Day, day);
    Days days = weeks(6, minutes({0, 1, 2, 3, 10, 11, 12, 13}));
    const QDate date = days.firstKey();
    days[date] = day;
    const DayHealth health = judged(days, 3)[date];
    QCOMPARE(health.expected, 8);
    QTEST(health.missing, "missing");
    QList<QPair<int, int>> gaps;
    for (const Gap& gap : health.gaps)
        gaps.append({(gap.from - noon) / 60, (gap.to - noon) / 60});
    QTEST(gaps, "gaps");
}

void TestUsualTimes::judgesAsThePlainWay()
{
    QRandomGenerator random(20240116);
    int gaps = 0;
    for (int i = 0; i < 150; ++i) {
        Days days;
        const int step = random.bounded(4) == 0 ? 15 : 60;
        const int share = random.bounded(60, 100);
        QDate date(2024, 1, 1);
        for (int count = random.bounded(60); count > 0; --count) {
            Day& day = days[date];
            for (int number = 0; number < 12; ++number) {
                if (random.bounded(100) < share)
                    day.insert(noon + number * step);
            }
            date = date.addDays(7 * (random.bounded(3) == 0 ? random.bounded(1, 6) : 1));
        }
        const int fewest = random.bounded(1, 4);
        const auto found = judged(days, fewest);
        for (auto day = days.begin(); day != days.end(); ++day) {
            const QList<int> usual = plainUsualTimes(days, day.key());
            const DayHealth& health = found[day.key()];
            QCOMPARE(health.expected, int(usual.size()));
            QCOMPARE(health.missing,
                     int(QSet<int>(usual.begin(), usual.end()).subtract(*day).size()));
            QVERIFY(health.gaps == plainGaps(usual, *day, fewest));
            gaps += int(health.gaps.size());
        }
    }
    QVERIFY(gaps > 1000);
}

void TestUsualTimes::keepsFewDays()
{
    const QList<QDate> dates = weeks(100, {}).keys();
    UsualTimes usual({dates.begin(), dates.end()}, 5);
    DayHealth health;
    int added = 0;
    for (int day = 0; day < 100; ++day) {
        for (; usual.wanted() >= 0; ++added)
            usual.add({});
        QVERIFY(added <= day + 21);
        usual.judge(health);
    }
    QCOMPARE(added, 100);
}

QTEST_APPLESS_MAIN(TestUsualTimes)

#include "tst_usualtimes.moc"
