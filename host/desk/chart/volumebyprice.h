// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/chartstudy.h"

namespace vexdesk {

/// How much was traded at which prices, of the candles in view: rows of one height from the lowest
/// price to the highest. The volume of a candle is spread evenly over the prices between its lowest
/// and its highest one. Any thread.
class VolumeByPrice final : public ChartStudy
{
public:
    /// In at most so many rows, at least one.
    explicit VolumeByPrice(int rows);

    QString name() const override;
    StudyShapes shapes(const StudyInput& input) const override;

private:
    int m_rows;
};

} // namespace vexdesk
