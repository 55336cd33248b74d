// SPDX-License-Identifier: MIT
#include "desk/chart/dayqueue.h"

#include <QtCore/QThread>

#include <algorithm>
#include <utility>

namespace vexdesk {

int DayQueue::usualReaders()
{
    // More would wait for the disk, or for each other's memory.
    constexpr int most = 4;
    return std::clamp(QThread::idealThreadCount(), 1, most);
}

DayQueue::DayQueue(std::function<void()> delivered, int readers)
    : m_delivered(std::move(delivered))
{
    m_pool.setMaxThreadCount(readers);
}

DayQueue::~DayQueue()
{
    forget();
    m_pool.waitForDone();
}

void DayQueue::order(std::vector<DayOrder> days)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto isAnswer = [](const DayOrder& given, const DayOrder& wanted) {
        return given.day == wanted.day && (given.isForBars || !wanted.isForBars) &&
               given.isGoodFor(wanted.stamp, wanted.listing);
    };
    const auto isComing = [this, isAnswer](const DayOrder& day) {
        const auto inHand = m_inHand.find(day.day);
        return (inHand != m_inHand.end() && isAnswer(inHand->second, day)) ||
               std::any_of(m_deliveries.begin(), m_deliveries.end(),
                           [&](const DayDelivery& read) { return isAnswer(read.order, day); });
    };
    days.erase(std::remove_if(days.begin(), days.end(), isComing), days.end());
    std::reverse(days.begin(), days.end());
    m_orders = std::move(days);
    const auto work = static_cast<int>(m_orders.size() + m_inHand.size());
    for (const int most = m_pool.maxThreadCount(); m_readers < std::min(work, most); ++m_readers) {
        m_pool.start([this] {
            while (readNext()) {
            }
        });
    }
}

bool DayQueue::readNext()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    // Never the same day twice at a time: what was read first might come last.
    const auto next = std::find_if(m_orders.rbegin(), m_orders.rend(), [this](const DayOrder& day) {
        return m_inHand.count(day.day) == 0;
    });
    if (next == m_orders.rend()) {
        --m_readers;
        return false;
    }
    DayOrder order = std::move(*next);
    m_orders.erase(std::next(next).base());
    m_inHand.emplace(order.day, order);
    const int age = m_age;
    lock.unlock();
    ReadDay read = readDay(order.path, order.day);
    lock.lock();
    if (age != m_age)
        return true;
    m_inHand.erase(order.day);
    const bool canBeTaken = !m_deliveries.empty();
    m_deliveries.push_back({std::move(order), std::move(read)});
    lock.unlock();
    if (!canBeTaken)
        m_delivered();
    return true;
}

void DayQueue::forget()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    ++m_age;
    m_orders.clear();
    m_inHand.clear();
    m_deliveries.clear();
}

std::vector<DayDelivery> DayQueue::take()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return std::exchange(m_deliveries, {});
}

bool DayQueue::isIdle() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_orders.empty() && m_inHand.empty() && m_deliveries.empty();
}

} // namespace vexdesk
