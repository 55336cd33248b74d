// SPDX-License-Identifier: MIT
#include <vexdesk/properties.h>

#include <vexdesk/boardselectorbox.h>
#include <vexdesk/securityselectorbox.h>
#include <vexdesk/stockselectorbox.h>

Properties::Properties(QObject* parent)
    : QObject(parent)
{}

void Properties::connectAll(QObject* form)
{
    auto* const stock = form->findChild<StockSelectorBox*>();
    auto* const board = form->findChild<BoardSelectorBox*>();
    auto* const security = form->findChild<SecuritySelectorBox*>();
    if (stock && board) {
        connect(stock, &StockSelectorBox::stockCodeChanged, board, &BoardSelectorBox::setStockCode);
        board->setStockCode(stock->getStockCode());
    }
    if (board && security) {
        const auto narrow = [board, security] {
            security->setBoard(board->getStockCode(), board->getBoardCode());
        };
        connect(board, &BoardSelectorBox::boardCodeChanged, security, narrow);
        narrow();
    }
    m_stock = stock;
}

void Properties::setValue(const QString& key, const QString& value)
{
    m_values.insert(key, value);
    if (key != u"StockId" || !m_stock)
        return;
    bool isNumber = false;
    const int stockId = value.toInt(&isNumber);
    if (isNumber)
        m_stock->chooseStock(stockId);
    else
        m_stock->chooseFirst();
}
