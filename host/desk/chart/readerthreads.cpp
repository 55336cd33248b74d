// SPDX-License-Identifier: MIT
#include "desk/chart/readerthreads.h"

#include <QtCore/QCoreApplication>

#include <atomic>
#include <list>
#include <thread>

namespace vexdesk {

namespace {

class ReaderThreads final
{
public:
    void start(std::function<void()> work)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        joinEnded();
        Reader& reader = m_readers.emplace_back();
        reader.thread = std::thread([&reader, work = std::move(work)]() mutable {
            work();
            work = nullptr; // what it shares goes with it
            reader.hasEnded = true;
        });
    }
    void joinAll()
    {
        std::list<Reader> readers;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            readers.splice(readers.end(), m_readers);
        }
        for (Reader& reader : readers)
            reader.thread.join();
    }

private:
    struct Reader
    {
        std::atomic_bool hasEnded = false;
        std::thread thread;
    };

    void joinEnded()
    {
        for (auto reader = m_readers.begin(); reader != m_readers.end();) {
            if (!reader->hasEnded) {
                ++reader;
                continue;
            }
            reader->thread.join();
            reader = m_readers.erase(reader);
        }
    }

    std::mutex m_mutex;
    std::list<Reader> m_readers;
};

// Never destroyed: whoever reads at the very end still finds it.
ReaderThreads& readerThreads()
{
    static auto* const threads = new ReaderThreads;
    return *threads;
}

} // namespace

void startReading(std::function<void()> work)
{
    static const bool areAwaited = [] {
        qAddPostRoutine([] { readerThreads().joinAll(); });
        return true;
    }();
    Q_UNUSED(areAwaited)
    readerThreads().start(std::move(work));
}

} // namespace vexdesk
