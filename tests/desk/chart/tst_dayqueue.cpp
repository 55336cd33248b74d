// SPDX-License-Identifier: MIT
// Which day files are read, and in which order, when others are wanted all the time.

#include "desk/chart/dayqueue.h"
#include "support/dayfiles.h"
#include "support/faults.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QSemaphore>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <atomic>

using testsupport::dayFile;
using vexdesk::DayDelivery;
using vexdesk::DayOrder;
using vexdesk::DayQueue;
using vexdesk::DayStamp;

namespace {

const QDate firstDay(2024, 1, 15);
constexpr DayStamp settled{100, 1, true};

} // namespace

class TestDayQueue final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { testsupport::failOnStrayWarnings(); }

    void readsInTheOrderGiven();
    void whatIsWantedNowTakesThePlaceOfTheRest();
    void aDayInHandIsNotReadTwice_data();
    void aDayInHandIsNotReadTwice();
    void forgetsWhatIsRead();
    void readsWithSeveralThreads();
    void keepsNoBarsThatNobodyWants();
    void readsNoMoreThanCanWait();
    void goesWhileAFileIsBeingRead();

private:
    DayOrder orderOf(int offset) const
    {
        const QDate day = firstDay.addDays(offset);
        return {day, m_directory.filePath(dayFile(day)), settled, 1, true};
    }
    std::vector<DayOrder> ordersOf(const QList<int>& offsets) const;

    QTemporaryDir m_directory;
};

namespace {

/// A queue with one reader, who waits behind each day until he may go on.
class HeldQueue final
{
public:
    HeldQueue()
        : queue(
              [this] {
                  delivered.release();
                  goOn.acquire();
              },
              1)
    {}
    ~HeldQueue() { goOn.release(1000); }
    Q_DISABLE_COPY_MOVE(HeldQueue)

    /// Waits for the next delivery and takes it; the reader goes on.
    QList<int> takeNext()
    {
        delivered.acquire();
        const QList<int> days = take();
        goOn.release();
        return days;
    }
    QList<int> take()
    {
        QList<int> offsets;
        for (const DayDelivery& delivery : queue.take())
            offsets.append(static_cast<int>(firstDay.daysTo(delivery.order.day)));
        return offsets;
    }

    QSemaphore delivered;
    QSemaphore goOn;
    DayQueue queue;
};

} // namespace

std::vector<DayOrder> TestDayQueue::ordersOf(const QList<int>& offsets) const
{
    std::vector<DayOrder> orders;
    for (const int offset : offsets)
        orders.push_back(orderOf(offset));
    return orders;
}

void TestDayQueue::initTestCase()
{
    for (int i = 0; i < 10; ++i)
        testsupport::writeFile(orderOf(i).path, testsupport::barLines(QTime(10, 0), 1 + i));
}

void TestDayQueue::readsInTheOrderGiven()
{
    HeldQueue held;
    QVERIFY(held.queue.isIdle());
    held.queue.order(ordersOf({4, 2, 7}));
    QVERIFY(!held.queue.isIdle());
    QCOMPARE(held.takeNext(), QList<int>{4});
    QCOMPARE(held.takeNext(), QList<int>{2});
    held.delivered.acquire();
    QVERIFY(!held.queue.isIdle()); // not taken yet
    const std::vector<DayDelivery> last = held.queue.take();
    QCOMPARE(last.size(), 1U);
    QCOMPARE(last[0].order.day, firstDay.addDays(7));
    QCOMPARE(last[0].read.bars->size(), qsizetype(8));
    QVERIFY(held.queue.isIdle());
}

void TestDayQueue::whatIsWantedNowTakesThePlaceOfTheRest()
{
    HeldQueue held;
    held.queue.order(ordersOf({0, 1, 2, 3}));
    held.delivered.acquire();              // the reader waits behind the first
    held.queue.order(ordersOf({5, 0, 3})); // the first waits to be taken
    QCOMPARE(held.take(), QList<int>{0});
    held.goOn.release();
    QCOMPARE(held.takeNext(), QList<int>{5});
    QCOMPARE(held.takeNext(), QList<int>{3});
    QVERIFY(held.queue.isIdle());
}

void TestDayQueue::aDayInHandIsNotReadTwice_data()
{
    QTest::addColumn<DayStamp>("stamp");
    QTest::addColumn<int>("listing");
    QTest::addColumn<bool>("isForBars"); // the first order
    QTest::addColumn<bool>("isReadAgain");
    QTest::newRow("of the same listing") << settled << 1 << true << false;
    QTest::newRow("unchanged") << settled << 2 << true << false;
    QTest::newRow("changed") << DayStamp{101, 2, true} << 2 << true << true;
    QTest::newRow("its bars are wanted too") << settled << 1 << false << true;
}

