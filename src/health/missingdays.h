// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>
#include <QtCore/QHash>
#include <QtCore/QList>

#include <vector>

namespace tadata {

/// The stored days of all series of a board at one timeframe. One thread at a time.
class BoardDays final
{
public:
    /// The days of one series, ascending.
    void add(const std::vector<QDate>& days);

    /// How many series have the day.
    int seriesWith(const QDate& day) const;
    /// How many have their first and last day around it, or are it.
    int seriesAround(const QDate& day) const;

private:
    struct Span
    {
        QDate first;
        QDate last;
    };

    QHash<QDate, int> m_series; // by day
    std::vector<Span> m_spans;
};

/// Days without a file on which a series should have one, ascending.
struct MissingDays
{
    QList<QDate> missing;  ///< another series of the board has the day
    QList<QDate> closed;   ///< none of the others has it
    QList<QDate> unproven; ///< there is no other at that time
};

/// Those of a series of the board that has these days, ascending. A day is missing where the habit
/// of its weekday or another series of the board wants it.
MissingDays missingDays(const std::vector<QDate>& days, const BoardDays& board);

} // namespace tadata
