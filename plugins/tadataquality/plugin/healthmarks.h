// SPDX-License-Identifier: MIT
#pragma once

#include "healthbook.h"

#include <vexdesk/icharts.h>

#include <QtCore/QObject>
#include <QtCore/QSet>

/// Gives the terminal's charts what is wrong with the bars that they show: gaps, missing days and
/// faults of the files. A board is read once a chart has asked for a series of it, and followed
/// from then on. User-interface thread.
class HealthMarks final : public QObject, public vexdesk::IChartMarks
{
    Q_OBJECT

public:
    /// Both must outlive it. From now on the charts ask.
    HealthMarks(tadata::HealthBook* book, vexdesk::ICharts* charts);
    ~HealthMarks() override;

    QList<vexdesk::ChartMark> marks(const vexdesk::SeriesName& series, const QDate& first,
                                    const QDate& last) override;

private:
    void tell(const QStringList& boards);

    tadata::HealthBook* const m_book;
    vexdesk::ICharts* const m_charts;
    QSet<QString> m_asked; ///< series
};
