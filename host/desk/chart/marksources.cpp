// SPDX-License-Identifier: MIT
#include "desk/chart/marksources.h"

namespace vexdesk {

namespace {

QList<ChartMark> marksOf(IChartMarks& source, const SeriesName& series, const QDate& first,
                         const QDate& last)
{
    try {
        return source.marks(series, first, last);
    } catch (...) {
        return {};
    }
}

} // namespace

MarkSources::MarkSources(QObject* parent)
    : QObject(parent)
{}

MarkSources::~MarkSources() = default;

void MarkSources::add(IChartMarks* source)
{
    if (!source || m_sources.contains(source))
        return;
    m_sources.append(source);
    Q_EMIT allChanged();
}

void MarkSources::remove(IChartMarks* source)
{
    if (m_sources.removeOne(source))
        Q_EMIT allChanged();
}

void MarkSources::rememberThese()
{
    m_remembered = m_sources;
}

void MarkSources::removeOthers()
{
    keep(m_remembered);
}

void MarkSources::removeAll()
{
    keep({});
}

void MarkSources::keep(const QList<IChartMarks*>& sources)
{
    const auto gone =
        m_sources.removeIf([&sources](IChartMarks* source) { return !sources.contains(source); });
    if (gone > 0)
        Q_EMIT allChanged();
}

void MarkSources::tellChange(const SeriesName& series)
{
    Q_EMIT changed(series);
}

QList<ChartMark> MarkSources::marks(const SeriesName& series, const QDate& first,
                                    const QDate& last) const
{
    QList<ChartMark> all;
    // One of them may take itself out when it is asked.
    const QList<IChartMarks*> sources = m_sources;
    for (IChartMarks* const source : sources) {
        if (m_sources.contains(source))
            all += marksOf(*source, series, first, last);
    }
    return all;
}

} // namespace vexdesk
