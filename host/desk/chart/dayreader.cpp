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
#include <utility>

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

// Takes each bar of the file; false where it cannot be read to its end.
template <typename Taker>
bool readBars(const QString& path, const QDate& day, const Taker& take)
{
    DayFileLines lines(path);
    if (!lines.open())
        return false;
    QByteArrayView line;
    while (lines.next(&line)) {
        if (const std::optional<BarLine> read = readBarLine(line, day))
            take(*read);
    }
    return static_cast<bool>(lines.outcome());
}

std::shared_ptr<const DaySummary> shared(const DaySummary& summary)
{
    return std::make_shared<const DaySummary>(summary);
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

ReadDay readDay(const QString& path, const QDate& day, DayPart part)
{
    const qint64 midnight = wallTime(day);
    DayBarsMaker bars;
    DaySummaryMaker summary;
    bool isInOrder = true;
    const qsizetype mostKept = part == DayPart::Bars ? mostBarsOfDay : DayBars::blockSize;
    const bool isWhole = readBars(path, day, [&](const BarLine& read) {
        const auto second = static_cast<int>(read.bar.time - midnight);
        isInOrder = isInOrder && second >= summary.summary().lastSecond;
        summary.add(read.bar, second, read.decimals);
        if (summary.summary().count <= mostKept)
            bars.add(read.bar, read.decimals);
        else if (part == DayPart::Bars)
            bars = DayBarsMaker();
    });
    const qsizetype count = summary.summary().count;
    if (!isWhole || count == 0)
        return {shared(DaySummary()), nullptr, 0};
    // To put a day into order all of its bars must be there.
    if (!isInOrder && part == DayPart::Summary && count <= mostBarsOfDay) {
        const ReadDay ordered = readDay(path, day, DayPart::Bars);
        return {ordered.summary, nullptr, ordered.bytes};
    }
    const std::shared_ptr<const DayBars> kept = bars.finish();
    const bool isAll = kept && kept->size() == count;
    const qint64 bytes = kept ? kept->bytes() * count / kept->size() : 0;
    return {shared(isInOrder || !isAll ? summary.summary() : summaryOf(*kept)),
            part == DayPart::Bars ? kept : nullptr, bytes};
}

} // namespace vexdesk
