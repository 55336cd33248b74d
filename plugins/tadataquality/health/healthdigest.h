// SPDX-License-Identifier: MIT
#pragma once

#include "healthsums.h"
#include "serieshealth.h"

#include <QtCore/QDate>
#include <QtCore/QList>
#include <QtCore/QString>

#include <memory>
#include <vector>

namespace tadata {

/// A stored day in few bytes: a store has millions.
struct DayMark
{
    qint32 julianDay = 0;
    qint32 bars = 0;
    qint32 expected = 0; ///< usual times
    qint32 lacking = 0;  ///< those at which there is no bar and no excuse

    QDate day() const { return QDate::fromJulianDay(julianDay); }
    /// Of the usual times that have bars; 0 where nothing is usual.
    double share() const
    {
        return expected == 0 ? 0 : static_cast<double>(expected - lacking) / expected;
    }
};

/// What is kept of the health of a series: all of its days in few bytes, and in full those of which
/// there is something to tell. A plain value that nobody changes once it is made.
struct SeriesDigest
{
    QString series; ///< "VENUE/BOARD/SECURITY"
    int timeframe = 0;
    QDate first;
    QDate last;
    qint64 bars = 0;
    QString coverage; ///< as reports print it; empty where too little is stored to know it
    double share = 0; ///< the same as a number, below 1 where anything lacks; 2 where not known
    bool isWrong = false;
    HealthSums sums;
    std::vector<DayMark> days;         ///< ascending
    std::vector<DayHealth> remarkable; ///< ascending
    QList<QDate> missingDays;
    QList<QDate> closed;
    QList<QDate> unproven;

    /// Null where there is no such day; of remarkable() also where there is nothing to tell.
    const DayMark* mark(const QDate& day) const;
    const DayHealth* remarks(const QDate& day) const;
    /// What makes a line of a series wrong, other than gaps, jumps and missing days.
    qint64 brokenLines() const { return sums.badLines + sums.duplicates + sums.prices; }
    /// The days to ask the broker for again, ascending: those with a gap and those without a file.
    QList<QDate> daysToAskFor() const;
    /// Whether there are any.
    bool lacksBars() const;
};

using SharedDigest = std::shared_ptr<const SeriesDigest>;

SeriesDigest digestOf(const SeriesHealth& health);

/// What to ask the broker for again: a line "SERIES TIMEFRAME DAY" for each day, as tadata prints
/// it.
QByteArray brokerList(const QList<SharedDigest>& series);

} // namespace tadata
