// SPDX-License-Identifier: MIT
#include "healthsums.h"

namespace tadata {

HealthSums sumsOf(const SeriesHealth& health)
{
    HealthSums sums;
    for (const DayHealth& day : health.days) {
        for (const Gap& gap : day.gaps) {
            sums.quiet += gap.isQuiet ? 1 : 0;
            sums.gaps += gap.isQuiet ? 0 : 1;
            sums.gapBars += gap.isQuiet ? 0 : gap.bars;
        }
        sums.badLines += static_cast<qint64>(day.badLines.size());
        sums.duplicates += day.duplicates;
        sums.outOfOrder += day.outOfOrder;
        sums.prices += day.prices;
        sums.jumps += static_cast<qint64>(day.jumps.size());
        sums.volume += day.volume;
        sums.edited += day.edited;
    }
    return sums;
}

} // namespace tadata
