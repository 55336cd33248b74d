// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/bar.h"

#include <vector>

namespace vexdesk {

/// The bars of one day file, at least one, in the order of their times, in little room: 24 bytes
/// for each, 4 more where any has open interest and 8 where any has money. Prices are kept as whole
/// numbers of their last digit, above the lowest of the day; where they do not fit into 32 bits, or
/// a double would not come out as it went in, they take twice the room.
///
/// Never changed once it is made: any thread.
class DayBars final
{
public:
    /// `decimals` are the digits after the point that the prices have. All bars must be of one day
    /// and have volumes of 32 bits, which is what is read of a file.
    DayBars(const std::vector<Bar>& bars, int decimals);

    qsizetype size() const { return m_size; }
    /// The very bar that was put in.
    Bar at(qsizetype index) const;
    /// The bars [first, last), at least one, as one.
    Bar sum(qsizetype first, qsizetype last) const;
    /// Seconds from midnight to the end of the bar.
    int secondOf(qsizetype index) const { return static_cast<int>(row(index)[0]); }
    /// The first bar from `first` on that ends after this second of the day, size() for none.
    qsizetype firstAfter(int second, qsizetype first = 0) const;

    int decimals() const { return m_decimals; }
    /// In memory.
    qsizetype bytes() const;

private:
    const quint32* row(qsizetype index) const
    {
        return m_words.data() + static_cast<size_t>(index * m_rowSize);
    }
    void choosePrices(const std::vector<Bar>& bars);
    void chooseRow(const std::vector<Bar>& bars);
    void put(const Bar& bar, quint32* row) const;
    double priceOf(quint32 units) const { return static_cast<double>(m_base + units) / m_power; }

    std::vector<quint32> m_words; // row after row: second, volume, prices, open interest, money
    qsizetype m_size = 0;
    qint64 m_midnight = 0; // wall time at which the day begins
    qint64 m_base = 0;     // the lowest price in units
    double m_power = 1;    // units in 1
    int m_decimals = 0;
    int m_rowSize = 0; // in words
    int m_moneyAt = 0; // the place in a row, 0 for none
    int m_interestAt = 0;
    bool m_hasUnits = false;
};

} // namespace vexdesk
