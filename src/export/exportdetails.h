// SPDX-License-Identifier: MIT
#pragma once

#include "tadatadescription.h"

#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QDate>
#include <QtCore/QString>

/// The settings of one export. A plain value, copied into the job. The titles of the formats stay
/// empty: no message of an export names them.
struct ExportDetails : TADataDescription
{
    bool addHeader = false; ///< whether the first line names the columns
    QString lineFormat;     ///< names of columns, separated by ",": see exportbar.h
    QDate dateFrom;         ///< the first day
    QDate dateTo;           ///< the last day
    QString outputPath;     ///< of the file that is written
    /// Whether a bar is written once, as it is when it is finished: of successive lines whose date
    /// and time are equal, written or not, the last one.
    bool finishedOnly = false;

    /// Of the bars that the export reads, in seconds.
    int storedTimeframe() const
    {
        return timeframe < vexdesk::minuteTimeframe ? vexdesk::secondTimeframe
                                                    : vexdesk::minuteTimeframe;
    }
};
