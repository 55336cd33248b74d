// SPDX-License-Identifier: MIT
#pragma once

#include "tadatadescription.h"

#include <vexdesk/boarddirectory.h>
#include <vexdesk/securitydirectory.h>
#include <vexdesk/stockdirectory.h>

#include <QtCore/QStringList>

namespace testsupport {

/// Names the series by its codes and by the ids that the reference data have for them.
inline void setSeries(TADataDescription& description, const char* stock, const char* board,
                      const char* security)
{
    description.stockCode = QLatin1String(stock);
    description.boardCode = QLatin1String(board);
    description.securityName = QLatin1String(security);
    description.stockId = StockDirectory::i().idByCode(description.stockCode);
    description.boardId =
        BoardDirectory::i().idByCode(description.stockCode, description.boardCode);
    description.securityId = SecurityDirectory::i().idByCode(
        description.stockCode, description.boardCode, description.securityName);
}

/// All of it in the order of its fields, for a comparison that shows what differs.
inline QStringList fieldsOf(const TADataDescription& description)
{
    return {QString::number(description.stockId),
            QString::number(description.boardId),
            QString::number(description.securityId),
            description.stockCode,
            description.boardCode,
            description.securityName,
            QString::number(description.timeframe),
            description.separator,
            description.dateFormat,
            description.timeFormat,
            description.dateFormatTitle,
            description.timeFormatTitle};
}

} // namespace testsupport
