// SPDX-License-Identifier: MIT
#include "missingdays.h"

#include "nearest.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace tadata {

namespace {

// Whether the dates of a weekday between the first and the last day have files by habit.
class WeekdayHabit final
{
public:
    WeekdayHabit(const std::vector<QDate>& days, QDate date)
    {
        auto day = days.begin();
        for (; date <= days.back(); date = date.addDays(daysOfWeek)) {
            day = std::lower_bound(day, days.end(), date);
            m_filesBefore.push_back(m_filesBefore.back() + (*day == date ? 1 : 0));
        }
    }

    // The nearest other dates lie evenly around it, as far as there are any. The date itself has no
    // file.
    bool wants(int week) const
    {
        const int others = static_cast<int>(m_filesBefore.size()) - 2;
        const int near = std::min(others, mostNeighbours);
        if (near < fewestNeighbours)
            return false;
        const int begin = std::clamp(week - mostNeighbours / 2, 0, others - near);
        return filesBefore(begin + near + 1) - filesBefore(begin) >= habitOf(near);
    }

private:
    int filesBefore(int week) const { return m_filesBefore[static_cast<size_t>(week)]; }

    std::vector<int> m_filesBefore{0};
};

} // namespace

void BoardDays::add(const std::vector<QDate>& days)
{
    if (days.empty())
        return;
    for (const QDate& day : days)
        ++m_series[day];
    m_spans.push_back({days.front(), days.back()});
}

int BoardDays::seriesWith(const QDate& day) const
{
    return m_series.value(day);
}

int BoardDays::seriesAround(const QDate& day) const
{
    return static_cast<int>(std::count_if(m_spans.begin(), m_spans.end(), [&](const Span& span) {
        return span.first <= day && day <= span.last;
    }));
}

MissingDays missingDays(const std::vector<QDate>& days, const BoardDays& board)
{
    MissingDays found;
    if (days.empty())
        return found;
    std::vector<WeekdayHabit> habits;
    habits.reserve(daysOfWeek);
    for (int day = 0; day < daysOfWeek; ++day)
        habits.emplace_back(days, days.front().addDays(day));
    auto next = days.begin();
    for (QDate date = days.front(); date < days.back(); date = date.addDays(1)) {
        if (*next == date) {
            ++next;
            continue;
        }
        const auto distance = static_cast<int>(days.front().daysTo(date));
        if (board.seriesWith(date) > 0)
            found.missing.append(date);
        else if (!habits[static_cast<size_t>(distance % daysOfWeek)].wants(distance / daysOfWeek))
            continue;
        else if (board.seriesAround(date) > 1) // the series itself is one of them
            found.closed.append(date);
        else
            found.unproven.append(date);
    }
    return found;
}

} // namespace tadata
