// SPDX-License-Identifier: MIT
#pragma once

#include "boardhealth.h"
#include "job.h"

#include <QtCore/QDir>
#include <QtCore/QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace tadata {

/// What is asked of a store.
struct HealthQuery
{
    QStringList series;           ///< "VENUE/BOARD/SECURITY"; none for all
    std::optional<int> timeframe; ///< in seconds; without it both that are stored
    HealthScope scope;
};

/// Goes through a store, board by board: its series by code point, minute bars before second bars.
/// One thread at a time, any.
class StoreHealth final
{
public:
    /// Lists the store.
    StoreHealth(const QDir& root, HealthQuery query);

    /// Series of the query that are not stored: there is nothing to read then.
    const QStringList& notStored() const { return m_notStored; }
    /// Directories that could not be listed to their end.
    const QStringList& unlisted() const { return m_unlisted; }
    /// Links that lead nowhere. Days of series that are read are among what read() returns, too.
    const QStringList& lostLinks() const { return m_lostLinks; }

    /// Gives each series that could be read to `sink` and returns what could not. A series that is
    /// stored, but not at the timeframe of the query, has no days; without series in the query only
    /// those are given that are stored at it.
    std::vector<UnreadFile> read(const std::function<void(const SeriesHealth&)>& sink,
                                 const ProgressSink& progress);

private:
    struct Series
    {
        QString name;
        QString board;
        QString path;
        std::vector<int> timeframes; // that are stored, in the order of the report
        bool isAsked = false;
    };

    void list(const QDir& root);
    std::vector<int> timeframes() const;
    std::vector<SeriesHealth> readBoard(const std::vector<Series>& board, int timeframe,
                                        std::vector<UnreadFile>& unread);
    void showDay();

    HealthQuery m_query;
    std::vector<Series> m_series; // by code point
    QStringList m_notStored;
    QStringList m_unlisted;
    QStringList m_lostLinks;
    ProgressSink m_progress;
    qint64 m_days = 0;
    qint64 m_daysRead = 0;
};

} // namespace tadata
