// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/database/irawqueue.h>
#include <vexdesk/database/record.h>
#include <vexdesk/export.h>

#include <functional>
#include <memory>
#include <vector>

class Table;

namespace vexdesk {

/// The way of incoming rows into the tables: takes them from any thread, puts them into their
/// tables in the order in which they were posted, and keeps them while it is suspended. Owned by
/// the core.
///
/// There is no thread of its own. Rows are applied by the thread that posts them, or by one that is
/// already applying; the backlog of a suspension by the thread that ends it. A thread that posts
/// may therefore wait for a table's lock and must hold none.
class VEXDESK_CORE_EXPORT RawQueue final : public IRawQueue
{
public:
    RawQueue();
    /// Drops what is still suspended. No other thread may use the queue any more.
    ~RawQueue() override;

    /// Takes a row for the table, which must live until the row was applied. Throws Exception for
    /// a row of another table and for the null record. Afterwards the row is not written to.
    void post(Table* table, Record row);
    /// Takes rows for the table; no row of another thread comes between them.
    void post(Table* table, const std::vector<Record>& rows);

    /// Takes rows out of the table when their turn comes: those for which `predicate` is true. It
    /// is called under the table's lock, on any thread, and must not throw.
    void postRemoval(Table* table, std::function<bool(const Record&)> predicate);

    bool setSuspended(bool suspended) override;
    bool isSuspended() const;

    /// Waits until every row that was posted before is in its table. Returns at once while the
    /// queue is suspended. As with post(), without the lock of a table.
    void drain();

private:
    struct Private;
    const std::unique_ptr<Private> m_d;
};

} // namespace vexdesk
