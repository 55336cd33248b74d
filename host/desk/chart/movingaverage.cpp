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
    StudyLine line;
    double sum = 0;
    for (size_t i = 0; i < candles.size(); ++i) {
        sum += candles[i].candle.bar.close;
        if (i >= period)
            sum -= candles[i - period].candle.bar.close;
        if (i + 1 >= period)
            line.points.emplace_back(static_cast<double>(candles[i].slot) + 0.5,
                                     sum / static_cast<double>(period));
    }
    return {{line}, {}};
}

} // namespace vexdesk
