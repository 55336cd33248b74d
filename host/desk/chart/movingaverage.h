// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/chartstudy.h"

namespace vexdesk {

/// The mean of the last closes, at every candle that has as many before it. Any thread.
class MovingAverage final : public ChartStudy
{
public:
    /// Of so many candles, at least one.
    explicit MovingAverage(int period);

    QString name() const override;
    int candlesBefore() const override { return m_period - 1; }
    StudyShapes shapes(const StudyInput& input) const override;

private:
    int m_period;
};

} // namespace vexdesk
