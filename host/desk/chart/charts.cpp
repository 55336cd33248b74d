// SPDX-License-Identifier: MIT
#include "desk/chart/charts.h"

#include "desk/chart/chartpage.h"
#include "desk/chart/charttabs.h"
#include "desk/chart/marksources.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/storepaths.h>

#include <QtCore/QDirIterator>

#include <algorithm>

namespace vexdesk {

namespace {

// Of one directory of the store, and not a way out of it.
bool isName(const QString& code)
{
    return !code.isEmpty() && code != QLatin1String(".") && code != QLatin1String("..") &&
           !code.contains(u'/');
}

// Looks for a first file in one directory: no longer than the caller can wait.
bool isStored(const QString& root, const SeriesName& series)
{
    const QStringList codes{series.stockCode, series.boardCode, series.securityName};
    if (!std::all_of(codes.begin(), codes.end(), isName))
        return false;
    QDirIterator files(seriesPath(QDir(root), codes.at(0), codes.at(1), codes.at(2)), QDir::Files);
    while (files.hasNext()) {
        files.next();
        if (parseDayFileName(files.fileName()))
            return true;
    }
    return false;
}

} // namespace

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
