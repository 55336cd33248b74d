// SPDX-License-Identifier: MIT
#pragma once

#include "ownpool.h"

#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QFutureWatcher>
#include <QtCore/QScopedPointer>

#include <atomic>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace tadata {

/// What becomes of an object that goes while its work still runs.
enum class AtEnd {
    Waits, ///< it goes when all that it began has ended
    Leaves ///< it goes at once: for work that owns all it touches, and changes nothing
};

/// Work of a window that is done in a thread of its own, one run at a time:
/// the next one tells the one before to stop, and its value comes to nothing. The object belongs to
/// the thread that made it, which gets the values.
template <typename Value>
class BackgroundTask final
{
public:
    /// In a thread of the pool. Looks at `stop` now and then; what it returns then is not wanted.
    using Work = std::function<Value(const std::atomic<bool>& stop)>;
    /// In the thread of the object.
    using Done = std::function<void(const Value& value)>;

    explicit BackgroundTask(AtEnd atEnd = AtEnd::Waits)
        : m_atEnd(atEnd)
    {}
    ~BackgroundTask()
    {
        stop();
        // The pool waits when it goes with the object.
        if (m_atEnd == AtEnd::Leaves)
            LeftPools::instance().take(std::move(m_pool));
    }
    Q_DISABLE_COPY_MOVE(BackgroundTask)

    void start(const Work& work, const Done& done)
    {
        stop();
        std::erase_if(m_runs, [](const std::shared_ptr<Run>& run) {
            return run->isForgotten && run->watcher->isFinished();
        });
        const auto run = std::make_shared<Run>();
        m_runs.push_back(run);
        QObject::connect(run->watcher.get(), &QFutureWatcherBase::finished,
                         [weak = std::weak_ptr(run), done] {
                             if (const auto ended = weak.lock(); ended && !ended->isForgotten)
                                 finish(*ended, done);
                         });
        run->watcher->setFuture(
            QtConcurrent::run(m_pool->get(), [work, stop = run->stop] { return work(*stop); }));
    }

    /// What runs is not wanted any more. It may go on for a while.
    void stop()
    {
        for (const std::shared_ptr<Run>& run : m_runs) {
            run->stop->store(true);
            run->isForgotten = true;
            run->watcher->cancel();
        }
    }

    /// Whether a value is still to come.
    bool isRunning() const { return !m_runs.empty() && !m_runs.back()->isForgotten; }

private:
    struct Run
    {
        std::shared_ptr<std::atomic<bool>> stop = std::make_shared<std::atomic<bool>>(false);
        // It may go while it tells of its end.
        std::unique_ptr<QFutureWatcher<Value>, QScopedPointerDeleteLater> watcher{
            new QFutureWatcher<Value>};
        bool isForgotten = false;
    };

    static void finish(Run& run, const Done& done)
    {
        run.isForgotten = true;
        done(run.watcher->result());
    }

    const AtEnd m_atEnd;
    std::unique_ptr<OwnPool> m_pool = std::make_unique<OwnPool>();
    std::vector<std::shared_ptr<Run>> m_runs; // the last one may be the one that runs
};

} // namespace tadata
