// SPDX-License-Identifier: MIT
#include "recordline.h"

#include "textlines.h"

#include <vexdesk/history/recordline.h>

namespace tadata {

namespace {

constexpr char separator = ';';

// What is no time is written as nothing.
void appendTime(TextLines& lines, const QTime& time)
{
    if (time.isNull())
        return;
    constexpr int perMinute = 60;
    const int seconds = time.msecsSinceStartOfDay() / 1000;
    lines.appendTwoDigits(seconds / (perMinute * perMinute));
    lines.appendTwoDigits(seconds / perMinute % perMinute);
    lines.appendTwoDigits(seconds % perMinute);
}

} // namespace

void appendRecordLine(TextLines& lines, const BarDescription& bar)
{
    constexpr QChar between = QLatin1Char(separator);
    appendTime(lines, bar.time);
    lines.append(between);
    for (const decimal& price : {bar.open, bar.high, bar.low, bar.close}) {
        lines.append(price);
        lines.append(between);
    }
    lines.append(bar.volume);
    lines.append(between);
    lines.append(bar.value);
    lines.append(between);
    lines.append(qint64(bar.openInterest));
    lines.append(QChar(u'\n'));
}

BarDescription barFromRecordLine(QByteArrayView line, const QDate& day)
{
    const vexdesk::StoredBar stored = vexdesk::storedBar(line, day);
    BarDescription bar;
    bar.valid = true;
    bar.date = stored.date;
    bar.time = stored.time;
    bar.open = stored.open;
    bar.high = stored.high;
    bar.low = stored.low;
    bar.close = stored.close;
    bar.volume = stored.volume;
    bar.value = stored.value;
    bar.openInterest = stored.openInterest;
    return bar;
}

} // namespace tadata
