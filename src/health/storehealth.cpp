// SPDX-License-Identifier: MIT
#include "storehealth.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/storecatalog.h>
#include <vexdesk/history/storepaths.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace tadata {

using vexdesk::StoredSeries;

namespace {

bool comesBefore(const QString& left, const QString& right)
{
    return left.toUcs4() < right.toUcs4();
}

// None where the directory cannot be read, too: those who ask know that it has some.
std::vector<QDate> daysIn(const QDir& dir, int timeframe)
{
    const auto days = vexdesk::storedDays(dir, timeframe, QDate(1, 1, 1), QDate(9999, 12, 31));
    return days ? std::vector<QDate>(days->begin(), days->end()) : std::vector<QDate>();
}

} // namespace

StoreHealth::StoreHealth(const QDir& root, HealthQuery query)
    : m_query(std::move(query))
{
    list(root);
    for (const QString& name : std::as_const(m_query.series)) {
        const bool isStored = std::any_of(m_series.begin(), m_series.end(),
                                          [&name](const Series& one) { return one.name == name; });
        if (!isStored)
            m_notStored.append(name);
    }
}

void StoreHealth::list(const QDir& root)
{
    const vexdesk::StoreCatalog catalog = vexdesk::storeCatalog(root);
    m_unlisted = catalog.unreadable;
    m_lostLinks = catalog.lostLinks;
    for (const StoredSeries& stored : catalog.series) {
        if (stored.timeframe != vexdesk::minuteTimeframe &&
            stored.timeframe != vexdesk::secondTimeframe)
            continue;
        const QString board = stored.stockCode + u'/' + stored.boardCode;
        const QString name = board + u'/' + stored.securityName;
        // The timeframes of a series follow each other.
        if (m_series.empty() || m_series.back().name != name) {
            const bool isAsked = m_query.series.isEmpty() || m_query.series.contains(name);
            m_series.push_back(
                {name,
                 board,
                 vexdesk::seriesPath(root, stored.stockCode, stored.boardCode, stored.securityName),
                 {},
                 isAsked});
        }
        Series& series = m_series.back();
        series.timeframes.push_back(stored.timeframe);
        if (series.isAsked && (!m_query.timeframe || m_query.timeframe == stored.timeframe))
            m_days += stored.dayFiles;
    }
    std::sort(m_series.begin(), m_series.end(), [](const Series& left, const Series& right) {
        return comesBefore(left.name, right.name);
    });
}

std::vector<int> StoreHealth::timeframes() const
{
    if (m_query.timeframe)
        return {*m_query.timeframe};
    return {vexdesk::minuteTimeframe, vexdesk::secondTimeframe};
}

std::vector<UnreadFile> StoreHealth::read(const std::function<void(const SeriesHealth&)>& sink,
                                          const ProgressSink& progress)
{
    m_progress = progress;
    m_daysRead = 0;
    std::vector<UnreadFile> unread;
    for (auto begin = m_series.begin(); begin != m_series.end();) {
        const auto end = std::find_if(begin, m_series.end(), [begin](const Series& series) {
            return series.board != begin->board;
        });
        const std::vector<Series> board(begin, end);
        begin = end;
        std::vector<SeriesHealth> found;
        for (const int timeframe : timeframes()) {
            std::vector<SeriesHealth> more = readBoard(board, timeframe, unread);
            std::move(more.begin(), more.end(), std::back_inserter(found));
        }
        std::stable_sort(found.begin(), found.end(),
                         [](const SeriesHealth& left, const SeriesHealth& right) {
                             return comesBefore(left.series, right.series);
                         });
        std::for_each(found.begin(), found.end(), sink);
    }
    return unread;
}

std::vector<SeriesHealth> StoreHealth::readBoard(const std::vector<Series>& board, int timeframe,
                                                 std::vector<UnreadFile>& unread)
{
    const bool isAsked =
        std::any_of(board.begin(), board.end(), [](const Series& one) { return one.isAsked; });
    if (!isAsked)
        return {};
    std::vector<BoardSeries> stored;
    for (const Series& series : board) {
        const bool isStored = std::find(series.timeframes.begin(), series.timeframes.end(),
                                        timeframe) != series.timeframes.end();
        const bool isNamed = series.isAsked && !m_query.series.isEmpty() && m_query.timeframe;
        const QDir dir(series.path);
        if (isStored) {
            std::vector<QDate> days = daysIn(dir, timeframe);
            // The name of its directory is no text, so it has no path.
            if (days.empty())
                unread.push_back({series.path, UnreadFile::Reason::NotListed, {}});
            else
                stored.push_back({series.name, dir, std::move(days), series.isAsked});
        } else if (isNamed) {
            stored.push_back({series.name, dir, {}, true});
        }
    }
    BoardHealth health = boardHealth(stored, timeframe, m_query.scope, [this] { showDay(); });
    std::move(health.unread.begin(), health.unread.end(), std::back_inserter(unread));
    return std::move(health.series);
}

void StoreHealth::showDay()
{
    constexpr qint64 whole = 100;
    ++m_daysRead;
    m_progress(static_cast<int>(std::min(whole, m_daysRead * whole / std::max(m_days, qint64(1)))));
}

} // namespace tadata
