// SPDX-License-Identifier: MIT
#include "desk/chart/chartviewport.h"

#include <algorithm>
#include <cmath>

namespace vexdesk {

namespace {

constexpr double almost = 1 - 1e-9;

} // namespace

void ChartViewport::showSeries(const std::shared_ptr<const BarSeries>& series)
{
    m_place = ChartPlace();
    m_isAll = false;
    updateSeries(series);
}

void ChartViewport::updateSeries(const std::shared_ptr<const BarSeries>& series)
{
    const double behindEnd = m_range.end - static_cast<double>(m_axis.size());
    m_series = series;
    // A series of another source may have room for the chosen timeframe, or have none of it.
    const Timeframe shortest = shortestTimeframe();
    const bool isSourceAnother = series->timeframe() != m_axis.series().timeframe();
    if (m_shown < shortest || isSourceAnother)
        m_shown = shortest;
    makeAxis();
    if (isEmpty())
        return;
    if (m_place)
        applyPlace();
    else if (m_isAll)
        showAll();
    else if (m_isAtEnd && !isSourceAnother) {
        const double end = static_cast<double>(m_axis.size()) + behindEnd;
        m_range = limits().fitted({end - m_range.length(), end});
    } else {
        applyState();
    }
}

// Of those that can be made of what is stored.
Timeframe ChartViewport::shortestTimeframe() const
{
    Timeframe shortest = m_timeframe;
    const int stored = std::max(1, m_series->timeframe());
    while (isBelowDay(shortest) && secondsOf(shortest) % stored != 0)
        shortest = static_cast<Timeframe>(static_cast<int>(shortest) + 1);
    return shortest;
}

// The candles that were folded are taken over; the old series goes, with what it has in memory.
void ChartViewport::makeAxis()
{
    const auto made = [this](Timeframe timeframe, const TimeAxis& before) {
        return TimeAxis(std::make_shared<FoldedDays>(m_series, timeframe, before.folded().get()),
                        m_areNightsShown);
    };
    m_axis = made(m_shown, m_axis);
    // To show everything, or the place that is remembered, the others will be asked again.
    m_others[static_cast<size_t>(m_shown)].reset();
    for (auto& other : m_others) {
        if (!m_place && !m_isAll)
            other.reset();
        else if (other)
            other = made(other->timeframe(), *other);
    }
}

const TimeAxis& ChartViewport::axisOf(Timeframe timeframe)
{
    if (timeframe == m_shown)
        return m_axis;
    auto& other = m_others[static_cast<size_t>(timeframe)];
    if (!other)
        other = TimeAxis(std::make_shared<FoldedDays>(m_series, timeframe), m_areNightsShown);
    return *other;
}

void ChartViewport::show(Timeframe timeframe)
{
    if (timeframe == m_shown)
        return;
    const TimeAxis axis = axisOf(timeframe);
    m_others[static_cast<size_t>(m_shown)] = m_axis;
    m_others[static_cast<size_t>(timeframe)].reset();
    m_axis = axis;
    m_shown = timeframe;
}

SlotLimits ChartViewport::limits() const
{
    // A longer timeframe is shown as closely as it must be to have room for the next shorter one.
    const double fewest = m_shown == shortestTimeframe() ? 1 : 0.5;
    return SlotLimits(m_axis.size(), fewest, closest());
}

// How few slots zooming by steps comes down to.
double ChartViewport::closest() const
{
    if (m_shown != shortestTimeframe())
        return 0;
    // No candle is wider than so many of the thinnest.
    constexpr double widest = 10;
    return std::max(SlotLimits::usualFewest, m_most / widest);
}

void ChartViewport::setRoom(double most, double usual)
{
    if (most == m_most && usual == m_usual)
        return;
    m_most = most;
    m_usual = usual;
    if (isEmpty())
        return;
    if (m_place)
        applyPlace();
    else if (m_isAll)
        showAll();
    else
        fit(m_range, 1);
}

void ChartViewport::holdAt(double time)
{
    m_time = time;
    m_share = (m_axis.slotOf(time) - m_range.begin) / m_range.length();
    m_isAtEnd = false;
}

void ChartViewport::rememberEdge()
{
    const double end = static_cast<double>(m_axis.size());
    m_length = m_range.length();
    m_time = m_axis.timeUpTo(m_range.end);
    m_share = 1;
    m_isAtEnd = m_range.end >= end && m_range.begin < end;
    m_isAll = m_range.length() >= limits().all().length() * almost;
}

void ChartViewport::setTimeframe(Timeframe timeframe, std::optional<double> fixed)
{
    m_timeframe = timeframe;
    const Timeframe shortest = shortestTimeframe();
    if (shortest == m_shown)
        return;
    if (isEmpty()) {
        m_shown = shortest;
        makeAxis();
        return;
    }
    if (fixed)
        holdAt(*fixed);
    m_place.reset();
    show(shortest);
    if (m_isAll && limits().all().length() <= m_most) {
        showAll();
        return;
    }
    // What was chosen is what has to be seen, and not all of it has room.
    m_isAll = false;
    applyState();
}

void ChartViewport::setNightsShown(bool areShown, std::optional<double> fixed)
{
    if (areShown == m_areNightsShown)
        return;
    if (fixed && !isEmpty())
        holdAt(*fixed);
    m_areNightsShown = areShown;
    makeAxis();
    if (isEmpty())
        return;
    if (m_place)
        applyPlace();
    else if (m_isAll)
        showAll();
    else
        applyState();
}

// The same length at the time that is to stay where it is.
void ChartViewport::applyState()
{
    const double length = std::min(m_length, m_most);
    const double begin =
        m_isAtEnd ? limits().reach(length).end - length : m_axis.slotOf(m_time) - m_share * length;
    m_range = limits().fitted({begin, begin + length});
}

double ChartViewport::lengthOn(Timeframe timeframe, const SlotRange& range)
{
    if (timeframe == m_shown)
        return range.length();
    const TimeAxis& axis = axisOf(timeframe);
    const double length =
        axis.slotOf(m_axis.timeUpTo(range.end)) - axis.slotOf(m_axis.timeAt(range.begin));
    axis.folded()->letGo();
    return length;
}

// Shows the range, at the shortest timeframe whose candles have room. What is at this share of it
// stays there.
void ChartViewport::fit(const SlotRange& wanted, double share)
{
    const double most = limits().all().length();
    SlotRange range = wanted;
    if (range.length() > most) {
        const double still = wanted.begin + share * wanted.length();
        range = {still - share * most, still + (1 - share) * most};
    }
    const double fixed = m_axis.timeUpTo(range.begin + share * range.length());
    Timeframe timeframe = shortestTimeframe();
    double length = lengthOn(timeframe, range);
    while (length > m_most && timeframe < Timeframe::Month) {
        timeframe = static_cast<Timeframe>(static_cast<int>(timeframe) + 1);
        length = lengthOn(timeframe, range);
    }
    if (timeframe != m_shown) {
        show(timeframe);
        const double begin = m_axis.slotOf(fixed) - share * length;
        range = {begin, begin + length};
    }
    m_range = limits().fitted(range);
    rememberEdge();
}

void ChartViewport::setRange(const SlotRange& range)
{
    if (isEmpty())
        return;
    m_place.reset();
    if (std::abs(range.length() - m_range.length()) < 1e-6) {
        m_range = limits().fitted({range.begin, range.begin + m_range.length()});
        rememberEdge();
    } else {
        fit(range, 1);
    }
}

void ChartViewport::move(double slotCount)
{
    setRange({m_range.begin + slotCount, m_range.end + slotCount});
}

void ChartViewport::moveToFirst()
{
    move(limits().reach(m_range.length()).begin + m_axis.begin() - m_range.begin);
}

void ChartViewport::zoom(double fixed, double factor)
{
    if (isEmpty())
        return;
    m_place.reset();
    const SlotLimits ends = limits();
    const double longest = ends.all().length();
    const double shortest =
        std::min({std::max(closest(), ends.fitted({0, 0}).length()), m_range.length(), longest});
    const double length = std::clamp(m_range.length() * factor, shortest, longest);
    const double share = (fixed - m_range.begin) / m_range.length();
    const double begin = fixed - share * length;
    fit({begin, begin + length}, share);
}

void ChartViewport::showAll()
{
    if (isEmpty())
        return;
    m_place.reset();
    Timeframe timeframe = shortestTimeframe();
    while (timeframe < Timeframe::Month &&
           SlotLimits(axisOf(timeframe).size()).all().length() > m_most)
        timeframe = static_cast<Timeframe>(static_cast<int>(timeframe) + 1);
    show(timeframe);
    m_range = limits().all();
    rememberEdge();
}

void ChartViewport::goTo(double time)
{
    if (isEmpty())
        return;
    m_place.reset();
    const double half = m_range.length() / 2;
    const double slot = m_axis.slotOf(time);
    m_range = limits().fitted({slot - half, slot + half});
    m_isAll = false;
    holdAt(time);
}

ChartPlace ChartViewport::place() const
{
    if (m_place)
        return *m_place;
    ChartPlace place;
    if (m_isAll) {
        place.isAll = true;
        return place;
    }
    place.slots = m_range.length();
    if (m_shown != shortestTimeframe()) {
        const TimeAxis axis(std::make_shared<FoldedDays>(m_series, shortestTimeframe()),
                            m_areNightsShown);
        place.slots =
            axis.slotOf(m_axis.timeUpTo(m_range.end)) - axis.slotOf(m_axis.timeAt(m_range.begin));
    }
    if (m_range.end < static_cast<double>(m_axis.size()))
        place.end = std::llround(m_axis.timeUpTo(m_range.end));
    return place;
}

void ChartViewport::setPlace(const ChartPlace& place)
{
    m_place = place;
    if (!isEmpty())
        applyPlace();
}

void ChartViewport::applyPlace()
{
    const ChartPlace place = *m_place;
    if (place.isAll) {
        showAll();
        return;
    }
    show(shortestTimeframe());
    const double length = place.slots > 0 ? place.slots : m_usual;
    const double end =
        place.end != 0 ? m_axis.slotOf(static_cast<double>(place.end)) : limits().reach(length).end;
    fit({end - length, end}, 1);
    if (place.end == 0) {
        // A longer timeframe may end later.
        const double last = limits().reach(m_range.length()).end;
        m_range = limits().fitted({last - m_range.length(), last});
        rememberEdge();
    }
    m_isAll = m_isAll && place.slots > 0;
}

ChartViewport::State ChartViewport::state() const
{
    return {m_timeframe, m_areNightsShown, m_shown,   m_range.length(),
            m_time,      m_share,          m_isAtEnd, m_isAll};
}

void ChartViewport::restore(const State& state)
{
    m_place.reset();
    m_timeframe = state.timeframe;
    m_areNightsShown = state.areNightsShown;
    m_shown = std::max(state.shown, shortestTimeframe());
    makeAxis();
    m_time = state.time;
    m_share = state.share;
    m_isAtEnd = state.isAtEnd;
    m_isAll = state.isAll;
    if (isEmpty())
        return;
    if (m_isAll) {
        showAll();
        return;
    }
    m_length = state.length;
    m_range = {0, state.length};
    applyState();
}

} // namespace vexdesk
