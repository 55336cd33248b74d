#include "export/localdays.h"

#include <QtCore/QDateTime>

namespace tadata {

namespace {

// Both midnights belong to the day. Looked at every two hours: a change that is taken back within
// less is none.
bool clockRunsEvenly(const QDate& day)
{
    const QDateTime midnight(day, QTime(0, 0));
    constexpr int hours = 24;
    for (int hour = 0; hour <= hours; hour += 2) {
        const QDateTime time(day.addDays(hour / hours), QTime(hour % hours, 0));
        if (!time.isValid() || time.offsetFromUtc() != midnight.offsetFromUtc())
            return false;
    }
    return true;
}

} // namespace

bool LocalDays::isKnownAsEven(const QDate& day)
{
    // To look at a day costs as much as comparing so many moments on it.
    constexpr int worthLooking = 20;
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
