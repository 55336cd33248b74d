// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArrayView>

#include <limits>

/// Numbers as plain lines have them: ASCII digits and nothing else. What is written otherwise is
/// left to Qt. Nothing is allocated; any thread.
namespace vexdesk {

inline bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

/// Digits that make a number of the type whatever they are. False for every other text; the number
/// is then anything.
template <typename Integer>
bool readDigits(QByteArrayView text, Integer* number)
{
    if (text.empty() || text.size() > std::numeric_limits<Integer>::digits10)
        return false;
    *number = 0;
    for (const char character : text) {
        if (!isDigit(character))
            return false;
        *number = *number * 10 + (character - '0');
    }
    return true;
}

/// Two digits that count minutes or seconds, or hours as far as these go: 0 to 59. -1 for every
/// other text.
inline int readSixtieth(const char* digits)
{
    const int tens = digits[0] - '0';
    return tens >= 0 && tens < 6 && isDigit(digits[1]) ? tens * 10 + (digits[1] - '0') : -1;
}

/// Two digits, the first of which may be 0; for numbers from 0 to 99. Says where they end.
inline char* writeTwoDigits(char* to, int number)
{
    *to++ = static_cast<char>('0' + number / 10);
    *to++ = static_cast<char>('0' + number % 10);
    return to;
}

} // namespace vexdesk
