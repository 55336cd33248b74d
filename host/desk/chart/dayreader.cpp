// SPDX-License-Identifier: MIT
#include "desk/chart/dayreader.h"

#include "desk/chart/barline.h"
#include "desk/chart/wallclock.h"

#include <vexdesk/history/dayfilelines.h>
#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/filestate.h>

#include <QtCore/QDateTime>
#include <QtCore/QDirIterator>

#include <algorithm>
#include <optional>

namespace vexdesk {

namespace {

// File systems keep times of different coarseness, the coarsest of them two seconds.
constexpr qint64 nanoseconds = 1000 * 1000; // of a millisecond
constexpr qint64 coarsestTime = 2000 * nanoseconds;

DayStamp stampOf(const FileState& file)
{
    const qint64 age = QDateTime::currentMSecsSinceEpoch() * nanoseconds - file.modified;
    // A time to come is a clock that was set; it will not settle for long.
    return {file.size, file.modified, age >= coarsestTime || age < 0};
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
    int decimals = 0;
    QByteArrayView line;
    while (lines.next(&line)) {
        const std::optional<BarLine> read = readBarLine(line, day);
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
    // Whatever there is: to look which of them are files would take as long as all the rest.
    QDirIterator walk(directory, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System);
    while (walk.hasNext()) {
        const QString path = walk.next();
        const auto key = parseDayFileName(walk.fileName());
        if (!key || key->timeframe != timeframe)
            continue;
        if (const std::optional<FileState> file = fileState(path))
            days.push_back({key->day, stampOf(*file)});
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
