// SPDX-License-Identifier: MIT
#include <vexdesk/terminal/rawqueue.h>

#include <vexdesk/database/table.h>

#include <QtCore/QScopeGuard>

#include <utility>

IRawQueue::~IRawQueue() = default;

namespace vexdesk {

RawQueue::RawQueue() = default;

RawQueue::~RawQueue() = default;

void RawQueue::check(const Table* table, const Record& row)
{
    if (!table->owns(row))
        throw Exception(Table::tr("Строка не принадлежит таблице %1").arg(table->name()));
}

void RawQueue::post(Table* table, Record row)
{
    check(table, row);
    std::unique_lock lock(m_mutex);
    m_pending.push_back({table, std::move(row), nullptr});
    applyPending(lock);
}

void RawQueue::post(Table* table, const std::vector<Record>& rows)
{
    for (const Record& row : rows)
        check(table, row);
    std::unique_lock lock(m_mutex);
    m_pending.reserve(m_pending.size() + rows.size());
    for (const Record& row : rows)
        m_pending.push_back({table, row, nullptr});
    applyPending(lock);
}

void RawQueue::postRemoval(Table* table, std::function<bool(const Record&)> predicate)
{
    auto removal = std::make_unique<std::function<bool(const Record&)>>(std::move(predicate));
    std::unique_lock lock(m_mutex);
    m_pending.push_back({table, Record(), std::move(removal)});
    applyPending(lock);
}

bool RawQueue::setSuspended(bool suspended)
{
    std::unique_lock lock(m_mutex);
    const bool before = std::exchange(m_suspended, suspended);
    if (suspended)
        m_idle.wait(lock, [this] { return !m_applying; });
    else
        applyPending(lock);
    return before;
}

bool RawQueue::isSuspended() const
{
    const std::lock_guard lock(m_mutex);
    return m_suspended;
}

void RawQueue::drain()
{
    std::unique_lock lock(m_mutex);
    m_idle.wait(lock, [this] { return !m_applying; });
}

// Only one thread at a time takes items, so that they reach the tables in their order. The others
// leave theirs behind, and it goes on until there is none.
void RawQueue::applyPending(std::unique_lock<std::mutex>& lock)
{
    if (m_applying)
        return;
    m_applying = true;
    const auto done = qScopeGuard([this, &lock] {
        if (!lock.owns_lock())
            lock.lock();
        m_applying = false;
        m_idle.notify_all();
    });
    std::vector<Item> items;
    while (!m_suspended && !m_pending.empty()) {
        items.swap(m_pending);
        lock.unlock();
        applyAll(items);
        items.clear();
        lock.lock();
    }
}

void RawQueue::applyAll(const std::vector<Item>& items)
{
    Table* table = nullptr;
    std::unique_lock<const Table> tableLock;
    for (const Item& item : items) {
        if (item.table != table) {
            // Never two at once: others may lock them in another order.
            if (tableLock.owns_lock())
                tableLock.unlock();
            tableLock = std::unique_lock<const Table>(*item.table);
            table = item.table;
        }
        if (item.removal)
            table->removeIf(*item.removal);
        else
            table->insert(item.row);
    }
}

} // namespace vexdesk
