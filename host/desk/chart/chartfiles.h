// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/chartlayout.h"

#include <vexdesk/outcome.h>

#include <QtGui/QImage>

/// What a chart gives to other programs: its candles as text, and its picture. Knows no widget.
namespace vexdesk {

struct ChartColors;

/// A line for each candle below one with the names of its columns, with tabs between them. Numbers
/// are written as the default locale writes them, for a spreadsheet takes no others for numbers.
/// The columns of money and open interest are left out where no candle has any. Prices have so many
/// digits after the point, money at least as many, and all that it has. Any thread.
QString candlesAsText(const std::vector<Candle>& candles, const CandleKind& kind, int decimals);

/// The chart on its ground, with so many pixels for each of the layout's.
QImage chartImage(const ChartLayout& chart, const ChartColors& colors, double scale);

/// Writes the chart as a .png or .svg file, which the path's suffix decides; a file that is there
/// is replaced only when all is written. `scale` is for the first of them.
Outcome saveChart(const ChartLayout& chart, const ChartColors& colors, double scale,
                  const QString& path);

} // namespace vexdesk
