// SPDX-License-Identifier: MIT
#include "desk/chart/dayreader.h"

#include "desk/chart/barline.h"
#include "desk/chart/directorynames.h"
#include "desk/chart/wallclock.h"

#include <vexdesk/history/dayfilelines.h>
#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/filestate.h>
#include <vexdesk/history/links.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QFile>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::DayReader)
};

// File systems keep times of different coarseness, the coarsest of them two seconds.
constexpr qint64 nanoseconds = 1'000'000; // of a millisecond
constexpr qint64 coarsestTime = 2000 * nanoseconds;

DayStamp stampOf(const FileState& file)
{
    const qint64 age = QDateTime::currentMSecsSinceEpoch() * nanoseconds - file.modified;
    // A time to come is a clock that was set; it will not settle for long.
    return {file.size, file.modified, age >= coarsestTime || age < 0};
}

std::shared_ptr<const DaySummary> shared(const DaySummary& summary)
{
    return std::make_shared<const DaySummary>(summary);
}

// A link that leads nowhere is not nothing: the day was stored once.
bool isNothing(const QString& path)
{
    return isMissing(path) && !isLostLink(path);
}

Failure whyNotOpened(const QString& path)
{
    std::error_code error;
    const auto status = std::filesystem::status(QFile::encodeName(path).toStdString(), error);
    if (status.type() == std::filesystem::file_type::not_found)
        return {Text::tr("ссылка никуда не ведёт")};
    if (error)
        return {qt_error_string(error.value())};
    if (status.type() == std::filesystem::file_type::directory)
        return {Text::tr("это каталог, а не файл")};
    if (status.type() != std::filesystem::file_type::regular)
        return {Text::tr("это не файл")};
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? Failure{Text::tr("файл изменился, пока его открывали")}
                                          : Failure{file.errorString()};
}

// Takes each bar of the file, and counts what is none. A failure where it cannot be read to its
// end, and where there is something else in it.
template <typename Taker>
ReadDay readBars(const QString& path, const QDate& day, const Taker& take)
{
    DayFileLines lines(path);
    if (isNothing(path))
        return {shared(DaySummary())};
    if (!lines.open())
        return {nullptr, nullptr, 0, whyNotOpened(path)};
    bool hasBars = false;
    DaySummary others;
    QByteArrayView line;
    while (lines.next(&line)) {
        if (const std::optional<BarLine> read = readBarLine(line, day)) {
            take(*read);
            hasBars = true;
        } else {
            ++others.otherLines;
        }
    }
    if (!lines.outcome())
        return {nullptr, nullptr, 0, lines.outcome()};
    if (hasBars || lines.size() == 0)
        return {shared(others)};
    return {shared(others), nullptr, 0, Failure{Text::tr("в файле нет ни одного бара")}};
}

} // namespace

Result<std::vector<ListedDay>> listDays(const QString& directory, int timeframe)
{
    const Result<QStringList> names = namesInDirectory(directory);
    if (!names)
        return names.failure();
    std::vector<ListedDay> days;
    for (const QString& name : *names) {
        const auto key = parseDayFileName(name);
        if (!key || key->timeframe != timeframe)
            continue;
        const QString path = directory + u'/' + name;
        if (const std::optional<FileState> file = fileState(path))
            days.push_back({key->day, stampOf(*file)});
        else if (!isNothing(path))
            days.push_back({key->day, DayStamp()});
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
    const ReadDay file = readBars(path, day, [&](const BarLine& read) {
        const auto second = static_cast<int>(read.bar.time - midnight);
        isInOrder = isInOrder && second >= summary.summary().lastSecond;
        summary.add(read.bar, second, read.decimals);
        if (summary.summary().count <= mostKept)
            bars.add(read.bar, read.decimals);
        else if (part == DayPart::Bars)
            bars = DayBarsMaker();
    });
    const qsizetype count = summary.summary().count;
    if (!file.outcome || count == 0)
        return file;
    // To put a day into order all of its bars must be there.
    if (!isInOrder && part == DayPart::Summary && count <= mostBarsOfDay) {
        const ReadDay ordered = readDay(path, day, DayPart::Bars);
        return {ordered.summary, nullptr, ordered.bytes};
    }
    const std::shared_ptr<const DayBars> kept = bars.finish();
    const bool isAll = kept && kept->size() == count;
    const qint64 bytes = kept ? kept->bytes() * count / kept->size() : 0;
    DaySummary all = isInOrder || !isAll ? summary.summary() : summaryOf(*kept);
    all.otherLines = file.summary->otherLines;
    return {shared(all), part == DayPart::Bars ? kept : nullptr, bytes};
}

} // namespace vexdesk
