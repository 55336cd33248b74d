// SPDX-License-Identifier: MIT
#pragma once

#include "serieshealth.h"

namespace tadata {

/// What is found in a series, counted over its days. A plain value.
struct HealthSums
{
    qint64 gaps = 0;
    qint64 gapBars = 0; ///< that are missing in them
    qint64 quiet = 0;   ///< gaps
    qint64 badLines = 0;
    qint64 duplicates = 0;
    qint64 outOfOrder = 0;
    qint64 prices = 0;
    qint64 jumps = 0;
    qint64 volume = 0;
    qint64 edited = 0;
};

HealthSums sumsOf(const SeriesHealth& health);

} // namespace tadata
