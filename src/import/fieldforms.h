// SPDX-License-Identifier: MIT
#pragma once

#include "fieldpattern.h"

#include <QtCore/QByteArrayView>
#include <QtCore/QDate>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTime>

#include <optional>

/// The forms in which files of bars are known to write dates and times. Any thread.
namespace tadata {

/// The patterns that a guess tries, in the order in which it names them.
const QStringList& knownDateForms();
const QStringList& knownTimeForms();

/// One form of dates. A field is in a known form when the import's parser takes it and it is as
/// long as the pattern; in any other, when the parser takes it.
class DateForm final
{
public:
    explicit DateForm(const QString& pattern);

    const QString& pattern() const { return m_pattern; }
    /// The date of a field that is in the form.
    std::optional<QDate> read(QByteArrayView field) const;

private:
    QString m_pattern;
    FieldPattern m_plain;
    bool m_isKnown;
};

/// The same of times.
class TimeForm final
{
public:
    explicit TimeForm(const QString& pattern);

    const QString& pattern() const { return m_pattern; }
    std::optional<QTime> read(QByteArrayView field) const
    {
        const QTime time = m_plain.time(field);
        return time.isValid() ? std::optional(time) : readByQt(field);
    }

private:
    std::optional<QTime> readByQt(QByteArrayView field) const;

    QString m_pattern;
    FieldPattern m_plain;
    bool m_isKnown;
};

} // namespace tadata
