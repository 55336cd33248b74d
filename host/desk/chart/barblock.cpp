// SPDX-License-Identifier: MIT
#include "desk/chart/barblock.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

namespace vexdesk {

namespace {

constexpr int wordsOfDouble = 2;
constexpr int priceCount = 4;
enum Price : int { Open, High, Low, Close };

constexpr double mostMoney = 70368744177664.0; // 46 bits, and one more for the sign

std::array<double, priceCount> pricesOf(const Bar& bar)
{
    return {bar.open, bar.high, bar.low, bar.close};
}

// The nearest one to a number.
qint64 unitsOf(double number, double power)
{
    const double scaled = number * power;
    return static_cast<qint64>(scaled + (scaled < 0 ? -0.5 : 0.5));
}

// Whether the number of units gives this very number.
bool hasUnits(double number, double power)
{
    constexpr double mostExact = 9007199254740992.0; // every whole number up to it is a double
    return std::abs(number * power) < mostExact &&
           static_cast<double>(unitsOf(number, power)) / power == number;
}

double doubleAt(const quint32* words)
{
    double number = 0;
    std::memcpy(&number, words, sizeof(number));
    return number;
}

void putDouble(double number, quint32* words)
{
    std::memcpy(words, &number, sizeof(number));
}

} // namespace

BarBlock::BarBlock(const Bar* first, const Bar* last, qint64 midnight)
    : m_midnight(midnight)
{
    // As few digits as there are: zeros at the end of a price are none that take room.
    constexpr double mostPower = 1e15;
    double power = 1;
    while (!choosePrices(first, last, power) && power < mostPower)
        power *= 10;
    chooseRow(first, last);
    m_words.resize(static_cast<size_t>((last - first) * m_rowSize));
    quint32* row = m_words.data();
    for (const Bar* bar = first; bar != last; ++bar, row += m_rowSize)
        put(*bar, row);
}

// Whether all prices are whole numbers of such units, whether they are near enough or not.
bool BarBlock::choosePrices(const Bar* first, const Bar* last, double power)
{
    qint64 lowest = std::numeric_limits<qint64>::max();
    qint64 highest = std::numeric_limits<qint64>::min();
    for (const Bar* bar = first; bar != last; ++bar) {
        for (const double price : pricesOf(*bar)) {
            if (!hasUnits(price, power))
                return false;
            const qint64 units = unitsOf(price, power);
            lowest = std::min(lowest, units);
            highest = std::max(highest, units);
        }
    }
    m_hasUnits = highest - lowest <= qint64(std::numeric_limits<quint32>::max());
    m_base = lowest;
    m_power = power;
    return true;
}

// Units of which the largest amount has room; smaller ones only as long as they are needed.
void BarBlock::chooseMoney(const Bar* first, const Bar* last)
{
    constexpr double mostPower = 1e15;
    double largest = 0;
    for (const Bar* bar = first; bar != last; ++bar)
        largest = std::max(largest, std::abs(bar->value));
    while (largest * m_moneyPower >= mostMoney)
        m_moneyPower /= 10;
    const auto isWhole = [this](const Bar& bar) { return hasUnits(bar.value, m_moneyPower); };
    while (m_moneyPower < mostPower && largest * m_moneyPower * 10 < mostMoney &&
           !std::all_of(first, last, isWhole))
        m_moneyPower *= 10;
}

void BarBlock::chooseRow(const Bar* first, const Bar* last)
{
    const bool hasInterest =
        std::any_of(first, last, [](const Bar& bar) { return bar.openInterest != 0; });
    const bool hasMoney = std::any_of(first, last, [](const Bar& bar) { return bar.value != 0; });
    m_isMoneyShared = !m_hasUnits && hasInterest && hasMoney;
    if (m_isMoneyShared) {
        chooseMoney(first, last);
        m_volumeAt = wordsOfDouble;
    }
    m_rowSize = m_volumeAt + 1 + priceCount * (m_hasUnits ? 1 : wordsOfDouble);
    if (hasInterest)
        m_interestAt = m_rowSize++;
    if (hasMoney && !m_isMoneyShared) {
        m_moneyAt = m_rowSize;
        m_rowSize += wordsOfDouble;
    }
}

void BarBlock::put(const Bar& bar, quint32* row) const
{
    const auto second = static_cast<quint32>(bar.time - m_midnight);
    if (m_isMoneyShared) {
        const qint64 money = unitsOf(bar.value, m_moneyPower);
        const quint64 both = static_cast<quint64>(money) << secondBits | second;
        std::memcpy(row, &both, sizeof(both));
    } else {
        row[0] = second;
    }
    row[m_volumeAt] = static_cast<quint32>(bar.volume);
    quint32* at = row + m_volumeAt + 1;
    for (const double price : pricesOf(bar)) {
        if (m_hasUnits) {
            *at++ = static_cast<quint32>(unitsOf(price, m_power) - m_base);
        } else {
            putDouble(price, at);
            at += wordsOfDouble;
        }
    }
    if (m_interestAt > 0)
        row[m_interestAt] = static_cast<quint32>(bar.openInterest);
    if (m_moneyAt > 0)
        putDouble(bar.value, row + m_moneyAt);
}

double BarBlock::moneyOf(const quint32* row) const
{
    if (m_moneyAt > 0)
        return doubleAt(row + m_moneyAt);
    if (!m_isMoneyShared)
        return 0;
    qint64 both = 0;
    std::memcpy(&both, row, sizeof(both));
    return static_cast<double>(both >> secondBits) / m_moneyPower;
}

Bar BarBlock::at(qsizetype index) const
{
    const quint32* const words = row(index);
    const quint32* const prices = words + m_volumeAt + 1;
    const auto price = [this, prices](Price one) {
        return m_hasUnits ? priceOf(prices[one])
                          : doubleAt(prices + qsizetype(wordsOfDouble) * one);
    };
    Bar bar;
    bar.time = m_midnight + secondOf(index);
    bar.open = price(Open);
    bar.high = price(High);
    bar.low = price(Low);
    bar.close = price(Close);
    bar.volume = static_cast<qint32>(words[m_volumeAt]);
    bar.value = moneyOf(words);
    if (m_interestAt > 0)
        bar.openInterest = static_cast<qint32>(words[m_interestAt]);
    return bar;
}

Bar BarBlock::sum(qsizetype first, qsizetype last) const
{
    Bar sum = at(first);
    if (!m_hasUnits) {
        for (qsizetype i = first + 1; i < last; ++i)
            extendBar(sum, at(i));
        return sum;
    }
    // The same in whole numbers: a price is made of the result alone.
    const int highAt = m_volumeAt + 1 + High;
    const int lowAt = m_volumeAt + 1 + Low;
    quint32 high = row(first)[highAt];
    quint32 low = row(first)[lowAt];
    for (qsizetype i = first + 1; i < last; ++i) {
        const quint32* const words = row(i);
        high = std::max(high, words[highAt]);
        low = std::min(low, words[lowAt]);
        sum.volume += static_cast<qint32>(words[m_volumeAt]);
        if (m_moneyAt > 0)
            sum.value += doubleAt(words + m_moneyAt);
    }
    const Bar end = at(last - 1);
    sum.time = end.time;
    sum.high = priceOf(high);
    sum.low = priceOf(low);
    sum.close = end.close;
    sum.openInterest = end.openInterest;
    return sum;
}

qsizetype BarBlock::bytes() const
{
    return static_cast<qsizetype>(sizeof(*this)) +
           static_cast<qsizetype>(m_words.capacity()) * static_cast<qsizetype>(sizeof(quint32));
}

} // namespace vexdesk
