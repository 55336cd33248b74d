// SPDX-License-Identifier: MIT
#include "securityregister.h"

#include "referencetable.h"

#include <vexdesk/database/masterindex.h>

namespace vexdesk {

namespace {

enum Column { StockId, BoardId, SecurityId, Code, Title, Decimals };

QList<Table::Column> columns()
{
    return {{QStringLiteral("stock_id"), FieldType::Int32},
            {QStringLiteral("board_id"), FieldType::Int32},
            {QStringLiteral("sec_id"), FieldType::Int64},
            {QStringLiteral("code"), FieldType::Code},
            {QStringLiteral("title"), FieldType::Text},
            {QStringLiteral("decimals"), FieldType::Int32}};
}

// The derivatives section of an exchange has an id of its own for its deals and none for its
// securities: they are in the register of the exchange.
int registeredStockId(int stockId)
{
    constexpr int derivativesSection = 5;
    constexpr int exchange = 1;
    return stockId == derivativesSection ? exchange : stockId;
}

} // namespace

std::unique_ptr<Table> makeSecurityRegister(const ReferenceTable& reference)
{
    auto table = std::make_unique<Table>(QStringLiteral("securities"), columns());
    table->setOrder(std::make_unique<MasterIndex_Struct<int, int, long long>>(
        table.get(), QList<int>{StockId, BoardId, SecurityId}));
    for (const Security& security : reference.data().securities) {
        const Stock* const stock = reference.stock(security.stockCode);
        const Board* const board = reference.board(security.stockCode, security.boardCode);
        if (!stock || !board)
            continue;
        const Record row(table.get());
        row.field(StockId) = registeredStockId(stock->id);
        row.field(BoardId) = board->id;
        row.field(SecurityId) = static_cast<long long>(security.id);
        row.field(Code) = security.code;
        row.field(Title) = security.title;
        row.field(Decimals) = security.decimals;
        table->insert(row);
    }
    return table->masterIndex().isEmpty() ? nullptr : std::move(table);
}

} // namespace vexdesk
