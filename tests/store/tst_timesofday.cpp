// SPDX-License-Identifier: MIT
#include "timesofday.h"

#include "support/strictlog.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QSet>
#include <QtTest/QTest>

using tadata::TimesOfDay;

class TestTimesOfDay final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void hasASlotForEachSecond();
    void putsWholeMinutesFirst();
    void isASet();
    void countsTheEndsOfASpan();
};

namespace {

TimesOfDay made(const QSet<int>& seconds)
{
    TimesOfDay times;
    for (const int second : seconds)
        times.insert(second);
    return times;
}

QSet<int> secondsOf(const TimesOfDay& times)
{
    QSet<int> seconds;
    times.visitSlots([&seconds](int slot) { seconds.insert(TimesOfDay::secondOf(slot)); });
    return seconds;
}

} // namespace

void TestTimesOfDay::hasASlotForEachSecond()
{
    QSet<int> taken;
    for (int second = 0; second < TimesOfDay::seconds; ++second) {
        const int slot = TimesOfDay::slotOf(second);
        QVERIFY(slot >= 0 && slot < TimesOfDay::seconds && !taken.contains(slot));
        QCOMPARE(TimesOfDay::secondOf(slot), second);
        taken.insert(slot);
    }
}

void TestTimesOfDay::putsWholeMinutesFirst()
{
    for (int minute = 0; minute < 1440; ++minute)
        QCOMPARE(TimesOfDay::slotOf(minute * 60), minute);
}

void TestTimesOfDay::isASet()
{
    QRandomGenerator random(20240115);
    for (int i = 0; i < 300; ++i) {
        QSet<int> left;
        QSet<int> right;
        const int step = random.bounded(2) == 0 ? 60 : 1;
        for (int count = random.bounded(200); count > 0; --count) {
            left.insert(random.bounded(TimesOfDay::seconds / step) * step);
            right.insert(random.bounded(TimesOfDay::seconds / step / 8) * step);
        }
        TimesOfDay times = made(left);
        for (const int second : left)
            QVERIFY(times.contains(second) && !times.insert(second));
        QCOMPARE(secondsOf(times), left);
        QCOMPARE(times.count(), int(left.size()));
        QCOMPARE(secondsOf(times.common(made(right))), QSet<int>(left).intersect(right));
        const int from = random.bounded(TimesOfDay::seconds);
        const int to = from + random.bounded(TimesOfDay::seconds);
        QCOMPARE(times.countWithin(from, to),
                 int(std::count_if(left.begin(), left.end(), [from, to](int second) {
                     return from <= second && second <= to;
                 })));
        times.unite(made(right));
        QCOMPARE(secondsOf(times), left.unite(right));
        times.clear();
        QCOMPARE(secondsOf(times), QSet<int>());
        QVERIFY(!times.contains(0));
    }
}

void TestTimesOfDay::countsTheEndsOfASpan()
{
    for (const int step : {1, 60}) {
        const TimesOfDay times = made({10 * step, 11 * step, 12 * step});
        QCOMPARE(times.countWithin(10 * step, 12 * step), 3);
        QCOMPARE(times.countWithin(10 * step + 1, 12 * step), 2);
        QCOMPARE(times.countWithin(10 * step, 12 * step - 1), 2);
        QCOMPARE(times.countWithin(11 * step, 11 * step), 1);
        QCOMPARE(times.countWithin(12 * step, 10 * step), 0);
    }
}

QTEST_APPLESS_MAIN(TestTimesOfDay)

#include "tst_timesofday.moc"
