// SPDX-License-Identifier: MIT
#include "desk/chart/barscopy.h"

#include "desk/chart/chartfiles.h"
#include "desk/chart/dayreader.h"
#include "desk/chart/wallclock.h"

#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>

#include <algorithm>
#include <cmath>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::BarsCopy)
};

// They were read, and are not kept.
bool hasTooManyBars(const SeriesDay& day)
{
    return day.summary->count > mostBarsOfDay && !day.bars;
}

QString whyMissing(const SeriesDay& day)
{
    if (hasTooManyBars(day))
        return Text::tr("в файле баров больше %1").arg(mostBarsOfDay);
    return day.reading ? Text::tr("файла больше нет, или он пуст") : day.reading.message();
}

QDate dateAt(double time)
{
    return wallDate(static_cast<qint64>(std::floor(time)));
}

} // namespace

BarsCopy::BarsCopy(BarsStretch stretch, qsizetype most)
    : m_stretch(std::move(stretch))
    , m_most(most)
    , m_decimals(m_stretch.series->decimals())
{
    const auto size = static_cast<qsizetype>(listed().size());
    m_first = m_stretch.series->indexFrom(periodBegin(dateAt(m_stretch.from), m_stretch.timeframe));
    const QDate end = periodEnd(dateAt(m_stretch.to), m_stretch.timeframe);
    m_last = std::max(m_first, m_stretch.series->indexFrom(end));
    // A bar at midnight of the next day may be a candle of its own, which begins before.
    if (m_last < size && listed()[static_cast<size_t>(m_last)].day == end)
        ++m_last;
    m_next = m_first;
}

bool BarsCopy::isInMemory(const SeriesDay& day) const
{
    const bool needsBars = isBelowDay(m_stretch.timeframe);
    if (!day.summary)
        return false;
    if (day.summary->count == 0)
        return static_cast<bool>(day.reading); // what could not be read may be readable by now
    return !needsBars || day.bars;
}

// All that the candles of a day depend on: its week or month, that of the day before if the day is
// the first of its own, and a day on each side for the bars at midnight.
qsizetype BarsCopy::windowBegin(qsizetype day) const
{
    const QDate before = listed()[static_cast<size_t>(day)].day.addDays(-1);
    const QDate begin = periodBegin(before, m_stretch.timeframe);
    return std::max<qsizetype>(0, m_stretch.series->indexFrom(begin) - 1);
}

qsizetype BarsCopy::windowEnd(qsizetype day) const
{
    const QDate end = periodEnd(listed()[static_cast<size_t>(day)].day, m_stretch.timeframe);
    return std::min(static_cast<qsizetype>(listed().size()), m_stretch.series->indexFrom(end) + 1);
}

bool BarsCopy::needsFiles() const
{
    if (m_first == m_last)
        return false;
    const auto begin = listed().begin();
    return !std::all_of(begin + windowBegin(m_first), begin + windowEnd(m_last - 1),
                        [this](const SeriesDay& day) { return isInMemory(day); });
}

const SeriesDay& BarsCopy::loaded(qsizetype day)
{
    const auto found = m_loaded.find(day);
    if (found != m_loaded.end())
        return found->second;
    SeriesDay one = listed()[static_cast<size_t>(day)];
    if (!isInMemory(one))
        one = read(one);
    m_decimals = std::max(m_decimals, one.summary->decimals);
    const bool isCopied = m_first <= day && static_cast<double>(wallTime(one.day)) < m_stretch.to;
    const bool hasNone = one.summary->count == 0 && (!one.reading || one.bytes > 0);
    const bool hasTooMany = isBelowDay(m_stretch.timeframe) && hasTooManyBars(one);
    if (isCopied && (hasNone || hasTooMany))
        noteMissing(one);
    return m_loaded.emplace(day, std::move(one)).first->second;
}

SeriesDay BarsCopy::read(const SeriesDay& day) const
{
    const ReadDay read = readDay(pathOf(day), day.day);
    SeriesDay one = day;
    one.summary = read.summary ? read.summary : std::make_shared<const DaySummary>();
    one.bars = isBelowDay(m_stretch.timeframe) ? read.bars : nullptr;
    one.reading = read.outcome;
    return one;
}

void BarsCopy::noteMissing(const SeriesDay& day)
{
    if (m_copied.missing.isEmpty())
        m_copied.firstMissing =
            QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(pathOf(day)), whyMissing(day));
    m_copied.missing.append(day.day);
}

QString BarsCopy::pathOf(const SeriesDay& day) const
{
    return m_stretch.directory + u'/' + dayFileName(day.day, m_stretch.series->timeframe());
}

bool BarsCopy::takeDay()
{
    if (m_next == m_last || m_copied.isTooMuch)
        return false;
    const qsizetype begin = windowBegin(m_next);
    std::vector<SeriesDay> days;
    for (qsizetype day = begin; day < windowEnd(m_next); ++day)
        days.push_back(loaded(day));
    m_loaded.erase(m_loaded.begin(), m_loaded.lower_bound(begin));
    const BarSeries around(m_stretch.series->timeframe(), std::move(days));
    for (const Candle& candle : foldDay(around, m_next - begin, m_stretch.timeframe)) {
        if (static_cast<double>(candle.end) > m_stretch.from &&
            static_cast<double>(candle.begin) < m_stretch.to)
            m_candles.push_back(candle);
    }
    m_copied.isTooMuch = static_cast<qsizetype>(m_candles.size()) > m_most;
    ++m_next;
    return true;
}

CopiedBars BarsCopy::finish()
{
    m_copied.count = static_cast<qsizetype>(m_candles.size());
    if (!m_copied.isTooMuch)
        m_copied.text = candlesAsText(
            m_candles, {m_stretch.timeframe, m_stretch.series->timeframe()}, m_decimals);
    return std::move(m_copied);
}

} // namespace vexdesk
