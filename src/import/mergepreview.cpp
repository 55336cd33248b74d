// SPDX-License-Identifier: MIT
#include "mergepreview.h"

#include "dayvalues.h"
#include "daywriter.h"
#include "importfailures.h"

#include <vexdesk/history/dayfilenames.h>

#include <algorithm>

namespace tadata {

using vexdesk::Outcome;
using vexdesk::Result;

MergePreview::MergePreview(const QString& input, const ImportDetails& details,
                           const ImportWays& ways, const QDir& dir, const QString& ticker,
                           bool countsBars, StoredDay* room, const std::atomic<bool>* stop)
    : m_input(input)
    , m_details(details)
    , m_ways(ways)
    , m_dir(dir)
    , m_ticker(ticker)
    , m_countsBars(countsBars)
    , m_stored(room)
    , m_stop(stop)
{}

Outcome MergePreview::take(const FileLine& line, const DayInFile& day, bool beginsRun)
{
    if (beginsRun) {
        if (Outcome begun = beginRun(line.bar.date, day); !begun)
            return begun;
    }
    if (m_isCollecting)
        m_run.add(line.bar);
    return Outcome();
}

// What a file has of one day mostly stands together. A day that comes again waits for the end.
Outcome MergePreview::beginRun(const QDate& date, const DayInFile& file)
{
    if (Outcome ended = endRun(); !ended)
        return ended;
    const auto [place, isNew] = m_days.try_emplace(date);
    place->second.file = &file;
    place->second.comesAgain = !isNew;
    m_date = date;
    m_isCollecting = isNew;
    return Outcome();
}

Outcome MergePreview::endRun()
{
    if (!m_isCollecting)
        return Outcome();
    m_isCollecting = false;
    const Outcome looked = lookAt(m_date, m_run);
    m_run.clear();
    return looked;
}

Result<std::vector<CheckedDay>> MergePreview::finish()
{
    if (stop())
        return std::vector<CheckedDay>();
    if (const Outcome ended = endRun(); !ended)
        return ended.failure();
    if (const Outcome looked = lookAtDaysThatComeAgain(); !looked)
        return looked.failure();
    // An import reads all days before it adds anything up.
    if (stopAtFirst(&Day::badLine) || stopAtFirst(&Day::wrongSum))
        return std::vector<CheckedDay>();
    std::vector<CheckedDay> days;
    for (const auto& [date, day] : m_days) {
        days.push_back(day.after);
        days.back().bars = day.file->bars;
    }
    return days;
}

bool MergePreview::stopAtFirst(QString Day::*fault)
{
    const auto day = std::find_if(m_days.begin(), m_days.end(), [fault](const auto& one) {
        return !(one.second.*fault).isNull();
    });
    if (day == m_days.end())
        return false;
    stopAt(day->second.file->firstLine, day->second.*fault, fault == &Day::badLine);
    return true;
}

// In groups of as many days as may be in memory, for each of which the file is read once more.
Outcome MergePreview::lookAtDaysThatComeAgain()
{
    constexpr qint64 mostBars = 300'000;
    Group group;
    qint64 bars = 0;
    for (const auto& [date, day] : m_days) {
        if (!day.comesAgain)
            continue;
        if (bars > 0 && bars + day.file->bars > mostBars) {
            if (Outcome looked = lookAt(group); !looked)
                return looked;
            group.clear();
            bars = 0;
        }
        group.try_emplace(date);
        bars += day.file->bars;
    }
    return group.empty() ? Outcome() : lookAt(group);
}

Outcome MergePreview::lookAt(Group& group)
{
    if (Outcome collected = collect(group); !collected)
        return collected;
    for (const auto& [date, bars] : group) {
        if (Outcome looked = lookAt(date, bars); !looked)
            return looked;
    }
    return Outcome();
}

Outcome MergePreview::collect(Group& group) const
{
    FileBars bars(m_input, m_details, m_ways.clock);
    if (!bars.open())
        return cannotOpen(m_input);
    FileLine line;
    auto day = group.end();
    while (bars.next(&line)) {
        if (m_stop && m_stop->load(std::memory_order_relaxed))
            return interrupted();
        if (line.isBad() || line.ticker != m_ticker)
            continue;
        if (day == group.end() || day->first != line.bar.date)
            day = group.find(line.bar.date);
        if (day != group.end())
            day->second.add(line.bar);
    }
    if (Outcome read = bars.outcome(); !read)
        return read;
    return bars.isChanged() ? hasChanged(m_input) : Outcome();
}

Outcome MergePreview::lookAt(const QDate& date, const FileDay& bars)
{
    const QString path = m_dir.filePath(vexdesk::dayFileName(date, m_details.timeframe));
    if (Outcome read = m_stored->read(path, date); !read)
        return read;
    Day& day = m_days.at(date);
    day = {.file = day.file, .comesAgain = day.comesAgain};
    if (m_stored->firstBadLine() > 0) {
        day.badLine = wrongStoredLine(path, m_stored->firstBadLine()).message;
        return Outcome();
    }
    const MergedDay merged = mergedDay(*m_stored, bars, m_ways.mode);
    day.after.day = date;
    day.after.stored = static_cast<int>(m_stored->keyCount());
    day.after.result = static_cast<int>(merged.keyCount);
    if (merged.isSame) {
        day.after.outcome = CheckedDay::Outcome::Same;
    } else if (m_stored->state()) {
        day.after.outcome = CheckedDay::Outcome::Merged;
        if (m_countsBars)
            lookAtBars(merged.content, day.after);
    } else {
        day.after.added = day.after.result;
    }
    if (!merged.isSame && m_details.timeframe == vexdesk::secondTimeframe)
        lookAtSums(merged.content, day);
    return Outcome();
}

void MergePreview::lookAtBars(const QByteArray& content, CheckedDay& day) const
{
    DayValues before;
    for (const DayLine& line : m_stored->lines())
        before.add(m_stored->textOf(line), day.day);
    DayValues after;
    after.addLines(content, day.day);
    const DayChange change = before.changeTo(after);
    day.added = change.added;
    day.replaced = change.replaced;
}

// Of the minutes that would be derived.
void MergePreview::lookAtSums(const QByteArray& content, Day& day)
{
    try {
        derivedMinutes(content);
    } catch (const QString& message) {
        day.wrongSum = wrongLine(day.file->firstLine, message).message;
    }
}

} // namespace tadata
