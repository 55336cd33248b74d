// SPDX-License-Identifier: MIT
#include "desk/chart/foldeddays.h"

#include <algorithm>
#include <utility>

namespace vexdesk {

namespace {

constexpr size_t mostCandles = 200'000; // about 30 MB

} // namespace

FoldedDays::FoldedDays(std::shared_ptr<const BarSeries> series, Timeframe timeframe,
                       const FoldedDays* before)
    : m_series(std::move(series))
    , m_timeframe(timeframe)
    , m_pages((m_series->days().size() + pageSize - 1) / pageSize)
{
    if (before && before->m_timeframe == timeframe)
        takeOver(*before);
}

void FoldedDays::takeOver(const FoldedDays& before)
{
    m_turn = before.m_turn;
    size_t next = 0;
    for (size_t page = 0; page < before.m_pages.size(); ++page) {
        const std::shared_ptr<Page>& known = before.m_pages[page];
        if (!known)
            continue;
        if (isPageSame(before, page)) {
            m_pages[page] = known;
            m_daysKept += known->daysKept;
            m_candlesKept += known->candlesKept;
        } else if (m_timeframe <= Timeframe::Day) {
            // Weeks and months are made of more days than those that are compared.
            takeOverDays(before, page, &next);
        }
    }
}

void FoldedDays::takeOverDays(const FoldedDays& before, size_t page, size_t* next)
{
    const size_t size = m_series->days().size();
    for (size_t i = 0; i < pageSize; ++i) {
        const Entry& entry = before.m_pages[page]->days[i];
        const size_t known = page * pageSize + i;
        if (!entry.candles)
            continue;
        while (*next < size && dayAt(*next).day < before.dayAt(known).day)
            ++*next;
        if (*next == size)
            return;
        if (isSame(*next, before, known))
            keep(*next, entry.candles);
    }
}

// Whether all days of a page have the same places in both, with their neighbours, and with the
// weeks or months that reach into it.
bool FoldedDays::isPageSame(const FoldedDays& before, size_t page) const
{
    if (page >= m_pages.size())
        return false;
    constexpr size_t month = 31;
    const size_t beside = m_timeframe > Timeframe::Day ? month : 1;
    const size_t begin = page * pageSize;
    const size_t end = begin + pageSize;
    for (size_t day = begin - std::min(begin, beside); day < end + beside; ++day) {
        const bool needsBars = isBelowDay(m_timeframe) && day >= begin && day < end;
        if (!isSameAt(before, day, needsBars))
            return false;
    }
    return true;
}

// Beyond the ends of both there is the same.
bool FoldedDays::isSameAt(const FoldedDays& before, size_t day, bool needsBars) const
{
    const bool isThere = day < m_series->days().size();
    const bool wasThere = day < before.m_series->days().size();
    if (!isThere || !wasThere)
        return isThere == wasThere;
    const SeriesDay& now = dayAt(day);
    const SeriesDay& then = before.dayAt(day);
    return now.day == then.day && now.summary == then.summary && now.bytes == then.bytes &&
           (!needsBars || now.bars == then.bars);
}

FoldedDays::Page& FoldedDays::changedPage(size_t page)
{
    std::shared_ptr<Page>& changed = m_pages[page];
    if (!changed)
        changed = std::make_shared<Page>();
    else if (changed.use_count() > 1)
        changed = std::make_shared<Page>(*changed);
    return *changed;
}

void FoldedDays::keep(size_t day, std::shared_ptr<const std::vector<Candle>> candles)
{
    Page& page = changedPage(day / pageSize);
    page.candlesKept += candles->size();
    ++page.daysKept;
    m_candlesKept += candles->size();
    ++m_daysKept;
    page.days[day % pageSize] = {std::move(candles), m_turn};
}

// Whether what the candles of a day are made of is the same: the day itself, and at midnight its
// neighbours.
bool FoldedDays::isSame(size_t day, const FoldedDays& before, size_t dayBefore) const
{
    const bool needsBars = isBelowDay(m_timeframe);
    return dayAt(day).day == before.dayAt(dayBefore).day &&
           dayAt(day).summary == before.dayAt(dayBefore).summary &&
           bytesAt(day) == before.bytesAt(dayBefore) &&
           (!needsBars || dayAt(day).bars == before.dayAt(dayBefore).bars) &&
           summaryAt(day - 1) == before.summaryAt(dayBefore - 1) &&
           bytesAt(day - 1) == before.bytesAt(dayBefore - 1) &&
           summaryAt(day + 1) == before.summaryAt(dayBefore + 1);
}

// Null beyond both ends, too.
const DaySummary* FoldedDays::summaryAt(size_t day) const
{
    return day < m_series->days().size() ? dayAt(day).summary.get() : nullptr;
}

qint64 FoldedDays::bytesAt(size_t day) const
{
    return day < m_series->days().size() ? dayAt(day).bytes : 0;
}

const std::vector<Candle>& FoldedDays::of(qsizetype day)
{
    const auto at = static_cast<size_t>(day);
    const std::shared_ptr<Page>& page = m_pages[at / pageSize];
    if (!page || !page->days[at % pageSize].candles)
        keep(at, std::make_shared<const std::vector<Candle>>(foldDay(*m_series, day, m_timeframe)));
    Entry& entry = page->days[at % pageSize];
    entry.turn = m_turn;
    return *entry.candles;
}

void FoldedDays::letGoOf(size_t page)
{
    Page& changed = changedPage(page);
    for (Entry& entry : changed.days) {
        if (!entry.candles || entry.turn == m_turn)
            continue;
        changed.candlesKept -= entry.candles->size();
        --changed.daysKept;
        m_candlesKept -= entry.candles->size();
        --m_daysKept;
        entry.candles.reset();
    }
}

void FoldedDays::letGo()
{
    if (m_candlesKept > mostCandles) {
        for (size_t page = 0; page < m_pages.size(); ++page) {
            if (m_pages[page])
                letGoOf(page);
        }
    }
    ++m_turn;
}

} // namespace vexdesk
