// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/bar.h"
#include "desk/chart/timeframe.h"

#include <array>
#include <optional>

namespace vexdesk {

class DayBars;

/// What is kept of a day file whose bars are not in memory any more: enough for candles of days and
/// longer, and to know how many shorter ones there are. A plain value; any thread.
struct DaySummary
{
    qsizetype count = 0;      ///< of bars; 0 for a file that has none that can be drawn
    qsizetype otherLines = 0; ///< lines that are no bars
    /// The bars at 00:00:00, with which the file begins, as one. They end the day before.
    std::optional<Bar> midnight;
    qsizetype midnightCount = 0;
    /// The bars after midnight as one.
    std::optional<Bar> rest;
    int firstSecond = 0; ///< of the day, of the first and the last bar
    int lastSecond = 0;
    int decimals = 0; ///< digits after the point that the prices have
    /// For each timeframe below the day, of the bars after midnight.
    std::array<int, timeframesBelowDay> candles{};

    /// All bars as one. Not for a day without bars.
    Bar whole() const;

    bool operator==(const DaySummary&) const = default;
};

/// Sums up the bars of a day as they come. One thread at a time.
class DaySummaryMaker final
{
public:
    /// The bar that ends so many seconds after midnight, with prices of so many digits after the
    /// point; not before the one that was added last.
    void add(const Bar& bar, int secondOfDay, int decimals);
    const DaySummary& summary() const { return m_summary; }

private:
    DaySummary m_summary;
    std::array<int, timeframesBelowDay> m_ends{}; // of the candles of each timeframe
};

DaySummary summaryOf(const DayBars& bars);

} // namespace vexdesk
