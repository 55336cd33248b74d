// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QStringList>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>

namespace tadata::cli {

/// Tasks that stand in a row. Several are done at once, but no two that use the same thing, and of
/// such ones the first goes first; what they have to tell is told in the order of the row.
class TaskRow final
{
public:
    struct Task
    {
        QStringList uses;          ///< what no other task may use meanwhile
        std::function<bool()> run; ///< in any thread; false where it has failed
        std::function<void()>
            tell; ///< once it has run and those before it have told; one at a time
    };

    /// Once a task has failed, none begins if that is wanted; nor once `stop` is set, which may be
    /// null.
    TaskRow(const QList<Task>& tasks, bool stopsAtFailure, const std::atomic<bool>* stop);

    /// Returns when all is done. So many threads at once, this one among them.
    void run(int threads);

    /// How many have failed, and how many were not begun.
    qsizetype failed() const { return m_failed; }
    qsizetype left() const { return m_left; }

private:
    enum class State { Waits, Runs, Done, Told };

    void work();
    std::optional<qsizetype> next() const;
    bool meetsEarlier(qsizetype place) const;
    bool mayBegin() const;
    void tellFinished();
    void tell(qsizetype place);

    const QList<Task>& m_tasks;
    QList<State> m_states;
    bool m_stopsAtFailure;
    const std::atomic<bool>* m_stop;
    std::mutex m_mutex; ///< of everything here
    std::condition_variable m_changed;
    qsizetype m_failed = 0;
    qsizetype m_left = 0;
};

} // namespace tadata::cli
