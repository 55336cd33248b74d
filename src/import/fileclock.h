// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/outcome.h>

#include <QtCore/QDate>
#include <QtCore/QHash>
#include <QtCore/QTime>
#include <QtCore/QTimeZone>
#include <QtCore/QVarLengthArray>

#include <optional>

/// How the dates and times that a file's bars carry become those of the store. A plain value.
struct FileClock
{
    bool stampsBegin = false; ///< bars carry the time at which they begin
    QTimeZone from = {};      ///< both zones are valid or neither is
    QTimeZone to = {};
    int shiftMinutes = 0;

    bool changesNothing() const { return !stampsBegin && !from.isValid() && shiftMinutes == 0; }
};

namespace tadata {

/// Turns what a zone's clock shows into moments and back, quickly for many times of few days.
/// Moments and clock times are in seconds, the latter as if the clock were UTC's. One thread at a
/// time.
class ZoneClock final
{
public:
    explicit ZoneClock(const QTimeZone& zone);

    /// The first moment at which the clock shows this; no value for what it skips.
    std::optional<qint64> momentOf(qint64 shown);
    /// What the clock shows at a moment.
    qint64 shownAt(qint64 moment);

private:
    /// Distances from UTC, the largest first: the earliest moment is that of the largest.
    using Offsets = QVarLengthArray<int, 3>;

    int offsetAt(qint64 moment);
    int offsetOfZone(qint64 moment) const;
    /// Those that are in force during a day of UTC.
    const Offsets& offsetsOn(qint64 day);
    /// Those that may be in force where the clock shows this day.
    const Offsets& offsetsAround(qint64 day);

    QTimeZone m_zone;
    QHash<qint64, Offsets> m_on;
    QHash<qint64, Offsets> m_around;
};

/// Gives the bars of one file their dates and times in the store: a timeframe is added to stamps of
/// beginnings, then the zones change, then the shift is added. One thread at a time.
class ClockChange final
{
public:
    ClockChange(const FileClock& clock, int timeframe);

    /// Fails, with both as they were, for a time that the clock of the first zone skips.
    vexdesk::Outcome change(QDate* date, QTime* time);

private:
    FileClock m_clock;
    int m_seconds; ///< that are added first
    ZoneClock m_from;
    ZoneClock m_to;
};

} // namespace tadata
