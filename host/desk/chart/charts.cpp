// SPDX-License-Identifier: MIT
#include "desk/chart/charts.h"

#include "desk/chart/chartpage.h"
#include "desk/chart/charttabs.h"
#include "desk/chart/marksources.h"
#include "desk/chart/seriesname.h"

#include <vexdesk/dateformat.h>

namespace vexdesk {

namespace {

FoundDay lookFor(const QString& root, const SeriesName& series, const QDate& day)
{
    if (!isStored(root, series))
        return {ChartShown::NoSeries, {}};
    if (!day.isValid())
        return {};
    const QList<int> timeframes = timeframesOfDay(root, series, day);
    return {timeframes.isEmpty() ? ChartShown::NoDay : ChartShown::Moment, timeframes};
}

void bringToFront(QWidget& window)
{
    if (!window.isVisible())
        return; // the terminal has not begun, or has ended
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    window.activateWindow();
}

} // namespace

Charts::Charts(QString root, ChartTabs& tabs, MarkSources& marks)
    : m_root(std::move(root))
    , m_tabs(tabs)
    , m_marks(marks)
{}

Charts::~Charts() = default;

void Charts::show(const SeriesName& series, const QDate& day, const QTime& time,
                  const std::function<void(ChartShown)>& told)
{
    m_lookUp.run([root = m_root, series, day] { return lookFor(root, series, day); },
                 [this, series, day, time, told](const FoundDay& found) {
                     showFound(series, day, time, found);
                     if (told)
                         told(found.shown);
                 });
}

void Charts::showFound(const SeriesName& series, const QDate& day, const QTime& time,
                       const FoundDay& found)
{
    const QString code = seriesCode(series);
    if (found.shown == ChartShown::NoSeries) {
        Q_EMIT missed(tr("График не показан: в хранилище нет серии %1").arg(code));
        return;
    }
    ChartPage& page = m_tabs.open(series);
    if (day.isValid())
        page.goTo(day, time, found.timeframes);
    if (found.shown == ChartShown::NoDay)
        Q_EMIT missed(tr("В хранилище нет дня %1 серии %2: показано ближайшее место")
                          .arg(shownDate(day), code));
    bringToFront(*m_tabs.window());
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

void Charts::forgetShowing()
{
    m_lookUp.forget();
}

} // namespace vexdesk
