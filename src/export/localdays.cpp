// SPDX-License-Identifier: MIT
#include "localdays.h"

#include <QtCore/QDateTime>

namespace tadata {

namespace {

// The same offset at the midnights around it, the neighbours' too: a change so near may reach into
// the day. One that is taken back within a day is none.
bool clockRunsEvenly(const QDate& day)
{
    const QDateTime midnight(day, QTime(0, 0));
    for (int days = -1; days <= 2; ++days) {
        const QDateTime other(day.addDays(days), QTime(0, 0));
        if (!other.isValid() || other.offsetFromUtc() != midnight.offsetFromUtc())
            return false;
    }
    return true;
}

} // namespace

bool LocalDays::isKnownAsEven(const QDate& day)
{
    // To look at a day costs as much as comparing so many moments on it.
    constexpr int worthLooking = 5;
    for (Known& known : m_known) {
        if (known.day != day)
            continue;
        if (known.asked < worthLooking && ++known.asked == worthLooking)
            known.isEven = clockRunsEvenly(day);
        return known.isEven;
    }
    m_known[m_oldest] = {day};
    m_oldest = 1 - m_oldest;
    return false;
}

} // namespace tadata
