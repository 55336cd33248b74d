// SPDX-License-Identifier: MIT
#include "storestamps.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/filestate.h>
#include <vexdesk/history/seriesfiles.h>
#include <vexdesk/history/storecatalog.h>
#include <vexdesk/history/storepaths.h>

#include <QtCore/QFileInfo>
#include <QtCore/QHash>

#include <algorithm>

namespace tadata {

namespace {

// Whether it could be listed to its end.
bool lookAt(SeriesStamp& series)
{
    const auto listed = vexdesk::barFiles(QDir(series.path));
    const QStringList names = listed.valueOr(QStringList());
    for (const QString& name : names) {
        const auto key = vexdesk::parseDayFileName(name);
        if (!key)
            continue;
        if (key->timeframe == vexdesk::minuteTimeframe)
            series.minuteDays.push_back(key->day);
        else if (key->timeframe == vexdesk::secondTimeframe)
            series.secondDays.push_back(key->day);
        else
            continue;
        const auto state =
            vexdesk::fileState(series.path + u'/' + name).value_or(vexdesk::FileState());
        // In whatever order a directory gives them.
        series.stamp += qHashMulti(0, key->day.toJulianDay(), key->timeframe, state.inode,
                                   state.size, state.modified);
    }
    std::sort(series.minuteDays.begin(), series.minuteDays.end());
    std::sort(series.secondDays.begin(), series.secondDays.end());
    return bool(listed);
}

} // namespace

StoreStamps storeStamps(const QDir& root, const std::atomic<bool>& stop)
{
    const vexdesk::StoreCatalog catalog = vexdesk::storeCatalog(root);
    StoreStamps stamps;
    stamps.unreadable = catalog.unreadable;
    for (const vexdesk::StoredSeries& stored : catalog.series) {
        if (stop)
            return stamps;
        const QString board = stored.stockCode + u'/' + stored.boardCode;
        const QString name = board + u'/' + stored.securityName;
        // The timeframes of a series follow each other.
        if (!stamps.series.empty() && stamps.series.back().series == name)
            continue;
        SeriesStamp series{
            name,
            board,
            vexdesk::seriesPath(root, stored.stockCode, stored.boardCode, stored.securityName),
            {},
            {},
            0};
        const bool isWhole = lookAt(series);
        if (!isWhole || (series.minuteDays.empty() && series.secondDays.empty())) {
            // The name of its directory is no text, so it has no path; or it has just gone.
            if (!stamps.unreadable.contains(series.path))
                stamps.unreadable.append(series.path);
            continue;
        }
        stamps.series.push_back(std::move(series));
    }
    for (const QString& link : catalog.lostLinks) {
        const bool isRead = std::any_of(
            stamps.series.begin(), stamps.series.end(),
            [&link](const SeriesStamp& one) { return one.path == QFileInfo(link).path(); });
        if (!isRead)
            stamps.lostLinks.append(link);
    }
    std::sort(stamps.series.begin(), stamps.series.end(),
              [](const SeriesStamp& left, const SeriesStamp& right) {
                  return left.series.toUcs4() < right.series.toUcs4();
              });
    return stamps;
}

} // namespace tadata
