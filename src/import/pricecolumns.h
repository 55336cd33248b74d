// SPDX-License-Identifier: MIT
#pragma once

#include "samplecolumns.h"

#include <vexdesk/decimal.h>

#include <array>
#include <optional>
#include <vector>

/// Columns of prices, known by their numbers. All of it is exact. Any thread.
namespace tadata {

/// The numbers of a column, one for each line; none where the field is no decimal of the host.
using Numbers = std::vector<std::optional<decimal>>;
Numbers numbersOf(const Column& column);

/// Of open, high, low and close, in this order.
using PriceColumns = std::array<const Numbers*, 4>;

/// Whether in enough lines low <= open, close <= high; of the beginnings of columns, whether that
/// still may be.
bool mayBePrices(const SampleBody& body, const PriceColumns& columns);
/// Whether it is so, and high > low in one of these lines.
bool arePrices(const SampleBody& body, const PriceColumns& columns);

/// Whether what passes for open is rather close, and close open: bars lie closer to each other with
/// the two exchanged.
bool isOpenExchanged(const SampleBody& body, const PriceColumns& columns);

/// The most digits after the point.
int mostDecimals(const PriceColumns& columns);

} // namespace tadata
