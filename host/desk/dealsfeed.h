// SPDX-License-Identifier: MIT
#pragma once

#include "desk/dealsreplay.h"

#include <vexdesk/terminal/deals.h>

#include <QtCore/QDate>
#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <functional>
#include <vector>

namespace vexdesk {

class Core;
class RawQueue;

/// Fills the core's table "all_deals" with the made-up deals of today, for the securities of the
/// reference data that are installed when the feed is made: those since midnight at once, the
/// others as their time comes. What is there at a moment does not depend on when the terminal was
/// started. Only when it is asked for: exports take these deals for those of the market.
///
/// A deal is stamped with the local wall clock. Where the wall clock goes back an hour no deals
/// come until it has caught up. A new date goes on with the deals of that date; those of the date
/// before are taken out, and with the feed the last ones go. What others have put into the table
/// stays.
///
/// Everything goes through the core's raw queue: while it is suspended the table stays as it is,
/// and nothing is lost. User-interface thread only.
class DealsFeed final : public QObject
{
    Q_OBJECT

public:
    using Clock = std::function<QDateTime()>;

    /// `core` must outlive the feed. `clock` gives the local date and time.
    explicit DealsFeed(Core& core, Clock clock = localTime, QObject* parent = nullptr);
    ~DealsFeed() override;

    /// Looks at the clock now and posts the deals that are due. The timer calls it, and the core's
    /// aNewDay().
    void advance();

    /// Time between two looks, in milliseconds.
    int interval() const { return m_timer.interval(); }

private:
    static QDateTime localTime() { return QDateTime::currentDateTime(); }

    void startDay(QDate date);
    void takeOut();

    RawQueue& m_queue;
    DealWriter m_writer;
    Clock m_clock;
    QList<ReplayedSecurity> m_securities;
    QDate m_date;
    std::vector<DealsReplay> m_replays; // of m_date, one for each security
    std::vector<Record> m_posted;       // of m_date; held, so that no other row takes their place
    QTimer m_timer;
};

} // namespace vexdesk
