// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/calendarslots.h"
#include "desk/chart/chartstudy.h"
#include "desk/chart/foldeddays.h"
#include "desk/chart/slotrange.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace vexdesk {

/// Where a slot begins.
struct SlotBegin
{
    qint64 slot = 0;
    qint64 time = 0; ///< wall time
    QDate day;       ///< where it is shown
};

/// Places the candles of a series on a line of slots, one for each of them, so that nights,
/// weekends and holidays take no room; or, with the nights shown, one for each interval of the
/// calendar. Days that were not read have as many slots as they may have candles. Positions outside
/// go on at the pace of the clock.
///
/// A copy is cheap and shares what was folded. The owner's thread only.
class TimeAxis final
{
public:
    TimeAxis();
    TimeAxis(std::shared_ptr<FoldedDays> folded, bool areNightsShown);

    const BarSeries& series() const { return m_folded->series(); }
    const std::shared_ptr<FoldedDays>& folded() const { return m_folded; }
    Timeframe timeframe() const { return m_folded->timeframe(); }
    bool areNightsShown() const { return m_areNightsShown; }

    qint64 size() const { return m_size; }
    /// The slot of the first candle: a calendar begins with its day.
    double begin() const;

    /// The position of a wall time; in a night that is not shown, that of the next morning.
    double slotOf(double time) const;
    /// The wall time of a position; between two candles, when the next one begins.
    double timeAt(double slot) const;
    /// The same, but between two candles when the first one ends.
    double timeUpTo(double slot) const;

    /// The candles in memory of which something is in the range and, if it can be, so many more
    /// before them.
    std::vector<PlacedCandle> candles(const SlotRange& range, int before = 0) const;
    /// The stretches of the range whose days are not in memory as far as they are needed.
    std::vector<SlotRange> unread(const SlotRange& range) const;
    /// Where slots begin, for all that begin in the range and one before them. Of days that are not
    /// in memory the first slot alone.
    std::vector<SlotBegin> begins(const SlotRange& range) const;
    /// The days [first, last) with slots in the range.
    std::pair<qsizetype, qsizetype> daysIn(const SlotRange& range) const;

    /// The slot of the first candle of a day or, where it has none, of the next one after it; of a
    /// week or a month that of the one that the day is in. A day that was not read has a first slot
    /// too. No value after the last one.
    std::optional<qint64> firstSlotFrom(const QDate& date) const;
    /// The slot of the next candle, or of a day that was not read yet, on one side of a slot:
    /// forwards, or backwards; days that cannot be read are left out. No value when there is none.
    std::optional<qint64> next(qint64 slot, bool isForwards) const;

private:
    // What a day, week or month fills on an axis without nights.
    struct Stretch
    {
        qsizetype day = 0; // the one with which the candles begin
        qint64 first = 0;  // slots
        qint64 count = 0;
        double begin = 0; // wall times
        double end = 0;
    };

    qsizetype dayCount() const { return static_cast<qsizetype>(m_starts.size()) - 1; }
    qint64 startOf(qsizetype day) const { return m_starts[static_cast<size_t>(day)]; }
    bool hasSlots(qsizetype day) const { return startOf(day) < startOf(day + 1); }
    const SeriesDay& dayAt(qsizetype day) const
    {
        return series().days()[static_cast<size_t>(day)];
    }
    std::pair<qsizetype, qsizetype> periodOf(const QDate& date) const;
    bool isKnown(qsizetype day) const;
    bool isUnreadable(qsizetype day) const;
    qsizetype dayOfSlot(qint64 slot) const;
    Stretch stretchFrom(qsizetype day) const;
    std::optional<Stretch> stretchAt(double time) const;

    double timeIn(qint64 slot, double share) const;
    double slotIn(const Stretch& stretch, double time) const;
    qint64 slotOfCandle(qsizetype day, size_t index) const;
    SlotRange slotsOf(qsizetype day) const;
    bool isAfterGap(qsizetype day) const;
    void appendCandles(std::vector<PlacedCandle>& placed, qsizetype day,
                       const SlotRange& range) const;
    std::vector<PlacedCandle> candlesBefore(qint64 slot, int count) const;
    std::vector<SlotBegin> calendarBegins(qint64 first, qint64 last) const;
    std::optional<qint64> nextInDay(qsizetype day, qint64 slot, bool isForwards) const;

    std::shared_ptr<FoldedDays> m_folded;
    bool m_areNightsShown = false;
    CalendarSlots m_calendar;        // of the axis with nights
    std::vector<qint64> m_starts{0}; // the first slot of each day, and the end; without nights
    qint64 m_size = 0;
    double m_begin = 0; // wall times between which the slots are
    double m_end = 0;
};

} // namespace vexdesk
