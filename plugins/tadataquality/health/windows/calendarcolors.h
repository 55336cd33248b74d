// SPDX-License-Identifier: MIT
#pragma once

#include <QtGui/QColor>

class QPalette;

/// The colours of the calendar, for a light or a dark ground. A day that lacks nothing is blue, and
/// whatever it lacks is between yellow and orange: who does not see red and green sees that.
struct CalendarColors
{
    QColor full;    ///< a day that lacks nothing
    QColor almost;  ///< one that lacks a few bars
    QColor empty;   ///< one that lacks all
    QColor unusual; ///< a file that nothing can be compared with
    QColor missing; ///< the mark of a missing day
    QColor quiet;   ///< marks of days that need not worry
    QColor fault;   ///< the mark of a wrong day
    QColor ground;
    QColor text;

    static CalendarColors of(const QPalette& palette);
    /// Of a day with this share of its bars, 0 to 1.
    QColor ofShare(double share) const;
};
