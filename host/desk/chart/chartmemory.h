// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/chartstate.h"

#include <QtCore/QList>
#include <QtCore/QString>

namespace vexdesk {

/// The charts that were seen last and how they stood, and which of them were open in which tabs. A
/// plain value with its place in the settings; user-interface thread only.
class ChartMemory final
{
public:
    /// What the settings hold; what makes no sense there is left out.
    static ChartMemory stored();
    void store() const;

    /// Those that were opened last, the last one first.
    const QList<ChartState>& recent() const { return m_recent; }
    /// As it was remembered; of a series that is new, nothing but its name.
    ChartState stateOf(const SeriesName& series) const;

    /// Makes it the one that was opened last.
    void open(const SeriesName& series);
    /// Another state of a chart; its place among the others stays.
    void remember(const ChartState& state);

    /// The series in the tabs from the left to the right.
    QList<SeriesName> tabs() const;
    /// The one in front, if any.
    std::optional<SeriesName> currentTab() const;
    void setTabs(const QList<SeriesName>& tabs, const std::optional<SeriesName>& current);

private:
    QList<ChartState> m_recent;
    QList<SeriesName> m_tabs;
    std::optional<SeriesName> m_current;
};

} // namespace vexdesk
