// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/timeaxis.h"

#include <array>
#include <optional>

namespace vexdesk {

/// What has to be remembered of a chart to show the same again.
struct ChartPlace
{
    qint64 end = 0;     ///< the wall time at the right edge; 0 is the end, whatever comes there
    double slots = 0;   ///< of the chosen timeframe, from edge to edge; 0 for as many as usual
    bool isAll = false; ///< everything, whatever comes and however large the chart is

    bool operator==(const ChartPlace&) const = default;
};

/// What is shown of a series: which slots of the axis of which timeframe. The chosen timeframe is
/// shown where its candles have room, else the next longer one that has. Knows no widget; the
/// owner's thread only.
class ChartViewport final
{
public:
    /// A view to come back to.
    struct State
    {
        Timeframe timeframe = Timeframe::Minute;
        bool areNightsShown = false;
        Timeframe shown = Timeframe::Minute;
        double length = 0;
        double time = 0;  // that stands at this share of the view
        double share = 1; // from its left edge
        bool isAtEnd = false;
        bool isAll = false;

        bool operator==(const State&) const = default;
    };

    /// Another series, at its end.
    void showSeries(const std::shared_ptr<const BarSeries>& series);
    /// What the series has become, at the same place: by the wall time at the right edge or at what
    /// was gone to; new bars at the right end where that was shown; everything where everything
    /// was.
    void updateSeries(const std::shared_ptr<const BarSeries>& series);
    bool isEmpty() const { return axis().size() == 0; }

    /// How many slots have room at most, and how many are shown at first.
    void setRoom(double most, double usual);

    Timeframe timeframe() const { return m_timeframe; }
    Timeframe shownTimeframe() const { return m_shown; }
    /// As many slots of this timeframe, also where a longer one was shown in its place; the time
    /// `fixed` stays where it is, if there is one. Everything stays in view where it has room.
    void setTimeframe(Timeframe timeframe, std::optional<double> fixed = std::nullopt);
    bool areNightsShown() const { return m_areNightsShown; }
    void setNightsShown(bool areShown, std::optional<double> fixed = std::nullopt);

    const TimeAxis& axis() const { return m_axis; }
    const SlotRange& range() const { return m_range; }
    SlotLimits limits() const;
    /// The nearest range that is allowed is shown: however few bars are marked, these.
    void setRange(const SlotRange& range);
    void move(double slotCount);
    /// The first candle stands at the left, whatever night is before it.
    void moveToFirst();
    /// Makes the view longer by this factor; the position `fixed` stays where it is. Candles do not
    /// become wider by it than can be looked at.
    void zoom(double fixed, double factor);
    void showAll();
    /// Brings a wall time into the middle.
    void goTo(double time);

    ChartPlace place() const;
    void setPlace(const ChartPlace& place);
    State state() const;
    void restore(const State& state);

private:
    Timeframe shortestTimeframe() const;
    double closest() const;
    const TimeAxis& axisOf(Timeframe timeframe);
    void makeAxis();
    void show(Timeframe timeframe);
    void holdAt(double time);
    void rememberEdge();
    void applyPlace();
    void applyState();
    double lengthOn(Timeframe timeframe, const SlotRange& range);
    void fit(const SlotRange& wanted, double share);

    std::shared_ptr<const BarSeries> m_series = std::make_shared<const BarSeries>();
    Timeframe m_timeframe = Timeframe::Minute;
    bool m_areNightsShown = false;
    Timeframe m_shown = Timeframe::Minute;
    TimeAxis m_axis; // of what is shown
    std::array<std::optional<TimeAxis>, allTimeframes.size()> m_others;
    SlotRange m_range;
    double m_length = 0; // of the range that was wanted: an axis may be shorter
    double m_most = 200;
    double m_usual = 100;

    // What stays where it is when the axis becomes another one.
    double m_time = 0;
    double m_share = 1;
    bool m_isAtEnd = true;
    bool m_isAll = false;
    std::optional<ChartPlace> m_place = ChartPlace(); // until the user goes elsewhere
};

} // namespace vexdesk
