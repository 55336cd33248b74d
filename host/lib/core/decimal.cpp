// SPDX-License-Identifier: MIT
#include <vexdesk/decimal.h>

#include <QtCore/QCoreApplication>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace {

// 128 bits hold any 56-bit mantissa times 10^21, which is all that addition and comparison need.
__extension__ typedef __int128 Wide;

constexpr int maxWidePower = 21;

constexpr std::array<Wide, maxWidePower + 1> makePowers()
{
    std::array<Wide, maxWidePower + 1> powers{};
    Wide power = 1;
    for (Wide& entry : powers) {
        entry = power;
        power *= 10;
    }
    return powers;
}

constexpr std::array<Wide, maxWidePower + 1> powerOfTen = makePowers();

bool fits(Wide mantissa)
{
    return mantissa >= decimal::minMantissa && mantissa <= decimal::maxMantissa;
}

// Any mantissa of 56 bits has at most 17 digits: dropping more of them leaves nothing.
constexpr int mantissaDigits = 17;

Wide roundAway(Wide value, int digits)
{
    const Wide unit = powerOfTen[digits];
    const Wide half = unit / 2;
    return (value + (value < 0 ? -half : half)) / unit;
}

// "00", "01" and so on to "99".
constexpr std::array<char, 200> makeDigitPairs()
{
    std::array<char, 200> pairs{};
    for (size_t i = 0; i < pairs.size(); ++i)
        pairs[i] = static_cast<char>('0' + (i % 2 == 0 ? i / 20 : i / 2 % 10));
    return pairs;
}

constexpr std::array<char, 200> digitPairs = makeDigitPairs();

// The digits of a number without its sign, from the last one to the first; returns where they
// begin.
Q_NEVER_INLINE char* putDigits(char* end, quint64 rest, int scale)
{
    char* at = end;
    const auto putPair = [&at, &rest] {
        at -= 2;
        std::memcpy(at, &digitPairs[rest % 100 * 2], 2);
        rest /= 100;
    };
    if (scale > 0) {
        for (; scale > 1; scale -= 2)
            putPair();
        if (scale == 1) {
            *--at = static_cast<char>('0' + rest % 10);
            rest /= 10;
        }
        *--at = '.';
    }
    const char* const point = at;
    while (rest > 9)
        putPair();
    // At least one digit stands before the point.
    if (rest > 0 || at == point)
        *--at = static_cast<char>('0' + rest);
    return at;
}

// Short texts are read and written eight characters at a time, in one word whose lowest byte is the
// first character.
constexpr bool isLittleEndian = std::endian::native == std::endian::little;
constexpr int wordSize = sizeof(quint64);
constexpr int byteBits = 8;
constexpr quint64 ones = 0x0101010101010101U;
constexpr quint64 zeros = ones * '0';
constexpr quint64 digitsOfWord = 100'000'000; // numbers below it have no more digits than a word

// Four to eight characters, less '0' each; before them come zeros.
quint64 wordOf(const char* text, int size)
{
    constexpr int half = wordSize / 2;
    quint32 first = 0;
    quint32 last = 0;
    std::memcpy(&first, text, half);
    std::memcpy(&last, text + size - half, half);
    const quint64 word = first | quint64(last) << ((size - half) * byteBits);
    return (word ^ zeros) << ((wordSize - size) * byteBits);
}

// The number that eight digits make: neighbours are put together, to two digits, four and eight.
quint32 numberOf(quint64 word)
{
    word = word * 10 + (word >> 8);
    word = (word & 0x000000ff000000ffU) * 0x000f424000000064U +
           (word >> 16 & 0x000000ff000000ffU) * 0x0000271000000001U;
    return static_cast<quint32>(word >> 32);
}

// The digits of a number below 100,000,000, all eight of them.
quint64 digitsOf(quint32 number)
{
    // Halves of four digits, then of two, then of one: each division is a multiplication.
    quint64 word = number / 10000 | quint64(number % 10000) << 32;
    const quint64 hundreds = (word * 10486 >> 20) & 0x0000007f0000007fU;
    word = (word << 16) + hundreds * (1 - (100 << 16));
    const quint64 tens = (word * 103 >> 10) & 0x000f000f000f000fU;
    return (word << 8) + tens * (1 - (10 << 8));
}

