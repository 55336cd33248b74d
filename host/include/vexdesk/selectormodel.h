// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QAbstractItemModel>

/// What the models of the selector boxes have in common: a flat list of one column that is filled
/// by populate(). User-interface thread only.
class VEXDESK_GUI_EXPORT SelectorModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    explicit SelectorModel(QObject* parent);
    ~SelectorModel() override;

    /// Fills the list anew. A box calls it when it is given the model.
    virtual void populate() = 0;

    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex index(int row, int column,
                      const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    using QObject::parent;

protected:
    /// "ALFA — Альфа, обыкновенные": the code first, since that is what people type.
    static QString title(const QString& code, const QString& name);
};
