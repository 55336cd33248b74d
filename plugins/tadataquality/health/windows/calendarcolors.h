// SPDX-License-Identifier: MIT
#pragma once

#include <QtGui/QColor>

class QPalette;

/// The colours of the calendar, for a light or a dark ground. From blue to orange: they differ for
/// who does not see red and green as well.
struct CalendarColors
{
    QColor full;    ///< a day that lacks nothing
    QColor half;    ///< one that lacks half of its bars
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