struct ShortNumber
{
    quint32 digits;
    int scale; // -1 where the text is another one
};

// Texts of four to eight characters, digits and maybe a point among them, as most prices are.
ShortNumber shortNumber(const char* text, int size)
{
    quint64 word = wordOf(text, size);
    // The highest bit of each byte above 9; the lowest of them is exact.
    const quint64 others = ((word + ones * (0x80 - 10)) | word) & (ones << 7);
    if (others == 0)
        return {numberOf(word), 0};
    constexpr quint64 point = '.' ^ '0';
    const int place = std::countr_zero(others) / byteBits;
    const int scale = wordSize - 1 - place;
    const bool isPoint = (word >> (place * byteBits) & 0xff) == point;
    if (!isPoint || (others & (others - 1)) != 0 || scale == 0 || place == wordSize - size)
        return {0, -1};
    // What stands before the point moves to its place.
    const quint64 unit = quint64(1) << (place * byteBits);
    word -= unit * point;
    return {numberOf(word + (word & (unit - 1)) * 0xff), scale};
}

// Of a number below 100,000,000 with at most seven digits after the point, into room for sixteen
// characters and more; returns the text's end.
char* putShort(char* text, quint32 number, int scale)
{
    const quint64 all = digitsOf(number);
    // At least one digit stands before the point.
    const quint64 kept = all | quint64(1) << ((wordSize - 1 - scale) * byteBits);
    const int leading = std::countr_zero(kept) / byteBits;
    const quint64 digits = (all | zeros) >> (leading * byteBits);
    const int whole = wordSize - leading - scale;
    std::memcpy(text, &digits, wordSize);
    if (scale == 0)
        return text + whole;
    const quint64 fraction = digits >> (whole * byteBits);
    text[whole] = '.';
    std::memcpy(text + whole + 1, &fraction, wordSize);
    return text + whole + 1 + scale;
}

[[noreturn]] void throwIncorrect(QStringView text)
{
    throw QCoreApplication::translate("decimal", "Некорректное число '%1'").arg(text);
}

} // namespace

constinit const decimal decimal::zero;

decimal::decimal(const QString& text)
{
    const std::optional<decimal> parsed = fromText(text);
    if (!parsed)
        throwIncorrect(text);
    *this = *parsed;
}

decimal::decimal(qint64 mantissa, int scale)
{
    if (!fits(mantissa) || scale < 0 || scale > maxScale)
        throwIncorrect(QStringLiteral("%1e-%2").arg(mantissa).arg(scale));
    *this = pack(mantissa, scale);
}

template <typename Char>
std::optional<decimal> decimal::parse(const Char* at, const Char* end) noexcept
{
    bool negative = false;
    if (at != end && (*at == '+' || *at == '-')) {
        negative = *at == '-';
        ++at;
    }

    // The limit of the negative side is one larger; digits are gathered below it and signed last.
    constexpr quint64 limit = quint64(1) << 55;
    quint64 magnitude = 0;
    const Char* const first = at;
    const Char* point = end;
    for (; at != end; ++at) {
        const auto digit = static_cast<uint>(*at) - uint('0');
        if (digit <= 9) {
            magnitude = magnitude * 10 + digit;
            if (magnitude > limit)
                return std::nullopt;
        } else if (*at == '.' && point == end && at != first) {
            point = at;
        } else {
            return std::nullopt;
        }
    }
    const qsizetype scale = point == end ? 0 : end - point - 1;
    const bool endsInDigit = end != first && point != end - 1;
    if (!endsInDigit || scale > maxScale || (magnitude == limit && !negative))
        return std::nullopt;

    const auto mantissa = static_cast<qint64>(magnitude);
    return pack(negative ? -mantissa : mantissa, static_cast<int>(scale));
}

