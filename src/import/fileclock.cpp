// SPDX-License-Identifier: MIT
#include "fileclock.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>

#include <algorithm>
#include <functional>

namespace tadata {

using vexdesk::Failure;
using vexdesk::Outcome;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(FileClock)
};

constexpr qint64 secondsPerDay = 86400;
constexpr qint64 secondsPerHour = 3600;
constexpr qint64 firstDay = 2440588; // 1970-01-01 as a Julian day

qint64 dayOf(qint64 seconds)
{
    const qint64 day = seconds / secondsPerDay;
    return seconds % secondsPerDay < 0 ? day - 1 : day;
}

QDate dateOf(qint64 seconds)
{
    return QDate::fromJulianDay(dayOf(seconds) + firstDay);
}

int secondOfDay(qint64 seconds)
{
    return static_cast<int>(seconds - dayOf(seconds) * secondsPerDay);
}

Failure skipped(qint64 shown, const QTimeZone& zone)
{
    const QTime time = QTime::fromMSecsSinceStartOfDay(secondOfDay(shown) * 1000);
    return {Text::tr("Время '%1' пропущено часами зоны %2")
                .arg(time.toString(QStringLiteral("hh:mm:ss")), QString::fromUtf8(zone.id()))};
}

} // namespace

ZoneClock::ZoneClock(const QTimeZone& zone)
    : m_zone(zone)
{}

int ZoneClock::offsetOfZone(qint64 moment) const
{
    static const QTimeZone utc = QTimeZone::utc();
    return m_zone.offsetFromUtc(QDateTime::fromSecsSinceEpoch(moment, utc));
}

const ZoneClock::Offsets& ZoneClock::offsetsOn(qint64 day)
{
    if (const auto known = m_on.constFind(day); known != m_on.constEnd())
        return *known;
    Offsets offsets;
    // No zone has ever had an offset for less than an hour.
    for (qint64 moment = 0; moment <= secondsPerDay; moment += secondsPerHour) {
        const int offset = offsetOfZone(day * secondsPerDay + moment);
        if (!offsets.contains(offset))
            offsets.append(offset);
    }
    return *m_on.insert(day, offsets);
}

const ZoneClock::Offsets& ZoneClock::offsetsAround(qint64 day)
{
    if (const auto known = m_around.constFind(day); known != m_around.constEnd())
        return *known;
    Offsets offsets;
    for (const qint64 near : {day - 1, day, day + 1}) {
        for (const int offset : offsetsOn(near)) {
            if (!offsets.contains(offset))
                offsets.append(offset);
        }
    }
    std::sort(offsets.begin(), offsets.end(), std::greater());
    return *m_around.insert(day, offsets);
}

int ZoneClock::offsetAt(qint64 moment)
{
    const Offsets& offsets = offsetsOn(dayOf(moment));
    return offsets.size() == 1 ? offsets.front() : offsetOfZone(moment);
}

std::optional<qint64> ZoneClock::momentOf(qint64 shown)
{
    const Offsets& offsets = offsetsAround(dayOf(shown));
    if (offsets.size() == 1)
        return shown - offsets.front();
    for (const int offset : offsets) {
        if (offsetAt(shown - offset) == offset)
            return shown - offset;
    }
    return std::nullopt;
}

qint64 ZoneClock::shownAt(qint64 moment)
{
    return moment + offsetAt(moment);
}

ClockChange::ClockChange(const FileClock& clock, int timeframe)
    : m_clock(clock)
    , m_seconds(clock.stampsBegin ? timeframe : 0)
    , m_from(clock.from)
    , m_to(clock.to)
{}

Outcome ClockChange::change(QDate* date, QTime* time)
{
    const int milliseconds = time->msecsSinceStartOfDay();
    qint64 shown = (date->toJulianDay() - firstDay) * secondsPerDay + milliseconds / 1000;
    shown += m_seconds;
    if (m_clock.from.isValid()) {
        const std::optional<qint64> moment = m_from.momentOf(shown);
        if (!moment)
            return skipped(shown, m_clock.from);
        shown = m_to.shownAt(*moment);
    }
    constexpr int secondsPerMinute = 60;
    shown += qint64(m_clock.shiftMinutes) * secondsPerMinute;
    *date = dateOf(shown);
    *time = QTime::fromMSecsSinceStartOfDay(secondOfDay(shown) * 1000 + milliseconds % 1000);
    return {};
}

} // namespace tadata
