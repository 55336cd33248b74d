// SPDX-License-Identifier: MIT
#include "pointfilesmodel.h"

#include <vexdesk/dateformat.h>
#include <vexdesk/history/dayfilenames.h>

#include <utility>

using tadata::PointFile;

PointFilesModel::PointFilesModel(QObject* parent)
    : QAbstractTableModel(parent)
{}

PointFilesModel::~PointFilesModel() = default;

void PointFilesModel::setFiles(std::vector<PointFile> files)
{
    beginResetModel();
    m_files = std::move(files);
    m_forbidding.clear();
    m_isChecked = false;
    endResetModel();
}

void PointFilesModel::setForbidding(const QSet<QString>& paths, bool isWorkKnown)
{
    m_forbidding = paths;
    m_isWorkKnown = isWorkKnown;
    m_isChecked = true;
    if (!m_files.empty())
        Q_EMIT dataChanged(index(0, Since), index(static_cast<int>(m_files.size()) - 1, Since));
}

int PointFilesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_files.size());
}

int PointFilesModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant PointFilesModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const PointFile& file = m_files[static_cast<size_t>(index.row())];
    if (role == Qt::DisplayRole)
        return textAt(file, index.column());
    if (role == Qt::ToolTipRole)
        return file.path;
    return {};
}

QString PointFilesModel::textAt(const PointFile& file, int column) const
{
    switch (column) {
    case Series:
        return file.series;
    case Day:
        return file.day.isValid() ? vexdesk::shownDate(file.day) : file.name;
    case Bars:
        if (file.timeframe == vexdesk::minuteTimeframe)
            return tr("минуты");
        return file.timeframe == vexdesk::secondTimeframe ? tr("секунды") : tr("минуты из секунд");
    case WasDone:
        if (file.done == PointFile::Done::Created)
            return tr("создан");
        return file.done == PointFile::Done::Removed ? tr("удалён") : tr("изменён");
    case WouldBeDone:
        return file.returns() ? tr("вернётся прежний") : tr("будет удалён");
    default:
        if (!m_isChecked)
            return QStringLiteral("…");
        if (m_forbidding.contains(file.path))
            return tr("изменился");
        return m_isWorkKnown ? tr("такой же") : tr("неизвестно");
    }
}

QVariant PointFilesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Series:
        return tr("Серия");
    case Day:
        return tr("День");
    case Bars:
        return tr("Бары");
    case WasDone:
        return tr("Что сделано");
    case WouldBeDone:
        return tr("При возврате");
    case Since:
        return tr("С тех пор");
    default:
        return {};
    }
}
