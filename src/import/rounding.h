// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/decimal.h>

namespace tadata {

/// Brings a number to so many digits after the point. Whether it is another number now: digits
/// other than zeros have gone. Throws as decimal::setScale() does.
inline bool roundTo(decimal& number, short decimals)
{
    if (number.scale() <= decimals) {
        if (number.scale() != decimals)
            number.setScale(decimals);
        return false;
    }
    const decimal exact = number;
    number.setScale(decimals);
    return number != exact;
}

} // namespace tadata
