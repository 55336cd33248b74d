// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/candles.h"
#include "desk/chart/slotrange.h"

#include <QtCore/QPointF>
#include <QtCore/QString>

#include <vector>

/// What is computed from the candles and drawn with them. Any thread.
namespace vexdesk {

/// A candle and the slot of the time axis in which it stands.
struct PlacedCandle
{
    qint64 slot = 0;
    Candle candle;
    /// Days before it that may have candles were not read: it does not follow on the one before.
    bool isAfterGap = false;

    double middle() const { return static_cast<double>(slot) + 0.5; }
};

/// What a study sees.
struct StudyInput
{
    /// In the order of their slots: those in view and, where there are any, as many before them as
    /// the study asks for.
    const std::vector<PlacedCandle>& candles;
    SlotRange view;
    int decimals = 0; ///< digits after the point that the prices have
};

/// A line over the candles: x is a position in slots, y a price.
struct StudyLine
{
    std::vector<QPointF> points;
};

/// A bar that lies at the side of the prices.
struct StudyRow
{
    double low = 0; ///< prices
    double high = 0;
    double rising = 0; ///< the length of its parts, as shares of the longest row
    double falling = 0;
};

struct StudyShapes
{
    std::vector<StudyLine> lines;
    std::vector<StudyRow> rows;
    QString why = {}; ///< there is nothing to see, for the user; else empty
};

/// Made once with its parameters and never changed.
class ChartStudy
{
public:
    virtual ~ChartStudy() = default;

    /// As the user sees it in the chart's heading.
    virtual QString name() const = 0;
    /// How many candles it needs before those in view.
    virtual int candlesBefore() const { return 0; }
    virtual StudyShapes shapes(const StudyInput& input) const = 0;
};

} // namespace vexdesk
