// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/decimal.h>
#include <vexdesk/export.h>

#include <QtCore/QString>

#include <compare>
#include <limits>
#include <optional>

/// A decimal number of extended range, for sums that outgrow `decimal`: a signed mantissa of 64
/// bits and a scale (digits after the point) of its own. Every decimal and every 64-bit integer is
/// an xdecimal.
///
/// Text form, scale and comparison are those of `decimal`; so is the error, a QString with a
/// message for the user. A plain value: every function may run on any thread.
class VEXDESK_CORE_EXPORT xdecimal
{
public:
    static constexpr int maxScale = decimal::maxScale;

    /// Zero with the scale 0.
    constexpr xdecimal() noexcept = default;

    /// Reads what `decimal` reads. Throws for any other text and for a number that does not fit.
    explicit xdecimal(const QString& text);

    /// The number mantissa / 10^scale. Throws when the scale is out of range.
    explicit xdecimal(qint64 mantissa, int scale = 0);

    explicit xdecimal(const decimal& number) noexcept
        : m_mantissa(number.mantissa())
        , m_scale(number.scale())
    {}

    /// Reads what the constructor from text reads, without throwing: no value for any other text.
    static std::optional<xdecimal> fromText(QStringView text) noexcept;

    qint64 mantissa() const noexcept { return m_mantissa; }
    int scale() const noexcept { return m_scale; }

    /// All digits of the held scale: "1.50", "-0.05", "0.00", never "-0.00".
    QString toString() const;

    /// Exact for any two scales: negative, zero or positive as *this is less than, equal to or
    /// greater than other.
    int compare(const xdecimal& other) const noexcept;

    friend bool operator==(const xdecimal& left, const xdecimal& right) noexcept
    {
        return left.compare(right) == 0;
    }
    friend std::strong_ordering operator<=>(const xdecimal& left, const xdecimal& right) noexcept
    {
        return left.compare(right) <=> 0;
    }

private:
    qint64 m_mantissa = 0;
    int m_scale = 0;
};

Q_DECLARE_TYPEINFO(xdecimal, Q_PRIMITIVE_TYPE);
