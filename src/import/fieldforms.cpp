// SPDX-License-Identifier: MIT
#include "fieldforms.h"

#include "lineparser.h"

#include <vexdesk/history/utf8.h>

namespace tadata {

namespace {

std::optional<QDate> dateByQt(QByteArrayView field, const QString& pattern)
{
    const QDate date = dateOfField(vexdesk::textFromUtf8(field), pattern);
    return date.isValid() ? std::optional(date) : std::nullopt;
}

} // namespace

const QStringList& knownDateForms()
{
    static const QStringList forms =
        QStringLiteral("yyyyMMdd yyMMdd ddMMyy dd.MM.yy dd/MM/yy MM/dd/yy yyyy-MM-dd yyyy.MM.dd "
                       "yyyy/MM/dd dd.MM.yyyy dd/MM/yyyy MM/dd/yyyy")
            .split(u' ');
    return forms;
}

const QStringList& knownTimeForms()
{
    static const QStringList forms = QStringLiteral("hhmmss hhmm hh:mm:ss hh:mm").split(u' ');
    return forms;
}

DateForm::DateForm(const QString& pattern)
    : m_pattern(pattern)
    , m_plain(pattern)
    , m_isKnown(knownDateForms().contains(pattern))
{}

std::optional<QDate> DateForm::read(QByteArrayView field) const
{
    const std::optional<PlainDate> plain = m_plain.date(field);
    if (plain && !plain->isForQt) {
        const QDate date = plain->date();
        return date.isValid() ? std::optional(date) : std::nullopt;
    }
    // Of the length of a known form Qt takes nothing but digits with the signs at their places.
    return plain || !m_isKnown ? dateByQt(field, m_pattern) : std::nullopt;
}

TimeForm::TimeForm(const QString& pattern)
    : m_pattern(pattern)
    , m_plain(pattern)
    , m_isKnown(knownTimeForms().contains(pattern))
{}

std::optional<QTime> TimeForm::readByQt(QByteArrayView field) const
{
    if (m_isKnown)
        return std::nullopt;
    const QTime time = QTime::fromString(vexdesk::textFromUtf8(field), m_pattern);
    return time.isValid() ? std::optional(time) : std::nullopt;
}

} // namespace tadata
