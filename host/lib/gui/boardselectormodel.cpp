// SPDX-License-Identifier: MIT
#include <vexdesk/boardselectormodel.h>

#include <vexdesk/stockdirectory.h>
#include <vexdesk/terminal/referencedata.h>

#include <algorithm>
#include <tuple>

BoardSelectorModel::BoardSelectorModel(QObject* parent)
    : SelectorModel(parent)
{}

void BoardSelectorModel::populate()
{
    beginResetModel();
    m_list.clear();
    const vexdesk::ReferenceData reference = vexdesk::ReferenceData::installed();
    for (const vexdesk::Board& board : reference.boards) {
        m_list.append({true, board.name, board.code, board.stockCode,
                       StockDirectory::i().idByCode(board.stockCode), board.id, board.flags});
    }
    std::sort(m_list.begin(), m_list.end(), [](const Data& left, const Data& right) {
        return std::tie(left.stockId, left.boardCode) < std::tie(right.stockId, right.boardCode);
    });
    endResetModel();
}

int BoardSelectorModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_list.size());
}

QVariant BoardSelectorModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || role != Qt::DisplayRole)
        return QVariant();
    const Data& entry = m_list.at(index.row());
    return title(entry.boardCode, entry.name);
}
