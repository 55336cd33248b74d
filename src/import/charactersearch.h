// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArrayView>

#include <algorithm>
#include <cstring>

/// Looks for characters in a text, for one of them eight characters at a time. Any thread.
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

/// How often a text has a character. The bits are counted by a product, since not every processor
/// counts bits.
inline qsizetype countOf(char character, QByteArrayView text)
{
    constexpr int highestByte = 56;
    qsizetype count = 0;
    const char* at = text.begin();
    for (; text.end() - at >= wordSize; at += wordSize)
        count += static_cast<qsizetype>((placesOf(character, at) >> 7) * inEachByte >> highestByte);
    return count + std::count(at, text.end(), character);
}

/// Whether a line has nothing but space, tab, VT, FF and CR.
inline bool isBlank(QByteArrayView text)
{
    constexpr QByteArrayView blanks(" \t\v\f\r");
    return std::all_of(text.begin(), text.end(), [&](char c) { return blanks.contains(c); });
}

} // namespace tadata
