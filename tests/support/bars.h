// SPDX-License-Identifier: MIT
#pragma once

#include "bardescription.h"

namespace testsupport {

/// A bar in which no two fields are alike, of this opening price.
inline BarDescription sampleBar(const QDate& date, const QTime& time, int price, qint64 volume = 1)
{
    BarDescription bar;
    bar.valid = true;
    bar.date = date;
    bar.time = time;
    bar.open = decimal(price, 0);
    bar.high = decimal(price + 5, 0);
    bar.low = decimal(price - 5, 0);
    bar.close = decimal(price + 1, 0);
    bar.volume = volume;
    bar.value = decimal(price * 10, 0);
    bar.openInterest = price;
    return bar;
}

} // namespace testsupport
