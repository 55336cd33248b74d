// SPDX-License-Identifier: MIT
#pragma once

#include "bardescription.h"
#include "fieldforms.h"
#include "importdetails.h"

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayView>

#include <array>
#include <optional>
#include <tuple>

namespace tadata {

/// Reads lines as BarDescription::init reads them, to the same bars, as long as they are split by
/// one ASCII character and their integers are digits. A date or a time that is not digits at fixed
/// places is read by Qt, that field alone. It says so where a line is not for it; the line is then
/// init()'s, which also knows what is wrong with it. One thread at a time.
class PlainLineParser final
{
public:
    /// The settings must outlive the parser. Their series may change from line to line; how many
    /// decimals a security has may not.
    explicit PlainLineParser(const ImportDetails& details);

    /// Fills a fresh bar. False, with anything in the bar, when the line is not for this parser.
    bool parse(QByteArrayView line, BarDescription* bar);

    /// The same for those who need to know no more than when the bar is: that the numbers of a line
    /// can be read is mostly seen without reading them. They are anything until readNumbers().
    bool check(QByteArrayView line, BarDescription* bar);
    /// Completes the bar of the line that was checked last, which must still be there.
    bool readNumbers(BarDescription* bar);

    /// A field of the line that was parsed last, whose role has a column. As long as the line.
    QByteArrayView field(ColumnRole role) const { return field(static_cast<int>(role)); }

private:
    bool readMoment(QByteArrayView line, BarDescription* bar);
    bool split(QByteArrayView line);
    bool readDate(QByteArrayView text, QDate* date);
    bool hasPlainNumbers() const;
    bool readFields(BarDescription* bar);
    short decimals();
    QByteArrayView field(int role) const;
    bool has(int role) const;

    /// Of a series.
    using Ids = std::tuple<qint32, qint32, qint64>;
    static Ids idsOf(const ImportDetails& details)
    {
        return {details.stockId, details.boardId, details.securityId};
    }

    static constexpr int roles = static_cast<int>(ColumnRole::Ticker) + 1;
    static constexpr int maxFields = 32;

    const ImportDetails& m_details;
    char m_separator = 0;
    bool m_isUsable = false;
    std::array<int, roles> m_columns; ///< by role; -1 for none
    int m_wanted = 0;                 ///< fields, from the line's start
    DateForm m_dateForm;
    TimeForm m_timeForm;
    std::array<const char*, maxFields + 1>
        m_begins{};        ///< of the line's fields; ends are one before
    QByteArray m_dateText; ///< of the line before, and what it was read as
    QDate m_date;
    /// Whose decimals were looked up last, and these.
    std::optional<Ids> m_known;
    decimal m_zero; ///< with so many decimals
};

} // namespace tadata
