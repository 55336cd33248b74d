// SPDX-License-Identifier: MIT
#pragma once

#include "dayspreview.h"
#include "dayvalues.h"
#include "filecomparison.h"
#include "minutebuilder.h"

namespace tadata {

/// An import that replaces a day each time its file comes to it.
class ReplacePreview final : public DaysPreview
{
public:
    /// Compares the bars of days if they are to be counted, see CheckedSeries::countsBars.
    ReplacePreview(const QDir& dir, int timeframe, bool countsBars);

    vexdesk::Outcome take(const FileLine& line, const DayInFile& day, bool beginsRun) override;
    vexdesk::Result<std::vector<CheckedDay>> finish() override;

private:
    struct Day
    {
        const DayInFile* file = nullptr;
        bool isStored = false;
        bool isSame = false; ///< the last run is what is stored
        /// The times of the last run; none while it is the only one.
        std::optional<TimesOfDay> lastRun = {};
        qint64 linesBefore = 0; ///< of the runs before it
        /// The times of what is stored, and what the last run makes of its bars; where that is
        /// something else.
        TimesOfDay stored = {};
        DayChange change = {};
    };

    vexdesk::Outcome beginRun(const QDate& date, const DayInFile& file);
    vexdesk::Outcome endRun();
    vexdesk::Outcome lookAtTimes();
    vexdesk::Outcome lookAtBars();
    static CheckedDay dayAfter(const QDate& date, const Day& day);
    void addToMinutes(const FileLine& line);
    QString pathOf(const QDate& date) const;

    QDir m_dir;
    int m_timeframe;
    bool m_countsBars;
    std::map<QDate, Day> m_days;
    Day* m_day = nullptr; ///< of the open run
    QDate m_date;         ///< likewise
    FileComparison m_comparison;
    DayValues m_values; ///< of the open run, where its day is stored
    MinuteBuilder m_minutes;
};

} // namespace tadata
