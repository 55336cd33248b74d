// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/timeaxis.h"

#include <QtCore/QString>

#include <vector>

/// Where the axes of the chart have their lines and numbers, and texts for times. Any thread.
namespace vexdesk {

/// From line to line where at most about `most` of them stand between two values: 1, 2 or 5 with a
/// power of ten, and not below the last of the decimals.
double valueStep(double low, double high, int most, int decimals);

struct TimeTick
{
    qint64 slot = 0;      ///< the line stands where it begins
    QString label;        ///< what is new at every line: the time, or the day, or the month
    QString heading;      ///< what begins here, below the label: a date or a year; empty within it
    QString shortHeading; ///< where there is no room for it; empty where it says less
    bool isBegin = false; ///< a day begins here, or a year
    bool isKept = false;  ///< the line stands also where its label has no room
    int rank = 0;         ///< where two labels have no room the one with the higher rank stays
};

struct TimeTicks
{
    std::vector<TimeTick> ticks; ///< in the order of their slots
    QString first;               ///< the heading of what the range begins in the middle of
};

/// How many slots there must be on average for a label with the time, for one with the date, and
/// for a line of a day without a label.
struct TickRoom
{
    double time = 0;
    double date = 0;
    double dayLine = 0;
};

/// Lines for the slots that begin in a range: as many as have room, at round times and where days,
/// weeks, months or years change. `begins` is what the axis of this timeframe says of the range.
TimeTicks timeTicks(const std::vector<SlotBegin>& begins, const SlotRange& range,
                    const TickRoom& slotsFor, Timeframe timeframe);

/// "15.01.2024", as the default locale writes it.
QString dateText(qint64 time);
/// "15.01.2024 10:20", or with seconds when it is about shorter bars than those of a minute.
QString dateTimeText(qint64 time, qint64 interval);
/// "1 мин", "15 с", "2 ч", "7 д".
QString intervalText(qint64 seconds);
/// "5 мин", "1 ч", "1 д", "1 нед", "1 мес".
QString timeframeText(Timeframe timeframe);
/// A number with a fixed count of digits after the point, "120.50", never "-0.00".
QString numberText(double number, int decimals);
/// The text of a number with its thousands apart, "40 000 000"; the blanks do not break a line.
QString groupedText(const QString& number);

} // namespace vexdesk
