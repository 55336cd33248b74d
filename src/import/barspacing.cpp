// SPDX-License-Identifier: MIT
#include "barspacing.h"

#include <vexdesk/history/dayfilenames.h>

#include <algorithm>

namespace tadata {

namespace {

constexpr size_t secondsPerDay = 86400;

} // namespace

BarSpacing::BarSpacing()
    : m_counts(secondsPerDay)
{}

std::optional<int> BarSpacing::usual() const
{
    const auto most = std::max_element(m_counts.begin(), m_counts.end());
    return *most > 0 ? std::optional(static_cast<int>(most - m_counts.begin())) : std::nullopt;
}

// Minutes that came as seconds, and bars of five minutes or more, or of seconds, as minutes.
bool BarSpacing::isStrangeFor(int timeframe) const
{
    constexpr qint64 enough = 20;
    constexpr size_t minute = 60;
    constexpr size_t fiveMinutes = 300;
    qint64 all = 0;
    qint64 wholeMinutes = 0;
    qint64 wholeFives = 0;
    for (size_t distance = 1; distance < m_counts.size(); ++distance) {
        const qint64 count = m_counts[distance];
        all += count;
        wholeMinutes += distance % minute == 0 ? count : 0;
        wholeFives += distance % fiveMinutes == 0 ? count : 0;
    }
    if (all < enough)
        return false;
    if (timeframe == vexdesk::secondTimeframe)
        return wholeMinutes == all;
    return wholeMinutes < all || wholeFives == all;
}

} // namespace tadata
