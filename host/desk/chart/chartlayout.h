// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/chartmarks.h"
#include "desk/chart/chartstudy.h"
#include "desk/chart/readout.h"
#include "desk/chart/timeaxis.h"

#include <QtCore/QRectF>
#include <QtCore/QString>
#include <QtGui/QFont>

#include <memory>
#include <optional>
#include <vector>

/// Where everything on a chart stands: all that is painted, and what the mouse points at, is read
/// from here. Places are those of the widget, in device-independent pixels. Knows no widget; needs
/// a QGuiApplication for its fonts. The axis' thread only; what was laid out, any thread.
namespace vexdesk {

/// What a chart shows.
struct ChartContent
{
    TimeAxis axis;
    SlotRange range;
    QString title; ///< may be empty
    std::vector<std::shared_ptr<const ChartStudy>> studies;
    QList<ChartMark> marks;
};

/// A line of text and the place that it fills.
struct ChartLabel
{
    QString text;
    QRectF place;
};

/// A line across a pane, with the label beside or below it.
struct AxisLine
{
    double at = 0;        ///< its height or, on the time axis, its distance from the left
    ChartLabel label;     ///< may be empty
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

/// The lines through the slot that is pointed at, with its time and a value on the axes.
struct Crosshair
{
    qint64 slot = 0;
    std::optional<size_t> candle; ///< none where the day was not read yet
    QPointF at;
    ChartLabel time;
    ChartLabel value; ///< null where the pane has no axis, and without a candle
};

/// The last price of the series, where it is among the prices in view.
struct LastPrice
{
    double at = 0; ///< its height
    ChartLabel label;
    bool isRising = false;
};

/// The sign of what is marked at a candle, below it.
struct MarkSign
{
    CandleMark mark;
    QRectF place;
};

/// What a study has made, and its place among the studies.
struct PlacedStudy
{
    StudyShapes shapes;
    ChartLabel name;
};

struct ChartLayout
{
    QSizeF size;
    QFont font;
    SlotRange range;
    CandleKind kind;
    std::vector<PlacedCandle> candles;
    std::vector<SlotRange> unread; ///< stretches whose days were not read yet
    ChartPane prices;
    ChartPane volumes; ///< below the prices, of the same times; of no height without any or room
    ChartLabel volumesNote; ///< where the bars in view have none; else empty
    std::vector<AxisLine> times;
    std::vector<ChartLabel> headings; ///< dates or years below the times
    ChartLabel title;
    QString fullTitle; ///< also what of it there is no room for
    std::vector<PlacedStudy> studies;
    std::optional<LastPrice> last;
    std::vector<MarkSign> marks;

    bool hasVolumes() const { return volumes.place.height() > 0; }
    double slotWidth() const { return prices.place.width() / range.length(); }
    double xOf(double slot) const
    {
        return prices.place.left() + (slot - range.begin) * slotWidth();
    }
    double slotAt(double x) const { return range.begin + (x - prices.place.left()) / slotWidth(); }
    bool isInView(double slot) const { return slot >= range.begin && slot <= range.end; }
    CandleColumn columnOf(const PlacedCandle& candle) const;

    /// No value beside the panes, where there is no candle and where days were not read.
    std::optional<Crosshair> crosshairAt(const QPointF& mouse) const;
    /// On the close of the candle in this slot or the nearest one, or on a slot of a day that was
    /// not read. No value out of view.
    std::optional<Crosshair> crosshairOn(qint64 slot) const;
    /// The sign at a place.
    const MarkSign* markAt(const QPointF& place) const;
    /// The sign below a candle.
    const MarkSign* markOf(size_t candle) const;
};

/// Lays out what a chart shows. The axis has slots.
ChartLayout layOutChart(const ChartContent& content, const QSizeF& size, const QFont& font);

/// How wide the panes are in a chart of this size, whatever its prices are; about.
double usualPaneWidth(const QSizeF& size, const QFont& font);

} // namespace vexdesk
