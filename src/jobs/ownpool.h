// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QThreadPool>

#include <memory>
#include <utility>
#include <vector>

namespace tadata {

/// The threads of one object's work in the background, which wait for nobody else's. Not those of
/// the application's global pool: Qt paints large areas with their help, and a window would stand
/// still while all of them are busy. Goes when all that was begun has ended.
class OwnPool final : public QThreadPool
{
public:
    OwnPool()
    {
        // What is not wanted any more may take a while to notice.
        constexpr int enough = 4;
        setMaxThreadCount(enough);
    }

    /// As QtConcurrent::run() takes it.
    QThreadPool* get() { return this; }
};

/// The pools of objects that have gone before what they had begun: what runs there belongs to
/// nobody any more, and nobody waits for it but the end of the library whose code it is.
/// User-interface thread.
class LeftPools final
{
public:
    static LeftPools& instance()
    {
        static LeftPools pools;
        return pools;
    }

    void take(std::unique_ptr<OwnPool> pool)
    {
        std::erase_if(m_pools, [](const std::unique_ptr<OwnPool>& one) {
            return one->activeThreadCount() == 0;
        });
        if (pool->activeThreadCount() > 0)
            m_pools.push_back(std::move(pool));
    }
    qsizetype count() const { return static_cast<qsizetype>(m_pools.size()); }

private:
    std::vector<std::unique_ptr<OwnPool>> m_pools;
};

} // namespace tadata
