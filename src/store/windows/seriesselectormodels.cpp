// SPDX-License-Identifier: MIT
#include "seriesselectormodels.h"

#include <vexdesk/boarddirectory.h>
#include <vexdesk/history/storepaths.h>
#include <vexdesk/stockdirectory.h>

#include <algorithm>
#include <tuple>

namespace {

// Puts the stored entries into a list that is ordered by the same key; an entry of the list stays
// and hides a stored one with its key.
template <typename Data, typename Key>
void merge(QList<Data>& list, QList<Data> stored, Key key)
{
    const auto before = [key](const Data& left, const Data& right) {
        return key(left) < key(right);
    };
    const auto same = [key](const Data& left, const Data& right) {
        return key(left) == key(right);
    };
    std::sort(stored.begin(), stored.end(), before);
    const qsizetype known = list.size();
    list += stored;
    std::inplace_merge(list.begin(), list.begin() + known, list.end(), before);
    list.erase(std::unique(list.begin(), list.end(), same), list.end());
}

template <typename Visit>
void forEachBoard(const QString& stockPath, Visit visit)
{
    for (const QString& boardCode : vexdesk::subdirectories(stockPath))
        visit(boardCode, stockPath + u'/' + boardCode);
}

// Calls visit(stockCode, path) for each venue.
template <typename Visit>
void forEachStock(Visit visit)
{
    const QString root = vexdesk::storeRoot().path();
    for (const QString& stockCode : vexdesk::subdirectories(root))
        visit(stockCode, root + u'/' + stockCode);
}

QList<StockSelectorModel::Data> storedStocks()
{
    QList<StockSelectorModel::Data> stored;
    forEachStock([&stored](const QString& code, const QString&) {
        const StockDirectory& directory = StockDirectory::i();
        stored.append({true, directory.idByCode(code), directory.nameByCode(code), code});
    });
    return stored;
}

QList<BoardSelectorModel::Data> storedBoards()
{
    QList<BoardSelectorModel::Data> stored;
    forEachStock([&stored](const QString& stockCode, const QString& stockPath) {
        const int stockId = StockDirectory::i().idByCode(stockCode);
        forEachBoard(stockPath, [&](const QString& boardCode, const QString&) {
            BoardSelectorModel::Data board;
            board.enabled = true;
            board.name = BoardDirectory::i().nameByCode(stockCode, boardCode);
            board.boardCode = boardCode;
            board.stockCode = stockCode;
            board.stockId = stockId;
            board.boardId = BoardDirectory::i().idByCode(stockCode, boardCode);
            stored.append(board);
        });
    });
    return stored;
}

QList<SecuritySelectorModel::Data> storedSecurities()
{
    QList<SecuritySelectorModel::Data> stored;
    forEachStock([&stored](const QString& stockCode, const QString& stockPath) {
        forEachBoard(stockPath, [&](const QString& boardCode, const QString& boardPath) {
            for (const QString& name : vexdesk::subdirectories(boardPath)) {
                SecuritySelectorModel::Data security;
                security.stockCode = stockCode;
                security.boardCode = boardCode;
                security.securityCode = name;
                security.securityName = name;
                stored.append(security);
            }
        });
    });
    return stored;
}

} // namespace

StockWithStoredSelectorModel::StockWithStoredSelectorModel(bool storedOnly, QObject* parent)
    : StockSelectorModel(parent)
    , m_storedOnly(storedOnly)
{}

void StockWithStoredSelectorModel::populate()
{
    if (!m_storedOnly)
        StockSelectorModel::populate();
    beginResetModel();
    merge(m_list, storedStocks(), [](const Data& entry) { return std::tie(entry.code); });
    endResetModel();
}

BoardWithStoredSelectorModel::BoardWithStoredSelectorModel(bool storedOnly, QObject* parent)
    : BoardSelectorModel(parent)
    , m_storedOnly(storedOnly)
{}

void BoardWithStoredSelectorModel::populate()
{
    if (!m_storedOnly)
        BoardSelectorModel::populate();
    beginResetModel();
    merge(m_list, storedBoards(),
          [](const Data& entry) { return std::tie(entry.stockId, entry.boardCode); });
    endResetModel();
}

SecurityWithStoredSelectorModel::SecurityWithStoredSelectorModel(bool storedOnly, QObject* parent)
    : SecuritySelectorModel(parent, true)
    , m_storedOnly(storedOnly)
{}

void SecurityWithStoredSelectorModel::populate()
{
    if (!m_storedOnly)
        SecuritySelectorModel::populate();
    beginResetModel();
    merge(m_list, storedSecurities(), [](const Data& entry) {
        return std::tie(entry.stockCode, entry.boardCode, entry.securityCode);
    });
    endResetModel();
}
