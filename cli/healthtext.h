// SPDX-License-Identifier: MIT
#pragma once

#include "serieshealth.h"

#include <QtCore/QDate>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

/// The health of series as people read it, in the user's language.
namespace tadata::cli {

/// Coverage, first and last day, and what is wrong, in one line without its end.
QString seriesLine(const SeriesHealth& health);

/// The worst days of all series that it is given: first those without a file, then by how much is
/// wrong.
class WorstDays final
{
public:
    void add(const SeriesHealth& health);

    /// A line for each of the worst ones, and one that says how many there are beside them. Nothing
    /// where nothing is wrong.
    QStringList lines() const;

private:
    struct Day
    {
        qint64 weight = 0;
        QString text;
    };

    void add(Day day);

    std::vector<Day> m_days; // the worst first
    qint64 m_count = 0;      // of all that were given
};

/// The days of a month as a calendar in which each has a mark for its coverage.
QString monthCalendar(const SeriesHealth& health, const QDate& month, bool inAscii);
/// What the marks mean.
QString calendarLegend(bool inAscii);

} // namespace tadata::cli
