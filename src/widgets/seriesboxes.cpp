// SPDX-License-Identifier: MIT
#include "seriesboxes.h"

#include "labelmark.h"
#include "seriesselectormodels.h"
#include "tadatadescription.h"

namespace tadata {

void SeriesBoxes::offerStored() const
{
    stock.setSourceModel(new StockWithStoredSelectorModel(true, nullptr));
    board.setSourceModel(new BoardWithStoredSelectorModel(true, nullptr));
    security.setSourceModel(new SecurityWithStoredSelectorModel(true, nullptr));
}

bool SeriesBoxes::markMissing(QLabel* stockLabel, QLabel* boardLabel, QLabel* securityLabel) const
{
    const bool hasStock = markLabel(stockLabel, !stock.getStockCode().isEmpty());
    const bool hasBoard = markLabel(boardLabel, !board.getBoardCode().isEmpty());
    const bool hasSecurity = markLabel(securityLabel, !security.getSecurityCode().isEmpty());
    return hasStock && hasBoard && hasSecurity;
}

void SeriesBoxes::describe(TADataDescription& series) const
{
    series.stockId = stock.getStockId();
    series.boardId = board.getBoardId();
    series.securityId = security.getSecurityId();
    series.stockCode = stock.getStockCode();
    series.boardCode = board.getBoardCode();
    series.securityName = security.getSecurityName();
}

} // namespace tadata
