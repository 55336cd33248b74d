// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QList>
#include <QtCore/QTimeZone>

namespace tadata::cli {

/// A time of a day that the clocks of a zone skip, when summer begins there.
struct SkippedTime
{
    QDateTime from; ///< wall clock, as if it were UTC
    QDateTime to;   ///< the first that is shown again
};

/// Those that begin on the days from the first to the last, in the order of time.
QList<SkippedTime> skippedTimes(const QTimeZone& zone, const QDate& first, const QDate& last);

/// Whether the stored day has a bar in that time. False also for a day that is not stored or cannot
/// be read.
bool hasBarIn(const SkippedTime& skipped, const QDir& series, int timeframe);

} // namespace tadata::cli
