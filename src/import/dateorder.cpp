// SPDX-License-Identifier: MIT
#include "dateorder.h"

#include <QtCore/QStringList>

#include <cstdlib>

namespace tadata {

namespace {

constexpr int firstYearOfTwoDigits = 2000;
constexpr int yearsOfTwoDigits = 100;

bool isLeap(const QDate& from, const QDate& to)
{
    constexpr qint64 longestStep = 14; // days
    return from.isValid() && std::abs(from.daysTo(to)) > longestStep;
}

// The runs of one letter that are numbers of the date. What stands between quotes is text.
QStringList partsOf(const QString& pattern)
{
    QStringList parts;
    bool isQuoted = false;
    QChar before;
    for (const QChar character : pattern) {
        if (character == u'\'')
            isQuoted = !isQuoted;
        else if (!isQuoted && !parts.isEmpty() && character == before)
            parts.last() += character;
        else if (!isQuoted)
            parts.append(character);
        before = isQuoted ? QChar() : character;
    }
    return parts;
}

} // namespace

DateOrder::DateOrder(const QString& pattern)
    : m_exchange(exchangeIn(pattern))
    , m_canBeExchanged(m_exchange != Exchange::None)
{}

DateOrder::Exchange DateOrder::exchangeIn(const QString& pattern)
{
    if (pattern == QLatin1String("yyMMdd") || pattern == QLatin1String("ddMMyy"))
        return Exchange::DayAndYear;
    const QStringList parts = partsOf(pattern);
    const bool hasBoth = parts.contains(QLatin1String("dd")) && parts.contains(QLatin1String("MM"));
    return hasBoth ? Exchange::DayAndMonth : Exchange::None;
}

void DateOrder::addAnother(const QDate& date)
{
    m_leaps = m_leaps || isLeap(m_date, date);
    m_date = date;
    if (!m_canBeExchanged)
        return;
    const QDate other = exchanged(date);
    m_canBeExchanged = other.isValid() && !isLeap(m_exchanged, other);
    m_exchanged = other;
}

QDate DateOrder::exchanged(const QDate& date) const
{
    if (m_exchange == Exchange::DayAndMonth)
        return {date.year(), date.day(), date.month()};
    return {firstYearOfTwoDigits + date.day(), date.month(), date.year() % yearsOfTwoDigits};
}

} // namespace tadata
