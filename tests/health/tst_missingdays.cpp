// SPDX-License-Identifier: MIT
#include "missingdays.h"

#include "support/strictlog.h"

#include <QtCore/QRandomGenerator>
#include <QtTest/QTest>

#include <algorithm>

using tadata::BoardDays;
using tadata::MissingDays;
using tadata::missingDays;

class TestMissingDays final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void wantsWhatTheWeekdayIsUsedTo();
    void asksTheOtherSeries();
    void knowsNothingOfFewWeeks();
    void findsNothingWhereNothingIs();
    void findsAsThePlainWay();
};

namespace {

using Days = std::vector<QDate>;

const QDate monday(2024, 1, 1);

// Every day but Saturdays and Sundays, without some.
Days workdays(int weeks, const Days& without = {})
{
    Days days;
    for (QDate date = monday; date < monday.addDays(weeks * 7); date = date.addDays(1)) {
        if (date.dayOfWeek() < 6 && std::count(without.begin(), without.end(), date) == 0)
            days.push_back(date);
    }
    return days;
}

MissingDays foundIn(const Days& days, const QList<Days>& others = {})
{
    BoardDays board;
    board.add(days);
    for (const Days& other : others)
        board.add(other);
    return missingDays(days, board);
}

bool has(const Days& days, const QDate& date)
{
    return std::count(days.begin(), days.end(), date) > 0;
}

bool isHabit(const Days& days, const QDate& date)
{
    QList<QDate> dates;
    for (QDate other = days.front(); other <= days.back(); other = other.addDays(1)) {
        if (other != date && other.dayOfWeek() == date.dayOfWeek())
            dates.append(other);
    }
    std::stable_sort(dates.begin(), dates.end(), [&date](const QDate& left, const QDate& right) {
        return std::abs(left.daysTo(date)) < std::abs(right.daysTo(date));
    });
    dates = dates.mid(0, 20);
    const auto files = std::count_if(dates.begin(), dates.end(),
                                     [&days](const QDate& other) { return has(days, other); });
    return dates.size() >= 5 && files * 10 >= dates.size() * 8;
}

MissingDays plainlyFoundIn(const Days& days, const QList<Days>& others)
{
    MissingDays found;
    for (QDate date = days.front(); date <= days.back(); date = date.addDays(1)) {
        const bool isElsewhere = std::any_of(
            others.begin(), others.end(), [&date](const Days& other) { return has(other, date); });
        if (has(days, date) || (!isElsewhere && !isHabit(days, date)))
            continue;
        const bool mayBeElsewhere =
            std::any_of(others.begin(), others.end(), [&date](const Days& other) {
                return !other.empty() && other.front() <= date && date <= other.back();
            });
        (isElsewhere ? found.missing : mayBeElsewhere ? found.closed : found.unproven).append(date);
    }
    return found;
}

} // namespace

void TestMissingDays::wantsWhatTheWeekdayIsUsedTo()
{
    const QDate holiday(2024, 1, 24);
    const MissingDays found = foundIn(workdays(8, {holiday}));
    QCOMPARE(found.unproven, QList<QDate>{holiday});
    QVERIFY(found.missing.isEmpty() && found.closed.isEmpty());
}

void TestMissingDays::asksTheOtherSeries()
{
    const QDate holiday(2024, 1, 24);
    const QDate lost(2024, 1, 30);
    const QDate saturday(2024, 2, 3);
    Days other = workdays(8, {holiday});
    other.insert(std::upper_bound(other.begin(), other.end(), saturday), saturday);
    const MissingDays found = foundIn(workdays(8, {holiday, lost}), {other, {monday}});
    QCOMPARE(found.missing, (QList<QDate>{lost, saturday}));
    QCOMPARE(found.closed, QList<QDate>{holiday});
    QVERIFY(found.unproven.isEmpty());
    // One that begins later is no witness.
    const Days later(other.end() - 5, other.end());
    QCOMPARE(foundIn(workdays(8, {holiday}), {later}).unproven, QList<QDate>{holiday});
}

void TestMissingDays::knowsNothingOfFewWeeks()
{
    const QDate holiday(2024, 1, 24);
    QVERIFY(foundIn(workdays(5, {holiday})).unproven.isEmpty());
    QCOMPARE(foundIn(workdays(6, {holiday})).unproven, QList<QDate>{holiday});
    // Four of five, and three.
    QCOMPARE(foundIn(workdays(6, {holiday, holiday.addDays(7)})).unproven.size(), 2);
    QVERIFY(foundIn(workdays(6, {holiday, holiday.addDays(7), holiday.addDays(14)}))
                .unproven.isEmpty());
}

void TestMissingDays::findsNothingWhereNothingIs()
{
    QVERIFY(foundIn({}, {workdays(8)}).missing.isEmpty());
    QVERIFY(foundIn({monday}, {workdays(8)}).missing.isEmpty());
}

void TestMissingDays::findsAsThePlainWay()
{
    QRandomGenerator random(20240117);
    qsizetype missing = 0;
    qsizetype closed = 0;
    qsizetype unproven = 0;
    for (int i = 0; i < 200; ++i) {
        const auto makeDays = [&random] {
            Days days;
            const int share = random.bounded(80, 100);
            const QDate first = monday.addDays(random.bounded(60));
            const QDate end = first.addDays(random.bounded(1, 300));
            for (QDate date = first; date < end; date = date.addDays(1)) {
                if (random.bounded(100) < (date.dayOfWeek() < 6 ? share : 2))
                    days.push_back(date);
            }
            return days;
        };
        Days days = makeDays();
        if (days.empty())
            days.push_back(monday);
        QList<Days> others;
        for (int count = random.bounded(3); count > 0; --count)
            others.append(makeDays());
        const MissingDays found = foundIn(days, others);
        const MissingDays wanted = plainlyFoundIn(days, others);
        QCOMPARE(found.missing, wanted.missing);
        QCOMPARE(found.closed, wanted.closed);
        QCOMPARE(found.unproven, wanted.unproven);
        missing += found.missing.size();
        closed += found.closed.size();
        unproven += found.unproven.size();
    }
    QVERIFY2(std::min({missing, closed, unproven}) > 50,
             qPrintable(QStringLiteral("%1 %2 %3").arg(missing).arg(closed).arg(unproven)));
}

QTEST_APPLESS_MAIN(TestMissingDays)

#include "tst_missingdays.moc"
