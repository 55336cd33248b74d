// SPDX-License-Identifier: MIT
#include "boardhealth.h"

#include "missingdays.h"
#include "nearest.h"
#include "usualtimes.h"

#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QHash>

#include <algorithm>
#include <array>
#include <utility>

namespace tadata {

namespace {

// At what times of a day a board has bars.
class DayOfBoard final
{
public:
    void add(const DayFile& file)
    {
        m_isKnown = m_isKnown && !file.failure;
        m_severalTimes.unite(m_times.common(file.times));
        m_times.unite(file.times);
    }

    // Whether another series than the one that has the gap may have a bar in it.
    bool hasOtherBars(const Gap& gap) const
    {
        return !m_isKnown || m_times.countWithin(gap.from, gap.to) > gap.unusual ||
               m_severalTimes.countWithin(gap.from, gap.to) > 0;
    }

private:
    TimesOfDay m_times;
    TimesOfDay m_severalTimes; // of more than one series
    bool m_isKnown = true;     // whether all could be read
};

Wide greatestCommonDivisor(Wide left, Wide right)
{
    while (right != 0)
        left = std::exchange(right, left % right);
    return left;
}

// Each missing day counts with the average of its weekday, over all days that are stored.
void addMissedBars(SeriesHealth& health)
{
    struct Weekday
    {
        int days = 0;
        int expected = 0;
        int missing = 0;
    };
    std::array<Weekday, daysOfWeek> weekdays;
    const auto weekdayOf = [&weekdays](const QDate& day) -> Weekday& {
        return weekdays[static_cast<size_t>(day.dayOfWeek() - 1)];
    };
    for (const DayHealth& day : health.days) {
        ++weekdayOf(day.day).days;
        weekdayOf(day.day).expected += day.expected;
    }
    for (const QDate& day : std::as_const(health.missingDays))
        ++weekdayOf(day).missing;
    for (const Weekday& weekday : weekdays) {
        if (weekday.days == 0)
            continue;
        const Wide parts = health.missedParts * weekday.days;
        const Wide bars = health.missedBars * weekday.days +
                          Wide(weekday.missing) * weekday.expected * health.missedParts;
        const Wide divisor = greatestCommonDivisor(bars, parts);
        health.missedBars = bars / divisor;
        health.missedParts = parts / divisor;
    }
}

class BoardReader final
{
public:
    BoardReader(const std::vector<BoardSeries>& series, int timeframe, const HealthScope& scope,
                const std::function<void()>& dayDone, const std::atomic<bool>* stop)
        : m_series(series)
        , m_timeframe(timeframe)
        , m_scope(scope)
        , m_dayDone(dayDone)
        , m_stop(stop)
    {
        for (const BoardSeries& one : series)
            m_days.add(one.days);
    }

    BoardHealth read()
    {
        BoardHealth board;
        for (const BoardSeries& series : m_series) {
            if (!series.isAsked || isStopped())
                continue;
            const size_t failures = m_unread.size();
            SeriesHealth health = readSeries(series);
            if (m_unread.size() == failures)
                board.series.push_back(std::move(health));
        }
        for (const BoardSeries& series : m_series) {
            if (!series.isAsked)
                lookAt(series, board.series);
        }
        for (SeriesHealth& health : board.series)
            tellQuietGaps(health);
        board.unread = std::move(m_unread);
        return board;
    }

private:
    SeriesHealth readSeries(const BoardSeries& series);
    void readWeekday(const BoardSeries& series, const std::vector<size_t>& days,
                     SeriesHealth& health);
    DayFile readDay(const BoardSeries& series, const QDate& day);
    void lookAt(const BoardSeries& series, const std::vector<SeriesHealth>& asked);
    void tellQuietGaps(SeriesHealth& health) const;
    void tellMissingDays(const BoardSeries& series, SeriesHealth& health) const;
    bool isStopped() const { return m_stop && *m_stop; }
    bool isTold(const QDate& day) const
    {
        return (!m_scope.from.isValid() || day >= m_scope.from) &&
               (!m_scope.to.isValid() || day <= m_scope.to);
    }

