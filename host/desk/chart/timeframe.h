// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>
#include <QtCore/QList>

#include <array>
#include <optional>

/// The timeframes at which a chart can be shown. Any thread.
namespace vexdesk {

/// From the shortest to the longest. Each of those up to the day is a part of the next one.
enum class Timeframe : int {
    Second,
    Minute,
    Minutes5,
    Minutes10,
    Minutes30,
    Hour,
    Day,
    Week,
    Month
};

inline constexpr std::array allTimeframes{
    Timeframe::Second,    Timeframe::Minute,    Timeframe::Minutes5,
    Timeframe::Minutes10, Timeframe::Minutes30, Timeframe::Hour,
    Timeframe::Day,       Timeframe::Week,      Timeframe::Month};
/// Those below the day come first in allTimeframes.
constexpr int timeframesBelowDay = static_cast<int>(Timeframe::Day);

constexpr bool isBelowDay(Timeframe timeframe)
{
    return timeframe < Timeframe::Day;
}

/// Its length in seconds; 0 for weeks and months, which are made of days.
constexpr int secondsOf(Timeframe timeframe)
{
    constexpr std::array seconds{1, 60, 300, 600, 1800, 3600, 86400, 0, 0};
    return seconds[static_cast<size_t>(timeframe)];
}

/// Of the stored timeframes, in seconds, the one from which bars of `timeframe` are made: the
/// longest of which it is a multiple. Weeks and months are made of what days are made of.
std::optional<int> sourceOf(Timeframe timeframe, const QList<int>& stored);

/// The first day of the day, week (a Monday) or month that a day is in, and the first one after it.
QDate periodBegin(const QDate& day, Timeframe timeframe);
QDate periodEnd(const QDate& day, Timeframe timeframe);

} // namespace vexdesk
