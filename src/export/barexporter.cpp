// SPDX-License-Identifier: MIT
#include "barexporter.h"

#include "exportdetails.h"
#include "wrappingsum.h"

#include <vexdesk/history/barinterval.h>

#include <QtCore/QDateTime>
#include <QtCore/QStringList>

#include <utility>

namespace tadata {

namespace {

constexpr int secondsOfDay = 24 * 60 * 60;

// A bar without a time is at midnight.
int msecsOf(const QTime& time)
{
    return time.isValid() ? time.msecsSinceStartOfDay() : 0;
}

// The last interval of a day ends at the midnight that begins the next one, and so a daily bar has
// the date of the day after: like every other bar it is stamped with the moment at which it is
// over, and nobody who reads the file in order knows it before.
void stampWithIntervalEnd(BarDescription& bar, const BarDescription& source, int timeframe)
{
    const int end = vexdesk::intervalEnd(msecsOf(source.time), timeframe);
    bar.date = end == secondsOfDay ? source.date.addDays(1) : source.date;
    bar.time = QTime(0, 0).addSecs(end);
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

// hh, mm and ss, each whole, and signs that are no letters and quote none.
bool isPlainTimePattern(QStringView pattern)
{
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar letter = pattern[i];
        // Half a character is none of its own.
        if (letter == u'\'' || letter.isSurrogate())
            return false;
        if (!letter.isLetter())
            continue;
        const bool isKnown = letter == u'h' || letter == u'm' || letter == u's';
        const bool isTwice = i + 1 < pattern.size() && pattern[i + 1] == letter &&
                             (i + 2 == pattern.size() || pattern[i + 2] != letter);
        if (!isKnown || !isTwice)
            return false;
        ++i;
    }
    return true;
}

} // namespace

const BarExporter::NamedColumn BarExporter::namedColumns[] = {
    {"TICKER", Column::Ticker}, {"PER", Column::Per},          {"DATE", Column::Date},
    {"TIME", Column::Time},     {"OPEN", Column::Open},        {"HIGH", Column::High},
    {"LOW", Column::Low},       {"CLOSE", Column::Close},      {"VOL", Column::Vol},
    {"VAL", Column::Val},       {"OPEN_INT", Column::OpenInt},
};

BarExporter::BarExporter(const ExportDetails& details, LineSink sink)
    : m_details(details)
    , m_sink(std::move(sink))
    , m_ticker(details.securityName.toUtf8())
    , m_separator(details.separator.toUtf8())
    , m_isPlainTime(isPlainTimePattern(details.timeFormat))
{
    const QStringList names = details.lineFormat.split(u',');
    for (const NamedColumn& named : namedColumns) {
        const QLatin1String name(named.name);
        if (!names.contains(name))
            continue;
        if (names.last() == name)
            m_last = m_columns.size();
        m_columns.append(named.column);
        if (named.column <= Column::Time)
            m_firstNumber = m_columns.size();
    }
}

void BarExporter::exportBar(const BarDescription& source, BarDescription& target)
{
    if (target.valid && !liesAfter(source, target)) {
        fold(source, target);
        return;
    }
    if (target.valid)
        writeBar(target);
    target = firstOf(source, m_details.timeframe);
}

// As moments of the local clock.
bool BarExporter::liesAfter(const BarDescription& source, const BarDescription& target)
{
    if (m_days.isKnownAsEven(source.date) && m_days.isKnownAsEven(target.date)) {
        return target.date < source.date ||
               (target.date == source.date && msecsOf(target.time) < msecsOf(source.time));
    }
    return QDateTime(target.date, target.time) < QDateTime(source.date, source.time);
}

void BarExporter::writeBar(const BarDescription& bar)
{
    if (!m_details.finishedOnly)
        return appendLine(bar);
    if (m_waiting && (m_waiting->date != bar.date || m_waiting->time != bar.time))
        appendLine(*m_waiting);
    m_waiting = bar;
}

void BarExporter::appendLine(const BarDescription& bar)
{
    // The same for all lines of an interval.
    if (const std::pair stamp(bar.date, bar.time); m_stamped != stamp) {
        m_stamped = stamp;
        m_stamp.clear();
        appendColumns(0, m_firstNumber, bar, m_stamp);
    }
    m_lines.append(m_stamp.bytes());
    appendColumns(m_firstNumber, m_columns.size(), bar, m_lines);
    constexpr qsizetype enough = 16384;
    if (m_lines.bytes().size() >= enough)
        flush();
}

void BarExporter::flush()
{
    if (m_lines.bytes().isEmpty())
        return;
    m_sink(m_lines.bytes());
    m_lines.clear();
}

void BarExporter::finish()
{
    if (m_waiting)
        appendLine(*m_waiting);
    m_waiting.reset();
    flush();
}

void BarExporter::appendColumns(qsizetype from, qsizetype to, const BarDescription& bar,
                                LineBuffer& text)
{
    for (qsizetype i = from; i < to; ++i) {
        append(m_columns.at(i), bar, text);
        text.append(i == m_last ? QByteArrayView("\n") : QByteArrayView(m_separator));
    }
}

void BarExporter::append(Column column, const BarDescription& bar, LineBuffer& text)
{
    switch (column) {
    case Column::Ticker:
        return text.append(m_ticker);
    case Column::Per:
        return text.append(qint64(m_details.timeframe));
    case Column::Date:
        return appendDate(bar.date, text);
    case Column::Time:
        return appendTime(bar.time, text);
    case Column::Open:
        return text.append(bar.open);
    case Column::High:
        return text.append(bar.high);
    case Column::Low:
        return text.append(bar.low);
    case Column::Close:
        return text.append(bar.close);
    case Column::Vol:
        return text.append(bar.volume);
    case Column::Val:
        return text.append(bar.value);
    case Column::OpenInt:
        return text.append(qint64(bar.openInterest));
    }
}

void BarExporter::appendDate(const QDate& date, LineBuffer& text)
{
    if (date != m_date) {
        m_date = date;
        m_dateText = date.toString(m_details.dateFormat).toUtf8();
    }
    text.append(m_dateText);
}

void BarExporter::appendTime(const QTime& time, LineBuffer& text) const
{
    if (!m_isPlainTime || !time.isValid())
        return text.append(time.toString(m_details.timeFormat).toUtf8());
    const QStringView pattern = m_details.timeFormat;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar letter = pattern[i];
        if (letter == u'h')
            text.appendTwoDigits(time.hour());
        else if (letter == u'm')
            text.appendTwoDigits(time.minute());
        else if (letter == u's')
            text.appendTwoDigits(time.second());
        else {
            text.append(QString(letter).toUtf8());
            continue;
        }
        ++i;
    }
}

} // namespace tadata
