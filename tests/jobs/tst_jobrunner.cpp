// SPDX-License-Identifier: MIT
#include "jobrunner.h"

#include "support/eventually.h"
#include "support/modalsteps.h"
#include "support/strictlog.h"

#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QScopeGuard>
#include <QtCore/QThread>
#include <QtCore/QThreadPool>
#include <QtTest/QTest>
#include <QtWidgets/QProgressDialog>

#include <atomic>
#include <stdexcept>

using testsupport::ModalSteps;

class TestJobRunner final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void leavesThreadsForOthers();
    void handsOnWhatAJobThrows();
};

// Qt's painting, for one, on a computer with a single core.
void TestJobRunner::leavesThreadsForOthers()
{
    QThreadPool* const pool = QThreadPool::globalInstance();
    const int before = pool->maxThreadCount();
    const auto restore = qScopeGuard([pool, before] { pool->setMaxThreadCount(before); });
    pool->setMaxThreadCount(1);
    std::atomic<bool> goesOn = false;
    ModalSteps steps;
    bool hasPainted = false;
    steps.during<QProgressDialog>([&](QProgressDialog*) {
        const auto letGo = qScopeGuard([&goesOn] { goesOn = true; });
        const QFuture<void> painting = QtConcurrent::run(pool, [] {});
        EVENTUALLY(painting.isFinished());
        hasPainted = true;
    });
    const vexdesk::Outcome outcome =
        tadata::runJob(QStringLiteral("title"), QStringLiteral("text"), [&](QProgressDialog*) {
            while (!goesOn)
                QThread::yieldCurrentThread();
            return vexdesk::Outcome();
        });
    QCOMPARE(steps.complaint(), QString());
    QVERIFY(outcome);
    QVERIFY(hasPainted);
    QCOMPARE(pool->maxThreadCount(), 1);
}

void TestJobRunner::handsOnWhatAJobThrows()
{
    const int before = QThreadPool::globalInstance()->maxThreadCount();
    bool isCaught = false;
    try {
        (void)tadata::runJob(QStringLiteral("title"), QStringLiteral("text"),
                             [](QProgressDialog*) -> vexdesk::Outcome {
                                 throw std::runtime_error("a job that throws");
                             });
    } catch (const std::exception&) { // Qt hands it on inside one of its own
        isCaught = true;
    }
    QVERIFY(isCaught);
    QCOMPARE(QThreadPool::globalInstance()->maxThreadCount(), before);
}

QTEST_MAIN(TestJobRunner)
#include "tst_jobrunner.moc"
