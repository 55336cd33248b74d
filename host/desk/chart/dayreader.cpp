// SPDX-License-Identifier: MIT
#include "desk/chart/dayreader.h"

#include "desk/chart/wallclock.h"

#include <vexdesk/history/dayfilelines.h>
#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/recordline.h>

#include <QtCore/QDateTime>
#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace vexdesk {

namespace {

// File systems keep times of different coarseness, the coarsest of them two seconds.
constexpr qint64 coarsestTime = 2000; // ms

bool isNumber(QByteArrayView text)
{
    return decimal::fromText(QLatin1String(text.data(), text.size())).has_value();
}

bool hasPrices(const RecordFields& fields)
{
    return isNumber(fields[OpenField]) && isNumber(fields[HighField]) &&
           isNumber(fields[LowField]) && isNumber(fields[CloseField]);
}

double toDouble(const decimal& number)
{
    // Exact powers of ten: the quotient is the nearest number that there is.
    constexpr std::array<double, 16> powers{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                            1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const auto mantissa = static_cast<double>(number.mantissa());
    const auto scale = static_cast<size_t>(number.scale());
    return mantissa / (scale < powers.size() ? powers[scale] : std::pow(10.0, number.scale()));
}

Bar barOf(const StoredBar& stored)
{
    Bar bar;
    bar.time = wallTime(stored.date, stored.time);
    bar.open = toDouble(stored.open);
    bar.high = toDouble(stored.high);
    bar.low = toDouble(stored.low);
    bar.close = toDouble(stored.close);
    bar.volume = stored.volume;
    bar.value = toDouble(stored.value);
    bar.openInterest = stored.openInterest;
    return bar;
}

int decimalsOf(const StoredBar& bar)
{
    // More digits are not told apart by a double, and there is no room for them.
    constexpr int most = 15;
    return std::min(
        most, std::max({bar.open.scale(), bar.high.scale(), bar.low.scale(), bar.close.scale()}));
}

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
    std::vector<Bar> bars;
    int decimals = 0;
    QByteArrayView line;
    while (lines.next(&line)) {
        RecordFields fields = firstRecordFields(line);
        if (!hasPrices(fields))
            continue;
        if (fields[VolumeField].contains('.'))
            std::swap(fields[VolumeField], fields[ValueField]);
        const StoredBar stored = storedBar(fields, day);
        if (!stored.time.isValid())
            continue;
        bars.push_back(barOf(stored));
        decimals = std::max(decimals, decimalsOf(stored));
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
