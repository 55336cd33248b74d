// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/candles.h"

#include <array>
#include <memory>
#include <vector>

namespace vexdesk {

/// The candles of a series at one timeframe, folded day by day as they are asked for, and kept. The
/// owner's thread only: asking changes what is kept.
class FoldedDays final
{
public:
    /// Takes over from `before`, which may be null, what is the same in both series.
    FoldedDays(std::shared_ptr<const BarSeries> series, Timeframe timeframe,
               const FoldedDays* before = nullptr);

    const BarSeries& series() const { return *m_series; }
    const std::shared_ptr<const BarSeries>& sharedSeries() const { return m_series; }
    Timeframe timeframe() const { return m_timeframe; }

    /// The candles that begin with a day; none where what they are made of is not in memory. Valid
    /// until letGo().
    const std::vector<Candle>& of(qsizetype day);

    /// Lets candles go when they are many, but those that were asked for since the last time.
    void letGo();
    /// How many days and candles are kept, for those who want to know that it is not without end.
    size_t daysKept() const { return m_daysKept; }
    size_t candlesKept() const { return m_candlesKept; }

private:
    struct Entry
    {
        std::shared_ptr<const std::vector<Candle>> candles; // shared by all that know the day
        int turn = 0;                                       // at which it was asked for last
    };

    static constexpr size_t pageSize = 128; // days
    // Shared by those that know the same days; one that is shared is not changed but copied.
    struct Page
    {
        std::array<Entry, pageSize> days;
        size_t daysKept = 0;
        size_t candlesKept = 0;
    };

    void takeOver(const FoldedDays& before);
    void takeOverDays(const FoldedDays& before, size_t page, size_t* next);
    bool isPageSame(const FoldedDays& before, size_t page) const;
    bool isSameAt(const FoldedDays& before, size_t day, bool needsBars) const;
    bool isSame(size_t day, const FoldedDays& before, size_t dayBefore) const;
    void letGoOf(size_t page);
    Page& changedPage(size_t page);
    void keep(size_t day, std::shared_ptr<const std::vector<Candle>> candles);
    const SeriesDay& dayAt(size_t day) const { return m_series->days()[day]; }
    const DaySummary* summaryAt(size_t day) const;
    qint64 bytesAt(size_t day) const;

    std::shared_ptr<const BarSeries> m_series;
    Timeframe m_timeframe;
    // Of the days of the series, without candles those that were not folded. Most series are long
    // and looked at in one place: only pages with something in them are there.
    std::vector<std::shared_ptr<Page>> m_pages;
    size_t m_daysKept = 0;
    size_t m_candlesKept = 0;
    int m_turn = 0;
};

} // namespace vexdesk
