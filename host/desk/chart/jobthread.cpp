// SPDX-License-Identifier: MIT
#include "desk/chart/jobthread.h"

namespace vexdesk {

JobThread::~JobThread()
{
    if (m_thread.joinable())
        m_thread.join();
}

void JobThread::start(const std::function<void()>& job)
{
    if (m_thread.joinable())
        m_thread.join();
    m_thread = std::thread(job);
}

} // namespace vexdesk
