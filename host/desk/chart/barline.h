// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/bar.h"

#include <QtCore/QByteArrayView>
#include <QtCore/QDate>

#include <optional>

/// The lines of day files as the chart reads them. Throws nothing; any thread.
namespace vexdesk {

struct BarLine
{
    Bar bar;
    int decimals = 0; ///< digits after the point that its prices have
};

/// The bar of a line; no value for one without a time or without four prices.
///
/// Lines that the history editor has written have the money before the volume. They are known by a
/// point in the volume's place, where an import writes whole numbers alone, and read as they are
/// meant: an edited day keeps its volume in the chart.
std::optional<BarLine> readBarLine(QByteArrayView line, const QDate& day);

} // namespace vexdesk
