// SPDX-License-Identifier: MIT
#include "remarksmodel.h"

#include <utility>

using vexdesk::ChartMark;

RemarksModel::RemarksModel(QObject* parent)
    : QAbstractTableModel(parent)
{}

RemarksModel::~RemarksModel() = default;

void RemarksModel::setRemarks(std::vector<ChartMark> remarks)
{
    beginResetModel();
    m_remarks = std::move(remarks);
    endResetModel();
}

const ChartMark& RemarksModel::remarkAt(int row) const
{
    return m_remarks[static_cast<size_t>(row)];
}

int RemarksModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_remarks.size());
}

int RemarksModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant RemarksModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const ChartMark& remark = remarkAt(index.row());
    if (role != Qt::DisplayRole)
        return {};
    if (index.column() == What)
        return remark.text;
    switch (remark.kind) {
    case ChartMark::Kind::Fault:
        return tr("Ошибка");
    case ChartMark::Kind::Warning:
        return tr("Внимание");
    case ChartMark::Kind::Note:
        break;
    }
    return tr("К сведению");
}
