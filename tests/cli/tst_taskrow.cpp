// SPDX-License-Identifier: MIT
#include "taskrow.h"

#include "support/strictlog.h"

#include <QtTest/QTest>

#include <latch>

using tadata::cli::TaskRow;

class TestTaskRow final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void tellsInOrder();
    void runsAtOnceWhatMeetsNothing();
    void keepsWhatMeetsInOrder();
    void stopsAtAFailureIfItIsTold();
    void stopsWhenItIsStopped();

private:
    TaskRow::Task task(int number, const QStringList& uses, std::function<bool()> run)
    {
        return {uses, std::move(run), [this, number] { m_told.append(number); }};
    }

    QList<int> m_told;
};

void TestTaskRow::init()
{
    testsupport::failOnStrayWarnings();
    m_told.clear();
}

void TestTaskRow::tellsInOrder()
{
    QList<TaskRow::Task> tasks;
    QList<int> numbers;
    for (int i = 0; i < 200; ++i) {
        numbers.append(i);
        tasks.append(task(i, {}, [i] { return i % 7 != 0; }));
    }
    TaskRow row(tasks, false, nullptr);
    row.run(8);
    QCOMPARE(m_told, numbers);
    QCOMPARE(row.failed(), 29);
    QCOMPARE(row.left(), 0);
}

// Each waits for the other: one alone would never end.
void TestTaskRow::runsAtOnceWhatMeetsNothing()
{
    std::latch both(2);
    const auto meet = [&both] {
        both.arrive_and_wait();
        return true;
    };
    const QList<TaskRow::Task> tasks{
        task(0, {QStringLiteral("a"), QStringLiteral("b")}, meet),
        task(1, {QStringLiteral("b")}, [] { return true; }),
        task(2, {QStringLiteral("c")}, meet),
    };
    TaskRow row(tasks, false, nullptr);
    row.run(2);
    QCOMPARE(m_told, QList<int>({0, 1, 2}));
}

void TestTaskRow::keepsWhatMeetsInOrder()
{
    std::mutex mutex;
    QMap<QString, QList<int>> order;
    QMap<QString, QList<int>> expected;
    QList<TaskRow::Task> tasks;
    for (int i = 0; i < 300; ++i) {
        const QStringList uses{QString::number(i % 3), QString::number(i % 5 + 3)};
        for (const QString& thing : uses)
            expected[thing].append(i);
        tasks.append(task(i, uses, [&mutex, &order, uses, i] {
            const std::lock_guard lock(mutex);
            for (const QString& thing : uses)
                order[thing].append(i);
            return true;
        }));
    }
    TaskRow row(tasks, false, nullptr);
    row.run(6);
    QCOMPARE(order, expected);
}

void TestTaskRow::stopsAtAFailureIfItIsTold()
{
    for (const bool stops : {false, true}) {
        m_told.clear();
        const QList<TaskRow::Task> tasks{task(0, {}, [] { return true; }),
                                         task(1, {}, [] { return false; }),
                                         task(2, {}, [] { return true; })};
        TaskRow row(tasks, stops, nullptr);
        row.run(1);
        QCOMPARE(m_told, stops ? QList<int>({0, 1}) : QList<int>({0, 1, 2}));
        QCOMPARE(row.failed(), 1);
        QCOMPARE(row.left(), stops ? 1 : 0);
    }
}

// What has run behind one that was not begun is told all the same.
void TestTaskRow::stopsWhenItIsStopped()
{
    std::atomic<bool> stop = false;
    std::latch last(1);
    const QStringList thing{QStringLiteral("a")};
    const QList<TaskRow::Task> tasks{task(0, thing,
                                          [&] {
                                              last.wait();
                                              stop = true;
                                              return true;
                                          }),
                                     task(1, thing, [] { return true; }), task(2, {}, [&] {
                                         last.count_down();
                                         return true;
                                     })};
    TaskRow row(tasks, false, &stop);
    row.run(2);
    QCOMPARE(m_told, QList<int>({0, 2}));
    QCOMPARE(row.left(), 1);
}

QTEST_GUILESS_MAIN(TestTaskRow)
#include "tst_taskrow.moc"
