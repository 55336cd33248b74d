// SPDX-License-Identifier: MIT
#include "desk/dealsreplay.h"

#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QHash>

#include <algorithm>

namespace vexdesk {

namespace {

// At one deal in 30 seconds, 250 securities make 720 000 rows a day.
constexpr qsizetype maxSecurities = 250;

constexpr int derivativesVenue = 5;
constexpr qint64 msecsPerDay = qint64(24) * 60 * 60 * 1000;
constexpr int leastGap = 20 * 1000; // ms between two deals
constexpr int mostGap = 40 * 1000;

// Mixes a number into a seed so that neighbouring dates and securities have nothing in common.
quint64 mixed(quint64 seed, qint64 number)
{
    quint64 value = (seed ^ static_cast<quint64>(number)) + 0x9e3779b97f4a7c15U;
    value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9U;
    value = (value ^ (value >> 27)) * 0x94d049bb133111ebU;
    return value ^ (value >> 31);
}

quint64 seedOf(const ReplayedSecurity& security)
{
    return mixed(mixed(mixed(1, security.stockId), security.boardId), security.securityId);
}

} // namespace

qint64 startOfDay(QDate date)
{
    return QDate(1970, 1, 1).daysTo(date) * msecsPerDay;
}

QList<ReplayedSecurity> replayedSecurities(const ReferenceData& reference)
{
    QHash<QString, int> stockIds;
    for (const Stock& stock : reference.stocks)
        stockIds.insert(stock.code, stock.id);
    QHash<std::pair<QString, QString>, int> boardIds;
    for (const Board& board : reference.boards)
        boardIds.insert({board.stockCode, board.code}, board.id);

    QList<ReplayedSecurity> result;
    for (const Security& security : reference.securities.mid(0, maxSecurities)) {
        const int stockId = stockIds.value(security.stockCode);
        result.append({stockId, boardIds.value({security.stockCode, security.boardCode}),
                       security.id, security.decimals, stockId == derivativesVenue});
    }
    return result;
}

DealsReplay::DealsReplay(const ReplayedSecurity& security, QDate date)
    : m_security(security)
    , m_startOfDay(startOfDay(date))
    , m_state(seedOf(security))
{
    // The level is the security's, from day to day; the rest is the day's. Five or six digits
    // whatever the decimals are, so that a step is small and a sum of money fits.
    const qint64 level = 50000 + below(100000);
    m_state = mixed(m_state, date.toJulianDay());
    m_price = level + level * (below(401) - 200) / 10000;
    m_lowest = m_price * 8 / 10;
    m_highest = m_price * 12 / 10;
    m_step = m_price / 2000;
    m_openInterest = 10000 + below(40000);
    m_msecsOfDay = static_cast<int>(below(leastGap));
}

quint64 DealsReplay::random()
{
    m_state += 0x9e3779b97f4a7c15U;
    return mixed(m_state, 0);
}

qint64 DealsReplay::below(qint64 count)
{
    return static_cast<qint64>(random() % static_cast<quint64>(count));
}

void DealsReplay::takeBefore(int msecsOfDay, std::vector<Deal>* deals)
{
    const auto end = static_cast<int>(std::min<qint64>(msecsOfDay, msecsPerDay));
    while (m_msecsOfDay < end)
        deals->push_back(next());
}

Deal DealsReplay::next()
{
    m_price = std::clamp(m_price + below(2 * m_step + 1) - m_step, m_lowest, m_highest);
    // Small lots are the most frequent.
    const qint64 quantity = 1 + below(1 + below(200));

    Deal deal;
    deal.stockId = m_security.stockId;
    deal.boardId = m_security.boardId;
    deal.securityId = m_security.securityId;
    deal.moment = datetime(m_startOfDay + m_msecsOfDay);
    deal.price = decimal(m_price, m_security.decimals);
    deal.quantity = quantity;
    deal.value = decimal(m_price * quantity, m_security.decimals);
    if (m_security.hasOpenInterest) {
        m_openInterest = std::max<qint64>(0, m_openInterest + below(2 * quantity + 1) - quantity);
        deal.openInterest = m_openInterest;
    }
    m_msecsOfDay += leastGap + static_cast<int>(below(mostGap - leastGap + 1));
    return deal;
}

std::vector<Deal> replayDeals(const ReplayedSecurity& security, QDate date, int from, int to)
{
    DealsReplay replay(security, date);
    std::vector<Deal> deals;
    replay.takeBefore(from, &deals);
    deals.clear();
    replay.takeBefore(to, &deals);
    return deals;
}

} // namespace vexdesk
