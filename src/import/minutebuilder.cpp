// SPDX-License-Identifier: MIT
#include "minutebuilder.h"

#include "wrappingsum.h"

#include <utility>

namespace tadata {

std::optional<BarDescription> MinuteBuilder::add(const BarDescription& bar)
{
    if (m_minute && bar.time.secsTo(m_minute->time) >= 0) {
        merge(bar);
        return std::nullopt;
    }
    std::optional<BarDescription> finished = std::exchange(m_minute, bar);
    m_minute->time = bar.time.addSecs(60 - bar.time.second());
    return finished;
}

std::optional<BarDescription> MinuteBuilder::take()
{
    return std::exchange(m_minute, std::nullopt);
}

void MinuteBuilder::merge(const BarDescription& bar)
{
    if (m_minute->high.compare(bar.high) < 0)
        m_minute->high = bar.high;
    if (m_minute->low.compare(bar.low) >= 0)
        m_minute->low = bar.low;
    m_minute->close = bar.close;
    m_minute->volume = wrappingSum(m_minute->volume, bar.volume);
    m_minute->value += bar.value;
    m_minute->openInterest = bar.openInterest;
}

} // namespace tadata
