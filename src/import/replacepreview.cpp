// SPDX-License-Identifier: MIT
#include "replacepreview.h"

#include "importfailures.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/filestate.h>
#include <vexdesk/history/links.h>

namespace tadata {

using vexdesk::Outcome;
using vexdesk::Result;

ReplacePreview::ReplacePreview(const QDir& dir, int timeframe, bool countsBars)
    : m_dir(dir)
    , m_timeframe(timeframe)
    , m_countsBars(countsBars)
{}

Outcome ReplacePreview::take(const FileLine& line, const DayInFile& day, bool beginsRun)
{
    if (beginsRun) {
        if (Outcome begun = beginRun(line.bar.date, day); !begun)
            return begun;
    }
    if (m_day->lastRun)
        m_day->lastRun->insert(secondOf(line.bar.time));
    m_comparison.write(line.bar);
    if (m_countsBars && m_day->isStored)
        m_values.add(line.bar);
    if (m_timeframe == vexdesk::secondTimeframe)
        addToMinutes(line);
    return Outcome();
}

Outcome ReplacePreview::beginRun(const QDate& date, const DayInFile& file)
{
    if (Outcome ended = endRun(); !ended)
        return ended;
    const auto [place, isNew] = m_days.try_emplace(date);
    m_day = &place->second;
    m_date = date;
    m_values.clear();
    if (isNew) {
        m_day->file = &file;
        m_day->isStored = !vexdesk::isMissing(pathOf(date));
    } else {
        m_day->lastRun.emplace();
        m_day->linesBefore = file.bars - 1; // the first of this run is among them
    }
    return m_day->isStored ? m_comparison.open(pathOf(date)) : vexdesk::mayBeMade(pathOf(date));
}

Outcome ReplacePreview::endRun()
{
    m_minutes.take();
    if (!m_comparison.isOpen())
        return Outcome();
    const Result<bool> isSame = m_comparison.close();
    if (!isSame)
        return isSame.failure();
    m_day->isSame = *isSame;
    m_day->change = {}; // of an earlier run
    if (*isSame)
        return Outcome();
    return m_countsBars ? lookAtBars() : lookAtTimes();
}

Outcome ReplacePreview::lookAtTimes()
{
    Result<TimesOfDay> stored = storedTimes(pathOf(m_date), m_date);
    if (!stored)
        return stored.failure();
    m_day->stored = std::move(*stored);
    return Outcome();
}

Outcome ReplacePreview::lookAtBars()
{
    const Result<DayValues> stored = DayValues::ofFile(pathOf(m_date), m_date);
    if (!stored)
        return stored.failure();
    m_day->stored = stored->times();
    m_day->change = stored->changeTo(m_values);
    m_values = DayValues();
    return Outcome();
}

// Only to know where a sum does not fit: that ends an import, after the bar was written.
void ReplacePreview::addToMinutes(const FileLine& line)
{
    try {
        m_minutes.add(line.bar);
    } catch (const QString& message) {
        stopAt(line.number, wrongLine(line.number, message).message);
    }
}

Result<std::vector<CheckedDay>> ReplacePreview::finish()
{
    if (const Outcome ended = endRun(); !ended)
        return ended.failure();
    std::vector<CheckedDay> days;
    for (const auto& [date, day] : m_days)
        days.push_back(dayAfter(date, day));
    return days;
}

CheckedDay ReplacePreview::dayAfter(const QDate& date, const Day& day)
{
    TimesOfDay all = day.file->times;
    const TimesOfDay& result = day.lastRun ? *day.lastRun : day.file->times;
    CheckedDay after{.day = date, .bars = day.file->bars, .result = result.count()};
    if (day.isSame) {
        after.outcome = CheckedDay::Outcome::Same;
        after.stored = after.result;
    } else if (day.isStored) {
        after.outcome = CheckedDay::Outcome::Replaced;
        after.stored = day.stored.count();
        after.added = day.change.added;
        after.replaced = day.change.replaced;
        all.unite(day.stored);
    } else {
        after.added = after.result;
    }
    after.lost = all.count() - after.result;
    after.lostOfFile = after.lost - day.change.lost;
    after.wiped = day.linesBefore;
    return after;
}

QString ReplacePreview::pathOf(const QDate& date) const
{
    return m_dir.filePath(vexdesk::dayFileName(date, m_timeframe));
}

} // namespace tadata
