// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>
#include <QtCore/QtGlobal>

#include <memory>
#include <vector>

/// The bars of one series and timeframe in memory, as the chart needs them: found by time and
/// summed up over any stretch without going through its bars one by one. Any thread: what is made
/// once is never changed.
namespace vexdesk {

/// A bar, or what several bars in a row have come to.
struct Bar
{
    qint64 time = 0; ///< wall time at which it ends
    double open = 0;
    double high = 0;
    double low = 0;
    double close = 0;
    qint64 volume = 0; ///< in pieces
    double value = 0;  ///< in money
    qint32 openInterest = 0;

    bool operator==(const Bar&) const = default;
};

/// Makes the bar one that goes on to the end of `next`: the first open, the highest high, the
/// lowest low, the last close, the sums of volume and value, the last open interest.
void extendBar(Bar& bar, const Bar& next);

/// Sums of bars over blocks of them, over blocks of blocks and so on. It sums up any stretch of n
/// bars in about log n steps. The bars themselves are their owner's.
class BarPyramid final
{
public:
    BarPyramid() = default;
    explicit BarPyramid(const std::vector<Bar>& bars);

    /// Extends `sum` by the bars [first, last); `bars` are those that the pyramid was built from.
    void extend(Bar& sum, const std::vector<Bar>& bars, size_t first, size_t last) const;

private:
    void extendAt(size_t level, Bar& sum, const std::vector<Bar>& bars, size_t first,
                  size_t last) const;

    std::vector<std::vector<Bar>> m_levels; // each a sixteenth of what is below it
};

/// The bars of one day, at least one, in the order of their times.
class DayBars final
{
public:
    /// `decimals` are the digits after the point that the prices have.
    DayBars(std::vector<Bar> bars, int decimals);

    const std::vector<Bar>& bars() const { return m_bars; }
    const BarPyramid& pyramid() const { return m_pyramid; }
    int decimals() const { return m_decimals; }
    /// All bars as one.
    const Bar& whole() const { return m_whole; }

private:
    std::vector<Bar> m_bars;
    BarPyramid m_pyramid;
    Bar m_whole;
    int m_decimals;
};

/// All days of a series. Made of days that were read before at the cost of the days alone.
class BarSeries final
{
public:
    using Day = std::shared_ptr<const DayBars>;

    BarSeries() = default;
    /// In the order of the days, none null.
    explicit BarSeries(std::vector<Day> days);

    qsizetype size() const { return m_starts.empty() ? 0 : m_starts.back(); }
    bool isEmpty() const { return size() == 0; }
    const Bar& at(qsizetype index) const;
    const std::vector<Day>& days() const { return m_days; }

    /// The first bar that ends after this time, size() when there is none.
    qsizetype firstAfter(qint64 time) const;
    /// The bars [first, last), at least one, as one.
    Bar sum(qsizetype first, qsizetype last) const;

    /// The digits after the point of the price that has most of them.
    int decimals() const { return m_decimals; }
    /// When the first and the last bar end. Not for an empty series.
    qint64 firstTime() const { return m_days.front()->bars().front().time; }
    qint64 lastTime() const { return m_days.back()->bars().back().time; }

private:
    size_t dayOf(qsizetype index) const;

    std::vector<Day> m_days;
    std::vector<qsizetype> m_starts; // the index of each day's first bar, and the end
    std::vector<Bar> m_wholes;       // each day as one bar
    BarPyramid m_pyramid;            // over these
    int m_decimals = 0;
};

} // namespace vexdesk
