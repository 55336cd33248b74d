// SPDX-License-Identifier: MIT
#include "pricecolumns.h"

#include <QtCore/QLatin1String>

namespace tadata {

namespace {

// Integers of 128 bits: sums of some thousand mantissas, and ten times as much.
__extension__ typedef __int128 Wide;

struct Prices
{
    decimal open;
    decimal high;
    decimal low;
    decimal close;
};

// The prices of a line; none where they cannot be those of a bar.
std::optional<Prices> pricesOf(const PriceColumns& columns, size_t line)
{
    for (const Numbers* numbers : columns) {
        if (!(*numbers)[line])
            return std::nullopt;
    }
    const Prices prices{*(*columns[0])[line], *(*columns[1])[line], *(*columns[2])[line],
                        *(*columns[3])[line]};
    const bool areBars = prices.low <= prices.open && prices.low <= prices.close &&
                         prices.open <= prices.high && prices.close <= prices.high;
    return areBars ? std::optional(prices) : std::nullopt;
}

// A sum of decimals of any scales, of which only the sign is asked for.
class SignOfSum final
{
public:
    void add(const decimal& number) { add(number, 1); }
    void subtract(const decimal& number) { add(number, -1); }

    bool isPositive() const
    {
        Wide sum = 0;
        for (const Wide part : m_mantissas) {
            sum = sum * 10 + part;
            // What follows is worth less than a part with one digit more: it changes no sign.
            if (sum > largestPart || sum < -largestPart)
                break;
        }
        return sum > 0;
    }

private:
    // Of a sum of 2^24 mantissas of 56 bits.
    static constexpr Wide largestPart = Wide(1) << 80;

    void add(const decimal& number, int sign)
    {
        m_mantissas[static_cast<size_t>(number.scale())] += Wide(number.mantissa()) * sign;
    }

    std::array<Wide, decimal::maxScale + 1> m_mantissas{}; ///< by scale
};

void addDistance(SignOfSum& sum, const decimal& from, const decimal& to)
{
    sum.add(std::max(from, to));
    sum.subtract(std::min(from, to));
}

} // namespace

Numbers numbersOf(const Column& column)
{
    Numbers numbers;
    numbers.reserve(column.size());
    for (const QByteArrayView field : column)
        numbers.push_back(decimal::fromText(QLatin1String(field.data(), field.size())));
    return numbers;
}

bool mayBePrices(const SampleBody& body, const PriceColumns& columns)
{
    size_t misses = 0;
    for (size_t line = 0; line < columns[0]->size(); ++line) {
        if (!pricesOf(columns, line) && ++misses > body.allowedMisses())
            return false;
    }
    return true;
}

bool arePrices(const SampleBody& body, const PriceColumns& columns)
{
    const auto isMoving = [&columns](size_t line) {
        const std::optional<Prices> prices = pricesOf(columns, line);
        return prices && prices->high > prices->low;
    };
    size_t line = 0;
    while (line < body.size() && !isMoving(line))
        ++line;
    return line < body.size() && mayBePrices(body, columns);
}

bool isOpenExchanged(const SampleBody& body, const PriceColumns& columns)
{
    SignOfSum difference; // of the distances as they are and with open and close exchanged
    std::optional<Prices> before;
    for (size_t line = 0; line < body.size(); ++line) {
        if (body.beginsHalf(line))
            before.reset();
        const std::optional<Prices> prices = pricesOf(columns, line);
        if (!prices)
            continue;
        if (before) {
            addDistance(difference, prices->open, before->close);
            difference.subtract(std::max(prices->close, before->open));
            difference.add(std::min(prices->close, before->open));
        }
        before = prices;
    }
    return difference.isPositive();
}

int mostDecimals(const PriceColumns& columns)
{
    int most = 0;
    for (const Numbers* numbers : columns) {
        for (const std::optional<decimal>& number : *numbers)
            most = std::max(most, number ? number->scale() : 0);
    }
    return most;
}

} // namespace tadata
