// SPDX-License-Identifier: MIT
#include "desk/dealsfeed.h"

#include <vexdesk/terminal/core.h>
#include <vexdesk/terminal/rawqueue.h>
#include <vexdesk/terminal/referencedata.h>

#include <algorithm>
#include <functional>
#include <utility>

namespace vexdesk {

namespace {

constexpr int lookEvery = 1000; // ms

// Whether a row is one of these.
std::function<bool(const Record&)> oneOf(const std::vector<Record>& rows)
{
    std::vector<const unsigned char*> places;
    places.reserve(rows.size());
    for (const Record& row : rows)
        places.push_back(row.data());
    std::sort(places.begin(), places.end(), std::less<>());
    return [places = std::move(places)](const Record& row) {
        return std::binary_search(places.begin(), places.end(), row.data(), std::less<>());
    };
}

// Rows of the deals by their moments. The numbers are sorted rather than the deals, which are
// large; the rows are made in their order so that a scan walks straight through memory.
std::vector<Record> rowsInOrder(const std::vector<Deal>& deals, const DealWriter& writer)
{
    std::vector<std::pair<datetime, std::size_t>> order;
    order.reserve(deals.size());
    for (const Deal& deal : deals)
        order.emplace_back(*deal.moment, order.size());
    std::sort(order.begin(), order.end());
    std::vector<Record> rows;
    rows.reserve(deals.size());
    for (const auto& [moment, number] : order)
        rows.push_back(writer.row(deals[number]));
    return rows;
}

} // namespace

DealsFeed::DealsFeed(Core& core, Clock clock, QObject* parent)
    : QObject(parent)
    , m_queue(*core.rawQueue())
    , m_writer(dealsTable(*core.database()))
    , m_clock(std::move(clock))
    , m_securities(replayedSecurities(ReferenceData::installed()))
    , m_timer(this)
{
    connect(core.notifier(), &Notifier::aNewDay, this, &DealsFeed::advance);
    connect(&m_timer, &QTimer::timeout, this, &DealsFeed::advance);
    m_timer.start(lookEvery);
    advance();
}

DealsFeed::~DealsFeed()
{
    takeOut();
}

void DealsFeed::takeOut()
{
    if (m_posted.empty())
        return;
    m_queue.postRemoval(m_writer.table(), oneOf(m_posted));
    m_posted.clear();
}

void DealsFeed::advance()
{
    const QDateTime now = m_clock();
    if (now.date() != m_date)
        startDay(now.date());

    std::vector<Deal> deals;
    for (DealsReplay& replay : m_replays)
        replay.takeBefore(now.time().msecsSinceStartOfDay() + 1, &deals);
    if (deals.empty())
        return;
    const std::vector<Record> rows = rowsInOrder(deals, m_writer);
    m_posted.insert(m_posted.end(), rows.begin(), rows.end());
    m_queue.post(m_writer.table(), rows);
}

void DealsFeed::startDay(QDate date)
{
    takeOut();
    m_date = date;
    m_replays.clear();
    for (const ReplayedSecurity& security : m_securities)
        m_replays.emplace_back(security, date);
}

} // namespace vexdesk
