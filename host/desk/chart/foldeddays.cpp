// SPDX-License-Identifier: MIT
#include "desk/chart/foldeddays.h"

#include <utility>

namespace vexdesk {

namespace {

constexpr size_t mostCandles = 200'000; // about 30 MB

} // namespace

FoldedDays::FoldedDays(std::shared_ptr<const BarSeries> series, Timeframe timeframe,
                       const FoldedDays* before)
    : m_series(std::move(series))
    , m_timeframe(timeframe)
    , m_days(m_series->days().size())
{
    // Weeks and months are made of more days than those that are compared.
    if (!before || before->m_timeframe != timeframe || timeframe > Timeframe::Day)
        return;
    size_t known = 0;
    for (size_t day = 0; day < m_days.size(); ++day) {
        while (known < before->m_days.size() && before->dayAt(known).day < dayAt(day).day)
            ++known;
        if (known == before->m_days.size())
            break;
        if (!before->m_days[known].candles || !isSame(day, *before, known))
            continue;
        m_days[day] = {before->m_days[known].candles, m_turn};
        m_candlesKept += m_days[day].candles->size();
        ++m_daysKept;
    }
}

// Whether what the candles of a day are made of is the same: the day itself, and at midnight its
// neighbours.
bool FoldedDays::isSame(size_t day, const FoldedDays& before, size_t dayBefore) const
{
    const bool needsBars = isBelowDay(m_timeframe);
    return dayAt(day).day == before.dayAt(dayBefore).day &&
           dayAt(day).summary == before.dayAt(dayBefore).summary &&
           (!needsBars || dayAt(day).bars == before.dayAt(dayBefore).bars) &&
           summaryAt(day - 1) == before.summaryAt(dayBefore - 1) &&
           summaryAt(day + 1) == before.summaryAt(dayBefore + 1);
}

// Null beyond both ends, too.
const DaySummary* FoldedDays::summaryAt(size_t day) const
{
    return day < m_days.size() ? dayAt(day).summary.get() : nullptr;
}

const std::vector<Candle>& FoldedDays::of(qsizetype day)
{
    Entry& entry = m_days[static_cast<size_t>(day)];
    if (!entry.candles) {
        entry.candles =
            std::make_shared<const std::vector<Candle>>(foldDay(*m_series, day, m_timeframe));
        m_candlesKept += entry.candles->size();
        ++m_daysKept;
    }
    entry.turn = m_turn;
    return *entry.candles;
}

void FoldedDays::letGo()
{
    if (m_candlesKept > mostCandles) {
        for (Entry& entry : m_days) {
            if (!entry.candles || entry.turn == m_turn)
                continue;
            m_candlesKept -= entry.candles->size();
            --m_daysKept;
            entry.candles.reset();
        }
    }
    ++m_turn;
}

} // namespace vexdesk
