// SPDX-License-Identifier: MIT
#include "filedays.h"

#include "importfailures.h"

#include <algorithm>
#include <utility>

namespace tadata {

using vexdesk::Outcome;

namespace {

// Days before the first Julian one are numbers too.
constexpr int bitsOfDay = 41;
constexpr FileDays::Key firstDay = -(FileDays::Key(1) << (bitsOfDay - 1));

} // namespace

FileDays::FileDays(const QStringList& tickers)
    : m_hasMany(tickers.size() > 1)
{
    for (const QString& ticker : tickers)
        m_series.insert(ticker, static_cast<int>(m_series.size()));
}

int FileDays::seriesOf(Key key)
{
    return static_cast<int>(key >> bitsOfDay);
}

QDate FileDays::dayOf(Key key)
{
    return QDate::fromJulianDay((key & ((Key(1) << bitsOfDay) - 1)) + firstDay);
}

FileDays::Key FileDays::keyOf(const FileLine& line)
{
    if (m_hasMany && line.ticker != m_ticker) {
        m_ticker = line.ticker;
        m_tickerSeries = m_series.value(m_ticker);
    }
    return (Key(m_tickerSeries) << bitsOfDay) + (line.bar.date.toJulianDay() - firstDay);
}

Outcome FileDays::add(FileBars& file, FileLine* line)
{
    const Key key = keyOf(*line);
    if (key == m_aheadKey)
        return {};
    if (!m_firstLines.contains(key))
        m_firstLines.insert(key, line->number);
    if (key > m_aheadKey) {
        m_aheadKey = key;
        return {};
    }
    m_line.clear();
    file.readNumbers(line);
    m_line.add(line->bar);
    return m_sorter.add({key, m_line.lines().front().second, m_line.text().chopped(1)});
}

std::vector<FileDays::Key> FileDays::keys() const
{
    std::vector<Key> keys(m_firstLines.keyBegin(), m_firstLines.keyEnd());
    std::sort(keys.begin(), keys.end());
    return keys;
}

Outcome FileDays::begin(FileBars* file, const std::atomic<bool>* stop)
{
    m_file = file;
    m_stop = stop;
    m_outcome = m_sorter.begin();
    m_aheadKey = -1;
    if (m_outcome)
        readAhead();
    return m_outcome;
}

bool FileDays::next()
{
    m_day.clear();
    const BarSorter::Bar* const sorted = m_sorter.current();
    if (!m_outcome || (!m_hasAhead && !sorted))
        return false;
    m_key = m_hasAhead && (!sorted || m_aheadKey <= sorted->day) ? m_aheadKey : sorted->day;
    // What was put aside of a day stands behind what was not.
    takeInOrder();
    takeSorted();
    return static_cast<bool>(m_outcome);
}

void FileDays::takeInOrder()
{
    while (m_hasAhead && m_aheadKey == m_key) {
        m_day.add(m_ahead.bar);
        readAhead();
    }
}

void FileDays::takeSorted()
{
    while (m_outcome && m_sorter.current() && m_sorter.current()->day == m_key) {
        m_day.add(m_sorter.current()->second, m_sorter.current()->line);
        m_outcome = m_sorter.advance();
    }
}

void FileDays::readAhead()
{
    m_hasAhead = false;
    while (m_file->next(&m_ahead)) {
        if (m_stop && m_stop->load(std::memory_order_relaxed)) {
            m_outcome = interrupted();
            return;
        }
        if (m_ahead.isBad())
            continue;
        const Key key = keyOf(m_ahead);
        if (key < m_aheadKey)
            continue;
        m_aheadKey = key;
        m_hasAhead = true;
        return;
    }
    m_outcome = m_file->outcome();
}

} // namespace tadata
