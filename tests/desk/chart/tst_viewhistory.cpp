// SPDX-License-Identifier: MIT
#include "desk/chart/viewhistory.h"
#include "support/strictlog.h"

#include <QtTest/QTest>

using vexdesk::ViewHistory;

namespace {

ViewHistory::State at(double time)
{
    ViewHistory::State state;
    state.time = time;
    return state;
}

} // namespace

class TestViewHistory final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void goesBackAndForwardAgain();
    void aJumpForgetsWhatWasForward();
    void passesOverWhereItIs();
    void isNotWithoutEnd();
};

void TestViewHistory::goesBackAndForwardAgain()
{
    ViewHistory history;
    QVERIFY(!history.canGoBack() && !history.back(at(1)));
    history.leave(at(1));
    history.leave(at(2));
    QVERIFY(history.canGoBack() && !history.canGoForward());
    QCOMPARE(history.back(at(3))->time, 2.0);
    QCOMPARE(history.back(at(2))->time, 1.0);
    QVERIFY(!history.canGoBack() && !history.back(at(1)));
    QCOMPARE(history.forward(at(1))->time, 2.0);
    QCOMPARE(history.forward(at(2))->time, 3.0);
    QVERIFY(!history.canGoForward() && !history.forward(at(3)));
}

void TestViewHistory::aJumpForgetsWhatWasForward()
{
    ViewHistory history;
    history.leave(at(1));
    QVERIFY(history.back(at(2)));
    history.leave(at(5));
    QVERIFY(!history.canGoForward());
    QCOMPARE(history.back(at(6))->time, 5.0);
    history.clear();
    QVERIFY(!history.canGoBack() && !history.canGoForward());
}

void TestViewHistory::passesOverWhereItIs()
{
    ViewHistory history;
    history.leave(at(1));
    history.leave(at(2));
    history.leave(at(2));
    QCOMPARE(history.back(at(2))->time, 1.0);
    QVERIFY(!history.canGoBack());
}

void TestViewHistory::isNotWithoutEnd()
{
    ViewHistory history;
    for (int i = 0; i < 1000; ++i)
        history.leave(at(i));
    int steps = 0;
    for (auto state = history.back(at(1000)); state; state = history.back(*state))
        ++steps;
    QCOMPARE(steps, 100);
}

QTEST_GUILESS_MAIN(TestViewHistory)
#include "tst_viewhistory.moc"
