// SPDX-License-Identifier: MIT
#include "desk/chart/timeframecode.h"

#include <QtCore/QLatin1String>

#include <algorithm>

namespace vexdesk {

namespace {

constexpr std::array codes{"Second", "Minute", "Minutes5", "Minutes10", "Minutes30",
                           "Hour",   "Day",    "Week",     "Month"};
static_assert(codes.size() == allTimeframes.size());

} // namespace

QString timeframeCode(Timeframe timeframe)
{
    return QLatin1String(codes[static_cast<size_t>(timeframe)]);
}

std::optional<Timeframe> timeframeOfCode(const QString& code)
{
    const auto* const found =
        std::find_if(allTimeframes.begin(), allTimeframes.end(),
                     [&code](Timeframe one) { return timeframeCode(one) == code; });
    return found == allTimeframes.end() ? std::nullopt : std::optional(*found);
}

} // namespace vexdesk
