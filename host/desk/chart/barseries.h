// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/daybars.h"
#include "desk/chart/daysummary.h"
#include "desk/chart/timeframe.h"

#include <vexdesk/outcome.h>

#include <QtCore/QDate>
#include <QtCore/QList>

#include <array>
#include <memory>
#include <vector>

namespace vexdesk {

/// A day for which the series has a file.
struct SeriesDay
{
    QDate day;
    qint64 bytes = 0; ///< of the file
    /// Null as long as the file was not read.
    std::shared_ptr<const DaySummary> summary;
    /// Null while they are not in memory, and where there are none; never without the summary.
    std::shared_ptr<const DayBars> bars;
    /// Why the file could not be read when it was read last, without its name. The summary may be
    /// there nevertheless, where it could be read before.
    Outcome reading = {};

    bool operator==(const SeriesDay&) const = default;
};

/// A series at one stored timeframe as far as it was read: a snapshot, which is made anew when more
/// of it is known. Never changed once it is made: any thread.
class BarSeries final
{
public:
    BarSeries() = default;
    /// `timeframe` is that of the files, in seconds. The days in their order, each once. Of
    /// `before`, which may be null, is taken over what is known of the days that are the same: only
    /// the others are looked at.
    BarSeries(int timeframe, std::vector<SeriesDay> days, const BarSeries* before = nullptr);

    int timeframe() const { return m_timeframe; }
    /// Whether the bars are whole days, or longer: those at midnight are of the day that begins.
    bool areDays() const { return m_timeframe >= secondsOf(Timeframe::Day); }
    const std::vector<SeriesDay>& days() const { return m_days; }
    /// Whether no day has bars, and none that was not read can have any.
    bool isEmpty() const { return m_isEmpty; }
    /// The first day that is not before this one, the count of days when there is none.
    qsizetype indexFrom(const QDate& day) const;
    /// The digits after the point of the price that has most of them, of those that were read.
    int decimals() const { return m_decimals; }

    /// How many candles begin with this day. Below the day: those of its file, exact where it was
    /// read and else a guess by the size of the file. Of days one; two where the bars at midnight
    /// end a day that has no other bars. Of weeks and months one for each that begins with a candle
    /// of these.
    int candlesOf(qsizetype day, Timeframe timeframe) const;
    /// How many candles begin with the days before each of them, and with all days.
    std::vector<qint64> candlesBefore(Timeframe timeframe) const;
    /// Whether the bars at midnight with which a day's file begins are part of the last candle of
    /// the day before: that is stored, and its last interval ends at this midnight. From the day on
    /// also where the day before was not read.
    bool endsDayBefore(qsizetype day, Timeframe timeframe) const;
    /// The dates of the candles of days that begin with this day, at which weeks or months begin.
    QList<QDate> periodsFrom(qsizetype day, Timeframe timeframe) const;

private:
    // What is asked of all days at once lies side by side, and not in the summaries: with many days
    // it is the way to them that takes time.
    struct Facts
    {
        std::array<int, timeframesBelowDay> candles{};
        int count = 0; // of bars
        int decimals = 0;
        int lastSecond = 0;
        bool isRead = false;
        bool hasMidnight = false;
        bool hasRest = false;
    };

    // How many candles a file that was not read may have.
    struct Guess
    {
        double perByte = 0;
        int most = 0;

        int of(qint64 bytes) const;
    };

    static Facts factsOf(const SeriesDay& day);
    void learnFacts(const BarSeries* before);
    void learnToGuess();
    const Facts& factsAt(qsizetype day) const { return m_facts[static_cast<size_t>(day)]; }
    Guess guessFor(Timeframe timeframe) const;
    QList<QDate> datesOf(qsizetype day) const;
    bool isFirstOfPeriod(qsizetype day, const QDate& date, Timeframe timeframe) const;

    int m_timeframe = 0;
    std::vector<SeriesDay> m_days;
    std::vector<Facts> m_facts; // of each day
    std::array<double, timeframesBelowDay> m_candlesPerByte{};
    int m_decimals = 0;
    bool m_isEmpty = true;
};

} // namespace vexdesk
