// SPDX-License-Identifier: MIT
#include "plainlineparser.h"

#include "charactersearch.h"
#include "rounding.h"

#include <vexdesk/history/digits.h>
#include <vexdesk/securitydirectory.h>

#include <algorithm>
#include <bit>
#include <climits>
#include <cstring>

namespace tadata {

using vexdesk::readDigits;

namespace {

constexpr bool isLittleEndian = std::endian::native == std::endian::little;

// Up to eight characters, digits and maybe a point between two of them, at the end of a word.
bool isPlainDecimal(QByteArrayView text)
{
    if (text.empty() || text.size() > wordSize)
        return false;
    quint64 word = 0;
    std::memcpy(&word, text.end() - wordSize, wordSize);
    const qsizetype before = wordSize - text.size();
    word = (word ^ inEachByte * '0') >> before * CHAR_BIT << before * CHAR_BIT;
    // The highest bit of each byte above 9; of several, one may be too much.
    const quint64 others = ((word + inEachByte * (0x80 - 10)) | word) & inEachByte << 7;
    if (others == 0)
        return true;
    const int place = std::countr_zero(others) / CHAR_BIT;
    return (others & (others - 1)) == 0 && text.end()[place - wordSize] == '.' && place > before &&
           place < wordSize - 1;
}

} // namespace

PlainLineParser::PlainLineParser(const ImportDetails& details)
    : m_details(details)
    , m_dateForm(details.dateFormat)
    , m_timeForm(details.timeFormat)
{
    m_columns.fill(-1);
    bool columnsFit = true;
    for (auto column = details.columns.begin(); column != details.columns.end(); ++column) {
        columnsFit = columnsFit && *column >= 0 && *column < maxFields && column.key() > 0 &&
                     column.key() < roles;
        if (!columnsFit)
            break;
        m_columns[static_cast<size_t>(column.key())] = *column;
        m_wanted = std::max(m_wanted, *column + 1);
    }
    m_wanted = std::max(m_wanted, 1);

    const bool hasPlainSeparator =
        details.separator.size() == 1 && details.separator.front().unicode() < 128;
    if (hasPlainSeparator)
        m_separator = static_cast<char>(details.separator.front().unicode());
    m_isUsable = columnsFit && hasPlainSeparator;
}

bool PlainLineParser::parse(QByteArrayView line, BarDescription* bar)
{
    return readMoment(line, bar) && readNumbers(bar);
}

bool PlainLineParser::check(QByteArrayView line, BarDescription* bar)
{
    if (!readMoment(line, bar))
        return false;
    bar->valid = hasPlainNumbers();
    return bar->valid || readNumbers(bar);
}

bool PlainLineParser::readNumbers(BarDescription* bar)
{
    try {
        bar->valid = readFields(bar);
    } catch (const QString&) {
        return false;
    }
    return bar->valid;
}

bool PlainLineParser::readMoment(QByteArrayView line, BarDescription* bar)
{
    if (!m_isUsable || line.empty() || !split(line) ||
        !readDate(field(ColumnRole::Date), &bar->date))
        return false;
    const std::optional<QTime> time = m_timeForm.read(field(ColumnRole::Time));
    bar->time = time.value_or(QTime());
    return time.has_value();
}

bool PlainLineParser::split(QByteArrayView line)
{
    const char separator = m_separator;
    const char** next = m_begins.data();
    const char** const last = next + m_wanted;
    const char* at = line.begin();
    *next++ = at;
    for (; isLittleEndian && line.end() - at >= wordSize; at += wordSize) {
        for (quint64 found = placesOf(separator, at); found != 0; found &= found - 1) {
            *next = at + std::countr_zero(found) / CHAR_BIT + 1;
            if (next++ == last)
                return true;
        }
    }
    for (; at != line.end(); ++at) {
        if (*at != separator)
            continue;
        *next = at + 1;
        if (next++ == last)
            return true;
    }
    *next = line.end() + 1;
    return next == last;
}

QByteArrayView PlainLineParser::field(int role) const
{
    // A mandatory role without a column reads the first one.
    const int column = std::max(m_columns[static_cast<size_t>(role)], 0);
    const char* const* const begin = &m_begins[static_cast<size_t>(column)];
    return QByteArrayView(begin[0], begin[1] - 1);
}

bool PlainLineParser::has(int role) const
{
    return m_columns[static_cast<size_t>(role)] >= 0;
}

bool PlainLineParser::readDate(QByteArrayView text, QDate* date)
{
    if (text == m_dateText && m_date.isValid()) {
        *date = m_date;
        return true;
    }
    const std::optional<QDate> read = m_dateForm.read(text);
    if (!read)
        return false;
    *date = *read;
    m_dateText = text.toByteArray();
    m_date = *date;
    return true;
}

short PlainLineParser::decimals()
{
    const Ids ids = idsOf(m_details);
    if (m_known != ids) {
        m_zero = decimal(0, SecurityDirectory::i().decimalsById(
                                m_details.stockId, m_details.boardId, m_details.securityId));
        m_known = ids;
    }
    return static_cast<short>(m_zero.scale());
}

// Whether readFields() will read them, as far as that is plain.
bool PlainLineParser::hasPlainNumbers() const
{
    // Numbers of a word fit with so many more.
    constexpr int mostDecimals = 8;
    static_assert(decimal::maxMantissa >= 9'999'999'999'999'999);
    const char* const least = m_begins.front() + wordSize;
    const auto isPlain = [this, least](ColumnRole role) {
        const QByteArrayView text = field(role);
        return text.end() >= least && isPlainDecimal(text);
    };
    const auto isWhole = [this](ColumnRole role, auto number) {
        return !has(static_cast<int>(role)) || readDigits(field(role), &number);
    };
    return isLittleEndian && m_known == idsOf(m_details) && m_zero.scale() <= mostDecimals &&
           isPlain(ColumnRole::Open) && isPlain(ColumnRole::High) && isPlain(ColumnRole::Low) &&
           isPlain(ColumnRole::Close) && isWhole(ColumnRole::Volume, qint64()) &&
           isWhole(ColumnRole::OpenInterest, qint32()) &&
           (!has(static_cast<int>(ColumnRole::Value)) || isPlain(ColumnRole::Value));
}

bool PlainLineParser::readFields(BarDescription* bar)
{
    const short decimals = this->decimals();
    bar->isRounded = false;
    const auto number = [this, decimals, bar](ColumnRole role, decimal* to) {
        const QByteArrayView text = field(static_cast<int>(role));
        const std::optional<decimal> read =
            decimal::fromText(QLatin1String(text.data(), text.size()));
        if (!read)
            return false;
        *to = *read;
        bar->isRounded = roundTo(*to, decimals) || bar->isRounded;
        return true;
    };
    if (!number(ColumnRole::Open, &bar->open) || !number(ColumnRole::High, &bar->high) ||
        !number(ColumnRole::Low, &bar->low) || !number(ColumnRole::Close, &bar->close))
        return false;

    constexpr auto volume = static_cast<int>(ColumnRole::Volume);
    constexpr auto openInterest = static_cast<int>(ColumnRole::OpenInterest);
    if (has(volume) && !readDigits(field(volume), &bar->volume))
        return false;
    if (has(openInterest) && !readDigits(field(openInterest), &bar->openInterest))
        return false;

    if (has(static_cast<int>(ColumnRole::Value)))
        return number(ColumnRole::Value, &bar->value);
    bar->value = m_zero;
    return true;
}

} // namespace tadata
