// SPDX-License-Identifier: MIT
#include "desk/chart/charts.h"

#include "desk/chart/chartpage.h"
#include "desk/chart/charttabs.h"
#include "desk/chart/marksources.h"
#include "desk/chart/seriesname.h"

namespace vexdesk {

Charts::Charts(QString root, ChartTabs& tabs, MarkSources& marks)
    : m_root(std::move(root))
    , m_tabs(tabs)
    , m_marks(marks)
{}

bool Charts::show(const SeriesName& series, const QDate& day, const QTime& time)
{
    if (!isStored(m_root, series))
        return false;
    ChartPage& page = m_tabs.open(series);
    if (day.isValid())
        page.goTo(day, time);
    return true;
}

void Charts::addMarks(IChartMarks* marks)
{
    m_marks.add(marks);
}

void Charts::removeMarks(IChartMarks* marks)
{
    m_marks.remove(marks);
}

void Charts::marksChanged(const SeriesName& series)
{
    m_marks.tellChange(series);
}

} // namespace vexdesk
