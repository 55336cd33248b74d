// SPDX-License-Identifier: MIT
// Programs that change a store are killed, and interrupted, at each call of the system that changes
// something: whoever reads the store can, the job can be done again, and what it had done can be
// taken back.

#include "faults/storereaders.h"

#include "support/strictlog.h"

#include <QtCore/QFileInfo>
#include <QtTest/QTest>

#include <atomic>
#include <csignal>

using testsupport::CallOrder;
using testsupport::Counted;
using testsupport::Files;
using testsupport::filesBelow;
using testsupport::forEach;
using testsupport::MadeCall;
using testsupport::Outcome;
using testsupport::runProgram;
using testsupport::SeenStates;
using testsupport::StoreJobs;
using testsupport::words;

class TestTakingBack final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void killedAtEachStep_data();
    void killedAtEachStep();
    void interruptedAtEachStep_data();
    void interruptedAtEachStep();
    void cleanupTestCase();

private:
    SeenStates m_read; // by all jobs
    qsizetype m_kills = 0;
    qsizetype m_states = 0;
};

namespace {

int exitCodeOf(const QString& job)
{
    return job == u"import spoiled" ? 1 : 0;
}

Outcome runUndisturbed(const StoreJobs& jobs, const QString& job, const QStringList& options = {})
{
    const QStringList line = jobs.commandLine(job) + options;
    return runProgram(line.first(), line.mid(1));
}

QList<CallOrder> killsAt(const QList<MadeCall>& calls)
{
    QList<CallOrder> kills;
    for (int at = 1; at <= calls.size(); ++at) {
        kills.append({at, "kill", 0});
        kills.append({at, "killafter", 0});
        if (calls[at - 1].name == "write")
            kills.append({at, "killhalf", 0});
    }
    return kills;
}

// Most are done again on what they have left. Of these that would be another job; and a day whose
// second file is as it should be is not touched by a merge, whatever its derived minutes are. They
// are taken back before.
bool canBeRepeated(const QString& job)
{
    const QStringList others{QStringLiteral("edit"),         QStringLiteral("copy"),
                             QStringLiteral("rename"),       QStringLiteral("merge seconds"),
                             QStringLiteral("fill seconds"), QStringLiteral("import spoiled")};
    return !others.contains(job);
}

QByteArray doAgain(const StoreJobs& jobs, const QString& job, const Files& done)
{
    if (!canBeRepeated(job)) {
        if (QByteArray problem = jobs.takeBack(); !problem.isEmpty())
            return problem;
    }
    QFile::remove(jobs.path("rejects.csv"));
    // A killed undo has a point of its own, which holds what the next one touches.
    const Outcome again =
        runUndisturbed(jobs, job, job.startsWith(u"undo") ? words("--force") : words(""));
    if (again.exitCode != exitCodeOf(job))
        return "not done again: " + again.err;
    return filesBelow(jobs.store()) == done ? QByteArray()
                                            : "done again, and not what it should be";
}

// What the killed run and the next have done, the last first.
QByteArray takeBackBoth(const StoreJobs& jobs)
{
    const QStringList made = jobs.newPoints();
    for (const QString& id : made) {
        const Outcome undone =
            runProgram(testsupport::tadataProgram(), words("undo --store") << jobs.store() << id);
        if (undone.exitCode != 0)
            return "point not taken back: " + undone.err;
    }
    return filesBelow(jobs.store()) == jobs.before() ? QByteArray()
                                                     : "both taken back, and not what it was";
}

QByteArray kill(StoreJobs& jobs, const QString& job, const CallOrder& order)
{
    jobs.refresh();
    const Outcome outcome = jobs.run(job, Counted::Changing, order);
    return outcome.exitCode == -1 ? QByteArray()
                                  : "exit code " + QByteArray::number(outcome.exitCode);
}

} // namespace

void TestTakingBack::killedAtEachStep_data()
{
    QTest::addColumn<QString>("job");
    for (const QString& job : StoreJobs::changing())
        QTest::newRow(qPrintable(job)) << job;
}

