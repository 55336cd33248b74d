// SPDX-License-Identifier: MIT
#include <vexdesk/terminal/rawqueue.h>

#include <vexdesk/database/table.h>
#include <vexdesk/icore.h>

#include <QtCore/QScopeGuard>

#include <condition_variable>
#include <mutex>
#include <utility>

IRawQueue::~IRawQueue() = default;

namespace {

IRawQueue* currentQueue()
{
    const ICore* const core = ICore::instance();
    return core ? core->rawQueue() : nullptr;
}

} // namespace

struct IRawQueue::ProcessingBlocker::Private
{
    IRawQueue* queue = currentQueue();
    bool wasSuspended = queue && queue->setSuspended(true);
};

IRawQueue::ProcessingBlocker::ProcessingBlocker()
    : m_d(std::make_unique<const Private>())
{}

IRawQueue::ProcessingBlocker::~ProcessingBlocker()
{
    // The queue ends with the core, which may have gone first.
    if (m_d->queue && m_d->queue == currentQueue())
        m_d->queue->setSuspended(m_d->wasSuspended);
}

namespace vexdesk {

namespace {

struct Item
{
    Table* table = nullptr;
    Record row;                                                  // to put in, or
    std::unique_ptr<std::function<bool(const Record&)>> removal; // what to take out
};

void checkOwner(const Table* table, const Record& row)
{
    if (!table->owns(row))
        throw Exception(Table::tr("Строка не принадлежит таблице %1").arg(table->name()));
}

void applyAll(const std::vector<Item>& items)
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

} // namespace

struct RawQueue::Private
{
    std::mutex mutex;
    std::condition_variable idle; // told when applying becomes false
    std::vector<Item> pending;    // in the order of posting
    bool applying = false;        // some thread is taking items from pending
    bool suspended = false;

    void applyPending(std::unique_lock<std::mutex>& lock);
};

// Only one thread at a time takes items, so that they reach the tables in their order. The others
// leave theirs behind, and it goes on until there is none.
void RawQueue::Private::applyPending(std::unique_lock<std::mutex>& lock)
{
    if (applying)
        return;
    applying = true;
    const auto done = qScopeGuard([this, &lock] {
        if (!lock.owns_lock())
            lock.lock();
        applying = false;
        idle.notify_all();
    });
    std::vector<Item> items;
    while (!suspended && !pending.empty()) {
        items.swap(pending);
        lock.unlock();
        applyAll(items);
        items.clear();
        lock.lock();
    }
}

RawQueue::RawQueue()
    : m_d(new Private)
{}

RawQueue::~RawQueue() = default;

void RawQueue::post(Table* table, Record row)
{
    checkOwner(table, row);
    std::unique_lock lock(m_d->mutex);
    m_d->pending.push_back({table, std::move(row), nullptr});
    m_d->applyPending(lock);
}

void RawQueue::post(Table* table, const std::vector<Record>& rows)
{
    for (const Record& row : rows)
        checkOwner(table, row);
    std::unique_lock lock(m_d->mutex);
    m_d->pending.reserve(m_d->pending.size() + rows.size());
    for (const Record& row : rows)
        m_d->pending.push_back({table, row, nullptr});
    m_d->applyPending(lock);
}

void RawQueue::postRemoval(Table* table, std::function<bool(const Record&)> predicate)
{
    auto removal = std::make_unique<std::function<bool(const Record&)>>(std::move(predicate));
    std::unique_lock lock(m_d->mutex);
    m_d->pending.push_back({table, Record(), std::move(removal)});
    m_d->applyPending(lock);
}

bool RawQueue::setSuspended(bool suspended)
{
    std::unique_lock lock(m_d->mutex);
    const bool before = std::exchange(m_d->suspended, suspended);
    if (suspended)
        m_d->idle.wait(lock, [this] { return !m_d->applying; });
    else
        m_d->applyPending(lock);
    return before;
}

bool RawQueue::isSuspended() const
{
    const std::lock_guard lock(m_d->mutex);
    return m_d->suspended;
}

void RawQueue::drain()
{
    std::unique_lock lock(m_d->mutex);
    m_d->idle.wait(lock, [this] { return !m_d->applying; });
}

} // namespace vexdesk
