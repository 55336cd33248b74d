// SPDX-License-Identifier: MIT
#include "desk/chart/barline.h"

#include "desk/chart/wallclock.h"

#include <vexdesk/history/recordline.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace vexdesk {

namespace {

// Exact powers of ten: a quotient by them is the nearest number that there is.
constexpr std::array<double, 16> powers{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                        1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

bool isNumber(QByteArrayView text)
{
    return decimal::fromText(QLatin1String(text.data(), text.size())).has_value();
}

// What is no number was read as zero: only where there is a zero the text has to be asked.
bool hasPrices(const StoredBar& bar, const RecordFields& fields)
{
    const auto isPrice = [&fields](const decimal& price, RecordField field) {
        return !price.isZero() || isNumber(fields[field]);
    };
    return isPrice(bar.open, OpenField) && isPrice(bar.high, HighField) &&
           isPrice(bar.low, LowField) && isPrice(bar.close, CloseField);
}

double toDouble(const decimal& number)
{
    const auto mantissa = static_cast<double>(number.mantissa());
    const auto scale = static_cast<size_t>(number.scale());
    return mantissa / (scale < powers.size() ? powers[scale] : std::pow(10.0, number.scale()));
}

Bar barOf(const StoredBar& stored)
{
    Bar bar;
    bar.time = wallTime(stored.date, stored.time);
    bar.open = toDouble(stored.open);
    bar.high = toDouble(stored.high);
    bar.low = toDouble(stored.low);
    bar.close = toDouble(stored.close);
    bar.volume = stored.volume;
    bar.value = toDouble(stored.value);
    bar.openInterest = stored.openInterest;
    return bar;
}

int decimalsOf(const StoredBar& bar)
{
    // More digits are not told apart by a double, and there is no room for them.
    constexpr int most = 15;
    return std::min(
        most, std::max({bar.open.scale(), bar.high.scale(), bar.low.scale(), bar.close.scale()}));
}

} // namespace

std::optional<BarLine> readBarLine(QByteArrayView line, const QDate& day)
{
    RecordFields fields = firstRecordFields(line);
    if (fields[VolumeField].contains('.'))
        std::swap(fields[VolumeField], fields[ValueField]);
    const StoredBar stored = storedBar(fields, day);
    if (!stored.time.isValid() || !hasPrices(stored, fields))
        return std::nullopt;
    return BarLine{barOf(stored), decimalsOf(stored)};
}

} // namespace vexdesk
