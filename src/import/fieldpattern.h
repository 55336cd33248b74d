// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayView>
#include <QtCore/QDate>
#include <QtCore/QString>
#include <QtCore/QTime>
#include <QtCore/QVarLengthArray>

#include <array>
#include <optional>

namespace tadata {

/// What stands in a field of a pattern such as "dd.MM.yy".
struct PlainDate
{
    int year = 0;
    int month = 0;
    int day = 0;
    /// A day that not every century has, or the year 0: only QDate::fromString knows whether it is
    /// one.
    bool isForQt = false;

    /// An invalid one for a day that is not in the calendar. Not of one that is for Qt.
    QDate date() const { return QDate(year, month, day); }
};

/// A pattern of dates or times whose every part is written with digits, and always as many: where
/// the parts stand in a field. Much faster than Qt's reading by a pattern, and with the same result
/// where it reads. A plain value; any thread.
class FieldPattern final
{
public:
    explicit FieldPattern(const QString& pattern);

    /// Whether the pattern is such a one; otherwise nothing can be read.
    bool isPlain() const { return m_isPlain; }
    qsizetype size() const { return m_text.size(); }

    /// No value for a field that is not digits with the pattern's signs at their places.
    std::optional<PlainDate> date(QByteArrayView field) const;
    /// The same for a time; an invalid one also where there is no such time of the day.
    QTime time(QByteArrayView field) const;

private:
    struct Part
    {
        char letter = 0;
        int begin = 0;
        int length = 0;
    };

    bool hasSigns(QByteArrayView field) const;
    bool read(QByteArrayView field, std::array<int, 3>* numbers) const;

    QByteArray m_text;
    QVarLengthArray<Part, 3> m_parts;
    QVarLengthArray<int, 8> m_signs; ///< the places between the parts
    bool m_isPlain = false;
    bool m_isOfTime = false; ///< hours, minutes and maybe seconds of two digits each
};

} // namespace tadata
