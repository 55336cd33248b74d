// SPDX-License-Identifier: MIT
// That whoever watches hears of every change, also of one that comes before it has watched anew.

#include "desk/chart/pathwatcher.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <memory>

using testsupport::writeFile;
using vexdesk::PathWatcher;

class TestPathWatcher final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aFileThatComesIsTold();
    void whatIsAboveComesBackBeforeItIsWatchedAnew_data();
    void whatIsAboveComesBackBeforeItIsWatchedAnew();
    void whatWasMissingIsThereWhenItIsWatchedAnew();

private:
    QString path(const char* name) const { return m_place->filePath(QLatin1String(name)); }
    // Watches the directory and waits until it is watched: what is new to the watcher is told.
    void startWatching();
    bool isTold();

    std::unique_ptr<QTemporaryDir> m_place;
    std::unique_ptr<PathWatcher> m_watcher;
    std::unique_ptr<QSignalSpy> m_changes;
};

void TestPathWatcher::init()
{
    testsupport::failOnStrayWarnings();
    m_place = std::make_unique<QTemporaryDir>();
    QVERIFY(m_place->isValid());
    QVERIFY(QDir().mkpath(path("data/store")));
    constexpr int delay = 1; // ms
    m_watcher = std::make_unique<PathWatcher>(delay);
    m_changes = std::make_unique<QSignalSpy>(m_watcher.get(), &PathWatcher::changed);
}

void TestPathWatcher::cleanup()
{
    m_changes.reset();
    m_watcher.reset();
    m_place.reset();
}

void TestPathWatcher::startWatching()
{
    m_watcher->watch({path("data/store")});
    QVERIFY(isTold());
}

bool TestPathWatcher::isTold()
{
    constexpr int patience = 30'000; // ms
    const bool isThere = !m_changes->isEmpty() || m_changes->wait(patience);
    m_changes->clear();
    return isThere;
}

void TestPathWatcher::aFileThatComesIsTold()
{
    startWatching();
    writeFile(path("data/store/one"), "1");
    QVERIFY(isTold());
}

void TestPathWatcher::whatIsAboveComesBackBeforeItIsWatchedAnew_data()
{
    QTest::addColumn<QString>("moved");
    QTest::newRow("watched") << QStringLiteral("data/store");
    QTest::newRow("above") << QStringLiteral("data");
}

// Whoever looked while it was away saw nothing, and would go on with that.
void TestPathWatcher::whatIsAboveComesBackBeforeItIsWatchedAnew()
{
    QFETCH(const QString, moved);
    const QString there = m_place->filePath(moved);
    startWatching();
    QVERIFY(QFile::rename(there, path("away")));
    QVERIFY(isTold());
    QVERIFY(QFile::rename(path("away"), there));
    QVERIFY(isTold());
    writeFile(path("data/store/one"), "1");
    QVERIFY(isTold());
}

void TestPathWatcher::whatWasMissingIsThereWhenItIsWatchedAnew()
{
    QVERIFY(QFile::rename(path("data"), path("away")));
    m_watcher->watch({path("data/store")});
    QVERIFY(isTold());
    QVERIFY(QFile::rename(path("away"), path("data")));
    m_watcher->watch({path("data/store")});
    QVERIFY(isTold());
}

QTEST_GUILESS_MAIN(TestPathWatcher)
#include "tst_pathwatcher.moc"
