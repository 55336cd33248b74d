// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/icharts.h>

#include <QtCore/QObject>

namespace vexdesk {

/// Those who have something to say of stored bars, asked together. They stay their makers'.
/// User-interface thread only.
class MarkSources final : public QObject
{
    Q_OBJECT

public:
    explicit MarkSources(QObject* parent = nullptr);
    ~MarkSources() override;

    /// One that is there already, or null, is passed over.
    void add(IChartMarks* source);
    void remove(IChartMarks* source);
    /// What comes from now on can be taken out together, for one that has failed to begin.
    void rememberThese();
    void removeOthers();
    void removeAll();
    /// Tells those that keep marks of the series.
    void tellChange(const SeriesName& series);

    /// What all of them say of these days. What one throws counts as nothing said by it.
    QList<ChartMark> marks(const SeriesName& series, const QDate& first, const QDate& last) const;

Q_SIGNALS:
    /// The marks of the series may be others now.
    void changed(const vexdesk::SeriesName& series);
    /// Those of any series: a source has come or gone.
    void allChanged();

private:
    void keep(const QList<IChartMarks*>& sources);

    QList<IChartMarks*> m_sources;
    QList<IChartMarks*> m_remembered;
};

} // namespace vexdesk
