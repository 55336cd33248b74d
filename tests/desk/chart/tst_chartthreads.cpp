// SPDX-License-Identifier: MIT
// The user-interface thread never walks the store: with years of day files, or on a disk that is
// slow to answer, the window would stand still.

#include "desk/chart/chartpage.h"
#include "desk/chart/charttabs.h"
#include "desk/chart/marksources.h"
#include "desk/chart/seriestree.h"
#include "support/child.h"
#include "support/dayfiles.h"
#include "support/faults.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <vexdesk/icore.h>

#include <QtCore/QPointer>
#include <QtCore/QSemaphore>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThread>
#include <QtTest/QTest>
#include <QtWidgets/QTreeView>

#include <dirent.h>
#include <dlfcn.h>
#include <sys/inotify.h>
#include <sys/stat.h>

#include <atomic>
#include <mutex>

namespace {

std::mutex mutex;
QByteArray store;       // while its calls are counted
QByteArrayList walked;  // below it, by the user-interface thread
std::atomic_int others; // calls of other threads

void record(const char* path)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (store.isEmpty() || !path || !QByteArray(path).startsWith(store))
        return;
    if (QThread::currentThread() == qApp->thread())
        walked.append(path);
    else
        ++others;
}

void countCallsBelow(const QString& path)
{
    const std::lock_guard<std::mutex> lock(mutex);
    store = path.toLocal8Bit();
}

template <typename Function>
Function real(const char* name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

} // namespace

// Every call goes through these, those inside Qt too.
#define INTERPOSED extern "C" __attribute__((visibility("default")))

INTERPOSED DIR* opendir(const char* path)
{
    static const auto call = real<DIR* (*)(const char*)>("opendir");
    record(path);
    return call(path);
}

INTERPOSED int statx(int directory, const char* path, int flags, unsigned int mask,
                     struct statx* result)
{
    static const auto call =
        real<int (*)(int, const char*, int, unsigned int, struct statx*)>("statx");
    record(path);
    return call(directory, path, flags, mask, result);
}

INTERPOSED int inotify_add_watch(int descriptor, const char* path, uint32_t mask) noexcept
{
    static const auto call = real<int (*)(int, const char*, uint32_t)>("inotify_add_watch");
    record(path);
    return call(descriptor, path, mask);
}

class TestChartThreads final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void cleanup() { QFile::remove(settingsFile()); }

    void theStoreIsWalkedByOtherThreads();
    void aPageCanBeClosedWhileItReads();

private:
    static QString settingsFile()
    {
        return ICore::getDir(QString(), false).filePath(QStringLiteral("vexdesk.ini"));
    }
};

void TestChartThreads::theStoreIsWalkedByOtherThreads()
{
    const QTemporaryDir root;
    const auto write = [&root](int day) {
        testsupport::writeFile(root.filePath(QStringLiteral("NORD/MAIN/ALFA/") +
                                             testsupport::dayFile(QDate(2024, 1, 15).addDays(day))),
                               testsupport::barLines(QTime(10, 0), 20));
    };
    write(0);
    QFile::remove(settingsFile());
    vexdesk::MarkSources marks;
    vexdesk::SeriesTree tree(root.path());
    vexdesk::ChartTabs tabs(root.path(), marks);
    const auto* const rows = testsupport::child<QTreeView>(&tree, "seriesView")->model();
    countCallsBelow(root.path());
    tree.show();
    tabs.show();
    const vexdesk::ChartPage& page =
        tabs.open({QStringLiteral("NORD"), QStringLiteral("MAIN"), QStringLiteral("ALFA")});
    QTRY_VERIFY(!page.isEmpty() && rows->rowCount() == 1);
    const QDate before = page.storedDays().constLast();
    countCallsBelow(QString());
    write(1);
    countCallsBelow(root.path());
    QTRY_VERIFY(page.storedDays().constLast() > before);
    tabs.hide();
    tabs.show();
    QTRY_VERIFY(!page.isEmpty());
    countCallsBelow(QString());
    QCOMPARE(walked, QByteArrayList());
    QVERIFY(others > 0);
}

// On a disk that does not answer.
void TestChartThreads::aPageCanBeClosedWhileItReads()
{
    const QTemporaryDir root;
    const QString name = testsupport::dayFile(QDate(2024, 1, 15));
    testsupport::writeFile(root.filePath(QStringLiteral("NORD/MAIN/ALFA/") + name),
                           testsupport::barLines(QTime(10, 0), 20));
    QSemaphore isRead;
    QSemaphore goOn;
    QSemaphore hasEnded;
    const testsupport::Meanwhile slow(testsupport::SystemCall::Read, name, [&] {
        isRead.release();
        goOn.acquire();
        hasEnded.release();
    });
    vexdesk::MarkSources marks;
    vexdesk::ChartTabs tabs(root.path(), marks);
    tabs.show();
    const QPointer<vexdesk::ChartPage> page =
        &tabs.open({QStringLiteral("NORD"), QStringLiteral("MAIN"), QStringLiteral("ALFA")});
    QTRY_COMPARE(isRead.available(), 1);
    tabs.closeCurrent();
    QTRY_VERIFY(!page);
    QCOMPARE(hasEnded.available(), 0);
    goOn.release();
    hasEnded.acquire();
}

QTEST_MAIN(TestChartThreads)
#include "tst_chartthreads.moc"
