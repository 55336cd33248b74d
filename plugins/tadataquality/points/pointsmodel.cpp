// SPDX-License-Identifier: MIT
#include "pointsmodel.h"

#include "pointwords.h"

#include <vexdesk/dateformat.h>

#include <QtCore/QFileInfo>
#include <QtCore/QLocale>

#include <algorithm>
#include <numeric>

using tadata::makerOfPoint;
using tadata::shortList;
using vexdesk::RestorePointRecord;

namespace {

QStringList namesOf(const QStringList& paths)
{
    QStringList names;
    for (const QString& path : paths)
        names.append(QFileInfo(path).fileName());
    return names;
}

} // namespace

PointsModel::PointsModel(QObject* parent)
    : QAbstractTableModel(parent)
{}

PointsModel::~PointsModel() = default;

void PointsModel::setPoints(const QList<RestorePointRecord>& points, const QSet<QString>& running,
                            const QSet<QString>& putBack)
{
    // Nothing is shown anew that is as it was: a reader or a screen reader is not disturbed.
    const auto areSame = [](const RestorePointRecord& left, const RestorePointRecord& right) {
        return left.id == right.id && left.isComplete == right.isComplete &&
               left.bytes == right.bytes && left.kept == right.kept &&
               left.created == right.created;
    };
    if (running == m_running && putBack == m_putBack &&
        std::equal(points.begin(), points.end(), m_points.begin(), m_points.end(), areSame))
        return;
    beginResetModel();
    m_points = points;
    m_running = running;
    m_putBack = putBack;
    endResetModel();
}

int PointsModel::rowOf(const QString& id) const
{
    for (int row = 0; row < m_points.size(); ++row) {
        if (m_points.at(row).id == id)
            return row;
    }
    return -1;
}

qint64 PointsModel::bytes() const
{
    return std::accumulate(
        m_points.begin(), m_points.end(), qint64(0),
        [](qint64 sum, const RestorePointRecord& point) { return sum + point.bytes; });
}

int PointsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_points.size());
}

int PointsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant PointsModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const RestorePointRecord& point = m_points.at(index.row());
    if (role == Qt::DisplayRole)
        return textAt(point, index.column());
    if (role == Qt::ToolTipRole)
        return toolTipOf(point);
    if (role == Qt::TextAlignmentRole && (index.column() == Files || index.column() == Size))
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

QString PointsModel::makerOf(const RestorePointRecord& point) const
{
    const QString maker = makerOfPoint(point.by);
    if (point.isComplete)
        return maker;
    if (m_putBack.contains(point.id))
        return tr("%1 (прервано, возвращено)").arg(maker);
    return m_running.contains(point.id) ? tr("%1 (идёт)").arg(maker)
                                        : tr("%1 (прервано)").arg(maker);
}

QString PointsModel::textAt(const RestorePointRecord& point, int column) const
{
    constexpr qsizetype shown = 2;
    const QLocale locale;
    switch (column) {
    case When:
        return vexdesk::shownMoment(point.when.toLocalTime());
    case By:
        return makerOf(point);
    case Series:
        return shortList(point.series, shown);
    case Source:
        return shortList(point.by == u"undo" ? QStringList() : namesOf(point.source), shown);
    case Files:
        return locale.toString(point.kept.size() + point.created.size());
    default:
        return tadata::sizeText(point.bytes);
    }
}

QString PointsModel::toolTipOf(const RestorePointRecord& point) const
{
    constexpr qsizetype shown = 12;
    QStringList lines{tr("Точка %1").arg(point.id)};
    if (m_running.contains(point.id))
        lines.append(tr("Команда ещё идёт. Вернуть её можно будет, когда она закончится."));
    else if (!point.isComplete && m_putBack.contains(point.id))
        lines.append(tr("Команда была прервана. То, что она успела изменить, уже возвращено."));
    else if (!point.isComplete)
        lines.append(tr("Команда была прервана. То, что она успела изменить, можно вернуть."));
    lines += point.series.first(std::min(shown, point.series.size()));
    if (point.series.size() > shown)
        lines.append(tr("и ещё %L1").arg(point.series.size() - shown));
    lines += point.source.first(std::min(shown, point.source.size()));
    return lines.join(u'\n');
}

QVariant PointsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case When:
        return tr("Когда");
    case By:
        return tr("Что сделано");
    case Series:
        return tr("Серии");
    case Source:
        return tr("Источник");
    case Files:
        return tr("Файлов");
    case Size:
        return tr("Занимает");
    default:
        return {};
    }
}
