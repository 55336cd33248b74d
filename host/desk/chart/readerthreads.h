// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

/// Threads that read for a chart and may outlive it: on a disk that does not answer no window has
/// to wait for them. Each owns, or shares, what it works with. They are waited for when the
/// application object goes.
namespace vexdesk {

/// Does the work in a thread of its own. Any thread; throws what std::thread throws.
void startReading(std::function<void()> work);

/// Has a thread find out something for an object, which owns the errand. The owner's thread only.
template <typename Answer>
class Errand final
{
public:
    explicit Errand(QObject* owner)
        : m_owner(owner)
    {}
    ~Errand() { forget(); }
    Q_DISABLE_COPY_MOVE(Errand)

    /// Does the work elsewhere and gives its answer to `take` in the owner's thread, unless it is
    /// forgotten until then. What was run before is forgotten.
    void run(std::function<Answer()> work, std::function<void(const Answer&)> take)
    {
        forget();
        m_take = std::move(take);
        m_message = std::make_shared<Message>();
        m_message->errand = this;
        startReading([message = m_message, work = std::move(work)] {
            message->answer = work();
            const std::lock_guard<std::mutex> lock(message->mutex);
            if (message->errand)
                QMetaObject::invokeMethod(
                    message->errand->m_owner, [message] { deliver(message); },
                    Qt::QueuedConnection);
        });
    }
    bool isRunning() const { return m_message != nullptr; }
    /// The answer is not waited for and never told.
    void forget()
    {
        if (!m_message)
            return;
        const std::lock_guard<std::mutex> lock(m_message->mutex);
        std::exchange(m_message, nullptr)->errand = nullptr;
    }

private:
    struct Message
    {
        std::mutex mutex;
        Errand* errand = nullptr; // null when nobody waits for the answer any more
        std::optional<Answer> answer;
    };

    static void deliver(const std::shared_ptr<Message>& message)
    {
        Errand* errand = nullptr;
        {
            const std::lock_guard<std::mutex> lock(message->mutex);
            errand = message->errand;
        }
        if (!errand)
            return;
        errand->m_message.reset();
        // It may be run again by what it tells.
        std::exchange(errand->m_take, nullptr)(*message->answer);
    }

    QObject* m_owner;
    std::shared_ptr<Message> m_message; // while it runs
    std::function<void(const Answer&)> m_take;
};

} // namespace vexdesk
