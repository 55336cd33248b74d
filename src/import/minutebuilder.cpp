#include "import/minutebuilder.h"

#include <utility>

namespace tadata {

namespace {

// Volumes are 64 bits wide and may be anything: their sum wraps around instead of being undefined.
qint64 wrappingSum(qint64 left, qint64 right)
{
    return static_cast<qint64>(static_cast<quint64>(left) + static_cast<quint64>(right));
}

} // namespace

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
