// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/selectormodel.h>

#include <QtCore/QList>

class Record;

/// The venues that a StockSelectorBox offers: those of the reference data, in the order of their
/// codes. Derive from it to offer others.
class VEXDESK_GUI_EXPORT StockSelectorModel : public SelectorModel
{
    Q_OBJECT

public:
    struct Data
    {
        bool enabled = false; ///< whether it can be chosen
        qint32 stockId = 0;
        QString name;
        QString code;
    };

    explicit StockSelectorModel(QObject* parent);

    void populate() override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    /// Whether what a row of the database tells belongs to the venues on offer. Accepts every
    /// record, the null record included; derive to narrow it.
    virtual bool filter(const Record& record) const;

    /// The entry of a row; the row must exist.
    const Data& at(int row) const { return m_list.at(row); }

protected:
    QList<Data> m_list;
};