void TestTakingBack::killedAtEachStep()
{
    QFETCH(const QString, job);
    StoreJobs alone(job);
    QCOMPARE(alone.problem(), QByteArray());
    QCOMPARE(alone.run(job, Counted::Changing).exitCode, exitCodeOf(job));
    const Files done = filesBelow(alone.store());
    const QList<CallOrder> kills = killsAt(alone.calls());
    QVERIFY(alone.calls().size() > 20);

    SeenStates states;
    std::atomic<int> distinct = 0;
    const auto act = [&](StoreJobs& jobs, int number) -> QByteArray {
        const CallOrder& order = kills[number];
        QByteArray problem = kill(jobs, job, order);
        // Killed runs that leave the same are taken back in the same way.
        if (problem.isEmpty() && !states.add(jobs.state()))
            return {};
        ++distinct;
        if (problem.isEmpty() && m_read.add(jobs.state()))
            problem = wrongReaders(jobs);
        if (problem.isEmpty())
            problem = doAgain(jobs, job, done);
        if (problem.isEmpty())
            problem = takeBackBoth(jobs);
        if (problem.isEmpty())
            problem = kill(jobs, job, order);
        if (problem.isEmpty())
            problem = jobs.takeBack();
        return problem.isEmpty() ? problem : toText(order) + ": " + problem.left(400).trimmed();
    };
    const QByteArray problems = forEach(job, static_cast<int>(kills.size()), act);
    if (!problems.isEmpty())
        qInfo("%s", problems.constData());
    QVERIFY(problems.isEmpty());
    m_kills += kills.size();
    m_states += distinct;
    qInfo("%d calls, %d kills, %d different states", int(alone.calls().size()), int(kills.size()),
          int(distinct));
}

void TestTakingBack::interruptedAtEachStep_data()
{
    QTest::addColumn<int>("signal");
    QTest::addColumn<QStringList>("options");
    QTest::newRow("SIGHUP, put back") << SIGHUP << words("--undo-on-error");
    QTest::newRow("SIGHUP") << SIGHUP << QStringList();
    QTest::newRow("SIGINT") << SIGINT << QStringList();
    QTest::newRow("SIGTERM") << SIGTERM << QStringList();
    QTest::newRow("SIGINT, put back") << SIGINT << words("--undo-on-error");
    QTest::newRow("SIGTERM, put back") << SIGTERM << words("--undo-on-error");
}

void TestTakingBack::interruptedAtEachStep()
{
    QFETCH(const int, signal);
    QFETCH(const QStringList, options);
    const QString job = QStringLiteral("import seconds");
    StoreJobs alone(job);
    QCOMPARE(alone.run(job, Counted::Changing, {}, options).exitCode, 0);
    const Files done = filesBelow(alone.store());
    const auto steps = static_cast<int>(alone.calls().size());

    std::atomic<int> interrupted = 0;
    const auto act = [&](StoreJobs& jobs, int number) -> QByteArray {
        const CallOrder order{number + 1, "signal", signal};
        jobs.refresh();
        const Outcome outcome = jobs.run(job, Counted::Changing, order, options);
        // After its last line nothing is left to interrupt.
        const bool hasEnded = outcome.exitCode == 0;
        interrupted += hasEnded ? 0 : 1;
        if (!hasEnded && outcome.exitCode != 128 + signal)
            return toText(order) + ": exit code " + QByteArray::number(outcome.exitCode);
        if (hasEnded && filesBelow(jobs.store()) != done)
            return toText(order) + ": not done";
        if (!hasEnded && !options.isEmpty() &&
            (filesBelow(jobs.store()) != jobs.before() || !jobs.newPoints().isEmpty()))
            return toText(order) + ": not put back";
        const QString newest = jobs.points().first();
        if (QFileInfo::exists(jobs.place() + u'/' + newest + "/journal"))
            return toText(order) + ": the point has not ended";
        return jobs.takeBack();
    };
    QCOMPARE(forEach(job, steps, act), QByteArray());
    QVERIFY(interrupted > 10);
    QVERIFY(interrupted < steps);
}

void TestTakingBack::cleanupTestCase()
{
    qInfo("%d kills in all, %d different states", int(m_kills), int(m_states));
}

QTEST_GUILESS_MAIN(TestTakingBack)
#include "tst_takingback.moc"
