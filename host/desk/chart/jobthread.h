// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <thread>

namespace vexdesk {

/// A thread that does one job after the other for its owner, on the owner's thread. A job tells
/// what it has found by a queued call of an object that outlives this one.
class JobThread final
{
public:
    JobThread() = default;
    /// Waits for the job; the owner tells it to end where it would take long.
    ~JobThread();
    JobThread(const JobThread&) = delete;
    JobThread& operator=(const JobThread&) = delete;

    /// Begins a job, after the one before it has ended.
    void start(const std::function<void()>& job);

private:
    std::thread m_thread;
};

} // namespace vexdesk
