// SPDX-License-Identifier: MIT
#pragma once

#include "support/faults.h"

#include <QtCore/QList>
#include <QtCore/QThread>

#include <atomic>
#include <memory>
#include <vector>

namespace testsupport {

/// Makes another thread wait as it is about to call the system for a file whose path ends so: once
/// for each of the calls, until it is let go. Goes with the object at the latest.
class Hold final
{
public:
    Hold(const QList<SystemCall>& calls, const QString& pathEnd)
        : m_state(std::make_shared<State>())
    {
        const auto wait = [state = m_state] {
            state->isReached = true;
            while (!state->goesOn)
                QThread::yieldCurrentThread();
        };
        for (const SystemCall call : calls)
            m_waits.push_back(std::make_unique<Meanwhile>(call, pathEnd, wait));
    }
    ~Hold() { letGo(); }
    Q_DISABLE_COPY_MOVE(Hold)

    bool isReached() const { return m_state->isReached; }
    void letGo() { m_state->goesOn = true; }

private:
    struct State
    {
        std::atomic<bool> isReached = false;
        std::atomic<bool> goesOn = false;
    };

    std::shared_ptr<State> m_state;
    std::vector<std::unique_ptr<Meanwhile>> m_waits;
};

} // namespace testsupport
