// SPDX-License-Identifier: MIT
#include "plainexport.h"

#include <QtCore/QDateTime>
#include <QtCore/QStringList>

QList<BarDescription> PlainExport::folded(const QList<BarDescription>& sources) const
{
    QList<BarDescription> bars;
    for (const BarDescription& source : sources) {
        if (bars.isEmpty()) {
            bars.append(begun(source));
            continue;
        }
        BarDescription& bar = bars.last();
        const QDateTime end(bar.date, bar.time);
        const QDateTime moment(source.date, source.time);
        if (end < moment) {
            bars.append(begun(source));
            continue;
        }
        if (!(source.high < bar.high))
            bar.high = source.high;
        if (source.low < bar.low)
            bar.low = source.low;
        bar.close = source.close;
        bar.volume += source.volume;
        bar.value = bar.value + source.value;
        bar.openInterest = source.openInterest;
    }
    return bars;
}

BarDescription PlainExport::begun(const BarDescription& source) const
{
    const qint64 length = qint64(m_details.timeframe) * 1000;
    const qint64 time = source.time.isValid() ? source.time.msecsSinceStartOfDay() : 0;
    qint64 intervals = time / length;
    if (time % length != 0)
        ++intervals;
    const qint64 seconds = intervals * m_details.timeframe;

    BarDescription bar = source;
    bar.valid = true;
    if (seconds == 86400) {
        bar.date = source.date.addDays(1);
        bar.time = QTime(0, 0);
    } else {
        bar.time = QTime::fromMSecsSinceStartOfDay(int(seconds % 86400 * 1000));
    }
    return bar;
}

QString PlainExport::text(const QString& column, const BarDescription& bar) const
{
    if (column == "TICKER")
        return m_details.securityName;
    if (column == "PER")
        return QString::number(m_details.timeframe);
    if (column == "DATE")
        return bar.date.toString(m_details.dateFormat);
    if (column == "TIME")
        return bar.time.toString(m_details.timeFormat);
    if (column == "OPEN")
        return bar.open.toString();
    if (column == "HIGH")
        return bar.high.toString();
    if (column == "LOW")
        return bar.low.toString();
    if (column == "CLOSE")
        return bar.close.toString();
    if (column == "VOL")
        return QString::number(bar.volume);
    if (column == "VAL")
        return bar.value.toString();
    return QString::number(bar.openInterest);
}

QString PlainExport::lines(const QList<BarDescription>& bars) const
{
    const QStringList names = m_details.lineFormat.split(",");
    const QStringList known{"TICKER", "PER",   "DATE", "TIME", "OPEN",    "HIGH",
                            "LOW",    "CLOSE", "VOL",  "VAL",  "OPEN_INT"};
    QString lines;
    for (const BarDescription& bar : bars) {
        for (const QString& column : known) {
            if (!names.contains(column))
                continue;
            lines += text(column, bar);
            lines += column == names.last() ? QString("\n") : m_details.separator;
        }
    }
    return lines;
}

QString PlainExport::header() const
{
    QStringList names = m_details.lineFormat.split(",");
    for (QString& name : names)
        name = "<" + name + ">";
    return names.join(m_details.separator) + "\n";
}
