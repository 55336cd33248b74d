// SPDX-License-Identifier: MIT
#include "desk/daywatcher.h"
#include "desk/deskapplication.h"
#include "messageboxes.h"
#include "support/child.h"
#include "support/strictlog.h"

#include <vexdesk/terminal/core.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <stdexcept>

class TestDayWatcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void tellsEveryChangeOnce_data();
    void tellsEveryChangeOnce();
    void isQuietWithinADay();
    void looksAtLeastOnceAMinute();
    void theTimerLooks();
    void aThrowingSlotIsReportedOnce();
};

void TestDayWatcher::tellsEveryChangeOnce_data()
{
    QTest::addColumn<QDate>("before");
    QTest::addColumn<QDate>("after");
    QTest::newRow("next day") << QDate(2024, 2, 28) << QDate(2024, 2, 29);
    QTest::newRow("next year") << QDate(2024, 12, 31) << QDate(2025, 1, 1);
    QTest::newRow("slept for a week") << QDate(2024, 3, 1) << QDate(2024, 3, 8);
    QTest::newRow("clock set back") << QDate(2024, 3, 8) << QDate(2024, 3, 7);
}

void TestDayWatcher::tellsEveryChangeOnce()
{
    QFETCH(QDate, before);
    QFETCH(QDate, after);
    QDate today = before;
    vexdesk::Notifier notifier;
    const QSignalSpy spy(&notifier, &vexdesk::Notifier::aNewDay);
    vexdesk::DayWatcher watcher(&notifier, [&today] { return today; });
    watcher.check();
    QCOMPARE(spy.count(), 0);
    today = after;
    watcher.check();
    QCOMPARE(spy.count(), 1);
    watcher.check();
    QCOMPARE(spy.count(), 1);
    today = before;
    watcher.check();
    QCOMPARE(spy.count(), 2);
}

void TestDayWatcher::isQuietWithinADay()
{
    vexdesk::Notifier notifier;
    const QSignalSpy spy(&notifier, &vexdesk::Notifier::aNewDay);
    int looks = 0;
    vexdesk::DayWatcher watcher(&notifier, [&looks] {
        ++looks;
        return QDate(2024, 5, 5);
    });
    for (int i = 0; i < 10; ++i)
        watcher.check();
    QCOMPARE(looks, 11);
    QCOMPARE(spy.count(), 0);
}

void TestDayWatcher::looksAtLeastOnceAMinute()
{
    vexdesk::Notifier notifier;
    const vexdesk::DayWatcher watcher(&notifier);
    QVERIFY(watcher.interval() > 0);
    QVERIFY(watcher.interval() <= 60 * 1000);
}

void TestDayWatcher::theTimerLooks()
{
    QDate today(2024, 5, 5);
    vexdesk::Notifier notifier;
    const QSignalSpy spy(&notifier, &vexdesk::Notifier::aNewDay);
    vexdesk::DayWatcher watcher(&notifier, [&today] { return today; });
    auto* const timer = testsupport::child<QTimer>(&watcher);
    QVERIFY(timer->isActive());
    today = today.addDays(1);
    timer->setInterval(1);
    QTRY_COMPARE(spy.count(), 1);
}

void TestDayWatcher::aThrowingSlotIsReportedOnce()
{
    QDate today(2024, 5, 5);
    vexdesk::Notifier notifier;
    connect(&notifier, &vexdesk::Notifier::aNewDay, this,
            [] { throw std::runtime_error("новый день не начат"); });
    vexdesk::DayWatcher watcher(&notifier, [&today] { return today; });
    auto* const timer = testsupport::child<QTimer>(&watcher);
    const desktest::MessageBoxes boxes;
    today = today.addDays(1);
    timer->setInterval(1);
    QTRY_COMPARE(boxes.texts(), QStringList{QStringLiteral("новый день не начат")});
    // The day counts as told: further looks find nothing new.
    int looks = 0;
    connect(timer, &QTimer::timeout, this, [&looks] { ++looks; });
    QTRY_VERIFY(looks > 3);
    QCOMPARE(boxes.texts().size(), 1);
}

int main(int argc, char** argv)
{
    const vexdesk::DeskApplication application(argc, argv);
    TestDayWatcher test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_daywatcher.moc"
