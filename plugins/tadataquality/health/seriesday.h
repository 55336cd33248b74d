// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/icharts.h>

#include <QtCore/QDate>
#include <QtCore/QTime>

namespace tadata {

/// A place in a series that can be shown in a chart.
struct SeriesMoment
{
    vexdesk::SeriesName series;
    QDate day;
    QTime time; ///< not valid: the day as a whole
};

/// The parts of "VENUE/BOARD/SECURITY", and back.
vexdesk::SeriesName seriesNamed(const QString& path);
QString pathOf(const vexdesk::SeriesName& series);

} // namespace tadata
