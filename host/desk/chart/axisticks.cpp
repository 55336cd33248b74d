// SPDX-License-Identifier: MIT
#include "desk/chart/axisticks.h"

#include "desk/chart/wallclock.h"

#include <vexdesk/dateformat.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>

#include <algorithm>
#include <array>
#include <cmath>

namespace vexdesk {

namespace {

// Of a date without the year.
QString dayFormat()
{
    QString format = shownDateFormat(QLocale());
    const qsizetype begin = format.indexOf(u'y');
    const qsizetype count = format.count(u'y');
    // With the sign behind it or, at the end, with all signs before it.
    format.remove(begin, count + 1);
    while (!format.isEmpty() && !format.back().isLetter())
        format.chop(1);
    return format;
}

constexpr qint64 minute = 60;
constexpr qint64 hour = 60 * minute;
constexpr int monthsPerYear = 12;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::AxisTicks)
};

/// What changes from one line to the next.
struct TickUnit
{
    enum Kind { Clock, Day, Week, Month, Year };

    Kind kind = Clock;
    qint64 count = 1; ///< seconds of the clock; else days, weeks, months, years
};

constexpr std::array usualUnits{TickUnit{TickUnit::Clock, 1},
                                TickUnit{TickUnit::Clock, 2},
                                TickUnit{TickUnit::Clock, 5},
                                TickUnit{TickUnit::Clock, 10},
                                TickUnit{TickUnit::Clock, 15},
                                TickUnit{TickUnit::Clock, 30},
                                TickUnit{TickUnit::Clock, minute},
                                TickUnit{TickUnit::Clock, 2 * minute},
                                TickUnit{TickUnit::Clock, 5 * minute},
                                TickUnit{TickUnit::Clock, 10 * minute},
                                TickUnit{TickUnit::Clock, 15 * minute},
                                TickUnit{TickUnit::Clock, 30 * minute},
                                TickUnit{TickUnit::Clock, hour},
                                TickUnit{TickUnit::Clock, 2 * hour},
                                TickUnit{TickUnit::Clock, 3 * hour},
                                TickUnit{TickUnit::Clock, 6 * hour},
                                TickUnit{TickUnit::Clock, 12 * hour},
                                TickUnit{TickUnit::Day, 1},
                                TickUnit{TickUnit::Week, 1},
                                TickUnit{TickUnit::Week, 2},
                                TickUnit{TickUnit::Month, 1},
                                TickUnit{TickUnit::Month, 3},
                                TickUnit{TickUnit::Month, 6},
                                TickUnit{TickUnit::Year, 1},
                                TickUnit{TickUnit::Year, 2},
                                TickUnit{TickUnit::Year, 5},
                                TickUnit{TickUnit::Year, 10},
                                TickUnit{TickUnit::Year, 20},
                                TickUnit{TickUnit::Year, 50}};

/// A slot's begin with the numbers of what it is in.
struct Begin
{
    qint64 slot = 0;
    qint64 time = 0;
    std::array<qint64, TickUnit::Year + 1> numbers{}; // by TickUnit::Kind

    qint64 numberOf(const TickUnit& unit) const
    {
        return floorDivided(numbers[static_cast<size_t>(unit.kind)], unit.count);
    }
    bool isSame(const Begin& other, TickUnit::Kind kind) const
    {
        return numbers[kind] == other.numbers[kind];
    }
    QDate day() const { return QDate::fromJulianDay(numbers[TickUnit::Day]); }
};

std::vector<Begin> numbered(const std::vector<SlotBegin>& begins)
{
    std::vector<Begin> all;
    all.reserve(begins.size());
    for (const SlotBegin& begin : begins) {
        Begin one{begin.slot, begin.time, {}};
        const qint64 day = begin.day.toJulianDay();
        if (!all.empty() && all.back().numbers[TickUnit::Day] == day) {
            one.numbers = all.back().numbers;
        } else {
            // Julian day 0 was a Monday.
            const qint64 year = begin.day.year();
            one.numbers = {0, day, floorDivided(day, 7),
                           year * monthsPerYear + begin.day.month() - 1, year};
        }
        one.numbers[TickUnit::Clock] = begin.time;
        all.push_back(one);
    }
    return all;
}

