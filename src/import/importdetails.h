// SPDX-License-Identifier: MIT
#pragma once

#include "tadatadescription.h"

#include <QtCore/QMap>

/// What a column of an imported file carries. The numbers are the places of the roles in the
/// wizard's column boxes; 0 there is a column that is not imported.
enum class ColumnRole : qint32 {
    None = 0,
    Date = 1,
    Time = 2,
    Open = 3,
    High = 4,
    Low = 5,
    Close = 6,
    Volume = 7, ///< in pieces
    Value = 8,  ///< in money
    OpenInterest = 9,
    Ticker = 10, ///< names the series of a file that has many; the boxes do not offer it
};

/// The settings of one import. A plain value, copied into the job.
struct ImportDetails : TADataDescription
{
    bool firstLineIsHeader = false;
    /// From a ColumnRole's number to the 0-based index of the column that carries it.
    QMap<qint32, qint32> columns;
};
