// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/chartmemory.h"
#include "desk/chart/readerthreads.h"
#include "desk/chart/storefollower.h"

#include <QtCore/QTimer>
#include <QtWidgets/QTabWidget>

namespace vexdesk {

class ChartPage;
class MarkSources;

/// The open charts, one series in each tab. Remembers in the settings which are open and how each
/// of them stands, and how those stood that were closed; some seconds after the user has changed
/// something, however the terminal ends. User-interface thread only.
class ChartTabs final : public QTabWidget
{
    Q_OBJECT

public:
    /// `root` is the store's, `marks` must live as long as the tabs. Opens the charts that were
    /// open when the tabs were stored last.
    ChartTabs(QString root, MarkSources& marks, QWidget* parent = nullptr);
    ~ChartTabs() override;

    /// Brings the chart of the series to the front, which is opened when it is not yet.
    ChartPage& open(const SeriesName& series);
    /// The chart in front, null without any.
    ChartPage* current() const;
    void closeCurrent();
    /// Closes all but the one in front.
    void closeOthers();
    /// Goes so many tabs to the right, and from the last one on to the first.
    void step(int tabs);

    /// The series that were opened last, or whose tabs were gone to, the last one first; those
    /// whose bars were deleted meanwhile are left out, as soon as that is known.
    QList<SeriesName> recent() const;
    /// Writes to the settings how everything stands.
    void store();

Q_SIGNALS:
    /// Another chart is in front, or none, or the commands can do other things with it than before.
    void currentChartChanged();
    /// A chart has been opened or closed, or the recent series are others while none is open.
    void chartsChanged();
    void contextMenuWanted(const QPoint& globalPlace);
    /// What was done with a chart, in words for the user.
    void told(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    ChartPage* page(int index) const;
    ChartPage& add(const SeriesName& series);
    int indexOf(const SeriesName& series) const;
    void close(int index);
    void showTabMenu(int index, const QPoint& globalPlace);
    void updateTexts();
    void restore();
    void noteCurrent();
    void storeSoon();
    void followRecent();
    void lookForRecent();

    QString m_root;
    MarkSources& m_marks;
    ChartMemory m_memory;
    bool m_isClosing = false; // another chart comes to the front by itself
    StoreFollower m_follower; // while no chart is open
    QTimer m_storeSoon;
    QList<SeriesName> m_gone; // of the recent ones, as they were looked for last
    Errand<QList<SeriesName>> m_lookForRecent{this};
};

} // namespace vexdesk
