// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/candles.h"
#include "desk/chart/timerange.h"

#include <QtCore/QRectF>
#include <QtCore/QString>
#include <QtGui/QFont>

#include <optional>
#include <vector>

/// Where everything on a chart stands: all that is painted, and what the mouse points at, is read
/// from here. Places are those of the widget, in device-independent pixels. Knows no widget; needs
/// a QGuiApplication for its fonts. Any thread.
namespace vexdesk {

/// A line of text and the place that it fills.
struct ChartLabel
{
    QString text;
    QRectF place;
};

/// A line across a pane, with the label beside or below it.
struct AxisLine
{
    double at = 0; ///< its height or, on the time axis, its distance from the left
    ChartLabel label;
    bool isBegin = false; ///< of a day or of a year
};

/// A part of the chart with an upright axis of its own on its right side.
struct ChartPane
{
    QRectF place;
    double low = 0;
    double high = 1;
    int decimals = 0;            ///< digits after the point of the labels
    bool isGrouped = false;      ///< whether the labels have their thousands apart
    std::vector<AxisLine> lines; ///< none where there is nothing to measure

    double yOf(double value) const
    {
        return place.bottom() - (value - low) / (high - low) * place.height();
    }
    double valueAt(double y) const
    {
        return low + (place.bottom() - y) / place.height() * (high - low);
    }
    QString textOf(double value) const;
};

/// The place of a candle's body or of a volume's bar from side to side: whole pixels with a gap
/// beside it, an odd number of them so that the wick is in the middle.
struct CandleColumn
{
    double left = 0;
    double width = 0;

    double middle() const { return left + (width - 1) / 2; }
};

/// The lines through the candle that the mouse points at, with its time and the value at the mouse
/// on the axes.
struct Crosshair
{
    size_t candle = 0;
    QPointF at;
    ChartLabel time;
    ChartLabel value; ///< null where the pane has no axis
};

struct ChartLayout
{
    QSizeF size;
    QFont font;
    TimeRange time;
    int timeframe = 60;   ///< of the bars, in seconds
    qint64 interval = 60; ///< of a candle, in seconds
    std::vector<Candle> candles;
    ChartPane prices;
    ChartPane volumes; ///< below the prices, of the same times
    std::vector<AxisLine> times;
    std::vector<ChartLabel> headings; ///< dates or years below the times

    double xOf(double seconds) const
    {
        return prices.place.left() + (seconds - time.begin) / time.length() * prices.place.width();
    }
    double timeAt(double x) const
    {
        return time.begin + (x - prices.place.left()) / prices.place.width() * time.length();
    }
    CandleColumn columnOf(const Candle& candle) const;

    /// No value beside the panes and where there is no candle.
    std::optional<Crosshair> crosshairAt(const QPointF& mouse) const;
};

/// Lays out what a series has in a range of times. Where there are more bars than there is room
/// for, each candle stands for several; the cost is that of the candles, not of the bars. The
/// series is not empty.
ChartLayout layOutChart(const BarSeries& series, int timeframe, const TimeRange& time,
                        const QSizeF& size, const QFont& font);

} // namespace vexdesk
