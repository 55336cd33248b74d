// SPDX-License-Identifier: MIT
#include "plainlineparser.h"

#include "charactersearch.h"
#include "rounding.h"

#include <vexdesk/securitydirectory.h>

#include <algorithm>
#include <bit>
#include <climits>

namespace tadata {

namespace {

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

constexpr bool isLittleEndian = std::endian::native == std::endian::little;

// Digits that make a number of the type whatever they are.
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

// At so many digits after the point, which it says when they are fewer than there were.
bool readDecimal(QByteArrayView text, short decimals, decimal* number, bool* isRounded)
{
    const std::optional<decimal> read = decimal::fromText(QLatin1String(text.data(), text.size()));
    if (!read)
        return false;
    *number = *read;
    *isRounded = roundTo(*number, decimals) || *isRounded;
    return true;
}

} // namespace

PlainLineParser::PlainLineParser(const ImportDetails& details)
    : m_details(details)
    , m_datePattern(details.dateFormat)
    , m_timePattern(details.timeFormat)
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
    m_isUsable =
        columnsFit && hasPlainSeparator && m_datePattern.isPlain() && m_timePattern.isPlain();
}

bool PlainLineParser::parse(QByteArrayView line, BarDescription* bar)
{
    if (!m_isUsable || !split(line) ||
        !readDate(field(static_cast<int>(ColumnRole::Date)), &bar->date) ||
        !readTime(field(static_cast<int>(ColumnRole::Time)), &bar->time))
        return false;
    try {
        bar->valid = readNumbers(bar);
    } catch (const QString&) {
        return false;
    }
    return bar->valid;
}

bool PlainLineParser::split(QByteArrayView line)
{
    const auto wanted = static_cast<size_t>(m_wanted);
    size_t count = 0;
    const char* begin = line.begin();
    const auto endField = [this, &count, &begin](const char* end) {
        m_fields[count++] = QByteArrayView(begin, end);
        begin = end + 1;
    };
    const char* at = line.begin();
    for (; isLittleEndian && line.end() - at >= wordSize; at += wordSize) {
        for (quint64 found = placesOf(m_separator, at); found != 0; found &= found - 1) {
            endField(at + std::countr_zero(found) / CHAR_BIT);
            if (count == wanted)
                return true;
        }
    }
    for (; at != line.end(); ++at) {
        if (*at == m_separator)
            endField(at);
        if (count == wanted)
            return true;
    }
    endField(line.end());
    return count == wanted;
}

QByteArrayView PlainLineParser::field(int role) const
{
    const int column = m_columns[static_cast<size_t>(role)];
    // A mandatory role without a column reads the first one.
    return m_fields[static_cast<size_t>(std::max(column, 0))];
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
    const std::optional<PlainDate> plain = m_datePattern.date(text);
    if (!plain || plain->isForQt)
        return false;
    *date = plain->date();
    m_dateText = text.toByteArray();
    m_date = *date;
    return date->isValid();
}

bool PlainLineParser::readTime(QByteArrayView text, QTime* time) const
{
    const std::optional<QTime> plain = m_timePattern.time(text);
    if (plain)
        *time = *plain;
    return plain.has_value();
}

short PlainLineParser::decimals()
{
    const std::tuple ids(m_details.stockId, m_details.boardId, m_details.securityId);
    if (m_known != ids) {
        m_known = ids;
        m_decimals = static_cast<short>(SecurityDirectory::i().decimalsById(
            m_details.stockId, m_details.boardId, m_details.securityId));
    }
    return m_decimals;
}

bool PlainLineParser::readNumbers(BarDescription* bar)
{
    const short decimals = this->decimals();
    bar->isRounded = false;
    const auto number = [this, decimals, bar](ColumnRole role, decimal* to) {
        return readDecimal(field(static_cast<int>(role)), decimals, to, &bar->isRounded);
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
    bar->value = decimal(0, decimals);
    return true;
}

} // namespace tadata
