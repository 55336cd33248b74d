// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/icharts.h>

namespace vexdesk {

class ChartTabs;
class MarkSources;

/// The charts as plug-ins reach them. User-interface thread only.
class Charts final : public ICharts
{
public:
    /// `root` is the store's; both others must live as long as this.
    Charts(QString root, ChartTabs& tabs, MarkSources& marks);

    bool show(const SeriesName& series, const QDate& day, const QTime& time) override;
    void addMarks(IChartMarks* marks) override;
    void removeMarks(IChartMarks* marks) override;
    void marksChanged(const SeriesName& series) override;

private:
    QString m_root;
    ChartTabs& m_tabs;
    MarkSources& m_marks;
};

} // namespace vexdesk
