// SPDX-License-Identifier: MIT
#include "desk/chart/charts.h"

#include "desk/chart/chartpage.h"
#include "desk/chart/charttabs.h"
#include "desk/chart/marksources.h"

namespace vexdesk {

namespace {

// Of one directory of the store, and not a way out of it.
bool isName(const QString& code)
{
    return !code.isEmpty() && code != QLatin1String(".") && code != QLatin1String("..") &&
           !code.contains(u'/');
}

bool isSeries(const SeriesName& series)
{
    return isName(series.stockCode) && isName(series.boardCode) && isName(series.securityName);
}

} // namespace

Charts::Charts(ChartTabs& tabs, MarkSources& marks)
    : m_tabs(tabs)
    , m_marks(marks)
{}

bool Charts::show(const SeriesName& series, const QDate& day, const QTime& time)
{
    if (!isSeries(series))
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