    const std::vector<BoardSeries>& m_series;
    int m_timeframe;
    const HealthScope& m_scope;
    const std::function<void()>& m_dayDone;
    const std::atomic<bool>* m_stop;
    BoardDays m_days;
    QHash<QDate, DayOfBoard> m_times; // where there are several series
    std::vector<UnreadFile> m_unread;
};

SeriesHealth BoardReader::readSeries(const BoardSeries& series)
{
    SeriesHealth health;
    health.series = series.name;
    health.timeframe = m_timeframe;
    health.days.resize(series.days.size());
    std::array<std::vector<size_t>, daysOfWeek> weekdays;
    for (size_t day = 0; day < series.days.size(); ++day)
        weekdays[static_cast<size_t>(series.days[day].dayOfWeek() - 1)].push_back(day);
    // One weekday after the other: only one of them has to be kept.
    for (const std::vector<size_t>& days : weekdays)
        readWeekday(series, days, health);
    // What could not be read, or was not before a stop, has no date.
    std::erase_if(health.days, [](const DayHealth& day) { return !day.day.isValid(); });
    if (!series.days.empty()) {
        health.first = series.days.front();
        health.last = series.days.back();
    }
    tellMissingDays(series, health);
    health.days.erase(std::remove_if(health.days.begin(), health.days.end(),
                                     [this](const DayHealth& day) { return !isTold(day.day); }),
                      health.days.end());
    return health;
}

void BoardReader::readWeekday(const BoardSeries& series, const std::vector<size_t>& days,
                              SeriesHealth& health)
{
    std::vector<QDate> dates;
    dates.reserve(days.size());
    for (const size_t day : days)
        dates.push_back(series.days[day]);
    UsualTimes usual(std::move(dates), m_scope.gap);
    for (const size_t day : days) {
        if (isStopped())
            return;
        for (int wanted = usual.wanted(); wanted >= 0; wanted = usual.wanted()) {
            const size_t read = days[static_cast<size_t>(wanted)];
            DayFile file = readDay(series, series.days[read]);
            health.days[read] = std::move(file.health);
            usual.add(m_timeframe == vexdesk::minuteTimeframe ? std::move(file.times)
                                                              : TimesOfDay());
            m_dayDone();
        }
        usual.judge(health.days[day]);
    }
}

DayFile BoardReader::readDay(const BoardSeries& series, const QDate& day)
{
    const QString path = series.dir.filePath(vexdesk::dayFileName(day, m_timeframe));
    DayFile file = readDayFile(path, day, m_scope.jumpPercent);
    if (file.failure)
        m_unread.push_back(*file.failure);
    if (m_series.size() > 1 && m_timeframe == vexdesk::minuteTimeframe)
        m_times[day].add(file);
    return file;
}

// Of those that are not asked for, only the days are read on which somebody has a gap.
void BoardReader::lookAt(const BoardSeries& series, const std::vector<SeriesHealth>& asked)
{
    std::vector<QDate> days;
    for (const SeriesHealth& health : asked) {
        for (const DayHealth& day : health.days) {
            if (!day.gaps.empty())
                days.push_back(day.day);
        }
    }
    std::sort(days.begin(), days.end());
    days.erase(std::unique(days.begin(), days.end()), days.end());
    for (const QDate& day : days) {
        if (isStopped())
            return;
        if (std::binary_search(series.days.begin(), series.days.end(), day))
            readDay(series, day);
    }
}

void BoardReader::tellQuietGaps(SeriesHealth& health) const
{
    for (DayHealth& day : health.days) {
        // The series itself is one of those with the day.
        if (day.gaps.empty() || m_days.seriesWith(day.day) < 2)
            continue;
        const auto times = m_times.constFind(day.day);
        for (Gap& gap : day.gaps)
            gap.isQuiet = times != m_times.constEnd() && !times->hasOtherBars(gap);
    }
}

void BoardReader::tellMissingDays(const BoardSeries& series, SeriesHealth& health) const
{
    const MissingDays found = missingDays(series.days, m_days);
    const auto told = [this](QList<QDate> days) {
        days.removeIf([this](const QDate& day) { return !isTold(day); });
        return days;
    };
    health.missingDays = told(found.missing);
    health.closed = told(found.closed);
    health.unproven = told(found.unproven);
    addMissedBars(health);
}

} // namespace

BoardHealth boardHealth(const std::vector<BoardSeries>& series, int timeframe,
                        const HealthScope& scope, const std::function<void()>& dayDone,
                        const std::atomic<bool>* stop)
{
    return BoardReader(series, timeframe, scope, dayDone, stop).read();
}

} // namespace tadata
