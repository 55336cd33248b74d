// SPDX-License-Identifier: MIT
#pragma once

#include "barspacing.h"
#include "dateorder.h"
#include "filebars.h"
#include "importcheck.h"
#include "timesofday.h"

#include <map>

namespace tadata {

/// The bars that a file has of one day.
struct DayInFile
{
    qint64 bars = 0;
    qint64 firstLine = 0;
    TimesOfDay times = {};
};

/// The second of the day of a bar's time, as the store has it.
inline int secondOf(const QTime& time)
{
    constexpr int perSecond = 1000;
    return time.msecsSinceStartOfDay() / perSecond;
}

/// Goes through the lines of a file and finds what is wrong or odd in them. One thread at a time.
class FileReview final
{
public:
    /// Lists so many problems at most.
    FileReview(const ImportDetails& details, ImportMode mode, qint64 maxProblems);

    void takeBad(const FileLine& line);
    /// What the file has of the bar's day, the bar included. Stays where it is.
    DayInFile& takeBar(const FileLine& line);
    /// Whether the last bar was the first of a run of its day.
    bool hasBegunRun() const { return m_hasBegunRun; }

    /// Puts what was found into the check.
    void finish(ImportCheck* check);

private:
    void add(ProblemKind kind, const FileLine& line);
    void add(FileProblem problem);
    void beginRun(const FileLine& line);
    void lookAtTime(const FileLine& line);
    void lookAtBar(const FileLine& line);

    int m_timeframe;
    ImportMode m_mode;
    qint64 m_maxProblems;
    std::map<QDate, DayInFile> m_days;
    DayInFile* m_day = nullptr; ///< of the last bar, whose key is the next two
    QDate m_date;
    int m_second = 0;
    bool m_hasBegunRun = false;
    BarSpacing m_spacing;
    DateOrder m_dates;
    qint64 m_bars = 0;
    qint64 m_badLines = 0;
    std::vector<FileProblem> m_problems;
    std::array<qint64, problemKinds> m_counts{};
};

} // namespace tadata
