// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/selectormodel.h>

#include <QtCore/QList>

/// The boards that a BoardSelectorBox offers: those of the reference data, in the order of stock id
/// and code. Derive from it to offer others.
class VEXDESK_GUI_EXPORT BoardSelectorModel : public SelectorModel
{
    Q_OBJECT

public:
    struct Data
    {
        bool enabled = false; ///< whether it can be chosen
        QString name;
        QString boardCode;
        QString stockCode;
        qint32 stockId = 0;
        qint32 boardId = 0;
        qint32 flags = 0;
    };

    explicit BoardSelectorModel(QObject* parent);

    void populate() override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    /// The entry of a row; the row must exist.
    const Data& at(int row) const { return m_list.at(row); }

protected:
    QList<Data> m_list;
};
