#include "editor/timeofdayrange.h"

namespace tadata {

TimeOfDayRange::TimeOfDayRange(const QDate& day, const QDateTime& from, const QDateTime& to)
    : m_day(day)
    , m_from(from)
    , m_to(to)
    , m_isOrdinary(from.isValid() && to.isValid() && !clockIsChanged())
{
    if (!m_isOrdinary)
        return;
    const qint64 midnight = QDateTime(day, QTime(0, 0)).toMSecsSinceEpoch();
    m_fromOffset = from.toMSecsSinceEpoch() - midnight;
    m_toOffset = to.toMSecsSinceEpoch() - midnight;
}

TimeOfDayRange::Place TimeOfDayRange::place(int secondOfDay) const
{
    if (m_isOrdinary) {
        const qint64 offset = secondOfDay * qint64(1000);
        if (offset < m_fromOffset)
            return Place::Before;
        return m_toOffset < offset ? Place::After : Place::Inside;
    }
    const QDateTime time(m_day, QTime(0, 0).addSecs(secondOfDay));
    if (time < m_from)
        return Place::Before;
    return m_to < time ? Place::After : Place::Inside;
}

// Looked at every half hour: a change that is taken back within less is none.
bool TimeOfDayRange::clockIsChanged() const
{
    const QDateTime midnight(m_day, QTime(0, 0));
    constexpr int step = 30 * 60;
    constexpr int lastSecond = 24 * 60 * 60 - 1;
    for (int second = 0; second < lastSecond + step; second += step) {
        const QDateTime time(m_day, QTime(0, 0).addSecs(qMin(second, lastSecond)));
        if (!time.isValid() || time.offsetFromUtc() != midnight.offsetFromUtc())
            return true;
    }
    return false;
}

} // namespace tadata
