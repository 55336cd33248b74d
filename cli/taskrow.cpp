// SPDX-License-Identifier: MIT
#include "taskrow.h"

#include <algorithm>
#include <system_error>
#include <thread>
#include <vector>

namespace tadata::cli {

TaskRow::TaskRow(const QList<Task>& tasks, bool stopsAtFailure, const std::atomic<bool>* stop)
    : m_tasks(tasks)
    , m_states(tasks.size(), State::Waits)
    , m_stopsAtFailure(stopsAtFailure)
    , m_stop(stop)
    , m_left(tasks.size())
{}

void TaskRow::run(int threads)
{
    const auto wanted = std::clamp<qsizetype>(threads, 1, std::max<qsizetype>(m_tasks.size(), 1));
    std::vector<std::thread> others;
    try {
        for (qsizetype i = 1; i < wanted; ++i)
            others.emplace_back([this] { work(); });
    } catch (const std::system_error&) {
        // As many as the system gives.
    }
    work();
    for (std::thread& other : others)
        other.join();
    // Those behind one that was never begun.
    for (qsizetype i = 0; i < m_tasks.size(); ++i) {
        if (m_states[i] == State::Done)
            tell(i);
    }
}

void TaskRow::work()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        const bool isOver = !mayBegin() || !m_states.contains(State::Waits);
        if (isOver)
            return;
        const std::optional<qsizetype> place = next();
        if (!place) {
            m_changed.wait(lock);
            continue;
        }
        m_states[*place] = State::Runs;
        --m_left;
        lock.unlock();
        const bool isDone = m_tasks[*place].run();
        lock.lock();
        m_states[*place] = State::Done;
        m_failed += isDone ? 0 : 1;
        tellFinished();
        m_changed.notify_all();
    }
}

bool TaskRow::mayBegin() const
{
    const bool isStopped = m_stop && m_stop->load(std::memory_order_relaxed);
    return !isStopped && !(m_stopsAtFailure && m_failed > 0);
}

// The first that may begin now. None only while one runs: the first that waits meets no other.
std::optional<qsizetype> TaskRow::next() const
{
    for (qsizetype i = 0; i < m_tasks.size(); ++i) {
        if (m_states[i] == State::Waits && !meetsEarlier(i))
            return i;
    }
    return std::nullopt;
}

bool TaskRow::meetsEarlier(qsizetype place) const
{
    const QStringList& wanted = m_tasks[place].uses;
    for (qsizetype i = 0; i < place; ++i) {
        const bool isOpen = m_states[i] == State::Waits || m_states[i] == State::Runs;
        if (isOpen && std::any_of(wanted.begin(), wanted.end(), [this, i](const QString& thing) {
                return m_tasks[i].uses.contains(thing);
            }))
            return true;
    }
    return false;
}

void TaskRow::tellFinished()
{
    for (qsizetype i = 0; i < m_tasks.size() && m_states[i] != State::Waits; ++i) {
        if (m_states[i] == State::Runs)
            return;
        if (m_states[i] == State::Done)
            tell(i);
    }
}

void TaskRow::tell(qsizetype place)
{
    m_tasks[place].tell();
    m_states[place] = State::Told;
}

} // namespace tadata::cli
