// SPDX-License-Identifier: MIT
// Work in the background of an object that may go before it ends.
#include "backgroundtask.h"

#include "support/eventually.h"
#include "support/strictlog.h"

#include <QtCore/QSemaphore>
#include <QtTest/QTest>

#include <memory>

using tadata::AtEnd;
using tadata::BackgroundTask;

namespace {

// What a test and the work that it has begun know of each other.
struct Gate
{
    QSemaphore open;
    std::atomic<bool> isReached = false;
    std::atomic<bool> hasEnded = false;

    int pass()
    {
        isReached = true;
        static_cast<void>(open.tryAcquire(1, testsupport::patience));
        hasEnded = true;
        return 1;
    }
};

} // namespace

class TestBackgroundTask final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void theLastValueIsTold();
    void whoLeavesIsNotKeptWaiting();
    void whoWaitsGoesWhenAllHasEnded();
};

void TestBackgroundTask::theLastValueIsTold()
{
    BackgroundTask<int> task;
    QList<int> told;
    for (const int value : {1, 2})
        task.start([value](const std::atomic<bool>&) { return value; },
                   [&told](int one) { told.append(one); });
    EVENTUALLY_EQUAL(told, QList<int>{2});
    QVERIFY(!task.isRunning());
}

void TestBackgroundTask::whoLeavesIsNotKeptWaiting()
{
    const auto gate = std::make_shared<Gate>();
    bool isTold = false;
    auto task = std::make_unique<BackgroundTask<int>>(AtEnd::Leaves);
    task->start([gate](const std::atomic<bool>&) { return gate->pass(); },
                [&isTold](int) { isTold = true; });
    EVENTUALLY(gate->isReached);
    task.reset();
    QVERIFY(!gate->hasEnded);
    QCOMPARE(tadata::LeftPools::instance().count(), 1);
    gate->open.release();
    EVENTUALLY(gate->hasEnded);
    QCoreApplication::processEvents();
    QVERIFY(!isTold);
    // The pool goes when another one is left.
    const auto leave = [] { const BackgroundTask<int> left(AtEnd::Leaves); };
    EVENTUALLY((leave(), tadata::LeftPools::instance().count() == 0));
}

void TestBackgroundTask::whoWaitsGoesWhenAllHasEnded()
{
    const auto gate = std::make_shared<Gate>();
    {
        BackgroundTask<int> task;
        task.start([gate](const std::atomic<bool>&) { return gate->pass(); }, [](int) {});
        gate->open.release();
    }
    // What was not begun yet comes to nothing.
    QCOMPARE(gate->hasEnded.load(), gate->isReached.load());
}

QTEST_GUILESS_MAIN(TestBackgroundTask)
#include "tst_backgroundtask.moc"
