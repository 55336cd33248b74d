// SPDX-License-Identifier: MIT
#pragma once

#include "bardescription.h"
#include "importdetails.h"

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayView>
#include <QtCore/QVarLengthArray>

#include <array>

namespace tadata {

/// Reads lines of ASCII characters as BarDescription::init reads them, to the same bars, as long as
/// every field has the form that almost all files have. It says so where one has not; the line is
/// then init()'s, which also knows what is wrong with it. One thread at a time.
class PlainLineParser final
{
public:
    /// The settings must outlive the parser.
    explicit PlainLineParser(const ImportDetails& details);

    /// Fills a fresh bar. False, with anything in the bar, when the line is not for this parser.
    bool parse(QByteArrayView line, BarDescription* bar);

    /// A field of the line that was parsed last, whose role has a column. As long as the line.
    QByteArrayView field(ColumnRole role) const { return field(static_cast<int>(role)); }

private:
    /// Where the parts of a date or a time stand in a field.
    struct Pattern
    {
        struct Part
        {
            char letter = 0;
            int begin = 0;
            int length = 0;
        };

        explicit Pattern(const QString& text);
        /// The numbers of the parts, in their order; false for a field of another form.
        bool read(QByteArrayView field, std::array<int, 3>* numbers) const;

        QByteArray text;
        QVarLengthArray<Part, 3> parts;
        QVarLengthArray<int, 8> signs; ///< the places between the parts
        bool isPlain = false;
    };

    bool split(QByteArrayView line);
    bool readDate(QByteArrayView field, QDate* date);
    bool readTime(QByteArrayView field, QTime* time) const;
    bool readNumbers(BarDescription* bar) const;
    QByteArrayView field(int role) const;
    bool has(int role) const;

    static constexpr int roles = static_cast<int>(ColumnRole::Ticker) + 1;
    static constexpr int maxFields = 32;

    const ImportDetails& m_details;
    char m_separator = 0;
    bool m_isUsable = false;
    std::array<int, roles> m_columns; ///< by role; -1 for none
    int m_wanted = 0;                 ///< fields, from the line's start
    Pattern m_datePattern;
    Pattern m_timePattern;
    std::array<QByteArrayView, maxFields> m_fields;
    QByteArray m_dateText; ///< of the line before, and what it was read as
    QDate m_date;
};

} // namespace tadata
