// SPDX-License-Identifier: MIT
#include <vexdesk/securityselectormodel.h>

#include <vexdesk/terminal/referencedata.h>

#include <algorithm>
#include <tuple>

SecuritySelectorModel::SecuritySelectorModel(QObject* parent, bool withTitles)
    : SelectorModel(parent)
    , m_withTitles(withTitles)
{}

void SecuritySelectorModel::populate()
{
    beginResetModel();
    m_list.clear();
    const vexdesk::ReferenceData reference = vexdesk::ReferenceData::installed();
    for (const vexdesk::Security& security : reference.securities) {
        m_list.append({security.stockCode, security.boardCode, security.code, security.code,
                       security.id, security.title});
    }
    std::sort(m_list.begin(), m_list.end(), [](const Data& left, const Data& right) {
        return std::tie(left.stockCode, left.boardCode, left.securityCode) <
               std::tie(right.stockCode, right.boardCode, right.securityCode);
    });
    endResetModel();
}

int SecuritySelectorModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_list.size());
}

QVariant SecuritySelectorModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || role != Qt::DisplayRole)
        return QVariant();
    const Data& entry = m_list.at(index.row());
    return m_withTitles ? title(entry.securityCode, entry.title) : entry.securityCode;
}
