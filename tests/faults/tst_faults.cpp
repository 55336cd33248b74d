// SPDX-License-Identifier: MIT
// Each call of the system that a job makes on its files fails, in each way that it may: the job has
// done all, or it says what it could not do and names the file.

#include "faults/aftermath.h"

#include "support/strictlog.h"

#include <QtTest/QTest>

#include <algorithm>
#include <array>
#include <cerrno>

using testsupport::CallOrder;
using testsupport::Counted;
using testsupport::forEach;
using testsupport::MadeCall;
using testsupport::Outcome;
using testsupport::SeenStates;
using testsupport::StoreJobs;
using testsupport::Undisturbed;

class TestFaults final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void cleanupTestCase();
    void jobsThatChange_data() { rows(StoreJobs::changing()); }
    void jobsThatChange() { everyFault(); }
    void jobsThatRead_data() { rows(StoreJobs::reading()); }
    void jobsThatRead() { everyFault(); }

private:
    static void rows(const QStringList& jobs);
    void everyFault();

    qsizetype m_faults = 0;
};

namespace {

bool changes(const QByteArray& name)
{
    const QByteArrayList looks{"open",     "release",  "read",     "stat",    "stat64",
                               "lstat",    "lstat64",  "fstat",    "fstat64", "statx",
                               "fstatat",  "access",   "opendir",  "readdir", "fstatat64",
                               "readlink", "realpath", "faccessat"};
    return !looks.contains(name);
}

// The system tells of a full disk only who changes something, and of a signal only who may wait.
// A job that is much like another has one of the errors at each call, and at each third from there
// on.
QList<CallOrder> faultsOf(const QList<MadeCall>& calls, bool isVariant)
{
    constexpr std::array errors{EIO, EACCES, ENOSPC};
    const int step = isVariant ? 3 : 1;
    QList<CallOrder> faults;
    for (int at = 1; at <= calls.size(); ++at) {
        const QByteArray& name = calls[at - 1].name;
        const size_t ways = changes(name) ? errors.size() : errors.size() - 1;
        for (size_t i = 0; i < ways; ++i) {
            if (!isVariant || i == static_cast<size_t>(at) % ways)
                faults.append({at, "fail", errors[i]});
        }
        if (at % step == 0)
            faults.append({at, "failon", errors[static_cast<size_t>(at / step) % errors.size()]});
        if (QByteArrayList{"open", "create", "read", "write", "close", "release"}.contains(name))
            faults.append({at, "fail", EINTR});
        if (name == "write") {
            faults.append({at, "half", ENOSPC});
            faults.append({at, "short", 0});
        }
    }
    return faults;
}

} // namespace

void TestFaults::rows(const QStringList& jobs)
{
    QTest::addColumn<QString>("job");
    for (const QString& job : jobs)
        QTest::newRow(qPrintable(job)) << job;
}

void TestFaults::everyFault()
{
    QFETCH(const QString, job);
    StoreJobs alone(job);
    QCOMPARE(alone.problem(), QByteArray());
    const Undisturbed done = runUndisturbed(alone, job);
    QCOMPARE(done.outcome.exitCode, job == u"import spoiled" ? 1 : 0);
    QVERIFY(done.calls.size() > 20);

    const QList<CallOrder> faults = faultsOf(done.calls, StoreJobs::isVariant(job));
    SeenStates states;
    const auto act = [&](StoreJobs& jobs, int number) -> QByteArray {
        const CallOrder& order = faults[number];
        jobs.refresh();
        const Outcome outcome = jobs.run(job, Counted::All, order);
        const QByteArray call = jobs.plain(toText(jobs.calls().value(order.at - 1)));
        QByteArray problem = wrongAfterFault(job, jobs, done, outcome, order);
        if (problem.isEmpty() && states.add(jobs.state()))
            problem = jobs.takeBack();
        return problem.isEmpty() ? problem
                                 : toText(order) + " (" + call + "): " + problem.left(200) + "; " +
                                       outcome.err.left(400).trimmed();
    };
    const QByteArray problems = forEach(job, static_cast<int>(faults.size()), act);
    if (!problems.isEmpty())
        qInfo("%s", problems.constData());
    QVERIFY(problems.isEmpty());
    m_faults += faults.size();
    qInfo("%d calls, %d faults", int(done.calls.size()), int(faults.size()));
}

void TestFaults::cleanupTestCase()
{
    qInfo("%d faults in all", int(m_faults));
}

QTEST_GUILESS_MAIN(TestFaults)
#include "tst_faults.moc"
