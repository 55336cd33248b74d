// SPDX-License-Identifier: MIT
#include "skippedtimes.h"

#include "bardescription.h"

#include <vexdesk/history/dayfilelines.h>
#include <vexdesk/history/dayfilenames.h>

namespace tadata::cli {

QList<SkippedTime> skippedTimes(const QTimeZone& zone, const QDate& first, const QDate& last)
{
    QList<SkippedTime> skipped;
    const auto transitions = zone.transitions(QDateTime(first.addDays(-1), QTime(0, 0), Qt::UTC),
                                              QDateTime(last.addDays(2), QTime(0, 0), Qt::UTC));
    for (const QTimeZone::OffsetData& transition : transitions) {
        const QDateTime moment = transition.atUtc;
        const SkippedTime time{moment.addSecs(zone.offsetFromUtc(moment.addSecs(-1))),
                               moment.addSecs(transition.offsetFromUtc)};
        if (time.from < time.to && time.from.date() >= first && time.from.date() <= last)
            skipped.append(time);
    }
    return skipped;
}

bool hasBarIn(const SkippedTime& skipped, const QDir& series, int timeframe)
{
    const QDate day = skipped.from.date();
    vexdesk::DayFileLines lines(series.filePath(vexdesk::dayFileName(day, timeframe)));
    if (!lines.open())
        return false;
    QByteArrayView line;
    while (lines.next(&line)) {
        const BarDescription bar = barFromRecordLine(line, day);
        const QDateTime moment(bar.date, bar.time, Qt::UTC);
        if (moment >= skipped.from && moment < skipped.to)
            return true;
    }
    return false;
}

} // namespace tadata::cli
