// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/dayreader.h"

#include <QtCore/QThreadPool>

#include <functional>
#include <map>
#include <mutex>
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
class DayQueue final
{
public:
    /// `delivered` is called by a reading thread when days can be taken and none could before.
    explicit DayQueue(std::function<void()> delivered, int readers = usualReaders());
    /// Waits for the files that are being read.
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

    /// As many threads as there are processors, but no more than make it faster.
    static int usualReaders();

private:
    bool readNext();

    const std::function<void()> m_delivered;
    mutable std::mutex m_mutex;     // for all below
    std::vector<DayOrder> m_orders; // the next one is the last
    std::map<QDate, DayOrder> m_inHand;
    std::vector<DayDelivery> m_deliveries;
    int m_readers = 0;
    int m_age = 0;      // how often all was forgotten
    QThreadPool m_pool; // an import that fills the global one does not keep the chart waiting
};

} // namespace vexdesk
