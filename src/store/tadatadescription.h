// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtCore/QtGlobal>

/// One series (an instrument on a board of a venue, at one timeframe) and the layout of an external
/// text file that holds it. The import and export settings begin with these fields.
struct TADataDescription
{
    qint32 stockId = 0;
    qint32 boardId = 0;
    qint64 securityId = 0;
    QString stockCode; ///< the three codes are the series' directory names in the store
    QString boardCode;
    QString securityName;
    qint32 timeframe = 0;    ///< length of a bar in seconds
    QString separator;       ///< between the columns of the external file
    QString dateFormat;      ///< a QDate pattern, of the external file
    QString timeFormat;      ///< a QTime pattern, of the external file
    QString dateFormatTitle; ///< the patterns as the user saw them, for messages
    QString timeFormatTitle;
};
