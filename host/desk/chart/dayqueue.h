// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/dayreader.h"

#include <functional>
#include <memory>
#include <vector>

namespace vexdesk {

/// A day file that is to be read.
struct DayOrder
{
    QDate day;
    QString path;
    DayStamp stamp;         ///< of the file as it was listed
    int listing = 0;        ///< the number of that listing
    bool isForBars = false; ///< whether the bars are wanted, and not the summary alone

    /// Whether what is read for this order is what the file held at a listing, as far as is known.
    bool isGoodFor(const DayStamp& listed, int number) const
    {
        return number == listing || stamp.isSameAs(listed);
    }
};

/// A day file that was read.
struct DayDelivery
{
    DayOrder order;
    ReadDay read;
};

/// Reads day files in threads of its own, those first that are wanted now. All functions may be
/// called by any thread, one at a time.
///
/// The threads share what they work with and outlive the queue: when it goes, what they still read
/// comes to nobody. See readerthreads.h.
class DayQueue final
{
public:
    static constexpr qint64 usualWaiting = qint64(16) * 1024 * 1024;

    /// `delivered` is called by a reading thread when days can be taken and none could before. When
    /// `mostWaiting` bytes of bars wait to be taken, no more is read until they are.
    explicit DayQueue(std::function<void()> delivered, int readers = usualReaders(),
                      qint64 mostWaiting = usualWaiting);
    /// `delivered` is not called any more. Waits for nothing but the end of such a call.
    ~DayQueue();
    Q_DISABLE_COPY_MOVE(DayQueue)

    /// Reads these days in their order, in place of those that were ordered before and not begun;
    /// none again that is being read or waits to be taken, as far as that is good for the order.
    void order(std::vector<DayOrder> days);
    /// Orders nothing, and nothing that is being read or waits to be taken is delivered any more.
    void forget();
    std::vector<DayDelivery> take();
    /// Whether nothing is ordered, being read or waiting to be taken.
    bool isIdle() const;
    /// What the bars that wait to be taken have in memory, in bytes: no more than may wait and a
    /// day for each reader.
    qint64 waiting() const;

    /// As many threads as there are processors, but no more than make it faster.
    static int usualReaders();

private:
    class Work;

    const std::shared_ptr<Work> m_work;
};

} // namespace vexdesk
