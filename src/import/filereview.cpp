// SPDX-License-Identifier: MIT
#include "filereview.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tadata {

using vexdesk::StoredBar;

namespace {

bool arePricesWrong(const StoredBar& bar)
{
    return bar.high < bar.open || bar.high < bar.low || bar.high < bar.close ||
           bar.low > bar.open || bar.low > bar.close;
}

ImportCheck::Moment momentOf(const QDate& day, int second)
{
    constexpr int perSecond = 1000;
    return {day, QTime::fromMSecsSinceStartOfDay(second * perSecond)};
}

// The first and the last time of a set that is not empty.
std::pair<int, int> endsOf(const TimesOfDay& times)
{
    std::pair ends(TimesOfDay::seconds, 0);
    times.visitSlots([&ends](int slot) {
        const int second = TimesOfDay::secondOf(slot);
        ends = {std::min(ends.first, second), std::max(ends.second, second)};
    });
    return ends;
}

} // namespace

FileReview::FileReview(const ImportDetails& details, ImportMode mode, qint64 maxProblems)
    : m_timeframe(details.timeframe)
    , m_mode(mode)
    , m_maxProblems(maxProblems)
    , m_dates(details.dateFormat)
{}

void FileReview::takeBad(const FileLine& line)
{
    ++m_badLines;
    add({.kind = ProblemKind::BadLine, .line = line.number, .text = line.error()});
}

DayInFile& FileReview::takeBar(const FileLine& line)
{
    ++m_bars;
    m_dates.add(line.writtenDate);
    m_hasBegunRun = m_date != line.bar.date;
    if (m_hasBegunRun)
        beginRun(line);
    lookAtTime(line);
    lookAtBar(line);
    ++m_day->bars;
    return *m_day;
}

void FileReview::beginRun(const FileLine& line)
{
    m_date = line.bar.date;
    m_day = &m_days[m_date];
    if (m_day->bars == 0)
        m_day->firstLine = line.number;
    else if (m_mode == ImportMode::Replace)
        add(ProblemKind::DayAgain, line);
}

void FileReview::lookAtTime(const FileLine& line)
{
    const int second = secondOf(line.bar.time);
    if (!m_hasBegunRun) {
        m_spacing.add(second - m_second);
        if (second < m_second)
            add(ProblemKind::OutOfOrder, line);
    }
    m_second = second;
    if (!m_day->times.insert(second))
        add(ProblemKind::Duplicate, line);
}

void FileReview::lookAtBar(const FileLine& line)
{
    if (arePricesWrong(line.bar))
        add(ProblemKind::Prices, line);
    if (line.bar.isRounded)
        add(ProblemKind::Rounded, line);
    if (line.bar.volume > std::numeric_limits<qint32>::max())
        add(ProblemKind::Volume, line);
    if (m_second == 0)
        add(ProblemKind::Midnight, line);
}

void FileReview::add(ProblemKind kind, const FileLine& line)
{
    add({.kind = kind, .line = line.number, .day = line.bar.date});
}

void FileReview::add(FileProblem problem)
{
    ++m_counts[static_cast<size_t>(problem.kind)];
    if (static_cast<qint64>(m_problems.size()) < m_maxProblems)
        m_problems.push_back(std::move(problem));
}

void FileReview::finish(ImportCheck* check)
{
    if (m_spacing.isStrangeFor(m_timeframe))
        add({.kind = ProblemKind::Spacing});
    if (m_dates.isWrong())
        add({.kind = ProblemKind::DateOrder});
    check->bars = m_bars;
    check->badLines = m_badLines;
    check->spacing = m_spacing.usual();
    if (!m_days.empty()) {
        const auto& [firstDay, first] = *m_days.begin();
        const auto& [lastDay, last] = *m_days.rbegin();
        check->first = momentOf(firstDay, endsOf(first.times).first);
        check->last = momentOf(lastDay, endsOf(last.times).second);
    }
    check->counts = m_counts;
    check->problems = std::move(m_problems);
}

} // namespace tadata