// A day is seen to begin among times, and a year among days and weeks.
bool isLine(const Begin& before, const Begin& begin, const TickUnit& unit)
{
    const TickUnit::Kind larger = unit.kind == TickUnit::Clock ? TickUnit::Day : TickUnit::Year;
    return before.numberOf(unit) != begin.numberOf(unit) ||
           (unit.kind <= TickUnit::Week && !before.isSame(begin, larger));
}

// Nothing that is shorter than a candle.
bool isFor(const TickUnit& unit, Timeframe timeframe)
{
    if (isBelowDay(timeframe))
        return unit.kind != TickUnit::Clock || unit.count >= secondsOf(timeframe);
    const int longer = static_cast<int>(timeframe) - static_cast<int>(Timeframe::Day);
    return unit.kind >= TickUnit::Day + longer;
}

double slotsPerLine(const TickUnit& unit, const TickRoom& slotsFor)
{
    if (unit.kind == TickUnit::Clock)
        return slotsFor.time;
    return unit.kind == TickUnit::Day ? slotsFor.dayLine : slotsFor.date;
}

TickUnit unitFor(const std::vector<Begin>& begins, const TickRoom& slotsFor, Timeframe timeframe)
{
    const auto length = static_cast<double>(begins.back().slot - begins.front().slot);
    for (const TickUnit& unit : usualUnits) {
        if (!isFor(unit, timeframe))
            continue;
        double lines = 0;
        for (size_t i = 1; i < begins.size(); ++i)
            lines += isLine(begins[i - 1], begins[i], unit);
        // Of a few all that have room are shown: there is one more than distances between them.
        constexpr double few = 5;
        if (lines <= std::max(few, length / slotsPerLine(unit, slotsFor)))
            return unit;
    }
    return usualUnits.back();
}

QString clockText(qint64 time, Timeframe timeframe)
{
    return wallClock(time).toString(timeframe == Timeframe::Second ? QStringLiteral("hh:mm:ss")
                                                                   : QStringLiteral("hh:mm"));
}

QString headingOf(const Begin& begin, const TickUnit& unit)
{
    if (unit.kind == TickUnit::Clock)
        return dateText(wallTime(begin.day()));
    return unit.kind < TickUnit::Year ? begin.day().toString(QStringLiteral("yyyy")) : QString();
}

QString labelOf(const Begin& begin, const TickUnit& unit)
{
    if (unit.kind == TickUnit::Year)
        return begin.day().toString(QStringLiteral("yyyy"));
    if (unit.kind == TickUnit::Month)
        return QLocale().standaloneMonthName(begin.day().month(), QLocale::ShortFormat);
    return begin.day().toString(dayFormat());
}

// Of a view in which no line says which day, week or month it is.
QString placeOf(const Begin& begin, const TickUnit& unit)
{
    if (unit.kind == TickUnit::Clock)
        return headingOf(begin, unit);
    if (unit.kind == TickUnit::Year)
        return labelOf(begin, unit);
    if (unit.kind < TickUnit::Month)
        return dateText(wallTime(begin.day()));
    return QLocale().standaloneMonthName(begin.day().month()) + u' ' +
           begin.day().toString(QStringLiteral("yyyy"));
}

// The higher, the rounder.
int rankOf(const Begin& before, const Begin& begin)
{
    for (const TickUnit::Kind kind :
         {TickUnit::Year, TickUnit::Month, TickUnit::Week, TickUnit::Day}) {
        if (!before.isSame(begin, kind))
            return kind + 1;
    }
    return begin.time % hour == 0 ? 1 : 0;
}

// Where a round time is in a gap, the line stands behind it and has that time: it is between these
// two bars. A day has the time at which it begins.
QString timeLabel(const Begin& begin, const TickUnit& unit, bool isNewDay, Timeframe timeframe)
{
    const qint64 time = isNewDay ? begin.time : begin.numberOf(unit) * unit.count;
    // A bar at midnight that stands at its day has an interval of the day before.
    return clockText(std::max(time, wallTime(begin.day())), timeframe);
}

