// SPDX-License-Identifier: MIT
#include "desk/chart/volumebyprice.h"

#include <QtCore/QCoreApplication>

#include <algorithm>
#include <cmath>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::VolumeByPrice)
};

bool isInView(const PlacedCandle& placed, const SlotRange& view)
{
    return static_cast<double>(placed.slot) + 1 > view.begin &&
           static_cast<double>(placed.slot) < view.end;
}

bool isAnyInView(const StudyInput& input)
{
    return std::any_of(
        input.candles.begin(), input.candles.end(),
        [&input](const PlacedCandle& placed) { return isInView(placed, input.view); });
}

// The rows between the lowest and the highest price in view, none where nothing is traded.
std::vector<StudyRow> emptyRows(const StudyInput& input, int most)
{
    double low = 0;
    double high = 0;
    bool isFirst = true;
    for (const PlacedCandle& placed : input.candles) {
        const Bar& bar = placed.candle.bar;
        if (!isInView(placed, input.view) || bar.volume <= 0)
            continue;
        low = isFirst ? bar.low : std::min(low, bar.low);
        high = isFirst ? bar.high : std::max(high, bar.high);
        isFirst = false;
    }
    if (isFirst)
        return {};
    // No row is lower than a step of the price.
    const double step = std::pow(10.0, -input.decimals);
    const double height = std::max({(high - low) / most, step, std::abs(high) * 1e-12});
    const int count = std::clamp(static_cast<int>(std::ceil((high - low) / height)), 1, most);
    std::vector<StudyRow> rows(static_cast<size_t>(count));
    for (size_t i = 0; i < rows.size(); ++i) {
        rows[i].low = low + height * static_cast<double>(i);
        rows[i].high = rows[i].low + height;
    }
    return rows;
}

void addVolume(std::vector<StudyRow>& rows, const Bar& bar)
{
    const double lowest = rows.front().low;
    const double height = rows.front().high - lowest;
    const auto rowOf = [&](double price) {
        return std::clamp(static_cast<int>((price - lowest) / height), 0,
                          static_cast<int>(rows.size()) - 1);
    };
    const int first = rowOf(bar.low);
    const int last = rowOf(bar.high);
    const auto volume = static_cast<double>(bar.volume);
    for (int i = first; i <= last; ++i) {
        StudyRow& row = rows[static_cast<size_t>(i)];
        const double inside = std::min(bar.high, row.high) - std::max(bar.low, row.low);
        const double share = first == last ? 1 : inside / (bar.high - bar.low);
        (bar.close < bar.open ? row.falling : row.rising) += volume * share;
    }
}

} // namespace

VolumeByPrice::VolumeByPrice(int rows)
    : m_rows(std::max(1, rows))
{}

QString VolumeByPrice::name() const
{
    return Text::tr("Объём по ценам");
}

StudyShapes VolumeByPrice::shapes(const StudyInput& input) const
{
    std::vector<StudyRow> rows = emptyRows(input, m_rows);
    if (rows.empty())
        return {{}, {}, isAnyInView(input) ? Text::tr("нет объёма") : QString()};
    for (const PlacedCandle& placed : input.candles) {
        if (isInView(placed, input.view) && placed.candle.bar.volume > 0)
            addVolume(rows, placed.candle.bar);
    }
    double longest = 0;
    for (const StudyRow& row : rows)
        longest = std::max(longest, row.rising + row.falling);
    for (StudyRow& row : rows) {
        row.rising /= longest;
        row.falling /= longest;
    }
    return {{}, rows, {}};
}

} // namespace vexdesk
