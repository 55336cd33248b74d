// SPDX-License-Identifier: MIT
// Each call of the system that a job makes on its files fails, in each way that it may: the job has
// done all, or it says what it could not do and names the file.

#include "faults/storejobs.h"

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QFileInfo>
#include <QtTest/QTest>

#include <algorithm>
#include <array>
#include <cerrno>

using testsupport::CallOrder;
using testsupport::Counted;
using testsupport::Files;
using testsupport::filesBelow;
using testsupport::forEach;
using testsupport::Outcome;
using testsupport::readFile;
using testsupport::SeenStates;
using testsupport::StoreJobs;
using testsupport::withoutEmpty;
using testsupport::withoutTemporary;

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

// What a job does where nothing fails.
struct Undisturbed
{
    QByteArrayList calls;
    QByteArray printed;
    QByteArray exported;
    Files store;
};

bool changes(const QByteArray& name)
{
    const QByteArrayList looks{"open",     "release",  "read",     "stat",    "stat64",
                               "lstat",    "lstat64",  "fstat",    "fstat64", "statx",
                               "fstatat",  "access",   "opendir",  "readdir", "fstatat64",
                               "readlink", "realpath", "faccessat"};
    return !looks.contains(name);
}

// The system tells of a full disk only who changes something, and of a signal only who may wait.
QList<CallOrder> faultsOf(const QByteArrayList& calls)
{
    constexpr std::array errors{EIO, EACCES, ENOSPC};
    QList<CallOrder> faults;
    for (int at = 1; at <= calls.size(); ++at) {
        const QByteArray name = calls[at - 1].left(calls[at - 1].indexOf(' '));
        for (const int error : errors) {
            if (error != ENOSPC || changes(name))
                faults.append({at, "fail", error});
        }
        faults.append({at, "failon", errors[static_cast<size_t>(at) % errors.size()]});
        if (QByteArrayList{"open", "create", "read", "write", "close", "release"}.contains(name))
            faults.append({at, "fail", EINTR});
        if (name == "write") {
            faults.append({at, "half", ENOSPC});
            faults.append({at, "short", 0});
        }
    }
    return faults;
}

// A message names the file, its directory or a file beside it; of what belongs to the restore
// points, anything of the place, or the file that the copy is of.
bool names(const QByteArray& message, const QByteArray& path, const StoreJobs& jobs)
{
    const QByteArray place = jobs.path("store-restore").toUtf8();
    const QByteArray directory = path.left(path.lastIndexOf('/'));
    const bool isAlone = directory == QFileInfo(jobs.store()).path().toUtf8();
    return message.contains(path) || (!isAlone && message.contains(directory)) ||
           (path.startsWith(place) &&
            (message.contains(place) || message.contains(path.mid(path.lastIndexOf('/')))));
}

// The file of the call that has failed, or of one of those that have.
bool namesWhatFailed(const QByteArray& message, const StoreJobs& jobs, const CallOrder& order)
{
    QByteArrayList failed = jobs.calls().mid(order.at - 1);
    if (order.deed == "fail")
        failed = failed.first(1);
    return std::any_of(failed.begin(), failed.end(), [&](const QByteArray& call) {
        return names(message, call.mid(call.indexOf(' ') + 1), jobs);
    });
}

bool isBegun(const QByteArray& content, const QByteArray& whole)
{
    return whole.startsWith(content) && (content.isEmpty() || content.endsWith('\n'));
}

// What may be left of a file by a job that has failed.
bool isAllowed(const QString& job, const QString& path, const Files& now, const Files& before,
               const Files& after)
{
    if (now.value(path) == before.value(path) || now.value(path) == after.value(path))
        return true;
    const QByteArray content = now.value(path).first;
    const QByteArray whole = after.value(path).first;
    // Bars that came before an error stay.
    if (job.startsWith(u"import"))
        return isBegun(content, whole);
    // The last day of derived minutes is the last that was written; its last minute is open.
    if (job == u"merge seconds" || job == u"fill seconds")
        return !path.endsWith(u".iss") && isBegun(content, whole);
    // The editor empties a file that it may not remove.
    return job == u"edit" && content.isEmpty() && !after.contains(path);
}

QByteArray filesAfterFailure(const QString& job, const StoreJobs& jobs, const Undisturbed& done)
{
    const Files now = withoutTemporary(filesBelow(jobs.store()));
    QStringList paths = now.keys() + jobs.before().keys();
    paths += done.store.keys();
    for (const QString& path : paths) {
        if (!isAllowed(job, path, now, jobs.before(), done.store))
            return "what is left of " + path.toUtf8() + " is '" + now.value(path).first + '\'';
    }
    return {};
}

QByteArray filesAfterSuccess(const QString& job, const StoreJobs& jobs, const Undisturbed& done)
{
    const Files now = withoutTemporary(filesBelow(jobs.store()));
    if (job == u"edit" ? withoutEmpty(now) != withoutEmpty(done.store) : now != done.store)
        return "success, and the store is not what it should be";
    return readFile(jobs.path("out.txt")) == done.exported
               ? QByteArray()
               : "success, and the output is not what it should be";
}

QByteArray judge(const QString& job, const StoreJobs& jobs, const Undisturbed& done,
                 const Outcome& outcome, const CallOrder& order)
{
    if (outcome.exitCode == 0) {
        return jobs.plain(outcome.out) == done.printed
                   ? filesAfterSuccess(job, jobs, done)
                   : "success, and it printed " + jobs.plain(outcome.out);
    }
    if (outcome.exitCode != 1)
        return "exit code " + QByteArray::number(outcome.exitCode);
    if (!namesWhatFailed(outcome.err, jobs, order))
        return "not named";
    return filesAfterFailure(job, jobs, done);
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
    StoreJobs alone;
    QCOMPARE(alone.problem(), QByteArray());
    const Outcome undisturbed = alone.run(job);
    QCOMPARE(undisturbed, testsupport::succeeded(undisturbed.out));
    const Undisturbed done{alone.calls(), alone.plain(undisturbed.out),
                           readFile(alone.path("out.txt")), filesBelow(alone.store())};
    QVERIFY(done.calls.size() > 20);

    const QList<CallOrder> faults = faultsOf(done.calls);
    SeenStates states;
    const auto act = [&](StoreJobs& jobs, int number) -> QByteArray {
        const CallOrder& order = faults[number];
        jobs.refresh();
        const Outcome outcome = jobs.run(job, Counted::All, order);
        const QByteArray call = jobs.plain(jobs.calls().value(order.at - 1));
        QByteArray problem = judge(job, jobs, done, outcome, order);
        if (problem.isEmpty() && states.add(jobs.state()))
            problem = jobs.takeBack();
        return problem.isEmpty() ? problem
                                 : toText(order) + " (" + call + "): " + problem.left(200) + "; " +
                                       outcome.err.left(400).trimmed();
    };
    const QByteArray problems = forEach(static_cast<int>(faults.size()), act);
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
