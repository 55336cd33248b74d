// SPDX-License-Identifier: MIT
#pragma once

#include "serieshealth.h"
#include "timesofday.h"

#include <QtCore/QDate>

#include <deque>
#include <vector>

namespace tadata {

/// How the stored days of one weekday look at each other: a time is usual on a day when at least
/// four fifths of the nearest other days, of up to 20 and at least 5, have a bar at it. Goes
/// through the days once, ascending, and keeps the times of 21 of them. One thread at a time.
class UsualTimes final
{
public:
    /// A gap is a run of at least `fewest` usual times.
    UsualTimes(std::vector<QDate> days, int fewest);

    /// Which day's times are to be added before judge() can look at the next one; -1 for none.
    int wanted() const;
    void add(TimesOfDay times);

    /// Fills in what the usual times say of the next day.
    void judge(DayHealth& health);

private:
    int size() const { return static_cast<int>(m_days.size()); }
    int windowSize() const;
    void moveWindow();
    void count(const TimesOfDay& times, int change);
    /// Ascending.
    std::vector<int> usualTimes(const TimesOfDay& own) const;

    std::vector<QDate> m_days;
    int m_fewest;
    int m_next = 0;                 // the day that is to be judged
    int m_begin = 0;                // of the window: the next day and those nearest to it
    int m_dropped = 0;              // days that are kept no more
    std::deque<TimesOfDay> m_times; // of the days behind those
    std::vector<int> m_counts;      // of the days kept, by slot
};

} // namespace tadata
