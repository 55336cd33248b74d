// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>
#include <QtCore/QString>

#include <optional>

namespace tadata {

/// Finds out whether the dates of a file were read with the day and the month in each other's
/// place, or, of six digits, the day and the year. Bars come often, so dates that leap by more than
/// two weeks and would not if they were read the other way were read wrongly. One thread at a time.
class DateOrder final
{
public:
    /// Of the dates in a file, as QDate takes it.
    explicit DateOrder(const QString& pattern);

    /// The next date of the file.
    void add(const QDate& date)
    {
        if (date != m_date)
            addAnother(date);
    }

    /// Whether those that were added seem to be read wrongly.
    bool isWrong() const { return m_leaps && m_canBeExchanged && m_date.isValid(); }

private:
    enum class Exchange { None, DayAndMonth, DayAndYear };

    static Exchange exchangeIn(const QString& pattern);
    void addAnother(const QDate& date);
    QDate exchanged(const QDate& date) const;

    Exchange m_exchange;
    QDate m_date;      ///< the last one
    QDate m_exchanged; ///< the same, read the other way
    bool m_leaps = false;
    bool m_canBeExchanged; ///< and then do not leap
};

} // namespace tadata
