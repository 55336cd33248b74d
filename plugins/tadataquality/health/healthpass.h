// SPDX-License-Identifier: MIT
#pragma once

#include "boardhealth.h"
#include "healthdigest.h"
#include "storestamps.h"

#include <QtCore/QHash>
#include <QtCore/QSet>

#include <functional>
#include <optional>

namespace tadata {

/// A stored day that could not be read: nothing is said of its series.
struct UnreadDay
{
    QString series; ///< "VENUE/BOARD/SECURITY"
    QDate day;
    QString problem; ///< a whole sentence
};

/// What is known of a board, and of which state of its files.
struct BoardKnowledge
{
    QString board;
    QHash<QString, size_t> stamps; ///< by series
    QList<SharedDigest> series;    ///< in the order of code points, minutes before seconds
    QStringList problems;          ///< files that could not be read; their series are not here
    QList<UnreadDay> unread;       ///< those of them that are days
};

/// What a look at a store found out.
struct HealthPass
{
    QSet<QString> boards; ///< all that are stored
    QStringList problems; ///< directories that could not be listed
    QString place;        ///< where locks and restore points are, or would be; null: not known
    qint64 milliseconds = 0;
};

/// Looks at a store once more and reads the boards that are not as they are known.
struct HealthPassQuery
{
    QDir root;
    std::optional<QSet<QString>> boards = {};          ///< no others are read; without: all
    QHash<QString, QHash<QString, size_t>> known = {}; ///< stamps by board and series
};

/// Each board that was read goes to `sink`, from the thread that calls. Whatever changes while it
/// is read has another stamp the next time. Any thread.
HealthPass lookAtStore(const HealthPassQuery& query, const std::atomic<bool>& stop,
                       const std::function<void(const BoardKnowledge&)>& sink,
                       const std::function<void(int percent)>& progress);

} // namespace tadata
