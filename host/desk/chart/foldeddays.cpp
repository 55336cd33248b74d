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
    , m_pages((m_series->days().size() + pageSize - 1) / pageSize)
{
    // Weeks and months are made of more days than those that are compared.
    if (before && before->m_timeframe == timeframe && timeframe <= Timeframe::Day)
        takeOver(*before);
}

void FoldedDays::takeOver(const FoldedDays& before)
{
    const size_t size = m_series->days().size();
    size_t day = 0;
    for (size_t p = 0; p < before.m_pages.size(); ++p) {
        for (size_t i = 0; before.m_pages[p] && i < pageSize; ++i) {
            const auto& candles = (*before.m_pages[p])[i].candles;
            const size_t known = p * pageSize + i;
            if (!candles)
                continue;
            while (day < size && dayAt(day).day < before.dayAt(known).day)
                ++day;
            if (day == size)
                return;
            if (!isSame(day, before, known))
                continue;
            entryAt(day) = {candles, m_turn};
            m_candlesKept += candles->size();
            ++m_daysKept;
        }
    }
}

FoldedDays::Entry& FoldedDays::entryAt(size_t day)
{
    std::unique_ptr<Page>& page = m_pages[day / pageSize];
    if (!page)
        page = std::make_unique<Page>();
    return (*page)[day % pageSize];
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
    return day < m_series->days().size() ? dayAt(day).summary.get() : nullptr;
}

const std::vector<Candle>& FoldedDays::of(qsizetype day)
{
    Entry& entry = entryAt(static_cast<size_t>(day));
    if (!entry.candles) {
        entry.candles =
            std::make_shared<const std::vector<Candle>>(foldDay(*m_series, day, m_timeframe));
        m_candlesKept += entry.candles->size();
        ++m_daysKept;
    }
    entry.turn = m_turn;
    return *entry.candles;
}

void FoldedDays::letGoOf(Page& page)
{
    for (Entry& entry : page) {
        if (!entry.candles || entry.turn == m_turn)
            continue;
        m_candlesKept -= entry.candles->size();
        --m_daysKept;
        entry.candles.reset();
    }
}

void FoldedDays::letGo()
{
    if (m_candlesKept > mostCandles) {
        for (const std::unique_ptr<Page>& page : m_pages) {
            if (page)
                letGoOf(*page);
        }
    }
    ++m_turn;
}

} // namespace vexdesk
