// SPDX-License-Identifier: MIT
#include "desk/chart/slotrange.h"

#include <algorithm>

namespace vexdesk {

namespace {

constexpr double margin = 0.02;     // of the view, on each side of the slots
constexpr double leastMargin = 1.5; // slots

} // namespace

SlotLimits::SlotLimits(qint64 slotCount, double fewest, double fewestOfAll)
    : m_slots(static_cast<double>(slotCount))
    , m_fewest(fewest)
{
    m_all = reach(
        std::max({m_slots / (1 - 2 * margin), m_slots + 2 * leastMargin, m_fewest, fewestOfAll}));
}

SlotRange SlotLimits::reach(double length) const
{
    const double side = std::max({margin * length, leastMargin, (length - m_slots) / 2});
    return {-side, m_slots + side};
}

SlotRange SlotLimits::fitted(const SlotRange& range) const
{
    if (range.length() >= m_all.length())
        return m_all;
    const double length = std::max(range.length(), m_fewest);
    const SlotRange ends = reach(length);
    const double begin =
        std::clamp(range.begin, ends.begin, std::max(ends.begin, ends.end - length));
    return {begin, begin + length};
}

SlotRange SlotLimits::moved(const SlotRange& range, double distance) const
{
    return fitted({range.begin + distance, range.end + distance});
}

} // namespace vexdesk
