// SPDX-License-Identifier: MIT
#include <vexdesk/stockselectormodel.h>

#include <vexdesk/terminal/referencedata.h>

#include <algorithm>

StockSelectorModel::StockSelectorModel(QObject* parent)
    : SelectorModel(parent)
{}

void StockSelectorModel::populate()
{
    beginResetModel();
    m_list.clear();
    const vexdesk::ReferenceData reference = vexdesk::ReferenceData::installed();
    for (const vexdesk::Stock& stock : reference.stocks)
        m_list.append({true, stock.id, stock.name, stock.code});
    std::sort(m_list.begin(), m_list.end(),
              [](const Data& left, const Data& right) { return left.code < right.code; });
    endResetModel();
}

int StockSelectorModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_list.size());
}

bool StockSelectorModel::filter(const Record& /*record*/) const
{
    return true;
}

QVariant StockSelectorModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || role != Qt::DisplayRole)
        return QVariant();
    const Data& entry = m_list.at(index.row());
    return title(entry.code, entry.name);
}
