// SPDX-License-Identifier: MIT
#include <vexdesk/properties.h>

#include <vexdesk/boardselectorbox.h>
#include <vexdesk/securityselectorbox.h>
#include <vexdesk/stockselectorbox.h>

#include <QtCore/QMap>
#include <QtCore/QPointer>

struct Properties::Private
{
    QMap<QString, QString> values;
    QPointer<StockSelectorBox> stock;
};

Properties::Properties(QObject* parent)
    : QObject(parent)
    , m_d(new Private)
{}

Properties::~Properties() = default;

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
    m_d->stock = stock;
}

void Properties::setValue(const QString& key, const QString& value)
{
    m_d->values.insert(key, value);
    if (key != u"StockId" || !m_d->stock)
        return;
    bool isNumber = false;
    const int stockId = value.toInt(&isNumber);
    if (isNumber)
        m_d->stock->chooseStock(stockId);
    else
        m_d->stock->chooseFirst();
}

QString Properties::value(const QString& key) const
{
    return m_d->values.value(key);
}
