// SPDX-License-Identifier: MIT
#include "healthdigest.h"

#include <algorithm>
#include <iterator>

namespace tadata {

namespace {

constexpr double unknownShare = 2;

bool isRemarkable(const DayHealth& day)
{
    return day.isWrong() || !day.gaps.empty() || day.outOfOrder > 0 || day.volume > 0 ||
           day.edited > 0;
}

// Where nothing is expected, a full coverage says nothing: not even what a missing day lacks is
// known.
bool isCoverageKnown(const SeriesHealth& health)
{
    return std::any_of(health.days.begin(), health.days.end(),
                       [](const DayHealth& day) { return day.expected > 0; });
}

// A report rounds, and it has no bars for a missing day of a weekday that is seldom stored.
double shareOf(const SeriesHealth& health)
{
    constexpr double almost = 0.99999;
    const double share = coverageOf(health).toDouble();
    const bool lacksBars = std::any_of(health.days.begin(), health.days.end(),
                                       [](const DayHealth& day) { return day.lacking() > 0; });
    return lacksBars || !health.missingDays.isEmpty() ? std::min(share, almost) : share;
}

} // namespace

const DayMark* SeriesDigest::mark(const QDate& day) const
{
    const auto found =
        std::lower_bound(days.begin(), days.end(), day.toJulianDay(),
                         [](const DayMark& one, qint64 wanted) { return one.julianDay < wanted; });
    return found != days.end() && found->day() == day ? &*found : nullptr;
}

const DayHealth* SeriesDigest::remarks(const QDate& day) const
{
    const auto found = std::lower_bound(
        remarkable.begin(), remarkable.end(), day,
        [](const DayHealth& one, const QDate& wanted) { return one.day < wanted; });
    return found != remarkable.end() && found->day == day ? &*found : nullptr;
}

QList<QDate> SeriesDigest::daysToAskFor() const
{
    QList<QDate> wanted = missingDays;
    for (const DayHealth& day : remarkable) {
        if (day.hasGap())
            wanted.append(day.day);
    }
    std::sort(wanted.begin(), wanted.end());
    return wanted;
}

bool SeriesDigest::lacksBars() const
{
    return !missingDays.isEmpty() || std::any_of(remarkable.begin(), remarkable.end(),
                                                 [](const DayHealth& day) { return day.hasGap(); });
}

SeriesDigest digestOf(const SeriesHealth& health)
{
    SeriesDigest digest;
    digest.series = health.series;
    digest.timeframe = health.timeframe;
    digest.first = health.first;
    digest.last = health.last;
    digest.bars = health.bars();
    digest.isWrong = health.isWrong();
    digest.sums = sumsOf(health);
    digest.missingDays = health.missingDays;
    digest.closed = health.closed;
    digest.unproven = health.unproven;
    digest.days.reserve(health.days.size());
    for (const DayHealth& day : health.days)
        digest.days.push_back({static_cast<qint32>(day.day.toJulianDay()), day.bars, day.expected,
                               day.expected > 0 ? day.lacking() : 0});
    std::copy_if(health.days.begin(), health.days.end(), std::back_inserter(digest.remarkable),
                 isRemarkable);
    const bool isKnown = isCoverageKnown(health);
    digest.coverage = isKnown ? coverageOf(health) : QString();
    digest.share = isKnown ? shareOf(health) : unknownShare;
    return digest;
}

QByteArray brokerList(const QList<SharedDigest>& series)
{
    QByteArray list;
    for (const SharedDigest& one : series) {
        const QByteArray begin =
            one->series.toUtf8() + ' ' + QByteArray::number(one->timeframe) + ' ';
        const QList<QDate> days = one->daysToAskFor();
        for (const QDate& day : days)
            list += begin + day.toString(Qt::ISODate).toLatin1() + '\n';
    }
    return list;
}

} // namespace tadata
