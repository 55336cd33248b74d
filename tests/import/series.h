// SPDX-License-Identifier: MIT
#pragma once

#include "importdetails.h"

#include "support/series.h"

#include <vexdesk/terminal/referencedata.h>

namespace testsupport {

/// Settings for lines such as "20240115;100000;1.5;1.7;1.4;1.6" of a series that the reference data
/// know with this number of decimals.
inline ImportDetails detailsOfSeries(int decimals)
{
    auto data = vexdesk::ReferenceData::demonstration();
    data.setSeries(QStringLiteral("S"), QStringLiteral("B"), QStringLiteral("X"), decimals);
    vexdesk::ReferenceData::install(data);
    ImportDetails details;
    setSeries(details, "S", "B", "X");
    details.timeframe = 60;
    details.separator = QStringLiteral(";");
    details.dateFormat = QStringLiteral("yyyyMMdd");
    details.timeFormat = QStringLiteral("hhmmss");
    details.dateFormatTitle = QStringLiteral("ггггммдд");
    details.timeFormatTitle = QStringLiteral("ччммсс");
    details.columns = {{1, 0}, {2, 1}, {3, 2}, {4, 3}, {5, 4}, {6, 5}};
    return details;
}

inline ImportDetails with(ImportDetails details, ColumnRole role, qint32 column)
{
    details.columns.insert(static_cast<qint32>(role), column);
    return details;
}

} // namespace testsupport
