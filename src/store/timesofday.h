// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QtGlobal>

#include <bit>
#include <vector>

namespace tadata {

/// A set of times of a day, in whole seconds. Whole minutes take the least room: a day of minute
/// bars has 184 bytes. A plain value; one thread at a time.
class TimesOfDay final
{
public:
    static constexpr int seconds = 86400;

    /// Where a time stands, which is not in the order of time: the whole minutes come first, then
    /// all times one second after a whole minute, and so on.
    static constexpr int slotOf(int second)
    {
        return second % perMinute * minutes + second / perMinute;
    }
    static constexpr int secondOf(int slot) { return slot % minutes * perMinute + slot / minutes; }

    /// False when it was there.
    bool insert(int second);
    bool contains(int second) const;
    /// Makes it empty and keeps the room.
    void clear() { m_words.clear(); }
    /// All slots are below.
    int endOfSlots() const { return static_cast<int>(m_words.size()) * bits; }

    void unite(const TimesOfDay& other);
    /// What both have.
    TimesOfDay common(const TimesOfDay& other) const;
    int count() const;
    /// How many there are in an interval, both ends included.
    int countWithin(int from, int to) const;

    template <typename Visit>
    void visitSlots(Visit visit) const
    {
        for (size_t word = 0; word < m_words.size(); ++word) {
            for (quint64 left = m_words[word]; left != 0; left &= left - 1)
                visit(static_cast<int>(word) * bits + std::countr_zero(left));
        }
    }

private:
    static constexpr int perMinute = 60;
    static constexpr int minutes = seconds / perMinute;
    static constexpr int bits = 64;

    std::vector<quint64> m_words; // as many as there are up to the last slot
};

} // namespace tadata
