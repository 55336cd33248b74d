// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/readerthreads.h"

#include <vexdesk/icharts.h>

#include <QtCore/QObject>

namespace vexdesk {

class ChartTabs;
class MarkSources;

/// What is stored of a moment that is to be shown.
struct FoundDay
{
    ChartShown shown = ChartShown::Moment;
    QList<int> timeframes; ///< of the day's files, in seconds
};

/// The charts as plug-ins reach them. User-interface thread only.
class Charts final : public QObject, public ICharts
{
    Q_OBJECT

public:
    /// `root` is the store's; both others must live as long as this.
    Charts(QString root, ChartTabs& tabs, MarkSources& marks);
    ~Charts() override;

    void show(const SeriesName& series, const QDate& day, const QTime& time,
              const std::function<void(ChartShown)>& told) override;
    void addMarks(IChartMarks* marks) override;
    void removeMarks(IChartMarks* marks) override;
    void marksChanged(const SeriesName& series) override;

    /// Whoever wanted something shown is told nothing any more, and it is not shown.
    void forgetShowing();

Q_SIGNALS:
    /// What could not be shown, in words for the user.
    void missed(const QString& text);

private:
    void showFound(const SeriesName& series, const QDate& day, const QTime& time,
                   const FoundDay& found);

    QString m_root;
    ChartTabs& m_tabs;
    MarkSources& m_marks;
    Errand<FoundDay> m_lookUp{this};
};

} // namespace vexdesk
