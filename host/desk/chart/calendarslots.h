// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/timeframe.h"

#include <QtCore/QDate>

namespace vexdesk {

/// The intervals of the calendar in a row, each of them a slot, whether anything was traded in it
/// or not. A plain value; any thread.
class CalendarSlots final
{
public:
    CalendarSlots() = default;
    /// Slot 0 is the first interval of the day, or the week or month that the day is in.
    CalendarSlots(Timeframe timeframe, const QDate& first);

    /// The position of a wall time, and the wall time of a position.
    double slotOf(double time) const;
    double timeAt(double slot) const;
    /// The slot of the interval that begins at this wall time.
    qint64 slotFrom(qint64 begin) const;
    /// In seconds; of months the mean.
    double slotLength() const;

private:
    Timeframe m_timeframe = Timeframe::Day;
    qint64 m_origin = 0; // wall time; of months their number
};

} // namespace vexdesk
