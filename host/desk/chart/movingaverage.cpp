// SPDX-License-Identifier: MIT
#include "desk/chart/movingaverage.h"

#include <QtCore/QCoreApplication>

#include <algorithm>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::MovingAverage)
};

} // namespace

MovingAverage::MovingAverage(int period)
    : m_period(std::max(1, period))
{}

QString MovingAverage::name() const
{
    return Text::tr("Скользящее среднее (%1)").arg(m_period);
}

StudyShapes MovingAverage::shapes(const StudyInput& input) const
{
    const std::vector<PlacedCandle>& candles = input.candles;
    const auto period = static_cast<size_t>(m_period);
    StudyShapes shapes;
    double sum = 0;
    size_t first = 0; // of the candles that follow on each other
    for (size_t i = 0; i < candles.size(); ++i) {
        if (i == 0 || candles[i].isAfterGap) {
            shapes.lines.emplace_back();
            first = i;
            sum = 0;
        }
        sum += candles[i].candle.bar.close;
        if (i >= first + period)
            sum -= candles[i - period].candle.bar.close;
        if (i + 1 >= first + period)
            shapes.lines.back().points.emplace_back(candles[i].middle(),
                                                    sum / static_cast<double>(period));
    }
    return shapes;
}

} // namespace vexdesk
