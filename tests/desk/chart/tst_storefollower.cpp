// SPDX-License-Identifier: MIT
// That the list of what is stored does not stay behind the store.

#include "desk/chart/storefollower.h"
#include "support/dayfiles.h"
#include "support/eventually.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using testsupport::writeFile;
using vexdesk::StoreFollower;

class TestStoreFollower final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void aSeriesThatComesIsListed();
    void aStoreThatIsMissingIsLookedForAgain();
};

void TestStoreFollower::aSeriesThatComesIsListed()
{
    const QTemporaryDir place;
    QVERIFY(place.isValid());
    StoreFollower follower(place.path());
    QList<vexdesk::StoredSeries> stored;
    connect(&follower, &StoreFollower::listed, this, [&stored](const auto& all) { stored = all; });
    follower.start();
    const QDate day(2024, 1, 15);
    writeFile(place.filePath(QStringLiteral("NORD/MAIN/ALFA/") + testsupport::dayFile(day)),
              testsupport::barLines(QTime(10, 0), 3, 100));
    EVENTUALLY_EQUAL(stored.size(), 1);
    QCOMPARE(stored.front().firstDay, day);
}

// Nothing may tell when it is there again, as with a disk of another machine.
void TestStoreFollower::aStoreThatIsMissingIsLookedForAgain()
{
    const QTemporaryDir place;
    QVERIFY(place.isValid());
    StoreFollower follower(place.filePath(QStringLiteral("none/store")));
    QSignalSpy missed(&follower, &StoreFollower::missed);
    follower.start();
    constexpr int toBeSure = 3; // twice may be the start and what the watcher finds new
    EVENTUALLY(missed.size() >= toBeSure);
    for (const auto& arguments : missed)
        QCOMPARE(arguments.front().toBool(), true);
}

QTEST_GUILESS_MAIN(TestStoreFollower)
#include "tst_storefollower.moc"
