// SPDX-License-Identifier: MIT
#include "desk/chart/dayqueue.h"

#include "desk/chart/readerthreads.h"

#include <QtCore/QThread>

#include <algorithm>
#include <map>
#include <mutex>
#include <utility>

namespace vexdesk {

/// What the queue and its readers share.
class DayQueue::Work final : public std::enable_shared_from_this<Work>
{
public:
    Work(std::function<void()> delivered, int mostReaders, qint64 mostWaiting)
        : m_mostReaders(mostReaders)
        , m_mostWaiting(mostWaiting)
        , m_delivered(std::move(delivered))
    {}

    void order(std::vector<DayOrder> days);
    void forget();
    std::vector<DayDelivery> take();
    bool isIdle() const;
    qint64 waiting() const;
    /// Waits while somebody is just being told.
    void tellNobody();

private:
    void leaveOutWhatIsComing(std::vector<DayOrder>& days) const;
    void startReaders();
    bool readNext();
    void tell();

    const int m_mostReaders;
    const qint64 m_mostWaiting;
    std::mutex m_telling; // for m_delivered, also while it is called
    std::function<void()> m_delivered;
    mutable std::mutex m_mutex;     // for all below
    std::vector<DayOrder> m_orders; // the next one is the last
    std::map<QDate, DayOrder> m_inHand;
    std::vector<DayDelivery> m_deliveries;
    qint64 m_waiting = 0; // bytes of their bars
    int m_readers = 0;
    int m_age = 0; // how often all was forgotten
};

void DayQueue::Work::order(std::vector<DayOrder> days)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    leaveOutWhatIsComing(days);
    std::reverse(days.begin(), days.end());
    m_orders = std::move(days);
    startReaders();
}

void DayQueue::Work::leaveOutWhatIsComing(std::vector<DayOrder>& days) const
{
    std::multimap<QDate, const DayOrder*> coming;
    for (const auto& [day, order] : m_inHand)
        coming.emplace(day, &order);
    for (const DayDelivery& delivery : m_deliveries)
        coming.emplace(delivery.order.day, &delivery.order);
    const auto isComing = [&coming](const DayOrder& wanted) {
        const auto [first, last] = coming.equal_range(wanted.day);
        return std::any_of(first, last, [&wanted](const auto& entry) {
            const DayOrder& given = *entry.second;
            return (given.isForBars || !wanted.isForBars) &&
                   given.isGoodFor(wanted.stamp, wanted.listing);
        });
    };
    days.erase(std::remove_if(days.begin(), days.end(), isComing), days.end());
}

// They end when there is nothing to read, or no room for it.
void DayQueue::Work::startReaders()
{
    const auto work = static_cast<int>(m_orders.size() + m_inHand.size());
    for (; m_readers < std::min(work, m_mostReaders); ++m_readers) {
        startReading([work = shared_from_this()] {
            while (work->readNext()) {
            }
        });
    }
}

bool DayQueue::Work::readNext()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    // Never the same day twice at a time: what was read first might come last.
    const auto next = std::find_if(m_orders.rbegin(), m_orders.rend(), [this](const DayOrder& day) {
        return m_inHand.count(day.day) == 0;
    });
    if (next == m_orders.rend() || m_waiting >= m_mostWaiting) {
        --m_readers;
        return false;
    }
    DayOrder order = std::move(*next);
    m_orders.erase(std::next(next).base());
    m_inHand.emplace(order.day, order);
    const int age = m_age;
    lock.unlock();
    const DayPart part = order.isForBars ? DayPart::Bars : DayPart::Summary;
    ReadDay read = readDay(order.path, order.day, part);
    lock.lock();
    if (age != m_age)
        return true;
    m_inHand.erase(order.day);
    const bool canBeTaken = !m_deliveries.empty();
    m_waiting += read.bars ? read.bars->bytes() : 0;
    m_deliveries.push_back({std::move(order), std::move(read)});
    lock.unlock();
    if (!canBeTaken)
        tell();
    return true;
}

void DayQueue::Work::tell()
{
    const std::lock_guard<std::mutex> lock(m_telling);
    if (m_delivered)
        m_delivered();
}

void DayQueue::Work::tellNobody()
{
    const std::lock_guard<std::mutex> lock(m_telling);
    m_delivered = nullptr;
}

void DayQueue::Work::forget()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    ++m_age;
    m_orders.clear();
    m_inHand.clear();
    m_deliveries.clear();
    m_waiting = 0;
}

std::vector<DayDelivery> DayQueue::Work::take()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    std::vector<DayDelivery> taken = std::exchange(m_deliveries, {});
    m_waiting = 0;
    startReaders();
    return taken;
}

bool DayQueue::Work::isIdle() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_orders.empty() && m_inHand.empty() && m_deliveries.empty();
}

qint64 DayQueue::Work::waiting() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_waiting;
}

int DayQueue::usualReaders()
{
    // More would wait for the disk, or for each other's memory.
    constexpr int most = 4;
    return std::clamp(QThread::idealThreadCount(), 1, most);
}

DayQueue::DayQueue(std::function<void()> delivered, int readers, qint64 mostWaiting)
    : m_work(std::make_shared<Work>(std::move(delivered), readers, mostWaiting))
{}

DayQueue::~DayQueue()
{
    m_work->forget();
    m_work->tellNobody();
}

void DayQueue::order(std::vector<DayOrder> days)
{
    m_work->order(std::move(days));
}

void DayQueue::forget()
{
    m_work->forget();
}

std::vector<DayDelivery> DayQueue::take()
{
    return m_work->take();
}

bool DayQueue::isIdle() const
{
    return m_work->isIdle();
}

qint64 DayQueue::waiting() const
{
    return m_work->waiting();
}

} // namespace vexdesk
