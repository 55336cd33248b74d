// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/bar.h"

#include <vector>

namespace vexdesk {

/// Some bars of a day in a row, at least one, in little room: 24 bytes for each, 4 more where any
/// has open interest and 8 where any has money. Prices are kept as whole numbers of their last
/// digit, above the lowest of the block; where they do not fit into 32 bits, or a double would not
/// come out as it went in, they take twice the room. A bar that has all of this takes 48 bytes: its
/// money shares eight of them with its time. The block itself has 80 bytes more.
///
/// Never changed once it is made: any thread.
class BarBlock final
{
public:
    /// The bars [first, last) in the order of their times. They must be of the day that begins at
    /// the wall time `midnight`, and have volumes of 32 bits, which is what is read of a file.
    BarBlock(const Bar* first, const Bar* last, qint64 midnight);

    /// The very bar that was put in, but for money that shares its room: that has 46 bits.
    Bar at(qsizetype index) const;
    /// The bars [first, last), at least one, as one.
    Bar sum(qsizetype first, qsizetype last) const;
    /// Seconds from midnight to the end of the bar.
    int secondOf(qsizetype index) const { return static_cast<int>(row(index)[0] & secondMask); }

    /// In memory.
    qsizetype bytes() const;

private:
    static constexpr int secondBits = 17; // of the first word of a row
    static constexpr quint32 secondMask = (1U << secondBits) - 1;

    const quint32* row(qsizetype index) const
    {
        return m_words.data() + static_cast<size_t>(index * m_rowSize);
    }
    bool choosePrices(const Bar* first, const Bar* last, double power);
    void chooseMoney(const Bar* first, const Bar* last);
    void chooseRow(const Bar* first, const Bar* last);
    void put(const Bar& bar, quint32* row) const;
    double priceOf(quint32 units) const { return static_cast<double>(m_base + units) / m_power; }
    double moneyOf(const quint32* row) const;

    // Row after row: second, volume, prices, open interest, money; where the money shares the room
    // of the second, both come first and have two words.
    std::vector<quint32> m_words;
    qint64 m_midnight = 0; // wall time at which the day begins
    qint64 m_base = 0;     // the lowest price in units
    double m_power = 1;    // units in 1
    double m_moneyPower = 1;
    int m_rowSize = 0;  // in words
    int m_volumeAt = 1; // places in a row
    int m_moneyAt = 0;  // 0 for none, and where it shares the first words
    int m_interestAt = 0;
    bool m_hasUnits = false;
    bool m_isMoneyShared = false;
};

} // namespace vexdesk
