// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/timeframe.h"

#include <vexdesk/icharts.h>

#include <optional>

/// What is remembered of a chart. Any thread.
namespace vexdesk {

/// A study that a chart can show.
enum class Study { MovingAverage, VolumeByPrice };
inline constexpr std::array allStudies{Study::MovingAverage, Study::VolumeByPrice};

struct ChartState
{
    SeriesName series;
    std::optional<Timeframe> timeframe; ///< that was chosen; nothing where none was yet
    bool areNightsShown = false;
    QList<Study> studies;
    qint64 end = 0;         ///< wall time at the right edge; 0: the last bar
    double slotsInView = 0; ///< candles that have room; 0: as many as usual
    bool isAll = false;     ///< everything is in view, in place of the two above

    bool operator==(const ChartState&) const = default;
};

/// As it stands in the settings.
QString toText(const ChartState& state);
/// No value where the text names no series. What else is missing or makes no sense is as in a new
/// chart.
std::optional<ChartState> chartStateOf(const QString& text);

} // namespace vexdesk
