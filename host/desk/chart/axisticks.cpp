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

// A date without the year, or without the day.
QString withoutPart(QChar part)
{
    QString format = shownDateFormat(QLocale());
    const qsizetype begin = format.indexOf(part);
    const qsizetype count = format.count(part);
    // With the sign behind it or, at the end, with all signs before it.
    format.remove(begin, count + 1);
    while (!format.isEmpty() && !format.back().isLetter())
        format.chop(1);
    return format;
}

constexpr qint64 minute = 60;
constexpr qint64 hour = 60 * minute;
constexpr qint64 week = 7 * secondsPerDay;
constexpr double averageMonth = 30.44 * double(secondsPerDay);

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::AxisTicks)
};

constexpr std::array<qint64, 17> clockSteps{
    1,      2,          5,          10,          15,          30,
    minute, 2 * minute, 5 * minute, 10 * minute, 15 * minute, 30 * minute,
    hour,   2 * hour,   3 * hour,   6 * hour,    12 * hour};
constexpr std::array<qint64, 4> daySteps{secondsPerDay, 2 * secondsPerDay, week, 2 * week};
constexpr std::array monthSteps{1, 2, 3, 6};

// The smallest of these that gives no more than `most` lines, 0 when none does.
template <typename Steps>
qint64 stepFor(const Steps& steps, double length, int most, double unit)
{
    const auto found = std::find_if(steps.begin(), steps.end(), [=](qint64 step) {
        return length <= most * double(step) * unit;
    });
    return found == steps.end() ? 0 : qint64(*found);
}

QString yearText(const QDate& day)
{
    return day.toString(QStringLiteral("yyyy"));
}

std::vector<TimeTick> evenTicks(const TimeRange& range, qint64 step)
{
    const bool isClock = step < secondsPerDay;
    const QString clockFormat =
        step < minute ? QStringLiteral("hh:mm:ss") : QStringLiteral("hh:mm");
    const qint64 origin = step % week == 0 ? -3 * secondsPerDay : 0; // a Monday
    std::vector<TimeTick> ticks;
    qint64 time = static_cast<qint64>(std::ceil(range.begin));
    time = -floorDivided(-(time - origin), step) * step + origin;
    int year = 0;
    for (; static_cast<double>(time) <= range.end; time += step) {
        TimeTick tick;
        tick.time = time;
        const QDate day = wallDate(time);
        const bool isFirst = ticks.empty();
        if (isClock) {
            tick.label = wallClock(time).toString(clockFormat);
            tick.isBegin = time % secondsPerDay == 0;
            if (isFirst || tick.isBegin)
                tick.heading = dateText(time);
        } else {
            tick.label = day.toString(withoutPart(u'y'));
            tick.isBegin = !isFirst && day.year() != year;
            if (isFirst || tick.isBegin)
                tick.heading = yearText(day);
        }
        year = day.year();
        ticks.push_back(tick);
    }
    return ticks;
}

std::vector<TimeTick> monthTicks(const TimeRange& range, int months)
{
    std::vector<TimeTick> ticks;
    const QDate first = wallDate(static_cast<qint64>(std::floor(range.begin)));
    QDate day(first.year(), 1, 1);
    for (; static_cast<double>(wallTime(day)) <= range.end; day = day.addMonths(months)) {
        if (static_cast<double>(wallTime(day)) < range.begin)
            continue;
        TimeTick tick;
        tick.time = wallTime(day);
        tick.label = day.toString(withoutPart(u'd'));
        tick.isBegin = day.month() == 1;
        ticks.push_back(tick);
    }
    return ticks;
}

std::vector<TimeTick> yearTicks(const TimeRange& range, int years)
{
    std::vector<TimeTick> ticks;
    const int from = wallDate(static_cast<qint64>(std::floor(range.begin))).year();
    const int to = wallDate(static_cast<qint64>(std::ceil(range.end))).year();
    for (int year = static_cast<int>(floorDivided(from, years)) * years; year <= to;
         year += years) {
        const QDate day(year, 1, 1);
        if (!day.isValid() || static_cast<double>(wallTime(day)) < range.begin ||
            static_cast<double>(wallTime(day)) > range.end)
            continue;
        TimeTick tick;
        tick.time = wallTime(day);
        tick.label = yearText(day);
        ticks.push_back(tick);
    }
    return ticks;
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

std::vector<TimeTick> timeTicks(const TimeRange& range, int most)
{
    most = std::max(1, most);
    const double length = range.length();
    if (const qint64 step = stepFor(clockSteps, length, most, 1))
        return evenTicks(range, step);
    if (const qint64 step = stepFor(daySteps, length, most, 1))
        return evenTicks(range, step);
    if (const qint64 step = stepFor(monthSteps, length, most, averageMonth))
        return monthTicks(range, static_cast<int>(step));
    return yearTicks(range,
                     std::max(1, static_cast<int>(roundStep(length / (12 * averageMonth) / most))));
}

QString dateText(qint64 time)
{
    return wallDate(time).toString(shownDateFormat(QLocale()));
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
