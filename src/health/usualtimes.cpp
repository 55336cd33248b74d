// SPDX-License-Identifier: MIT
#include "usualtimes.h"

#include "nearest.h"

#include <algorithm>
#include <utility>

namespace tadata {

namespace {

// The runs of usual times that are missing, of at least `fewest`.
std::vector<Gap> gapsOf(const std::vector<int>& usual, const TimesOfDay& own, int fewest)
{
    std::vector<Gap> gaps;
    Gap gap;
    const auto endGap = [&] {
        if (gap.bars >= fewest) {
            gap.unusual = own.countWithin(gap.from, gap.to);
            gaps.push_back(gap);
        }
        gap = {};
    };
    for (const int second : usual) {
        if (own.contains(second)) {
            endGap();
            continue;
        }
        if (gap.bars == 0)
            gap.from = second;
        gap.to = second;
        ++gap.bars;
    }
    endGap();
    gaps.shrink_to_fit();
    return gaps;
}

} // namespace

UsualTimes::UsualTimes(std::vector<QDate> days, int fewest)
    : m_days(std::move(days))
    , m_fewest(fewest)
{
    moveWindow();
}

int UsualTimes::windowSize() const
{
    return std::min(size(), mostNeighbours + 1);
}

int UsualTimes::wanted() const
{
    const int added = m_dropped + static_cast<int>(m_times.size());
    return added < m_begin + windowSize() ? added : -1;
}

void UsualTimes::add(TimesOfDay times)
{
    count(times, 1);
    m_times.push_back(std::move(times));
}

void UsualTimes::judge(DayHealth& health)
{
    for (; m_dropped < m_begin; ++m_dropped) {
        count(m_times.front(), -1);
        m_times.pop_front();
    }
    const TimesOfDay& own = m_times[static_cast<size_t>(m_next - m_dropped)];
    const std::vector<int> usual = usualTimes(own);
    health.expected = static_cast<int>(usual.size());
    health.missing = static_cast<int>(std::count_if(
        usual.begin(), usual.end(), [&own](int second) { return !own.contains(second); }));
    health.gaps = gapsOf(usual, own, m_fewest);
    ++m_next;
    moveWindow();
}

// The day at the end of the window goes for the one behind it while that is farther away; of
// equally near ones the earlier counts.
void UsualTimes::moveWindow()
{
    const auto distance = [this](int day) {
        return std::abs(
            m_days[static_cast<size_t>(day)].daysTo(m_days[static_cast<size_t>(m_next)]));
    };
    if (m_next == size())
        return;
    while (m_begin + windowSize() < size() && distance(m_begin + windowSize()) < distance(m_begin))
        ++m_begin;
}

void UsualTimes::count(const TimesOfDay& times, int change)
{
    m_counts.resize(std::max(m_counts.size(), static_cast<size_t>(times.endOfSlots())));
    times.visitSlots([&](int slot) { m_counts[static_cast<size_t>(slot)] += change; });
}

std::vector<int> UsualTimes::usualTimes(const TimesOfDay& own) const
{
    const int neighbours = windowSize() - 1;
    std::vector<int> usual;
    if (neighbours < fewestNeighbours)
        return usual;
    const int enough = habitOf(neighbours);
    for (int slot = 0; slot < static_cast<int>(m_counts.size()); ++slot) {
        const int count = m_counts[static_cast<size_t>(slot)];
        const int second = TimesOfDay::secondOf(slot);
        if (count > enough || (count == enough && !own.contains(second)))
            usual.push_back(second);
    }
    // Slots are in the order of time as long as they are whole minutes.
    if (!std::is_sorted(usual.begin(), usual.end()))
        std::sort(usual.begin(), usual.end());
    return usual;
}

} // namespace tadata
