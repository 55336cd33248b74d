// SPDX-License-Identifier: MIT
#include "desk/chart/barline.h"

#include "desk/chart/wallclock.h"

#include <vexdesk/history/recordline.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace vexdesk {

namespace {

// Exact powers of ten: a quotient by them is the nearest number that there is.
constexpr std::array<double, 16> powers{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                        1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

bool isNumber(QByteArrayView text)
{
    return decimal::fromText(QLatin1String(text.data(), text.size())).has_value();
}

bool hasPrices(const RecordFields& fields)
{
    return isNumber(fields[OpenField]) && isNumber(fields[HighField]) &&
           isNumber(fields[LowField]) && isNumber(fields[CloseField]);
}

double toDouble(const decimal& number)
{
    const auto mantissa = static_cast<double>(number.mantissa());
    const auto scale = static_cast<size_t>(number.scale());
    return mantissa / (scale < powers.size() ? powers[scale] : std::pow(10.0, number.scale()));
}

Bar barOf(const StoredBar& stored)
{
    Bar bar;
    bar.time = wallTime(stored.date, stored.time);
    bar.open = toDouble(stored.open);
    bar.high = toDouble(stored.high);
    bar.low = toDouble(stored.low);
    bar.close = toDouble(stored.close);
    bar.volume = stored.volume;
    bar.value = toDouble(stored.value);
    bar.openInterest = stored.openInterest;
    return bar;
}

int decimalsOf(const StoredBar& bar)
{
    // More digits are not told apart by a double, and there is no room for them.
    constexpr int most = 15;
    return std::min(
        most, std::max({bar.open.scale(), bar.high.scale(), bar.low.scale(), bar.close.scale()}));
}

bool isDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

/// Goes through a line field by field as long as each has its form.
class FieldReader final
{
public:
    explicit FieldReader(QByteArrayView line)
        : m_at(line.begin())
        , m_end(line.end())
    {}

    bool hasFailed() const { return m_hasFailed; }
    bool isAtEnd() const { return m_at == m_end; }

    // Six digits of a time of day, in seconds since midnight.
    int time()
    {
        constexpr int length = 6;
        if (m_end - m_at < length || !std::all_of(m_at, m_at + length, isDigit))
            return failed();
        const auto two = [this] {
            m_at += 2;
            return (m_at[-2] - '0') * 10 + m_at[-1] - '0';
        };
        const int hour = two();
        const int minute = two();
        const int second = two();
        if (hour > 23 || minute > 59 || second > 59)
            return failed();
        return (hour * 60 + minute) * 60 + second;
    }

    // Digits that fit into 32 bits whatever they are.
    int integer()
    {
        separator();
        constexpr int mostDigits = 9;
        const auto number = digits(0, mostDigits);
        return static_cast<int>(number);
    }

    // The digits after the point are counted to `decimals` where there are more than before.
    double number(int& decimals)
    {
        separator();
        const bool isNegative = m_at != m_end && *m_at == '-';
        if (isNegative)
            ++m_at;
        constexpr int mostDigits = 15;
        const char* const begin = m_at;
        qint64 mantissa = digits(0, mostDigits);
        int scale = 0;
        if (m_at != m_end && *m_at == '.') {
            const auto whole = static_cast<int>(m_at - begin);
            const char* const point = m_at++;
            mantissa = digits(mantissa, mostDigits - whole);
            scale = static_cast<int>(m_at - point) - 1;
        }
        if (m_hasFailed)
            return 0;
        decimals = std::max(decimals, scale);
        return static_cast<double>(isNegative ? -mantissa : mantissa) /
               powers[static_cast<size_t>(scale)];
    }

private:
    int failed()
    {
        m_hasFailed = true;
        return 0;
    }

    void separator()
    {
        if (m_at == m_end || *m_at != ';')
            failed();
        else
            ++m_at;
    }

    // At least one digit and at most so many, behind those of `number`.
    qint64 digits(qint64 number, int most)
    {
        const char* const begin = m_at;
        for (; m_at != m_end && isDigit(*m_at); ++m_at) {
            if (m_at - begin == most)
                return failed();
            number = number * 10 + (*m_at - '0');
        }
        return m_at == begin ? failed() : number;
    }

    const char* m_at;
    const char* m_end;
    bool m_hasFailed = false;
};

} // namespace

std::optional<BarLine> readBarLine(QByteArrayView line, const QDate& day)
{
    RecordFields fields = firstRecordFields(line);
    if (!hasPrices(fields))
        return std::nullopt;
    if (fields[VolumeField].contains('.'))
        std::swap(fields[VolumeField], fields[ValueField]);
    const StoredBar stored = storedBar(fields, day);
    if (!stored.time.isValid())
        return std::nullopt;
    return BarLine{barOf(stored), decimalsOf(stored)};
}

std::optional<BarLine> readImportedLine(QByteArrayView line, qint64 midnight)
{
    FieldReader fields(line);
    BarLine read;
    int moneyDecimals = 0;
    read.bar.time = midnight + fields.time();
    read.bar.open = fields.number(read.decimals);
    read.bar.high = fields.number(read.decimals);
    read.bar.low = fields.number(read.decimals);
    read.bar.close = fields.number(read.decimals);
    read.bar.volume = fields.integer();
    read.bar.value = fields.number(moneyDecimals);
    read.bar.openInterest = fields.integer();
    if (fields.hasFailed() || !fields.isAtEnd())
        return std::nullopt;
    return read;
}

} // namespace vexdesk
