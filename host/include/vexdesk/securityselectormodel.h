// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/selectormodel.h>

#include <QtCore/QList>

/// The securities that a SecuritySelectorBox offers: those of the reference data, in the order of
/// stock code, board code and security code. Derive from it to offer others.
class VEXDESK_GUI_EXPORT SecuritySelectorModel : public SelectorModel
{
    Q_OBJECT

public:
    struct Data
    {
        QString stockCode;
        QString boardCode;
        QString securityCode;
        QString securityName; ///< the name by which files know it: the same as the code
        qint64 securityId = 0;
        QString title; ///< for people
    };

    /// With `withTitles` the list shows each security's title behind its code.
    SecuritySelectorModel(QObject* parent, bool withTitles);

    void populate() override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    /// The entry of a row; the row must exist.
    const Data& at(int row) const { return m_list.at(row); }

protected:
    QList<Data> m_list;

private:
    bool m_withTitles;
};
