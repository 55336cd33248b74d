// SPDX-License-Identifier: MIT
#include "storedtimes.h"

#include "importfailures.h"

#include <vexdesk/history/dayfilelines.h>
#include <vexdesk/history/recordline.h>

namespace tadata {

vexdesk::Result<TimesOfDay> storedTimes(const QString& path, const QDate& day)
{
    constexpr int perSecond = 1000;
    vexdesk::DayFileLines lines(path);
    lines.beStrict();
    if (!lines.open())
        return cannotOpen(path);
    TimesOfDay times;
    QByteArrayView line;
    while (lines.next(&line)) {
        if (const auto checked = vexdesk::checkedBar(line, day))
            times.insert(checked->bar.time.msecsSinceStartOfDay() / perSecond);
    }
    if (!lines.outcome())
        return cannotRead(path, lines.outcome().message());
    return times;
}

} // namespace tadata
