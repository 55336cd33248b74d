// SPDX-License-Identifier: MIT
#pragma once

#include "importdetails.h"

#include <vexdesk/boarddirectory.h>
#include <vexdesk/securitydirectory.h>
#include <vexdesk/stockdirectory.h>
#include <vexdesk/terminal/referencedata.h>

namespace testsupport {

/// Settings for lines such as "20240115;100000;1.5;1.7;1.4;1.6" of a series that the reference data
/// know with this number of decimals.
inline ImportDetails detailsOfSeries(int decimals)
{
    ImportDetails details;
    details.stockCode = QStringLiteral("S");
    details.boardCode = QStringLiteral("B");
    details.securityName = QStringLiteral("X");
    auto data = vexdesk::ReferenceData::demonstration();
    data.setSeries(details.stockCode, details.boardCode, details.securityName, decimals);
    vexdesk::ReferenceData::install(data);
    details.stockId = StockDirectory::i().idByCode(details.stockCode);
    details.boardId = BoardDirectory::i().idByCode(details.stockCode, details.boardCode);
    details.securityId =
        SecurityDirectory::i().idByCode(details.stockCode, details.boardCode, details.securityName);
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
