// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QLatin1String>
#include <QtCore/QString>
#include <QtCore/QStringView>

#include <compare>
#include <optional>

/// A fixed-point decimal number: every price and every amount of money in the terminal.
///
/// Eight bytes: a signed mantissa of 56 bits and a scale (digits after the point) of 8 bits, so
/// that 1.50 is the mantissa 150 with the scale 2. The scale is part of the value's text form and
/// not of its size: 1.5 and 1.50 compare equal and print differently.
///
/// A plain value: copying is free, nothing is shared, every function may run on any thread.
/// Locale plays no part. Functions that can fail throw a QString with a message for the user:
/// "Некорректное число '%1'" with the offending text.
class VEXDESK_CORE_EXPORT decimal
{
public:
    static constexpr int maxScale = 255;
    static constexpr qint64 maxMantissa = (qint64(1) << 55) - 1;
    static constexpr qint64 minMantissa = -(qint64(1) << 55);

    /// Zero with the scale 0.
    static const decimal zero;

    /// Zero with the scale 0.
    constexpr decimal() noexcept = default;

    /// Reads optional "+" or "-", ASCII digits, and optionally "." with ASCII digits after it.
    /// Nothing else is a number: no blanks, no exponent, no grouping, no "5." and no ".5".
    /// Throws for any other text and for a number that does not fit.
    explicit decimal(const QString& text);

    /// The number mantissa / 10^scale. Throws when the mantissa or the scale is out of range.
    decimal(qint64 mantissa, int scale);

    /// Reads what the constructor from text reads, without throwing: no value for any other text.
    static std::optional<decimal> fromText(QStringView text) noexcept;
    static std::optional<decimal> fromText(QLatin1String text) noexcept;

    qint64 mantissa() const noexcept { return m_packed >> 8; }
    int scale() const noexcept { return static_cast<int>(m_packed & 0xff); }
    bool isZero() const noexcept { return mantissa() == 0; }

    /// Brings the number to the given count of digits after the point. Digits that go are rounded
    /// half away from zero. Throws, and leaves the number as it was, when the mantissa would not
    /// fit or the scale lies outside 0..maxScale.
    void setScale(short scale);

    /// All digits of the held scale: "1.50", "-0.05", "0.00", never "-0.00".
    QString toString() const;

    /// The room that toText() needs, however short the text is.
    static constexpr int maxTextSize = maxScale + 3;
    /// Writes the text of toString(), ASCII characters, without an end mark and returns its length.
    int toText(char* text) const noexcept;

    /// Exact for any two scales: negative, zero or positive as *this is less than, equal to or
    /// greater than other.
    int compare(const decimal& other) const noexcept;

    /// The sum at the larger of the two scales. When it does not fit, digits after the point are
    /// dropped (rounded half away from zero) until it does; throws when none is left to drop.
    VEXDESK_CORE_EXPORT friend decimal operator+(const decimal& left, const decimal& right);
    decimal& operator+=(const decimal& other) { return *this = *this + other; }

    friend bool operator==(const decimal& left, const decimal& right) noexcept
    {
        return left.compare(right) == 0;
    }
    friend std::strong_ordering operator<=>(const decimal& left, const decimal& right) noexcept
    {
        // Packed numbers of one scale have the order of their mantissas.
        return left.scale() == right.scale() ? left.m_packed <=> right.m_packed
                                             : left.compare(right) <=> 0;
    }

private:
    template <typename Char>
    static std::optional<decimal> parse(const Char* at, const Char* end) noexcept;

    // Both must be in range.
    static decimal pack(qint64 mantissa, int scale) noexcept
    {
        decimal result;
        result.m_packed = mantissa * 256 + scale;
        return result;
    }

    qint64 m_packed = 0; // the mantissa in the upper 56 bits, the scale in the lower 8
};

static_assert(sizeof(decimal) == 8);
Q_DECLARE_TYPEINFO(decimal, Q_PRIMITIVE_TYPE);
