// SPDX-License-Identifier: MIT
#include "dayvalues.h"

#include "importfailures.h"

#include <vexdesk/history/dayfilelines.h>

#include <QtCore/QHashFunctions>

#include <algorithm>
#include <array>
#include <utility>

namespace tadata {

using vexdesk::Outcome;
using vexdesk::Result;

namespace {

// Of all but the time. Two sums are the same where an import would write the same texts, however
// the lines write their numbers.
size_t sumOf(const vexdesk::StoredBar& bar)
{
    constexpr qint64 scales = decimal::maxScale + 1;
    const auto digits = [](const decimal& number) {
        return number.mantissa() * scales + number.scale();
    };
    const std::array<qint64, 7> values{digits(bar.open),  digits(bar.high), digits(bar.low),
                                       digits(bar.close), bar.volume,       digits(bar.value),
                                       bar.openInterest};
    return qHashBits(values.data(), sizeof(values));
}

int secondOf(const vexdesk::StoredBar& bar)
{
    constexpr int perSecond = 1000;
    return bar.time.msecsSinceStartOfDay() / perSecond;
}

template <typename Taker>
Outcome takeBars(const QString& path, const QDate& day, const Taker& take)
{
    vexdesk::DayFileLines lines(path);
    lines.beStrict();
    if (!lines.open())
        return cannotOpen(path);
    QByteArrayView line;
    while (lines.next(&line)) {
        if (const auto checked = vexdesk::checkedBar(line, day))
            take(checked->bar);
    }
    return lines.outcome() ? Outcome() : cannotRead(path, lines.outcome().message());
}

} // namespace

Result<TimesOfDay> storedTimes(const QString& path, const QDate& day)
{
    TimesOfDay times;
    const Outcome taken = takeBars(
        path, day, [&times](const vexdesk::StoredBar& bar) { times.insert(secondOf(bar)); });
    return taken ? Result<TimesOfDay>(std::move(times)) : taken.failure();
}

DayChange& DayChange::operator+=(const DayChange& other)
{
    added += other.added;
    replaced += other.replaced;
    lost += other.lost;
    return *this;
}

Result<DayValues> DayValues::ofFile(const QString& path, const QDate& day)
{
    DayValues values;
    const Outcome taken =
        takeBars(path, day, [&values](const vexdesk::StoredBar& bar) { values.add(bar); });
    return taken ? Result<DayValues>(std::move(values)) : taken.failure();
}

void DayValues::add(const vexdesk::StoredBar& bar)
{
    m_bars.push_back({secondOf(bar), sumOf(bar)});
}

void DayValues::add(QByteArrayView line, const QDate& day)
{
    if (const auto checked = vexdesk::checkedBar(line, day))
        add(checked->bar);
}

void DayValues::addLines(QByteArrayView lines, const QDate& day)
{
    for (qsizetype begin = 0; begin < lines.size();) {
        const qsizetype found = lines.indexOf('\n', begin);
        const qsizetype end = found < 0 ? lines.size() : found;
        add(lines.sliced(begin, end - begin), day);
        begin = end + 1;
    }
}

TimesOfDay DayValues::times() const
{
    TimesOfDay times;
    for (const Bar& bar : m_bars)
        times.insert(bar.second);
    return times;
}

// By time.
std::vector<DayValues::Bar> DayValues::lastOfEach() const
{
    const auto isNoLater = [](const Bar& left, const Bar& right) {
        return right.second <= left.second;
    };
    if (std::adjacent_find(m_bars.begin(), m_bars.end(), isNoLater) == m_bars.end())
        return m_bars; // as nearly always
    std::vector<Bar> bars(m_bars.rbegin(), m_bars.rend());
    std::stable_sort(bars.begin(), bars.end(),
                     [](const Bar& left, const Bar& right) { return left.second < right.second; });
    const auto isOneTime = [](const Bar& left, const Bar& right) {
        return left.second == right.second;
    };
    bars.erase(std::unique(bars.begin(), bars.end(), isOneTime), bars.end());
    return bars;
}

DayChange DayValues::changeTo(const DayValues& after) const
{
    const std::vector<Bar> old = lastOfEach();
    DayChange change;
    int kept = 0;
    auto before = old.begin();
    for (const Bar& bar : after.lastOfEach()) {
        before = std::find_if(before, old.end(),
                              [&bar](const Bar& one) { return one.second >= bar.second; });
        const bool wasThere = before != old.end() && before->second == bar.second;
        kept += wasThere ? 1 : 0;
        change.added += wasThere ? 0 : 1;
        change.replaced += wasThere && before->sum != bar.sum ? 1 : 0;
    }
    change.lost = static_cast<int>(old.size()) - kept;
    return change;
}

} // namespace tadata
