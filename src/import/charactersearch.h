// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArrayView>

#include <algorithm>
#include <array>
#include <cstring>
#include <numeric>

/// Looks for characters in a text, many at a time. Any thread.
namespace tadata {

constexpr qsizetype wordSize = sizeof(quint64);
constexpr quint64 inEachByte = 0x0101010101010101U;

/// The highest bit of each of the eight characters there that is the one looked for.
inline quint64 placesOf(char character, const char* text)
{
    constexpr quint64 lowBits = inEachByte * 0x7f;
    quint64 word = 0;
    std::memcpy(&word, text, wordSize);
    word ^= inEachByte * static_cast<uchar>(character);
    return ~(((word & lowBits) + lowBits) | word | lowBits);
}

/// How often a text has a character. Compilers count in each of the lanes at once.
inline qsizetype countOf(char character, QByteArrayView text)
{
    constexpr qsizetype width = 32;
    constexpr qsizetype mostSteps = 255; // a lane holds as much
    qsizetype count = 0;
    while (text.size() >= width) {
        std::array<quint8, width> lanes{};
        const qsizetype steps = std::min(text.size() / width, mostSteps);
        for (qsizetype step = 0; step < steps; ++step) {
            for (qsizetype lane = 0; lane < width; ++lane)
                lanes[static_cast<size_t>(lane)] += text[step * width + lane] == character;
        }
        count = std::accumulate(lanes.begin(), lanes.end(), count);
        text = text.sliced(steps * width);
    }
    return count + std::count(text.begin(), text.end(), character);
}

/// Whether a line has nothing but space, tab, VT, FF and CR.
inline bool isBlank(QByteArrayView text)
{
    constexpr QByteArrayView blanks(" \t\v\f\r");
    return std::all_of(text.begin(), text.end(), [&](char c) { return blanks.contains(c); });
}

} // namespace tadata
