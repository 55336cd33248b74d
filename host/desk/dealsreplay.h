// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/terminal/deals.h>

#include <QtCore/QDate>
#include <QtCore/QList>

#include <vector>

namespace vexdesk {

struct ReferenceData;

/// The first moment of a date, in milliseconds since the epoch, on a clock that is read as if it
/// were UTC.
qint64 startOfDay(QDate date);

/// A security whose deals are made up.
struct ReplayedSecurity
{
    int stockId = 0;
    int boardId = 0;
    long long securityId = 0;
    int decimals = 0;             ///< digits after the point of its prices
    bool hasOpenInterest = false; ///< whether it is a derivative
};

/// The securities of the reference data; the first few hundred of them where there are more, since
/// the deals of a whole day lie in memory.
QList<ReplayedSecurity> replayedSecurities(const ReferenceData& reference);

/// The made-up deals of one security on one day, in the order of their moments: one in 20 to 40
/// seconds around the clock, the first within the first 20 seconds. The price goes in small steps
/// up and down.
///
/// Security and date say it all: the same deals come on every machine, at every start and in
/// whatever pieces they are taken. A moment is the wall clock of that day as if it were UTC.
class DealsReplay final
{
public:
    DealsReplay(const ReplayedSecurity& security, QDate date);

    /// Appends the deals that were not taken yet and lie before a moment of the day, in
    /// milliseconds since its start.
    void takeBefore(int msecsOfDay, std::vector<Deal>* deals);

private:
    quint64 random();
    qint64 below(qint64 count);
    Deal next();

    ReplayedSecurity m_security;
    qint64 m_startOfDay; // ms since the epoch
    quint64 m_state;
    int m_msecsOfDay = 0; // of the next deal
    // Prices in units of the last digit.
    qint64 m_lowest = 0;
    qint64 m_highest = 0;
    qint64 m_step = 0;
    qint64 m_price = 0;
    qint64 m_openInterest = 0;
};

/// The deals of a part of a day, from `from` on and before `to`, both in milliseconds since the
/// day's start.
std::vector<Deal> replayDeals(const ReplayedSecurity& security, QDate date, int from, int to);

} // namespace vexdesk
