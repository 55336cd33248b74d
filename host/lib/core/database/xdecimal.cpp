// SPDX-License-Identifier: MIT
#include <vexdesk/database/xdecimal.h>

#include <QtCore/QCoreApplication>

namespace {

// 128 bits hold any 64-bit mantissa times 10^19.
__extension__ typedef __int128 Wide;

// A mantissa of 64 bits has at most 19 digits.
constexpr int mantissaDigits = 19;

constexpr Wide powerOfTen(int exponent)
{
    Wide power = 1;
    for (; exponent > 0; --exponent)
        power *= 10;
    return power;
}

int sign(Wide value)
{
    return (value > 0) - (value < 0);
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

[[noreturn]] void throwIncorrect(const QString& text)
{
    throw QCoreApplication::translate("decimal", "Некорректное число '%1'").arg(text);
}

// Reads the digits of `text` from `*at` on behind those of `*mantissa`, on the negative side, which
// reaches further. False when there is none or they do not fit.
bool takeDigits(QStringView text, qsizetype* at, Wide* mantissa)
{
    const qsizetype start = *at;
    for (; *at < text.size() && isDigit(text.at(*at)); ++*at) {
        *mantissa = *mantissa * 10 - (text.at(*at).unicode() - u'0');
        if (*mantissa < std::numeric_limits<qint64>::min())
            return false;
    }
    return *at > start;
}

} // namespace

xdecimal::xdecimal(const QString& text)
{
    const std::optional<xdecimal> parsed = fromText(text);
    if (!parsed)
        throwIncorrect(text);
    *this = *parsed;
}

xdecimal::xdecimal(qint64 mantissa, int scale)
    : m_mantissa(mantissa)
    , m_scale(scale)
{
    if (scale < 0 || scale > maxScale)
        throwIncorrect(QStringLiteral("%1e-%2").arg(mantissa).arg(scale));
}

std::optional<xdecimal> xdecimal::fromText(QStringView text) noexcept
{
    const bool negative = text.startsWith(u'-');
    qsizetype at = negative || text.startsWith(u'+') ? 1 : 0;
    Wide mantissa = 0;
    if (!takeDigits(text, &at, &mantissa))
        return std::nullopt;
    qsizetype scale = 0;
    if (at < text.size() && text.at(at) == u'.') {
        const qsizetype start = ++at;
        if (!takeDigits(text, &at, &mantissa))
            return std::nullopt;
        scale = at - start;
    }
    if (!negative)
        mantissa = -mantissa;
    if (at != text.size() || scale > maxScale || mantissa > std::numeric_limits<qint64>::max())
        return std::nullopt;
    return xdecimal(static_cast<qint64>(mantissa), static_cast<int>(scale));
}

QString xdecimal::toString() const
{
    QString digits = QString::number(m_mantissa);
    const qsizetype signLength = m_mantissa < 0 ? 1 : 0;
    if (const qsizetype missing = m_scale + 1 - (digits.size() - signLength); missing > 0)
        digits.insert(signLength, QString(missing, u'0'));
    if (m_scale > 0)
        digits.insert(digits.size() - m_scale, u'.');
    return digits;
}

int xdecimal::compare(const xdecimal& other) const noexcept
{
    const int difference = other.m_scale - m_scale;
    if (difference < 0)
        return -other.compare(*this);
    // Here other has more digits after the point. Beyond 19 of them, one unit of *this is larger
    // than anything that other can hold.
    if (m_mantissa == 0 || difference > mantissaDigits)
        return m_mantissa != 0 ? sign(m_mantissa) : -sign(other.m_mantissa);
    return sign(m_mantissa * powerOfTen(difference) - other.m_mantissa);
}
