// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QtGlobal>

#include <memory>

/// The queue through which incoming data reaches the tables, as a plug-in sees it: something that
/// can be halted while tables are read.
class VEXDESK_CORE_EXPORT IRawQueue
{
public:
    class ProcessingBlocker;

    /// Halts the processing of incoming data, or lets it go on, and returns whether it was halted
    /// before. What arrives meanwhile is kept and processed, in its order, by the call that lets
    /// the processing go on.
    ///
    /// Any thread; must not be called with the lock of a table held, since it may wait for
    /// processing that needs that lock. When a call that halts returns, no processing is under way.
    virtual bool setSuspended(bool suspended) = 0;

protected:
    IRawQueue() = default;
    virtual ~IRawQueue();

private:
    Q_DISABLE_COPY_MOVE(IRawQueue)
};

/// Halts the core's queue for as long as it lives, so that no table changes while it is read.
/// Blockers nest: the queue goes on when the outermost one goes. Any thread, but nested ones are to
/// end in the reverse order of their creation, since each puts back what it found.
///
/// Does nothing where there is no core or the core has no queue.
class VEXDESK_CORE_EXPORT IRawQueue::ProcessingBlocker final
{
public:
    ProcessingBlocker();
    ~ProcessingBlocker();
    Q_DISABLE_COPY_MOVE(ProcessingBlocker)

private:
    struct Private;
    const std::unique_ptr<const Private> m_d;
};
