// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/chartlayout.h"

class QPainter;

namespace vexdesk {

struct ChartColors;

/// What lies over a chart for a moment.
struct ChartOverlay
{
    std::optional<Crosshair> crosshair;
    std::optional<SlotRange> marked; ///< a range that was marked to be zoomed into
};

/// Paints a chart where its layout says, and its ground. A bar that closes below its open is
/// filled, another one hollow. Keeps nothing; any thread.
void paintChart(QPainter& painter, const ChartLayout& chart, const ChartColors& colors,
                const ChartOverlay& overlay = {});

} // namespace vexdesk
