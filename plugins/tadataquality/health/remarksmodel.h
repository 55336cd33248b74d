// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/icharts.h>

#include <QtCore/QAbstractTableModel>

#include <vector>

/// What there is to tell of one day, a line for each. User-interface thread.
class RemarksModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Kind, What, ColumnCount };

    explicit RemarksModel(QObject* parent = nullptr);
    ~RemarksModel() override;

    void setRemarks(std::vector<vexdesk::ChartMark> remarks);
    const vexdesk::ChartMark& remarkAt(int row) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    std::vector<vexdesk::ChartMark> m_remarks;
};
