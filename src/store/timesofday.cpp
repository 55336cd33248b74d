// SPDX-License-Identifier: MIT
#include "timesofday.h"

#include <algorithm>

namespace tadata {

bool TimesOfDay::insert(int second)
{
    const int slot = slotOf(second);
    const auto word = static_cast<size_t>(slot / bits);
    const quint64 bit = quint64(1) << (slot % bits);
    if (word >= m_words.size())
        m_words.resize(word + 1);
    const bool isNew = (m_words[word] & bit) == 0;
    m_words[word] |= bit;
    return isNew;
}

bool TimesOfDay::contains(int second) const
{
    const int slot = slotOf(second);
    return slot < endOfSlots() &&
           (m_words[static_cast<size_t>(slot / bits)] >> (slot % bits) & 1) != 0;
}

void TimesOfDay::unite(const TimesOfDay& other)
{
    m_words.resize(std::max(m_words.size(), other.m_words.size()));
    for (size_t word = 0; word < other.m_words.size(); ++word)
        m_words[word] |= other.m_words[word];
}

TimesOfDay TimesOfDay::common(const TimesOfDay& other) const
{
    TimesOfDay both;
    both.m_words.resize(std::min(m_words.size(), other.m_words.size()));
    for (size_t word = 0; word < both.m_words.size(); ++word)
        both.m_words[word] = m_words[word] & other.m_words[word];
    return both;
}

int TimesOfDay::count() const
{
    int count = 0;
    for (const quint64 word : m_words)
        count += std::popcount(word);
    return count;
}

int TimesOfDay::countWithin(int from, int to) const
{
    int count = 0;
    visitSlots([&](int slot) {
        const int second = secondOf(slot);
        count += from <= second && second <= to ? 1 : 0;
    });
    return count;
}

} // namespace tadata
