// SPDX-License-Identifier: MIT
#include "desk/chart/daybars.h"

#include "desk/chart/wallclock.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace vexdesk {

DayBars::DayBars(const std::vector<Bar>& bars, int decimals)
    : m_decimals(decimals)
{
    append(bars.data(), bars.data() + bars.size());
    m_blocks.shrink_to_fit();
}

// Whole blocks before.
void DayBars::append(const Bar* first, const Bar* last)
{
    m_size += last - first;
    while (first != last) {
        const Bar* const end = first + std::min<qsizetype>(blockSize, last - first);
        const qint64 midnight = floorDivided(first->time, secondsPerDay) * secondsPerDay;
        m_blocks.emplace_back(first, end, midnight);
        first = end;
    }
}

Bar DayBars::sum(qsizetype first, qsizetype last) const
{
    const auto partFrom = [this, last](qsizetype begin) {
        const qsizetype at = begin % blockSize;
        return blockOf(begin).sum(at, std::min(blockSize, at + last - begin));
    };
    Bar sum = partFrom(first);
    for (qsizetype next = (first / blockSize + 1) * blockSize; next < last; next += blockSize)
        extendBar(sum, partFrom(next));
    return sum;
}

qsizetype DayBars::firstAfter(int second, qsizetype first) const
{
    qsizetype last = m_size;
    while (first < last) {
        const qsizetype middle = first + (last - first) / 2;
        if (secondOf(middle) <= second)
            first = middle + 1;
        else
            last = middle;
    }
    return first;
}

qsizetype DayBars::bytes() const
{
    const auto spare = static_cast<qsizetype>(m_blocks.capacity() - m_blocks.size());
    qsizetype bytes = qsizetype(sizeof(*this)) + spare * qsizetype(sizeof(BarBlock));
    for (const BarBlock& block : m_blocks)
        bytes += block.bytes();
    return bytes;
}

void DayBarsMaker::add(const Bar& bar, int decimals)
{
    if (m_block.empty())
        m_block.reserve(DayBars::blockSize);
    m_isInOrder =
        m_isInOrder && (m_day.m_size + qsizetype(m_block.size()) == 0 || bar.time >= m_lastTime);
    m_lastTime = bar.time;
    m_block.push_back(bar);
    m_day.m_decimals = std::max(m_day.m_decimals, decimals);
    if (qsizetype(m_block.size()) == DayBars::blockSize)
        closeBlock();
}

void DayBarsMaker::closeBlock()
{
    m_day.append(m_block.data(), m_block.data() + m_block.size());
    m_block.clear();
}

std::shared_ptr<const DayBars> DayBarsMaker::finish()
{
    closeBlock();
    DayBarsMaker done;
    std::swap(*this, done);
    done.m_day.m_blocks.shrink_to_fit();
    if (done.m_day.m_size == 0)
        return nullptr;
    if (done.m_isInOrder)
        return std::make_shared<const DayBars>(std::move(done.m_day));
    std::vector<quint32> order(static_cast<size_t>(done.m_day.m_size));
    std::iota(order.begin(), order.end(), 0U);
    const DayBars& day = done.m_day;
    std::stable_sort(order.begin(), order.end(), [&day](quint32 left, quint32 right) {
        return day.secondOf(left) < day.secondOf(right);
    });
    DayBarsMaker sorted;
    for (const quint32 index : order)
        sorted.add(day.at(index), day.decimals());
    return sorted.finish();
}

} // namespace vexdesk
