// SPDX-License-Identifier: MIT
#include "desk/chart/dayreader.h"

#include "desk/chart/barline.h"
#include "desk/chart/wallclock.h"

#include <vexdesk/history/dayfilelines.h>
#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QDateTime>
#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <optional>

namespace vexdesk {

namespace {

// File systems keep times of different coarseness, the coarsest of them two seconds.
constexpr qint64 coarsestTime = 2000; // ms

DayStamp stampOf(const QFileInfo& file)
{
    DayStamp stamp;
    stamp.size = file.size();
    stamp.modified = file.lastModified().toMSecsSinceEpoch();
    const qint64 age = QDateTime::currentMSecsSinceEpoch() - stamp.modified;
    // A time to come is a clock that was set; it will not settle for long.
    stamp.isSettled = age >= coarsestTime || age < 0;
    return stamp;
}

// Null where there are none, and where the file cannot be read to its end.
std::shared_ptr<const DayBars> readBars(const QString& path, const QDate& day)
{
    DayFileLines lines(path);
    if (!lines.open())
        return nullptr;
    constexpr qint64 shortLine = 40; // bytes
    std::vector<Bar> bars;
    bars.reserve(static_cast<size_t>(std::min(lines.size() / shortLine, secondsPerDay)));
    const qint64 midnight = wallTime(day);
    int decimals = 0;
    QByteArrayView line;
    while (lines.next(&line)) {
        std::optional<BarLine> read = readImportedLine(line, midnight);
        if (!read)
            read = readBarLine(line, day);
        if (!read)
            continue;
        bars.push_back(read->bar);
        decimals = std::max(decimals, read->decimals);
    }
    if (bars.empty() || !lines.outcome())
        return nullptr;
    const auto isEarlier = [](const Bar& left, const Bar& right) { return left.time < right.time; };
    if (!std::is_sorted(bars.begin(), bars.end(), isEarlier))
        std::stable_sort(bars.begin(), bars.end(), isEarlier);
    return std::make_shared<const DayBars>(bars, decimals);
}

} // namespace

std::vector<ListedDay> listDays(const QString& directory, int timeframe)
{
    std::vector<ListedDay> days;
    QDirIterator walk(directory, QDir::Files);
    while (walk.hasNext()) {
        walk.next();
        const auto key = parseDayFileName(walk.fileName());
        if (key && key->timeframe == timeframe)
            days.push_back({key->day, stampOf(walk.fileInfo())});
    }
    std::sort(days.begin(), days.end(),
              [](const ListedDay& left, const ListedDay& right) { return left.day < right.day; });
    return days;
}

ReadDay readDay(const QString& path, const QDate& day)
{
    ReadDay read;
    read.bars = readBars(path, day);
    read.summary =
        std::make_shared<const DaySummary>(read.bars ? summaryOf(*read.bars) : DaySummary());
    return read;
}

} // namespace vexdesk
