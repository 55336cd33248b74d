// SPDX-License-Identifier: MIT
#pragma once

#include "json.h"

#include <QtCore/QDate>
#include <QtCore/QList>
#include <QtCore/QString>

#include <vector>

/// What is known of the health of stored series. Plain values; times are seconds since midnight.
namespace tadata {

/// Usual times, neighbours among the usual ones, at none of which the day has a bar.
struct Gap
{
    int bars = 0; ///< that are missing
    int from = 0;
    int to = 0;           ///< the last one that is missing
    int unusual = 0;      ///< times between them, not usual ones, at which there is a bar
    bool isQuiet = false; ///< no other series of the board has a bar in it

    bool operator==(const Gap& other) const = default;
};

/// What came of one day file.
struct DayHealth
{
    QDate day;
    int bars = 0; ///< lines that are bars
    int edited = 0;
    int duplicates = 0; ///< bars beyond the first of a time
    int outOfOrder = 0; ///< bars before the time of the bar before
    int prices = 0;     ///< bars whose high is not the highest or whose low is not the lowest
    int volume = 0;     ///< bars with more pieces than charts and exports take
    int expected = 0;   ///< usual times
    int missing = 0;    ///< those at which there is no bar
    std::vector<int> badLines; ///< numbers, from 1
    std::vector<int> jumps;    ///< the times of bars that open far from the close before
    std::vector<Gap> gaps;     ///< ascending

    bool hasGap() const;
    /// The missing bars for which the quiet of the board is no reason.
    int lacking() const;
    bool isWrong() const;
};

/// One series at one timeframe. The lists of days are ascending.
struct SeriesHealth
{
    QString series; ///< "VENUE/BOARD/SECURITY"
    int timeframe = 0;
    QDate first; ///< not valid where there is no day
    QDate last;
    std::vector<DayHealth> days;
    // Days without a file at which one would be expected:
    QList<QDate> missingDays; ///< another series of the board has the day
    QList<QDate> closed;      ///< none of those that might have it has
    QList<QDate> unproven;    ///< there is no other that might
    // The bars to be expected on all missing days, as a fraction.
    Wide missedBars = 0;
    Wide missedParts = 1;

    qint64 bars() const;
    bool isWrong() const;
};

/// The share of the expected bars that are there, with four digits after the point.
QString coverageOf(const DayHealth& day);
QString coverageOf(const SeriesHealth& series);

} // namespace tadata
