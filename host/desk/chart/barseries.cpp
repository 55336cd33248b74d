// SPDX-License-Identifier: MIT
#include "desk/chart/barseries.h"

#include <algorithm>

namespace vexdesk {

namespace {

constexpr size_t blockSize = 16;

void extendBy(Bar& sum, const std::vector<Bar>& bars, size_t first, size_t last)
{
    for (size_t i = first; i < last; ++i)
        extendBar(sum, bars[i]);
}

Bar sumOf(const std::vector<Bar>& bars, size_t first, size_t last)
{
    Bar sum = bars[first];
    extendBy(sum, bars, first + 1, last);
    return sum;
}

std::vector<Bar> blocksOf(const std::vector<Bar>& bars)
{
    std::vector<Bar> blocks;
    blocks.reserve((bars.size() + blockSize - 1) / blockSize);
    for (size_t i = 0; i < bars.size(); i += blockSize)
        blocks.push_back(sumOf(bars, i, std::min(i + blockSize, bars.size())));
    return blocks;
}

} // namespace

void extendBar(Bar& bar, const Bar& next)
{
    bar.time = next.time;
    bar.high = std::max(bar.high, next.high);
    bar.low = std::min(bar.low, next.low);
    bar.close = next.close;
    bar.volume += next.volume;
    bar.value += next.value;
    bar.openInterest = next.openInterest;
}

BarPyramid::BarPyramid(const std::vector<Bar>& bars)
{
    const std::vector<Bar>* below = &bars;
    while (below->size() > blockSize) {
        m_levels.push_back(blocksOf(*below));
        below = &m_levels.back();
    }
}

void BarPyramid::extend(Bar& sum, const std::vector<Bar>& bars, size_t first, size_t last) const
{
    extendAt(0, sum, bars, first, last);
}

void BarPyramid::extendAt(size_t level, Bar& sum, const std::vector<Bar>& bars, size_t first,
                          size_t last) const
{
    const std::vector<Bar>& here = level == 0 ? bars : m_levels[level - 1];
    const size_t blocksBegin = (first + blockSize - 1) / blockSize;
    const size_t blocksEnd = last / blockSize;
    if (level == m_levels.size() || blocksBegin >= blocksEnd) {
        extendBy(sum, here, first, last);
        return;
    }
    extendBy(sum, here, first, blocksBegin * blockSize);
    extendAt(level + 1, sum, bars, blocksBegin, blocksEnd);
    extendBy(sum, here, blocksEnd * blockSize, last);
}

DayBars::DayBars(std::vector<Bar> bars, int decimals)
    : m_bars(std::move(bars))
    , m_pyramid(m_bars)
    , m_whole(sumOf(m_bars, 0, m_bars.size()))
    , m_decimals(decimals)
{}

BarSeries::BarSeries(std::vector<Day> days)
    : m_days(std::move(days))
{
    m_starts.reserve(m_days.size() + 1);
    m_starts.push_back(0);
    m_wholes.reserve(m_days.size());
    for (const Day& day : m_days) {
        m_starts.push_back(m_starts.back() + static_cast<qsizetype>(day->bars().size()));
        m_wholes.push_back(day->whole());
        m_decimals = std::max(m_decimals, day->decimals());
    }
    m_pyramid = BarPyramid(m_wholes);
}

size_t BarSeries::dayOf(qsizetype index) const
{
    const auto after = std::upper_bound(m_starts.begin(), m_starts.end(), index);
    return static_cast<size_t>(after - m_starts.begin()) - 1;
}

const Bar& BarSeries::at(qsizetype index) const
{
    const size_t day = dayOf(index);
    return m_days[day]->bars()[static_cast<size_t>(index - m_starts[day])];
}

qsizetype BarSeries::firstAfter(qint64 time) const
{
    const auto endsBefore = [time](const Bar& bar) { return bar.time <= time; };
    const auto day = std::partition_point(m_wholes.begin(), m_wholes.end(), endsBefore);
    if (day == m_wholes.end())
        return size();
    const auto index = static_cast<size_t>(day - m_wholes.begin());
    const std::vector<Bar>& bars = m_days[index]->bars();
    const auto bar = std::partition_point(bars.begin(), bars.end(), endsBefore);
    return m_starts[index] + (bar - bars.begin());
}

Bar BarSeries::sum(qsizetype first, qsizetype last) const
{
    const size_t firstDay = dayOf(first);
    const size_t lastDay = dayOf(last - 1);
    const auto within = [this](qsizetype index, size_t day) {
        return static_cast<size_t>(index - m_starts[day]);
    };
    Bar sum = at(first);
    const DayBars& begin = *m_days[firstDay];
    if (firstDay == lastDay) {
        begin.pyramid().extend(sum, begin.bars(), within(first, firstDay) + 1,
                               within(last, firstDay));
        return sum;
    }
    begin.pyramid().extend(sum, begin.bars(), within(first, firstDay) + 1, begin.bars().size());
    m_pyramid.extend(sum, m_wholes, firstDay + 1, lastDay);
    const DayBars& end = *m_days[lastDay];
    end.pyramid().extend(sum, end.bars(), 0, within(last, lastDay));
    return sum;
}

} // namespace vexdesk
