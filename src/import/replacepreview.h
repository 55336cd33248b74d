// SPDX-License-Identifier: MIT
#pragma once

#include "dayspreview.h"
#include "filecomparison.h"
#include "minutebuilder.h"

namespace tadata {

/// An import that replaces a day each time its file comes to it.
class ReplacePreview final : public DaysPreview
{
public:
    ReplacePreview(const QDir& dir, int timeframe);

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
    };

    vexdesk::Outcome beginRun(const QDate& date, const DayInFile& file);
    vexdesk::Outcome endRun();
    vexdesk::Result<CheckedDay> dayAfter(const QDate& date, const Day& day) const;
    void addToMinutes(const FileLine& line);
    QString pathOf(const QDate& date) const;

    QDir m_dir;
    int m_timeframe;
    std::map<QDate, Day> m_days;
    Day* m_day = nullptr; ///< of the open run
    FileComparison m_comparison;
    MinuteBuilder m_minutes;
};

} // namespace tadata
