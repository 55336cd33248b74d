#include "export/exportbar.h"

#include "export/exportdetails.h"
#include "store/bardescription.h"

#include <QtCore/QDateTime>
#include <QtCore/QLatin1String>
#include <QtCore/QStringList>
#include <QtCore/QTextStream>

#include <cmath>

namespace {

constexpr int secondsOfDay = 24 * 60 * 60;
constexpr int msecsOfSecond = 1000;

// Volumes are 64 bits wide and may be anything: their sum wraps around instead of being undefined.
qint64 wrappingSum(qint64 left, qint64 right)
{
    return static_cast<qint64>(static_cast<quint64>(left) + static_cast<quint64>(right));
}

// Seconds from midnight to the end of the interval in which a time lies. An interval holds its end
// and not its start.
int intervalEnd(const QTime& time, int timeframe)
{
    const QTime midnight(0, 0);
    const int length = timeframe * msecsOfSecond;
    return static_cast<int>(std::ceil(midnight.msecsTo(time) / static_cast<double>(length))) *
           timeframe;
}

// The last interval of a day ends at the midnight that begins the next one, and so a daily bar has
// the date of the day after. Kept: the files that users have exported are stamped this way, and new
// bars must fit behind the old ones.
void stampWithIntervalEnd(BarDescription& bar, const BarDescription& source, int timeframe)
{
    const int end = intervalEnd(source.time, timeframe);
    bar.date = end == secondsOfDay ? source.date.addDays(1) : source.date;
    bar.time = QTime(0, 0).addSecs(end);
}

bool liesAfter(const BarDescription& source, const BarDescription& target)
{
    return QDateTime(target.date, target.time) < QDateTime(source.date, source.time);
}

void fold(const BarDescription& source, BarDescription& target)
{
    // Of equal prices the later one gives the high its digits, and the earlier one the low.
    if (source.high.compare(target.high) >= 0)
        target.high = source.high;
    if (source.low.compare(target.low) < 0)
        target.low = source.low;
    target.close = source.close;
    target.volume = wrappingSum(target.volume, source.volume);
    target.value += source.value;
    target.openInterest = source.openInterest;
}

BarDescription firstOf(const BarDescription& source, int timeframe)
{
    BarDescription target = source;
    target.valid = true;
    target.error.clear();
    stampWithIntervalEnd(target, source, timeframe);
    return target;
}

using WriteColumn = void (*)(QTextStream&, const BarDescription&, const ExportDetails&);

struct Column
{
    QLatin1String name;
    WriteColumn write;
};

void writeTicker(QTextStream& out, const BarDescription&, const ExportDetails& details)
{
    out << details.securityName;
}

void writePeriod(QTextStream& out, const BarDescription&, const ExportDetails& details)
{
    out << details.timeframe;
}

void writeDate(QTextStream& out, const BarDescription& bar, const ExportDetails& details)
{
    out << bar.date.toString(details.dateFormat);
}

void writeTime(QTextStream& out, const BarDescription& bar, const ExportDetails& details)
{
    out << bar.time.toString(details.timeFormat);
}

template <decimal BarDescription::*number>
void writeDecimal(QTextStream& out, const BarDescription& bar, const ExportDetails&)
{
    out << (bar.*number).toString();
}

template <auto BarDescription::*number>
void writeInteger(QTextStream& out, const BarDescription& bar, const ExportDetails&)
{
    out << bar.*number;
}

constexpr Column columns[] = {
    {QLatin1String("TICKER"), writeTicker},
    {QLatin1String("PER"), writePeriod},
    {QLatin1String("DATE"), writeDate},
    {QLatin1String("TIME"), writeTime},
    {QLatin1String("OPEN"), writeDecimal<&BarDescription::open>},
    {QLatin1String("HIGH"), writeDecimal<&BarDescription::high>},
    {QLatin1String("LOW"), writeDecimal<&BarDescription::low>},
    {QLatin1String("CLOSE"), writeDecimal<&BarDescription::close>},
    {QLatin1String("VOL"), writeInteger<&BarDescription::volume>},
    {QLatin1String("VAL"), writeDecimal<&BarDescription::value>},
    {QLatin1String("OPEN_INT"), writeInteger<&BarDescription::openInterest>},
};

QStringList columnNames(const ExportDetails& details)
{
    return details.lineFormat.split(u',');
}

} // namespace

void exportBar(const BarDescription& source, BarDescription& target, const ExportDetails& details,
               QTextStream& out)
{
    if (target.valid && !liesAfter(source, target)) {
        fold(source, target);
        return;
    }
    if (target.valid)
        writeBar(target, out, details);
    target = firstOf(source, details.timeframe);
}

void writeBar(const BarDescription& bar, QTextStream& out, const ExportDetails& details)
{
    const QStringList names = columnNames(details);
    for (const Column& column : columns) {
        if (!names.contains(column.name))
            continue;
        column.write(out, bar, details);
        out << (names.last() == column.name ? QStringLiteral("\n") : details.separator);
    }
}

void writeHeader(QTextStream& out, const ExportDetails& details)
{
    const QStringList names = columnNames(details);
    out << u'<' << names.join(u'>' + details.separator + u'<') << QStringLiteral(">\n");
}
