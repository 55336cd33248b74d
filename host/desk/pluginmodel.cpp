// SPDX-License-Identifier: MIT
#include "desk/pluginmodel.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace vexdesk {

namespace {

QString textOf(const PluginRecord& record, int column)
{
    switch (column) {
    case PluginModel::StateColumn:
        return PluginModel::stateText(record.state);
    case PluginModel::CodeColumn:
        return record.code;
    case PluginModel::NameColumn:
        return record.name;
    case PluginModel::VersionColumn:
        return record.version;
    case PluginModel::AuthorColumn:
        return record.author;
    case PluginModel::DescriptionColumn:
        return record.description;
    case PluginModel::FileColumn:
        return QFileInfo(record.path).fileName();
    case PluginModel::ReasonColumn:
        return record.reason;
    default:
        return QString();
    }
}

} // namespace

PluginModel::PluginModel(QList<PluginRecord> records, QObject* parent)
    : QAbstractTableModel(parent)
    , m_records(std::move(records))
{}

int PluginModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_records.size());
}

int PluginModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant PluginModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return QVariant();
    const PluginRecord& record = m_records.at(index.row());
    if (role == Qt::DisplayRole)
        return textOf(record, index.column());
    if (role == Qt::ToolTipRole)
        return index.column() == FileColumn ? QDir::toNativeSeparators(record.path)
                                            : textOf(record, index.column());
    return QVariant();
}

QVariant PluginModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    switch (section) {
    case StateColumn:
        return tr("Состояние");
    case CodeColumn:
        return tr("Код");
    case NameColumn:
        return tr("Название");
    case VersionColumn:
        return tr("Версия");
    case AuthorColumn:
        return tr("Автор");
    case DescriptionColumn:
        return tr("Описание");
    case FileColumn:
        return tr("Файл");
    case ReasonColumn:
        return tr("Причина отказа");
    default:
        return QVariant();
    }
}

QString PluginModel::stateText(PluginRecord::State state)
{
    return state == PluginRecord::State::Loaded ? tr("Загружен") : tr("Отклонён");
}

} // namespace vexdesk
