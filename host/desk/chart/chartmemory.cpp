// SPDX-License-Identifier: MIT
#include "desk/chart/chartmemory.h"

#include "desk/chart/seriesname.h"

#include <vexdesk/appsettings.h>

#include <QtCore/QStringList>

#include <algorithm>

namespace vexdesk {

namespace {

const QString settingsGroup = QStringLiteral("Desk/Charts");
const QString recentKey = QStringLiteral("recent");
const QString tabsKey = QStringLiteral("tabs");
const QString currentKey = QStringLiteral("current");

constexpr qsizetype mostRemembered = 100;

template <typename States>
auto stateIn(States& states, const SeriesName& series)
{
    return std::find_if(states.begin(), states.end(),
                        [&series](const ChartState& state) { return state.series == series; });
}

} // namespace

ChartMemory ChartMemory::stored()
{
    ChartMemory memory;
    const AppSettings settings(settingsGroup);
    const QStringList texts = settings.value(recentKey).toStringList();
    for (const QString& text : texts) {
        const std::optional<ChartState> state = chartStateOf(text);
        if (state && stateIn(memory.m_recent, state->series) == memory.m_recent.end())
            memory.m_recent.append(*state);
    }
    // A tab is one of the charts that are remembered.
    const auto seriesOf = [&memory](const QString& code) {
        const auto found =
            std::find_if(memory.m_recent.begin(), memory.m_recent.end(),
                         [&code](const ChartState& one) { return seriesCode(one.series) == code; });
        return found == memory.m_recent.end() ? std::nullopt : std::optional(found->series);
    };
    const QStringList codes = settings.value(tabsKey).toStringList();
    for (const QString& code : codes) {
        const std::optional<SeriesName> series = seriesOf(code);
        if (series && !memory.m_tabs.contains(*series))
            memory.m_tabs.append(*series);
    }
    memory.m_current = seriesOf(settings.value(currentKey).toString());
    return memory;
}

void ChartMemory::store() const
{
    QStringList recent;
    for (const ChartState& state : m_recent)
        recent.append(toText(state));
    QStringList tabs;
    for (const SeriesName& series : m_tabs)
        tabs.append(seriesCode(series));
    AppSettings settings(settingsGroup);
    settings.setValue(recentKey, recent);
    settings.setValue(tabsKey, tabs);
    settings.setValue(currentKey, m_current ? seriesCode(*m_current) : QString());
}

ChartState ChartMemory::stateOf(const SeriesName& series) const
{
    const auto found = stateIn(m_recent, series);
    if (found != m_recent.end())
        return *found;
    ChartState state;
    state.series = series;
    return state;
}

void ChartMemory::open(const SeriesName& series)
{
    const ChartState state = stateOf(series);
    m_recent.removeIf([&series](const ChartState& one) { return one.series == series; });
    m_recent.prepend(state);
    for (qsizetype i = m_recent.size() - 1; i >= mostRemembered; --i) {
        if (!m_tabs.contains(m_recent.at(i).series))
            m_recent.removeAt(i);
    }
}

void ChartMemory::remember(const ChartState& state)
{
    const auto found = stateIn(m_recent, state.series);
    if (found != m_recent.end())
        *found = state;
}

QList<SeriesName> ChartMemory::tabs() const
{
    return m_tabs;
}

std::optional<SeriesName> ChartMemory::currentTab() const
{
    return m_current;
}

void ChartMemory::setTabs(const QList<SeriesName>& tabs, const std::optional<SeriesName>& current)
{
    m_tabs = tabs;
    m_current = current;
}

} // namespace vexdesk
