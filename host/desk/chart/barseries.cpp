// SPDX-License-Identifier: MIT
#include "desk/chart/barseries.h"

#include "desk/chart/wallclock.h"

#include <vexdesk/history/barinterval.h>

#include <algorithm>

namespace vexdesk {

BarSeries::BarSeries(int timeframe, std::vector<SeriesDay> days, const BarSeries* before)
    : m_timeframe(timeframe)
    , m_days(std::move(days))
{
    learnFacts(before);
    learnToGuess();
    for (size_t i = 0; i < m_days.size(); ++i) {
        if (m_facts[i].isRead ? m_facts[i].count > 0 : m_days[i].bytes > 0)
            m_isEmpty = false;
        m_decimals = std::max(m_decimals, m_facts[i].decimals);
    }
}

BarSeries::Facts BarSeries::factsOf(const SeriesDay& day)
{
    Facts facts;
    if (!day.summary)
        return facts;
    const DaySummary& summary = *day.summary;
    facts.candles = summary.candles;
    facts.count = static_cast<int>(summary.count);
    facts.decimals = summary.decimals;
    facts.lastSecond = summary.lastSecond;
    facts.isRead = true;
    facts.hasMidnight = summary.midnight.has_value();
    facts.hasRest = summary.rest.has_value();
    return facts;
}

void BarSeries::learnFacts(const BarSeries* before)
{
    static const BarSeries nothing;
    const BarSeries& known = before ? *before : nothing;
    m_facts.reserve(m_days.size());
    size_t at = 0;
    for (const SeriesDay& day : m_days) {
        while (at < known.m_days.size() && known.m_days[at].day < day.day)
            ++at;
        const bool isSame = at < known.m_days.size() && known.m_days[at].day == day.day &&
                            known.m_days[at].summary == day.summary;
        m_facts.push_back(isSame ? known.m_facts[at] : factsOf(day));
    }
}

// As many to a byte as in the files that were read.
void BarSeries::learnToGuess()
{
    std::array<qint64, timeframesBelowDay> candles{};
    qint64 bytes = 0;
    for (size_t i = 0; i < m_days.size(); ++i) {
        if (m_facts[i].count == 0)
            continue;
        bytes += m_days[i].bytes;
        for (size_t t = 0; t < candles.size(); ++t)
            candles[t] += m_facts[i].candles[t];
    }
    for (size_t t = 0; t < candles.size(); ++t) {
        constexpr double usualLine = 48; // bytes
        const double length = std::max(m_timeframe, secondsOf(allTimeframes[t]));
        m_candlesPerByte[t] = bytes > 0
                                  ? static_cast<double>(candles[t]) / static_cast<double>(bytes)
                                  : m_timeframe / length / usualLine;
    }
}

BarSeries::Guess BarSeries::guessFor(Timeframe timeframe) const
{
    if (!isBelowDay(timeframe))
        return {0, 1};
    return {m_candlesPerByte[static_cast<size_t>(timeframe)],
            static_cast<int>(secondsPerDay / secondsOf(timeframe))};
}

int BarSeries::Guess::of(qint64 bytes) const
{
    if (bytes == 0)
        return 0;
    const double candles = static_cast<double>(bytes) * perByte + 0.5;
    return candles >= most ? most : std::max(1, static_cast<int>(candles));
}

qsizetype BarSeries::indexFrom(const QDate& day) const
{
    const auto found = std::partition_point(m_days.begin(), m_days.end(),
                                            [day](const SeriesDay& one) { return one.day < day; });
    return found - m_days.begin();
}

int BarSeries::candlesOf(qsizetype day, Timeframe timeframe) const
{
    if (timeframe > Timeframe::Day)
        return static_cast<int>(periodsFrom(day, timeframe).size());
    const Facts& facts = factsAt(day);
    if (!facts.isRead)
        return guessFor(timeframe).of(m_days[static_cast<size_t>(day)].bytes);
    const int own = facts.hasMidnight && !endsDayBefore(day, timeframe) ? 1 : 0;
    const int rest = facts.hasRest ? 1 : 0;
    if (timeframe == Timeframe::Day)
        return areDays() ? std::max(own, rest) : own + rest;
    return own + facts.candles[static_cast<size_t>(timeframe)];
}

std::vector<qint64> BarSeries::candlesBefore(Timeframe timeframe) const
{
    std::vector<qint64> counts{0};
    counts.reserve(m_days.size() + 1);
    QDate end; // of the week or month that has begun
    const Timeframe upToDay = std::min(timeframe, Timeframe::Day);
    const Guess guess = guessFor(upToDay);
    for (size_t i = 0; i < m_days.size(); ++i) {
        const Facts& facts = m_facts[i];
        int count = 0;
        if (!facts.isRead)
            count = guess.of(m_days[i].bytes);
        else if (facts.hasMidnight)
            count = candlesOf(static_cast<qsizetype>(i), upToDay);
        else if (upToDay == Timeframe::Day)
            count = facts.hasRest ? 1 : 0;
        else
            count = facts.candles[static_cast<size_t>(upToDay)];
        if (timeframe > Timeframe::Day && count > 0) {
            count = 0;
            for (const QDate& date : datesOf(static_cast<qsizetype>(i))) {
                if (end.isValid() && date < end)
                    continue;
                end = periodEnd(date, timeframe);
                ++count;
            }
        }
        counts.push_back(counts.back() + count);
    }
    return counts;
}

bool BarSeries::endsDayBefore(qsizetype day, Timeframe timeframe) const
{
    if (day == 0 || !factsAt(day).hasMidnight ||
        m_days[static_cast<size_t>(day - 1)].day.addDays(1) != m_days[static_cast<size_t>(day)].day)
        return false;
    // A day has its place before it is read, and they are what is known of it.
    if (!factsAt(day - 1).isRead)
        return !isBelowDay(timeframe) && !areDays() &&
               m_days[static_cast<size_t>(day - 1)].bytes > 0;
    if (!factsAt(day - 1).hasRest)
        return false;
    constexpr int msecs = 1000;
    const int seconds = secondsOf(std::min(timeframe, Timeframe::Day));
    return intervalEnd(factsAt(day - 1).lastSecond * msecs, seconds) == secondsPerDay;
}

// Of the candles of days that begin with a day: bars at midnight that end nothing stored stand at
// the day before.
QList<QDate> BarSeries::datesOf(qsizetype day) const
{
    const QDate& own = m_days[static_cast<size_t>(day)].day;
    const Facts& facts = factsAt(day);
    if (!facts.isRead || areDays())
        return candlesOf(day, Timeframe::Day) > 0 ? QList<QDate>{own} : QList<QDate>();
    QList<QDate> dates;
    if (facts.hasMidnight && !endsDayBefore(day, Timeframe::Day))
        dates.append(own.addDays(-1));
    if (facts.hasRest)
        dates.append(own);
    return dates;
}

QList<QDate> BarSeries::periodsFrom(qsizetype day, Timeframe timeframe) const
{
    QList<QDate> begins;
    QDate end; // of the week or month that has begun
    for (const QDate& date : datesOf(day)) {
        if (end.isValid() ? date >= end : isFirstOfPeriod(day, date, timeframe))
            begins.append(date);
        end = periodEnd(date, timeframe);
    }
    return begins;
}

// Of the dates of candles of days, of which this one is the first of its day.
bool BarSeries::isFirstOfPeriod(qsizetype day, const QDate& date, Timeframe timeframe) const
{
    const QDate begin = periodBegin(date, timeframe);
    for (qsizetype i = day - 1; i >= 0 && m_days[static_cast<size_t>(i)].day >= begin; --i) {
        const QList<QDate> dates = datesOf(i);
        if (!dates.isEmpty())
            return dates.constLast() < begin;
    }
    return true;
}

} // namespace vexdesk
