// SPDX-License-Identifier: MIT
#include "desk/chart/timeaxis.h"

#include "desk/chart/wallclock.h"

#include <algorithm>
#include <cmath>

namespace vexdesk {

namespace {

QDate dateAt(double time)
{
    return wallDate(static_cast<qint64>(std::floor(time)));
}

double seconds(const QDate& day)
{
    return static_cast<double>(wallTime(day));
}

} // namespace

TimeAxis::TimeAxis()
    : m_folded(std::make_shared<FoldedDays>(std::make_shared<const BarSeries>(), Timeframe::Day))
{}

TimeAxis::TimeAxis(std::shared_ptr<FoldedDays> folded, bool areNightsShown)
    : m_folded(std::move(folded))
    , m_areNightsShown(areNightsShown)
{
    m_starts = series().candlesBefore(timeframe());
    m_size = m_starts.back();
    if (m_size == 0)
        return;
    const qsizetype first = dayOfSlot(0);
    m_begin = timeIn(0, 0);
    m_end = timeIn(m_size - 1, 1);
    // A bar at midnight may be in an interval before the first day.
    m_calendar = CalendarSlots(timeframe(), std::min(dayAt(first).day, dateAt(m_begin)));
    if (m_areNightsShown) // up to the last bar, not through the night behind it
        m_size = static_cast<qint64>(std::ceil(m_calendar.slotOf(m_end)));
}

// The days [first, last) of the day, week or month that a date is in.
std::pair<qsizetype, qsizetype> TimeAxis::periodOf(const QDate& date) const
{
    return {series().indexFrom(periodBegin(date, timeframe())),
            series().indexFrom(periodEnd(date, timeframe()))};
}

// A week is known when all of its days are.
bool TimeAxis::isKnown(qsizetype day) const
{
    if (isBelowDay(timeframe()))
        return dayAt(day).bars || (dayAt(day).summary && dayAt(day).summary->count == 0);
    const auto [first, last] = periodOf(dayAt(day).day);
    const auto begin = series().days().begin();
    return std::all_of(begin + first, begin + last,
                       [](const SeriesDay& one) { return one.summary != nullptr; });
}

bool TimeAxis::isUnreadable(qsizetype day) const
{
    return !dayAt(day).reading && m_folded->of(day).empty();
}

qsizetype TimeAxis::dayOfSlot(qint64 slot) const
{
    const auto after = std::upper_bound(m_starts.begin(), m_starts.end(), slot);
    return after - m_starts.begin() - 1;
}

TimeAxis::Stretch TimeAxis::stretchFrom(qsizetype day) const
{
    Stretch stretch{day, startOf(day), startOf(day + 1) - startOf(day), 0, 0};
    stretch.begin = seconds(periodBegin(dayAt(day).day, timeframe()));
    stretch.end = seconds(periodEnd(dayAt(day).day, timeframe()));
    const auto& summary = dayAt(day).summary;
    if (summary && isBelowDay(timeframe())) {
        stretch.end = stretch.begin + std::max(1, summary->lastSecond);
        stretch.begin += std::max(0, summary->firstSecond - secondsOf(timeframe()));
    }
    if (const std::vector<Candle>& candles = m_folded->of(day); !candles.empty()) {
        stretch.begin = static_cast<double>(candles.front().begin);
        stretch.end = static_cast<double>(candles.back().end);
    }
    return stretch;
}

// The one that has this time in it, or the next one after it.
std::optional<TimeAxis::Stretch> TimeAxis::stretchAt(double time) const
{
    const auto [first, last] = periodOf(dateAt(time));
    // A bar at midnight may be in an interval that begins in the day before, if nothing else ends
    // there.
    if (last < dayCount() && hasSlots(last)) {
        const std::vector<Candle>& candles = m_folded->of(last);
        if (!candles.empty() && static_cast<double>(candles.front().begin) <= time)
            return stretchFrom(last);
    }
    if (startOf(first) == m_starts.back())
        return std::nullopt;
    const Stretch stretch = stretchFrom(dayOfSlot(startOf(first)));
    // Or in a week that has ended, with which the first day of the next one begins.
    const qint64 next = stretch.first + stretch.count;
    return stretch.end <= time && next < m_starts.back() ? stretchFrom(dayOfSlot(next)) : stretch;
}

double TimeAxis::timeIn(qint64 slot, double share) const
{
    const qsizetype day = dayOfSlot(slot);
    const std::vector<Candle>& candles = m_folded->of(day);
    const auto index = static_cast<size_t>(slot - startOf(day));
    if (index < candles.size()) {
        const auto begin = static_cast<double>(candles[index].begin);
        return begin + share * (static_cast<double>(candles[index].end) - begin);
    }
    const Stretch stretch = stretchFrom(day);
    return stretch.begin + (static_cast<double>(index) + share) /
                               static_cast<double>(stretch.count) * (stretch.end - stretch.begin);
}

double TimeAxis::slotIn(const Stretch& stretch, double time) const
{
    const auto first = static_cast<double>(stretch.first);
    const std::vector<Candle>& candles = m_folded->of(stretch.day);
    if (candles.empty()) {
        const double share = (time - stretch.begin) / (stretch.end - stretch.begin);
        return first + std::clamp(share, 0.0, 1.0) * static_cast<double>(stretch.count);
    }
    const auto found =
        std::partition_point(candles.begin(), candles.end(), [time](const Candle& candle) {
            return static_cast<double>(candle.end) <= time;
        });
    const double whole = first + static_cast<double>(found - candles.begin());
    if (found == candles.end() || time <= static_cast<double>(found->begin))
        return whole;
    return whole + (time - static_cast<double>(found->begin)) /
                       static_cast<double>(found->end - found->begin);
}

double TimeAxis::slotOf(double time) const
{
    if (m_areNightsShown)
        return m_calendar.slotOf(time);
    const double pace = m_calendar.slotLength();
    if (m_size == 0 || time <= m_begin)
        return (time - m_begin) / pace;
    if (time >= m_end)
        return static_cast<double>(m_size) + (time - m_end) / pace;
    const std::optional<Stretch> stretch = stretchAt(time);
    return stretch ? slotIn(*stretch, time) : static_cast<double>(m_size);
}

double TimeAxis::timeAt(double slot) const
{
    if (m_areNightsShown)
        return m_calendar.timeAt(slot);
    const double pace = m_calendar.slotLength();
    if (m_size == 0 || slot < 0)
        return m_begin + slot * pace;
    if (slot >= static_cast<double>(m_size))
        return m_end + (slot - static_cast<double>(m_size)) * pace;
    const double whole = std::floor(slot);
    return timeIn(static_cast<qint64>(whole), slot - whole);
}

double TimeAxis::timeUpTo(double slot) const
{
    const double whole = std::ceil(slot) - 1;
    if (m_areNightsShown || whole < 0 || whole >= static_cast<double>(m_size))
        return timeAt(slot);
    return timeIn(static_cast<qint64>(whole), slot - whole);
}

double TimeAxis::begin() const
{
    return m_size == 0 ? 0 : std::floor(slotOf(m_begin));
}

std::optional<qint64> TimeAxis::firstSlotFrom(const QDate& date) const
{
    const QDate from = periodBegin(date, timeframe());
    for (qsizetype day = periodOf(date).first; day < dayCount(); ++day) {
        if (!hasSlots(day))
            continue;
        const std::vector<Candle>& candles = m_folded->of(day);
        if (candles.empty()) // not read
            return static_cast<qint64>(slotsOf(day).begin);
        // The first may be what ends the day before.
        for (size_t i = 0; i < candles.size(); ++i) {
            if (candles[i].day >= from)
                return slotOfCandle(day, i);
        }
    }
    return std::nullopt;
}

qint64 TimeAxis::slotOfCandle(qsizetype day, size_t index) const
{
    return m_areNightsShown ? m_calendar.slotFrom(m_folded->of(day)[index].begin)
                            : startOf(day) + static_cast<qint64>(index);
}

SlotRange TimeAxis::slotsOf(qsizetype day) const
{
    if (!m_areNightsShown)
        return {static_cast<double>(startOf(day)), static_cast<double>(startOf(day + 1))};
    return {m_calendar.slotOf(seconds(periodBegin(dayAt(day).day, timeframe()))),
            m_calendar.slotOf(seconds(periodEnd(dayAt(day).day, timeframe())))};
}

bool TimeAxis::isAfterGap(qsizetype day) const
{
    qsizetype before = day - 1;
    while (before >= 0 && !hasSlots(before))
        --before;
    return before >= 0 && !isKnown(before);
}

void TimeAxis::appendCandles(std::vector<PlacedCandle>& placed, qsizetype day,
                             const SlotRange& range) const
{
    const std::vector<Candle>& candles = m_folded->of(day);
    size_t low = 0;
    for (size_t high = candles.size(); low < high;) {
        const size_t middle = (low + high) / 2;
        if (static_cast<double>(slotOfCandle(day, middle) + 1) > range.begin)
            high = middle;
        else
            low = middle + 1;
    }
    for (size_t i = low; i < candles.size(); ++i) {
        const qint64 slot = slotOfCandle(day, i);
        if (static_cast<double>(slot) >= range.end)
            break;
        placed.push_back({slot, candles[i], i == 0 && isAfterGap(day)});
    }
}

std::vector<PlacedCandle> TimeAxis::candlesBefore(qint64 slot, int count) const
{
    std::vector<PlacedCandle> found; // the last one first
    qsizetype day = daysIn({static_cast<double>(slot), static_cast<double>(slot)}).first;
    for (day = std::min(day, dayCount() - 1); day >= 0; --day) {
        if (!hasSlots(day))
            continue;
        const size_t size = m_folded->of(day).size();
        if (size == 0)
            break;
        for (size_t i = size; i > 0 && static_cast<int>(found.size()) < count; --i) {
            const qint64 at = slotOfCandle(day, i - 1);
            if (at < slot)
                found.push_back({at, m_folded->of(day)[i - 1], i == 1 && isAfterGap(day)});
        }
        if (static_cast<int>(found.size()) >= count)
            break;
    }
    std::reverse(found.begin(), found.end());
    return found;
}

std::vector<PlacedCandle> TimeAxis::candles(const SlotRange& range, int before) const
{
    std::vector<PlacedCandle> placed;
    if (before > 0)
        placed = candlesBefore(static_cast<qint64>(std::floor(range.begin)), before);
    const auto [first, last] = daysIn(range);
    for (qsizetype day = first; day < last; ++day) {
        if (hasSlots(day))
            appendCandles(placed, day, range);
    }
    return placed;
}

std::vector<SlotRange> TimeAxis::unread(const SlotRange& range) const
{
    std::vector<SlotRange> stretches;
    const auto [first, last] = daysIn(range);
    for (qsizetype day = first; day < last; ++day) {
        if (!hasSlots(day) || isKnown(day))
            continue;
        SlotRange stretch = slotsOf(day);
        stretch.begin = std::max(stretch.begin, range.begin);
        stretch.end = std::min(stretch.end, range.end);
        if (stretch.length() <= 0)
            continue;
        if (!stretches.empty() && stretches.back().end >= stretch.begin)
            stretches.back().end = stretch.end;
        else
            stretches.push_back(stretch);
    }
    return stretches;
}

std::pair<qsizetype, qsizetype> TimeAxis::daysIn(const SlotRange& range) const
{
    if (m_starts.back() == 0)
        return {0, 0};
    QDate from;
    QDate to;
    const bool isPeriod = timeframe() > Timeframe::Day;
    if (m_areNightsShown) {
        from = dateAt(m_calendar.timeAt(range.begin));
        // A bar at midnight of the next day may be the last candle in the range, of which a part is
        // in it.
        const bool mayBeNext = !isPeriod;
        to = dateAt(m_calendar.timeAt(mayBeNext ? std::ceil(range.end) : range.end));
    } else {
        const auto dayOf = [this](double slot) {
            return dayAt(dayOfSlot(std::clamp(static_cast<qint64>(slot), qint64(0), m_size - 1)))
                .day;
        };
        from = dayOf(std::floor(range.begin));
        to = dayOf(std::ceil(range.end) - 1);
    }
    qsizetype last = periodOf(to).second;
    // The day after a week may begin with the bars at midnight that are all that the week has.
    if (m_areNightsShown && isPeriod && last < dayCount() &&
        dayAt(last).day == periodEnd(to, timeframe()))
        ++last;
    return {periodOf(from).first, last};
}

std::vector<SlotBegin> TimeAxis::calendarBegins(qint64 first, qint64 last) const
{
    std::vector<SlotBegin> begins;
    for (qint64 slot = first; slot <= last; ++slot) {
        const auto time = std::llround(m_calendar.timeAt(static_cast<double>(slot)));
        begins.push_back({slot, time, wallDate(time)});
    }
    return begins;
}

std::vector<SlotBegin> TimeAxis::begins(const SlotRange& range) const
{
    const auto first = std::max(qint64(0), static_cast<qint64>(std::ceil(range.begin)) - 1);
    const auto last = std::min(m_size - 1, static_cast<qint64>(std::floor(range.end)));
    if (m_areNightsShown)
        return calendarBegins(first, last);
    std::vector<SlotBegin> begins;
    for (qint64 slot = first; slot <= last;) {
        const qsizetype day = dayOfSlot(slot);
        const std::vector<Candle>& candles = m_folded->of(day);
        const bool isPeriod = timeframe() > Timeframe::Day;
        if (candles.empty() && slot == startOf(day)) {
            const auto begin = wallTime(periodBegin(dayAt(day).day, timeframe()));
            begins.push_back({slot, begin, wallDate(begin)});
        }
        const auto index = static_cast<size_t>(slot - startOf(day));
        for (size_t i = index; i < candles.size() && slot <= last; ++i, ++slot)
            begins.push_back(
                {slot, candles[i].begin, isPeriod ? wallDate(candles[i].begin) : candles[i].day});
        slot = std::max(slot, startOf(day + 1));
    }
    return begins;
}

std::optional<qint64> TimeAxis::nextInDay(qsizetype day, qint64 slot, bool isForwards) const
{
    const auto isBeyond = [&](qint64 other) { return isForwards ? other > slot : other < slot; };
    const size_t size = m_folded->of(day).size();
    if (isUnreadable(day))
        return std::nullopt;
    if (size == 0) { // not read
        const auto at = static_cast<qint64>(slotsOf(day).begin);
        return isBeyond(at) ? std::optional(at) : std::nullopt;
    }
    for (size_t i = 0; i < size; ++i) {
        const qint64 at = slotOfCandle(day, isForwards ? i : size - 1 - i);
        if (isBeyond(at))
            return at;
    }
    return std::nullopt;
}

std::optional<qint64> TimeAxis::next(qint64 slot, bool isForwards) const
{
    const qint64 step = isForwards ? 1 : -1;
    if (m_starts.back() == 0)
        return std::nullopt;
    slot = std::clamp(slot, qint64(-1), m_size);
    if (!m_areNightsShown) {
        for (qint64 at = slot + step; at >= 0 && at < m_size;) {
            const qsizetype day = dayOfSlot(at);
            if (!isUnreadable(day))
                return at;
            at = isForwards ? startOf(day + 1) : startOf(day) - 1;
        }
        return std::nullopt;
    }
    const auto position = static_cast<double>(slot);
    auto [day, end] = daysIn({position, position + 1});
    if (!isForwards)
        day = std::min(end, dayCount()) - 1;
    else if (day > 0)
        --day; // whose last candle may be of this midnight
    for (; day >= 0 && day < dayCount(); day += step) {
        if (!hasSlots(day))
            continue;
        if (const std::optional<qint64> found = nextInDay(day, slot, isForwards))
            return found;
    }
    return std::nullopt;
}

} // namespace vexdesk
