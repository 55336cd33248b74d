// SPDX-License-Identifier: MIT
// Directories that are watched in a thread of their own.
#include "directorywatch.h"

#include "support/eventually.h"
#include "support/strictlog.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <memory>

using tadata::DirectoryWatch;

#ifdef Q_OS_LINUX
namespace {

// How often this process watches something.
qsizetype watchers()
{
    const QDir open(QStringLiteral("/proc/self/fd"));
    qsizetype found = 0;
    for (const QFileInfo& each : open.entryInfoList(QDir::Files | QDir::System))
        found += each.symLinkTarget().contains(u"inotify") ? 1 : 0;
    return found;
}

} // namespace
#endif

class TestDirectoryWatch final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void tellsOfChangesInADirectory();
    void tellsOnceOfADirectoryThatHasCome();
    void givesBackWhatItWatchedWith();

private:
    std::unique_ptr<QTemporaryDir> m_temporary;
};

void TestDirectoryWatch::init()
{
    testsupport::failOnStrayWarnings();
    m_temporary = std::make_unique<QTemporaryDir>();
    QVERIFY(m_temporary->isValid());
}

void TestDirectoryWatch::tellsOfChangesInADirectory()
{
    int told = 0;
    DirectoryWatch watch(this, [&told] { ++told; });
    watch.watch({m_temporary->path()});
    EVENTUALLY_EQUAL(told, 1);
    QVERIFY(QDir(m_temporary->path()).mkdir(QStringLiteral("new")));
    EVENTUALLY_EQUAL(told, 2);
}

void TestDirectoryWatch::tellsOnceOfADirectoryThatHasCome()
{
    int told = 0;
    DirectoryWatch watch(this, [&told] { ++told; });
    const QString later = m_temporary->filePath(QStringLiteral("later"));
    watch.watch({m_temporary->path(), later});
    EVENTUALLY_EQUAL(told, 1);
    QVERIFY(QDir(m_temporary->path()).mkdir(QStringLiteral("later")));
    EVENTUALLY_EQUAL(told, 2);
    // The first two add nothing, and neither does the last: else they would be told, too.
    watch.watch({m_temporary->path()});
    watch.watch({m_temporary->filePath(QStringLiteral("nowhere"))});
    watch.watch({later});
    watch.watch({m_temporary->path(), later});
    EVENTUALLY_EQUAL(told, 3);
    QVERIFY(QDir(later).mkdir(QStringLiteral("deeper")));
    EVENTUALLY_EQUAL(told, 4);
}

void TestDirectoryWatch::givesBackWhatItWatchedWith()
{
#ifdef Q_OS_LINUX
    const qsizetype before = watchers();
    int told = 0;
    auto watch = std::make_unique<DirectoryWatch>(this, [&told] { ++told; });
    watch->watch({m_temporary->path()});
    EVENTUALLY_EQUAL(told, 1);
    QCOMPARE(watchers(), before + 1);
    watch.reset();
    QCOMPARE(watchers(), before);
#else
    QSKIP("The system does not show it.");
#endif
}

QTEST_GUILESS_MAIN(TestDirectoryWatch)
#include "tst_directorywatch.moc"