void TestDayQueue::aDayInHandIsNotReadTwice()
{
    QFETCH(const DayStamp, stamp);
    QFETCH(const int, listing);
    QFETCH(const bool, isForBars);
    QFETCH(const bool, isReadAgain);
    QSemaphore isRead;
    QSemaphore goOn;
    DayQueue queue([] {}, 1);
    DayOrder first = orderOf(0);
    first.isForBars = isForBars;
    const testsupport::Meanwhile meanwhile(testsupport::SystemCall::Read, dayFile(firstDay), [&] {
        isRead.release();
        goOn.acquire();
    });
    queue.order({first});
    isRead.acquire();
    DayOrder again = orderOf(0);
    again.stamp = stamp;
    again.listing = listing;
    queue.order({again});
    goOn.release();
    int read = 0;
    QTRY_VERIFY((read += static_cast<int>(queue.take().size()), queue.isIdle()));
    QCOMPARE(read, isReadAgain ? 2 : 1);
}

void TestDayQueue::forgetsWhatIsRead()
{
    QSemaphore isRead;
    QSemaphore goOn;
    std::atomic_int delivered = 0;
    DayQueue queue([&] { ++delivered; }, 1);
    const testsupport::Meanwhile meanwhile(testsupport::SystemCall::Read, dayFile(firstDay), [&] {
        isRead.release();
        goOn.acquire();
    });
    queue.order(ordersOf({0, 1, 2}));
    isRead.acquire();
    queue.forget();
    QVERIFY(queue.isIdle());
    queue.order(ordersOf({0, 4})); // the same day, of another series it might be
    goOn.release();
    QList<QDate> days;
    QTRY_VERIFY([&] {
        for (const DayDelivery& delivery : queue.take())
            days.append(delivery.order.day);
        return queue.isIdle();
    }());
    QCOMPARE(days, (QList<QDate>{firstDay, firstDay.addDays(4)}));
    QVERIFY(delivered <= 2);
}

void TestDayQueue::readsWithSeveralThreads()
{
    // Each of two readers waits for the other one.
    QSemaphore first;
    QSemaphore second;
    const testsupport::Meanwhile one(testsupport::SystemCall::Read, dayFile(firstDay), [&] {
        first.release();
        second.acquire();
    });
    const testsupport::Meanwhile other(testsupport::SystemCall::Read, dayFile(firstDay.addDays(1)),
                                       [&] {
                                           second.release();
                                           first.acquire();
                                       });
    DayQueue queue([] {}, 2);
    queue.order(ordersOf({0, 1}));
    int read = 0;
    QTRY_VERIFY((read += static_cast<int>(queue.take().size()), queue.isIdle()));
    QCOMPARE(read, 2);
}

void TestDayQueue::keepsNoBarsThatNobodyWants()
{
    DayQueue queue([] {}, 1);
    DayOrder order = orderOf(0);
    order.isForBars = false;
    queue.order({order});
    QList<qsizetype> counts;
    bool areBarsThere = false;
    QTRY_VERIFY([&] {
        for (const DayDelivery& delivery : queue.take()) {
            counts.append(delivery.read.summary->count);
            areBarsThere = areBarsThere || delivery.read.bars;
        }
        return queue.isIdle();
    }());
    QCOMPARE(counts, QList<qsizetype>{1});
    QVERIFY(!areBarsThere);
}

void TestDayQueue::readsNoMoreThanCanWait()
{
    constexpr int days = 40;
    constexpr int readers = 2;
    std::vector<DayOrder> orders;
    for (int i = 100; i < 100 + days; ++i) {
        orders.push_back(orderOf(i));
        testsupport::writeFile(orders.back().path, testsupport::barLines(QTime(10, 0), 500));
    }
    const qint64 oneDay = vexdesk::readDay(orders[0].path, orders[0].day).bars->bytes();
    const qint64 most = 3 * oneDay;
    DayQueue queue([] {}, readers, most);
    queue.order(orders);
    QTRY_VERIFY(queue.waiting() >= most);
    for (const DayOrder& order : orders) // it would have the time to read on
        vexdesk::readDay(order.path, order.day);
    int taken = 0;
    for (int turn = 0; !queue.isIdle(); ++turn) {
        QTRY_VERIFY(queue.waiting() > 0);
        QVERIFY(queue.waiting() <= most + readers * oneDay);
        const std::vector<DayDelivery> deliveries = queue.take();
        QVERIFY(deliveries.size() <= 3 + readers);
        taken += static_cast<int>(deliveries.size());
        QVERIFY(turn < days);
    }
    QCOMPARE(taken, days);
    QCOMPARE(queue.waiting(), 0);
}

void TestDayQueue::goesWhileAFileIsBeingRead()
{
    QSemaphore isRead;
    QSemaphore goOn;
    QSemaphore hasEnded;
    std::atomic_int delivered = 0;
    const testsupport::Meanwhile meanwhile(testsupport::SystemCall::Read, dayFile(firstDay), [&] {
        isRead.release();
        goOn.acquire();
        hasEnded.release();
    });
    {
        DayQueue queue([&] { ++delivered; }, 1);
        queue.order(ordersOf({0, 1}));
        isRead.acquire();
    } // not waiting for the file
    QCOMPARE(hasEnded.available(), 0);
    goOn.release();
    hasEnded.acquire();
    // Another one is read in the meantime.
    DayQueue next([] {}, 1);
    next.order(ordersOf({2}));
    size_t taken = 0;
    QTRY_COMPARE((taken += next.take().size()), 1U);
    QCOMPARE(delivered, 0);
}

QTEST_GUILESS_MAIN(TestDayQueue)
#include "tst_dayqueue.moc"