std::optional<decimal> decimal::fromText(QStringView text) noexcept
{
    return parse(text.utf16(), text.utf16() + text.size());
}

std::optional<decimal> decimal::fromText(QLatin1String text) noexcept
{
    if (isLittleEndian && text.size() >= wordSize / 2 && text.size() <= wordSize) {
        const auto number = shortNumber(text.data(), static_cast<int>(text.size()));
        if (number.scale >= 0)
            return pack(number.digits, number.scale);
    }
    return parse(text.begin(), text.end());
}

void decimal::setScale(short scale)
{
    const int held = this->scale();
    if (scale == held)
        return;
    if (scale < 0 || scale > maxScale)
        throwIncorrect(toString());

    Wide mantissa = this->mantissa();
    if (scale < held) {
        const int dropped = held - scale;
        mantissa = dropped > mantissaDigits ? 0 : roundAway(mantissa, dropped);
    } else if (mantissa != 0) {
        const int added = scale - held;
        if (added > mantissaDigits)
            throwIncorrect(toString());
        mantissa *= powerOfTen[added];
        if (!fits(mantissa))
            throwIncorrect(toString());
    }
    *this = pack(static_cast<qint64>(mantissa), scale);
}

QString decimal::toString() const
{
    std::array<char, maxTextSize> buffer;
    return QString::fromLatin1(buffer.data(), toText(buffer.data()));
}

int decimal::toText(char* text) const noexcept
{
    char* to = text;
    const auto magnitude = static_cast<quint64>(mantissa() < 0 ? -mantissa() : mantissa());
    if (mantissa() < 0)
        *to++ = '-';
    if (isLittleEndian && magnitude < digitsOfWord && scale() < wordSize)
        return static_cast<int>(putShort(to, static_cast<quint32>(magnitude), scale()) - text);
    char* const end = text + maxTextSize;
    return static_cast<int>(std::copy(putDigits(end, magnitude, scale()), end, to) - text);
}

int decimal::compare(const decimal& other) const noexcept
{
    const auto sign = [](Wide value) { return (value > 0) - (value < 0); };

    const int difference = other.scale() - scale();
    if (difference == 0)
        return sign(Wide(mantissa()) - other.mantissa());
    if (difference < 0)
        return -other.compare(*this);

    // Here other has more digits after the point. Beyond 17 of them, one unit of *this is larger
    // than anything that other can hold.
    if (isZero() || difference > mantissaDigits)
        return !isZero() ? sign(mantissa()) : -sign(other.mantissa());
    return sign(Wide(mantissa()) * powerOfTen[difference] - other.mantissa());
}

decimal operator+(const decimal& left, const decimal& right)
{
    if (left.scale() == right.scale() && fits(left.mantissa() + right.mantissa()))
        return decimal::pack(left.mantissa() + right.mantissa(), left.scale());

    const decimal& coarse = left.scale() <= right.scale() ? left : right;
    const decimal& fine = left.scale() <= right.scale() ? right : left;

    Wide fineMantissa = fine.mantissa();
    int scale = fine.scale();
    if (coarse.mantissa() == 0)
        return fine;
    // Where the scales lie so far apart that the exact sum needs more than 128 bits, digits that
    // cannot reach the result are folded into one last digit that only keeps the rounding right.
    if (const int excess = scale - coarse.scale() - (maxWidePower - 1); excess > 0) {
        const Wide unit = powerOfTen[qMin(excess, mantissaDigits)];
        const Wide kept = fineMantissa / unit;
        const Wide lost = fineMantissa % unit;
        fineMantissa = kept * 10 + (lost > 0) - (lost < 0);
        scale -= excess - 1;
    }

    const Wide sum = Wide(coarse.mantissa()) * powerOfTen[scale - coarse.scale()] + fineMantissa;
    Wide rounded = sum;
    int dropped = 0;
    while (!fits(rounded)) {
        ++dropped;
        if (dropped > scale)
            throwIncorrect(left.toString() + u'+' + right.toString());
        rounded = roundAway(sum, dropped);
    }

    return decimal::pack(static_cast<qint64>(rounded), scale - dropped);
}
