// SPDX-License-Identifier: MIT
#include "barspacing.h"

#include <vexdesk/history/dayfilenames.h>

namespace tadata {

void BarSpacing::addFar(int seconds)
{
    ++m_far[seconds];
}

template <typename Visit>
void BarSpacing::visit(Visit visit) const
{
    for (int distance = 1; distance < farFrom; ++distance) {
        if (const qint64 count = m_near[static_cast<size_t>(distance)]; count > 0)
            visit(distance, count);
    }
    for (const auto& [distance, count] : m_far)
        visit(distance, count);
}

std::optional<int> BarSpacing::usual() const
{
    std::optional<int> usual;
    qint64 most = 0;
    visit([&](int distance, qint64 count) {
        if (count > most) {
            usual = distance;
            most = count;
        }
    });
    return usual;
}

// Minutes that came as seconds, and bars of five minutes or more, or of seconds, as minutes.
bool BarSpacing::isStrangeFor(int timeframe) const
{
    constexpr qint64 enough = 20;
    constexpr int minute = 60;
    constexpr int fiveMinutes = 300;
    qint64 all = 0;
    qint64 wholeMinutes = 0;
    qint64 wholeFives = 0;
    visit([&](int distance, qint64 count) {
        all += count;
        wholeMinutes += distance % minute == 0 ? count : 0;
        wholeFives += distance % fiveMinutes == 0 ? count : 0;
    });
    if (all < enough)
        return false;
    if (timeframe == vexdesk::secondTimeframe)
        return wholeMinutes == all;
    return wholeMinutes < all || wholeFives == all;
}

} // namespace tadata
