// SPDX-License-Identifier: MIT
#pragma once

#include "dayfaults.h"
#include "serieshealth.h"

#include <QtCore/QDate>
#include <QtCore/QDir>
#include <QtCore/QString>

#include <atomic>
#include <functional>
#include <vector>

namespace tadata {

/// How strictly bars are looked at, and which days are told of. Whatever is told, all stored days
/// are looked at.
struct HealthScope
{
    QDate from; ///< not valid for no limit
    QDate to;
    int gap = 5;          ///< the fewest missing usual times of a gap
    int jumpPercent = 10; ///< the share of the close before that an open must be away from it
};

/// A series of a board at one timeframe.
struct BoardSeries
{
    QString name; ///< "VENUE/BOARD/SECURITY"
    QDir dir;
    std::vector<QDate> days; ///< that are stored, ascending
    bool isAsked = true;     ///< otherwise it is only looked at for the sake of the others
};

/// What was found, in the order of the series. A series of which a day cannot be read is not in it:
/// nothing that is said of it could be relied on.
struct BoardHealth
{
    std::vector<SeriesHealth> series;
    std::vector<UnreadFile> unread;
};

/// Looks at all series of a board at one timeframe. Calls `dayDone` for each file of those that are
/// asked for. Memory holds what is found, the times of 21 days of one series, and of each day the
/// times that the board has. Any thread. Once `stop` is set it ends soon, and what it has found is
/// not all and not to be used.
BoardHealth boardHealth(const std::vector<BoardSeries>& series, int timeframe,
                        const HealthScope& scope, const std::function<void()>& dayDone,
                        const std::atomic<bool>* stop = nullptr);

} // namespace tadata
