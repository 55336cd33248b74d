// SPDX-License-Identifier: MIT
#include "desk/chart/foldeddays.h"

#include <utility>

namespace vexdesk {

namespace {

constexpr size_t mostCandles = 200'000; // about 30 MB

} // namespace

bool FoldedDays::Source::isSameAs(const Source& other) const
{
    const auto isSameBlock = [](const auto& left, const auto& right) {
        return !left.owner_before(right) && !right.owner_before(left);
    };
    return isSameBlock(bars, other.bars) && before == other.before && own == other.own &&
           after == other.after;
}

FoldedDays::FoldedDays(std::shared_ptr<const BarSeries> series, Timeframe timeframe,
                       const FoldedDays* before)
    : m_series(std::move(series))
    , m_timeframe(timeframe)
{
    // Weeks and months are made of more days than those of which the source tells.
    if (!before || before->m_timeframe != timeframe || timeframe > Timeframe::Day)
        return;
    for (const auto& [day, entry] : before->m_days) {
        const QDate date = before->m_series->days()[static_cast<size_t>(day)].day;
        const qsizetype now = m_series->indexFrom(date);
        if (now == static_cast<qsizetype>(m_series->days().size()) ||
            m_series->days()[static_cast<size_t>(now)].day != date ||
            !entry.source.isSameAs(sourceOf(now)))
            continue;
        m_days.emplace(now, Entry{entry.source, entry.candles, m_turn});
        m_candlesKept += entry.candles->size();
    }
}

FoldedDays::Source FoldedDays::sourceOf(qsizetype day) const
{
    const auto& days = m_series->days();
    const auto at = static_cast<size_t>(day);
    Source source;
    source.bars = days[at].bars;
    source.own = days[at].summary;
    if (at > 0)
        source.before = days[at - 1].summary;
    if (at + 1 < days.size())
        source.after = days[at + 1].summary;
    return source;
}

const std::vector<Candle>& FoldedDays::of(qsizetype day)
{
    auto found = m_days.find(day);
    if (found == m_days.end()) {
        auto candles =
            std::make_shared<const std::vector<Candle>>(foldDay(*m_series, day, m_timeframe));
        m_candlesKept += candles->size();
        found = m_days.emplace(day, Entry{sourceOf(day), std::move(candles), m_turn}).first;
    }
    found->second.turn = m_turn;
    return *found->second.candles;
}

void FoldedDays::letGo()
{
    if (m_candlesKept > mostCandles) {
        for (auto entry = m_days.begin(); entry != m_days.end();) {
            if (entry->second.turn == m_turn) {
                ++entry;
                continue;
            }
            m_candlesKept -= entry->second.candles->size();
            entry = m_days.erase(entry);
        }
    }
    ++m_turn;
}

} // namespace vexdesk
