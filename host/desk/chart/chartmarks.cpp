// SPDX-License-Identifier: MIT
#include "desk/chart/chartmarks.h"

#include "desk/chart/axisticks.h"
#include "desk/chart/wallclock.h"

#include <algorithm>
#include <iterator>
#include <map>

namespace vexdesk {

namespace {

// Wall times; the begin is not included, the end is.
struct Stretch
{
    qint64 begin = 0;
    qint64 end = 0;
};

Stretch stretchOf(const ChartMark& mark)
{
    const qint64 day = wallTime(mark.day);
    Stretch stretch{day, day + secondsPerDay};
    if (!mark.from.isValid())
        return stretch;
    stretch.begin = wallTime(mark.day, mark.from);
    if (mark.to.isValid() && mark.to > mark.from)
        stretch.end = wallTime(mark.day, mark.to);
    return stretch;
}

// A week or a month does not say of which of its days something is told.
bool isWithinDay(const Candle& candle)
{
    return candle.end - candle.begin <= secondsPerDay;
}

} // namespace

std::vector<CandleMark> marksOfCandles(const QList<ChartMark>& marks,
                                       const std::vector<PlacedCandle>& candles)
{
    std::map<size_t, CandleMark> found;
    for (const ChartMark& mark : marks) {
        const Stretch stretch = stretchOf(mark);
        const bool isWholeDay = !mark.from.isValid();
        auto at =
            std::partition_point(candles.begin(), candles.end(), [&](const PlacedCandle& one) {
                // A day has its bars at midnight, wherever their interval is; a stretch of its
                // times begins after them.
                const bool isOfDay = isWholeDay && one.candle.day >= mark.day;
                return one.candle.end <= stretch.begin && !isOfDay;
            });
        if (candles.empty() || stretch.end <= candles.front().candle.begin)
            continue;
        bool isInside = at != candles.end() && at->candle.begin < stretch.end;
        // Nor are they lost where they are all that the day has, and in a candle of the day before.
        if (!isInside && isWholeDay && at != candles.begin() &&
            std::prev(at)->candle.bar.time == stretch.begin) {
            --at;
            isInside = true;
        }
        if (at == candles.end())
            continue;
        const bool isDayKnown = isInside && isWithinDay(at->candle);
        const QString text =
            isDayKnown ? mark.text
                       : QStringLiteral("%1: %2").arg(dateText(wallTime(mark.day)), mark.text);
        const auto index = static_cast<size_t>(at - candles.begin());
        const auto [entry, isFirst] = found.try_emplace(index, CandleMark{index, mark.kind, text});
        if (isFirst)
            continue;
        entry->second.kind = std::max(entry->second.kind, mark.kind);
        entry->second.text += u'\n' + text;
    }
    std::vector<CandleMark> all;
    all.reserve(found.size());
    for (const auto& [index, mark] : found)
        all.push_back(mark);
    return all;
}

} // namespace vexdesk
