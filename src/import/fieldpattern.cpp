// SPDX-License-Identifier: MIT
#include "fieldpattern.h"

#include <vexdesk/history/digits.h>

namespace tadata {

namespace {

constexpr int maxDigits = 4; // of the year, the longest part of a date or a time

bool isLetter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

} // namespace

FieldPattern::FieldPattern(const QString& pattern)
    : m_text(pattern.toLatin1())
{
    m_isPlain = QString::fromLatin1(m_text) == pattern && !m_text.contains('\'');
    for (int i = 0; i < m_text.size(); ++i) {
        const char letter = m_text[i];
        if (!isLetter(letter)) {
            m_signs.append(i);
            continue;
        }
        if (i == 0 || m_text[i - 1] != letter)
            m_parts.append({letter, i, 0});
        ++m_parts.last().length;
        m_isPlain = m_isPlain && m_parts.last().length <= maxDigits;
    }
    m_isPlain = m_isPlain && (m_parts.size() == 2 || m_parts.size() == 3);
    static constexpr char letters[] = "hms";
    m_isOfTime = m_isPlain;
    for (qsizetype i = 0; m_isOfTime && i < m_parts.size(); ++i)
        m_isOfTime = m_parts[i].letter == letters[i] && m_parts[i].length == 2;
}

// Whether it has the pattern's length, and its signs at their places.
bool FieldPattern::hasSigns(QByteArrayView field) const
{
    if (!m_isPlain || field.size() != m_text.size())
        return false;
    for (const int sign : m_signs) {
        if (field[sign] != m_text[sign])
            return false;
    }
    return true;
}

bool FieldPattern::read(QByteArrayView field, std::array<int, 3>* numbers) const
{
    if (!hasSigns(field))
        return false;
    auto number = numbers->begin();
    for (const Part& part : m_parts) {
        *number = 0;
        for (int i = part.begin; i < part.begin + part.length; ++i) {
            if (!vexdesk::isDigit(field[i]))
                return false;
            *number = *number * 10 + (field[i] - '0');
        }
        ++number;
    }
    return true;
}

std::optional<PlainDate> FieldPattern::date(QByteArrayView field) const
{
    std::array<int, 3> numbers{};
    if (!read(field, &numbers))
        return std::nullopt;
    PlainDate date{-1, -1, -1};
    bool hasCentury = false;
    for (qsizetype i = 0; i < m_parts.size(); ++i) {
        const Part& part = m_parts[i];
        const int number = numbers[static_cast<size_t>(i)];
        hasCentury = hasCentury || (part.letter == 'y' && part.length == 4);
        if (part.letter == 'y' && (part.length == 2 || part.length == 4))
            date.year = number;
        else if (part.letter == 'M' && part.length == 2)
            date.month = number;
        else if (part.letter == 'd' && part.length == 2)
            date.day = number;
        else
            return std::nullopt;
    }
    if (date.year < 0 || date.month < 0 || date.day < 0)
        return std::nullopt;
    const bool isLeapDay = date.month == 2 && date.day == 29;
    date.isForQt = hasCentury ? date.year == 0 : isLeapDay;
    if (!hasCentury)
        date.year += 2000;
    return date;
}

QTime FieldPattern::time(QByteArrayView field) const
{
    if (!m_isOfTime || !hasSigns(field))
        return QTime();
    int seconds = 0;
    for (const Part& part : m_parts) {
        const int number = vexdesk::readSixtieth(field.data() + part.begin);
        if (number < 0)
            return QTime();
        seconds = seconds * 60 + number;
    }
    constexpr int secondsOfMinute = 60;
    if (m_parts.size() == 2)
        seconds *= secondsOfMinute;
    // Invalid from 24 hours on.
    return QTime::fromMSecsSinceStartOfDay(seconds * 1000);
}

} // namespace tadata
