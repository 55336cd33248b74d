// SPDX-License-Identifier: MIT
#include "desk/chart/daybars.h"

#include "desk/chart/wallclock.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

namespace vexdesk {

namespace {

enum Word : int { SecondWord, VolumeWord, OpenWord, HighWord, LowWord, CloseWord };
constexpr int wordsOfUnits = 6; // of a row whose prices are units
constexpr int wordsOfDoubles = 10;
constexpr int wordsOfDouble = 2;

std::array<double, 4> pricesOf(const Bar& bar)
{
    return {bar.open, bar.high, bar.low, bar.close};
}

// The nearest one to a price.
qint64 unitsOf(double price, double power)
{
    const double scaled = price * power;
    return static_cast<qint64>(scaled + (scaled < 0 ? -0.5 : 0.5));
}

// Whether the number of units gives this very price.
bool hasUnits(double price, double power)
{
    constexpr double mostExact = 9007199254740992.0; // every whole number up to it is a double
    return std::abs(price * power) < mostExact &&
           static_cast<double>(unitsOf(price, power)) / power == price;
}

double doubleAt(const quint32* words)
{
    double number;
    std::memcpy(&number, words, sizeof(number));
    return number;
}

void putDouble(double number, quint32* words)
{
    std::memcpy(words, &number, sizeof(number));
}

} // namespace

DayBars::DayBars(const std::vector<Bar>& bars, int decimals)
    : m_size(static_cast<qsizetype>(bars.size()))
    , m_midnight(floorDivided(bars.front().time, secondsPerDay) * secondsPerDay)
    , m_decimals(decimals)
{
    for (int i = 0; i < decimals; ++i)
        m_power *= 10;
    choosePrices(bars);
    chooseRow(bars);
    m_words.resize(bars.size() * static_cast<size_t>(m_rowSize));
    quint32* row = m_words.data();
    for (const Bar& bar : bars) {
        put(bar, row);
        row += m_rowSize;
    }
}

void DayBars::choosePrices(const std::vector<Bar>& bars)
{
    qint64 lowest = std::numeric_limits<qint64>::max();
    qint64 highest = std::numeric_limits<qint64>::min();
    for (const Bar& bar : bars) {
        for (const double price : pricesOf(bar)) {
            if (!hasUnits(price, m_power))
                return;
            const qint64 units = unitsOf(price, m_power);
            lowest = std::min(lowest, units);
            highest = std::max(highest, units);
        }
    }
    m_hasUnits = highest - lowest <= qint64(std::numeric_limits<quint32>::max());
    m_base = lowest;
}

void DayBars::chooseRow(const std::vector<Bar>& bars)
{
    m_rowSize = m_hasUnits ? wordsOfUnits : wordsOfDoubles;
    if (std::any_of(bars.begin(), bars.end(), [](const Bar& bar) { return bar.openInterest != 0; }))
        m_interestAt = m_rowSize++;
    if (std::any_of(bars.begin(), bars.end(), [](const Bar& bar) { return bar.value != 0; })) {
        m_moneyAt = m_rowSize;
        m_rowSize += wordsOfDouble;
    }
}

void DayBars::put(const Bar& bar, quint32* row) const
{
    row[SecondWord] = static_cast<quint32>(bar.time - m_midnight);
    row[VolumeWord] = static_cast<quint32>(bar.volume);
    quint32* at = row + OpenWord;
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

Bar DayBars::at(qsizetype index) const
{
    const quint32* const words = row(index);
    Bar bar;
    bar.time = m_midnight + words[SecondWord];
    bar.volume = static_cast<qint32>(words[VolumeWord]);
    const auto price = [this, words](Word word) {
        return m_hasUnits ? priceOf(words[word])
                          : doubleAt(words + OpenWord + wordsOfDouble * (word - OpenWord));
    };
    bar.open = price(OpenWord);
    bar.high = price(HighWord);
    bar.low = price(LowWord);
    bar.close = price(CloseWord);
    if (m_interestAt > 0)
        bar.openInterest = static_cast<qint32>(words[m_interestAt]);
    if (m_moneyAt > 0)
        bar.value = doubleAt(words + m_moneyAt);
    return bar;
}

Bar DayBars::sum(qsizetype first, qsizetype last) const
{
    Bar sum = at(first);
    if (!m_hasUnits) {
        for (qsizetype i = first + 1; i < last; ++i)
            extendBar(sum, at(i));
        return sum;
    }
    // The same in whole numbers: a price is made of the result alone.
    quint32 high = row(first)[HighWord];
    quint32 low = row(first)[LowWord];
    for (qsizetype i = first + 1; i < last; ++i) {
        const quint32* const words = row(i);
        high = std::max(high, words[HighWord]);
        low = std::min(low, words[LowWord]);
        sum.volume += static_cast<qint32>(words[VolumeWord]);
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

qsizetype DayBars::firstAfter(int second, qsizetype first) const
{
    qsizetype last = m_size;
    while (first < last) {
        const qsizetype middle = first + (last - first) / 2;
        if (secondOf(middle) <= second)
            first = middle + 1;
        else
            last = middle;
    }
    return first;
}

qsizetype DayBars::bytes() const
{
    return static_cast<qsizetype>(sizeof(*this) + m_words.capacity() * sizeof(quint32));
}

} // namespace vexdesk
