// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/barblock.h"

#include <memory>
#include <vector>

namespace vexdesk {

/// The bars of one day file, at least one, in the order of their times, in blocks of which a bar
/// takes at most 48 bytes; each block has 80 more and the day 40, which is a tenth of a byte a bar
/// in a full block and half a byte in a day of 200 bars. Never changed once it is made: any thread.
class DayBars final
{
public:
    static constexpr qsizetype blockSize = 1024; // bars

    /// `decimals` are the digits after the point that the prices have. For the bars see BarBlock.
    DayBars(const std::vector<Bar>& bars, int decimals);

    qsizetype size() const { return m_size; }
    Bar at(qsizetype index) const { return blockOf(index).at(index % blockSize); }
    /// The bars [first, last), at least one, as one.
    Bar sum(qsizetype first, qsizetype last) const;
    /// Seconds from midnight to the end of the bar.
    int secondOf(qsizetype index) const { return blockOf(index).secondOf(index % blockSize); }
    /// The first bar from `first` on that ends after this second of the day, size() for none.
    qsizetype firstAfter(int second, qsizetype first = 0) const;

    int decimals() const { return m_decimals; }
    /// In memory.
    qsizetype bytes() const;

private:
    friend class DayBarsMaker;
    DayBars() = default;
    void append(const Bar* first, const Bar* last);
    const BarBlock& blockOf(qsizetype index) const
    {
        return m_blocks[static_cast<size_t>(index / blockSize)];
    }

    std::vector<BarBlock> m_blocks; // each but the last has blockSize bars
    qsizetype m_size = 0;
    int m_decimals = 0;
};

/// Takes the bars of a day one after the other, so that no more than a block of them is ever there
/// as it was read. One thread at a time.
class DayBarsMaker final
{
public:
    /// A bar of the day of the first one, with prices of so many digits after the point. Bars that
    /// are out of order are put in it by finish().
    void add(const Bar& bar, int decimals);
    /// Null where nothing was added. Afterwards nothing is there.
    std::shared_ptr<const DayBars> finish();

private:
    void closeBlock();

    DayBars m_day;
    std::vector<Bar> m_block; // those that are not in the day yet
    qint64 m_lastTime = 0;
    bool m_isInOrder = true;
};

} // namespace vexdesk
