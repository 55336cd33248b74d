// SPDX-License-Identifier: MIT
#include <vexdesk/selectormodel.h>

SelectorModel::SelectorModel(QObject* parent)
    : QAbstractItemModel(parent)
{}

SelectorModel::~SelectorModel() = default;

int SelectorModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 1;
}

QModelIndex SelectorModel::index(int row, int column, const QModelIndex& parent) const
{
    return hasIndex(row, column, parent) ? createIndex(row, column) : QModelIndex();
}

QModelIndex SelectorModel::parent(const QModelIndex&) const
{
    return QModelIndex();
}

Qt::ItemFlags SelectorModel::flags(const QModelIndex& index) const
{
    return index.isValid() ? Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren
                           : Qt::NoItemFlags;
}

QString SelectorModel::title(const QString& code, const QString& name)
{
    return name.isEmpty() || name == code ? code : QStringLiteral("%1 — %2").arg(code, name);
}
