// SPDX-License-Identifier: MIT
#include "fieldreader.h"

#include <array>
#include <optional>

namespace tadata {

namespace {

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

bool isLetter(QChar character)
{
    return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z');
}

// No number of more digits than a year has is a part of a date or a time.
constexpr int maxDigits = 4;

// A part of a pattern: a run of one letter, and the number that stands there in the text.
struct Part
{
    char16_t letter = 0;
    int length = 0;
    int number = 0;
};

using Parts = std::array<Part, 3>;

// The parts in their order, when the text has a digit for each letter of the pattern and is equal
// to it elsewhere. No value for any other text, and for a pattern of more parts or with quotes.
std::optional<Parts> readParts(QStringView text, QStringView pattern)
{
    if (text.size() != pattern.size())
        return std::nullopt;
    Parts parts;
    size_t count = 0;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar letter = pattern[i];
        if (!isLetter(letter)) {
            if (letter != text[i] || letter == u'\'')
                return std::nullopt;
            continue;
        }
        if (!isDigit(text[i]))
            return std::nullopt;
        if (i == 0 || pattern[i - 1] != letter) {
            if (count == parts.size())
                return std::nullopt;
            parts[count].letter = letter.unicode();
            ++count;
        }
        Part& part = parts[count - 1];
        if (++part.length > maxDigits)
            return std::nullopt;
        part.number = part.number * 10 + (text[i].unicode() - u'0');
    }
    return parts;
}

// The number of the part with this letter and length, -1 when there is none.
int numberOf(const Parts& parts, char16_t letter, int length)
{
    for (const Part& part : parts) {
        if (part.letter == letter)
            return part.length == length ? part.number : -1;
    }
    return -1;
}

// No value where the framework is to be asked.
std::optional<QDate> plainDate(QStringView text, QStringView pattern)
{
    const std::optional<Parts> parts = readParts(text, pattern);
    if (!parts)
        return std::nullopt;
    const int month = numberOf(*parts, u'M', 2);
    const int day = numberOf(*parts, u'd', 2);
    const int year = numberOf(*parts, u'y', 4);
    const int yearOfCentury = numberOf(*parts, u'y', 2);
    if (month < 0 || day < 0 || (year < 0 && yearOfCentury < 0))
        return std::nullopt;
    // What becomes of the year 0, and of a day that not both centuries have, is for the framework.
    const bool isLeapDay = year < 0 && month == 2 && day == 29;
    if (year == 0 || isLeapDay)
        return std::nullopt;
    return QDate(year > 0 ? year : 2000 + yearOfCentury, month, day);
}

std::optional<QTime> plainTime(QStringView text, QStringView pattern)
{
    const std::optional<Parts> parts = readParts(text, pattern);
    if (!parts)
        return std::nullopt;
    const int hour = numberOf(*parts, u'h', 2);
    const int minute = numberOf(*parts, u'm', 2);
    const bool hasSeconds = (*parts)[2].length > 0;
    const int second = hasSeconds ? numberOf(*parts, u's', 2) : 0;
    if (hour < 0 || minute < 0 || second < 0)
        return std::nullopt;
    return QTime(hour, minute, second);
}

// A year of two digits is read into 1900 to 1999; files of such a pattern are younger than that.
QDate inThisCentury(const QDate& date, const QString& pattern)
{
    const bool fourDigits = pattern.contains(QStringLiteral("yyyy"));
    return date.year() <= 1999 && !fourDigits ? date.addYears(100) : date;
}

// Digits that make a number of the type whatever they are.
template <typename Integer>
std::optional<Integer> plainInteger(QStringView text)
{
    if (text.isEmpty() || text.size() > std::numeric_limits<Integer>::digits10)
        return std::nullopt;
    Integer number = 0;
    for (const QChar character : text) {
        if (!isDigit(character))
            return std::nullopt;
        number = number * 10 + (character.unicode() - u'0');
    }
    return number;
}

} // namespace

QDate readDate(QStringView text, const QString& pattern)
{
    if (const std::optional<QDate> date = plainDate(text, pattern))
        return *date;
    const QDate date = QDate::fromString(text.toString(), pattern);
    return date.isValid() ? inThisCentury(date, pattern) : date;
}

QTime readTime(QStringView text, const QString& pattern)
{
    const std::optional<QTime> time = plainTime(text, pattern);
    return time ? *time : QTime::fromString(text.toString(), pattern);
}

std::optional<qint64> readInteger(QStringView text)
{
    if (const std::optional<qint64> number = plainInteger<qint64>(text))
        return number;
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

std::optional<qint32> readSmallInteger(QStringView text)
{
    if (const std::optional<qint32> number = plainInteger<qint32>(text))
        return number;
    bool isNumber = false;
    const qint32 number = text.toInt(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

} // namespace tadata