TimeTick tickAt(const Begin& before, const Begin& begin, const TickUnit& unit, Timeframe timeframe)
{
    TimeTick tick;
    tick.slot = begin.slot;
    tick.rank = rankOf(before, begin);
    const bool isNewDay = !before.isSame(begin, TickUnit::Day);
    if (unit.kind == TickUnit::Clock) {
        tick.label = timeLabel(begin, unit, isNewDay, timeframe);
        tick.isBegin = isNewDay;
    } else {
        tick.label = labelOf(begin, unit);
        tick.isBegin = unit.kind < TickUnit::Year && !before.isSame(begin, TickUnit::Year);
    }
    tick.isKept = tick.isBegin || unit.kind == TickUnit::Day;
    if (!tick.isBegin)
        return tick;
    tick.heading = headingOf(begin, unit);
    if (unit.kind == TickUnit::Clock && before.isSame(begin, TickUnit::Year))
        tick.shortHeading = begin.day().toString(dayFormat());
    return tick;
}

double roundStep(double atLeast)
{
    const double power = std::pow(10.0, std::floor(std::log10(atLeast)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        // A little less is the same number, written in binary.
        if (factor * power >= atLeast * (1 - 1e-9))
            return factor * power;
    }
    return 10 * power;
}

} // namespace

double valueStep(double low, double high, int most, int decimals)
{
    const double smallest = std::pow(10.0, -decimals);
    const double wanted = (high - low) / std::max(1, most);
    return wanted > smallest ? roundStep(wanted) : smallest;
}

TimeTicks timeTicks(const std::vector<SlotBegin>& begins, const SlotRange& range,
                    const TickRoom& slotsFor, Timeframe timeframe)
{
    if (begins.empty())
        return {};
    const std::vector<Begin> all = numbered(begins);
    const TickUnit unit = unitFor(all, slotsFor, timeframe);
    TimeTicks found;
    if (static_cast<double>(all.front().slot) < range.begin)
        found.first = headingOf(all.front(), unit);
    else // nothing is before it
        found.ticks.push_back(
            tickAt({all.front().slot, all.front().time, {}}, all.front(), unit, timeframe));
    for (size_t i = 1; i < all.size(); ++i) {
        if (isLine(all[i - 1], all[i], unit))
            found.ticks.push_back(tickAt(all[i - 1], all[i], unit, timeframe));
    }
    if (found.ticks.empty())
        found.first = placeOf(all.back(), unit);
    return found;
}

QString dateText(qint64 time)
{
    return shownDate(wallDate(time));
}

QString dateTimeText(qint64 time, qint64 interval)
{
    return dateText(time) + u' ' +
           wallClock(time).toString(interval < minute ? QStringLiteral("hh:mm:ss")
                                                      : QStringLiteral("hh:mm"));
}

QString intervalText(qint64 seconds)
{
    if (seconds % secondsPerDay == 0)
        return Text::tr("%1 д").arg(seconds / secondsPerDay);
    if (seconds % hour == 0)
        return Text::tr("%1 ч").arg(seconds / hour);
    return seconds % minute == 0 ? Text::tr("%1 мин").arg(seconds / minute)
                                 : Text::tr("%1 с").arg(seconds);
}

QString timeframeText(Timeframe timeframe)
{
    if (timeframe == Timeframe::Week)
        return Text::tr("%1 нед").arg(1);
    return timeframe == Timeframe::Month ? Text::tr("%1 мес").arg(1)
                                         : intervalText(secondsOf(timeframe));
}

QString numberText(double number, int decimals)
{
    const QString text = QString::number(number, 'f', decimals);
    // The minus of a number that is rounded to nothing.
    const bool isZero = std::all_of(text.begin(), text.end(), [](QChar character) {
        return character == u'-' || character == u'.' || character == u'0';
    });
    return isZero && text.startsWith(u'-') ? text.mid(1) : text;
}

QString groupedText(const QString& number)
{
    constexpr qsizetype group = 3;
    QString text = number;
    const qsizetype point = number.indexOf(u'.');
    const qsizetype first = number.startsWith(u'-') ? 1 : 0;
    for (qsizetype i = (point < 0 ? number.size() : point) - group; i > first; i -= group)
        text.insert(i, QChar::Nbsp);
    return text;
}

} // namespace vexdesk
