// SPDX-License-Identifier: MIT
#include "pointsmodel.h"

#include "pointwords.h"

#include <QtCore/QFileInfo>
#include <QtCore/QLocale>

#include <algorithm>
#include <numeric>

using tadata::makerOfPoint;
using vexdesk::RestorePointRecord;

namespace {

// A long list is not read; the tool tip has more of it.
QString shortList(const QStringList& texts, qsizetype shown)
{
    if (texts.size() <= shown)
        return texts.join(QStringLiteral(", "));
    return PointsModel::tr("%1 и ещё %L2")
        .arg(texts.first(shown).join(QStringLiteral(", ")))
        .arg(texts.size() - shown);
}

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

void PointsModel::setPoints(const QList<RestorePointRecord>& points)
{
    // Nothing is shown anew that is as it was: a reader or a screen reader is not disturbed.
    const auto areSame = [](const RestorePointRecord& left, const RestorePointRecord& right) {
        return left.id == right.id && left.isComplete == right.isComplete &&
               left.bytes == right.bytes && left.kept == right.kept &&
               left.created == right.created;
    };
    if (std::equal(points.begin(), points.end(), m_points.begin(), m_points.end(), areSame))
        return;
    beginResetModel();
    m_points = points;
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

QString PointsModel::textAt(const RestorePointRecord& point, int column) const
{
    constexpr qsizetype shown = 2;
    const QLocale locale;
    switch (column) {
    case When:
        return point.when.toLocalTime().toString(QStringLiteral("dd.MM.yyyy HH:mm:ss"));
    case By:
        return point.isComplete ? makerOfPoint(point.by)
                                : tr("%1 (прервано)").arg(makerOfPoint(point.by));
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
    if (!point.isComplete)
        lines.append(tr("Команда ещё идёт или была прервана. Вернуть то, что она успела изменить, "
                        "можно, когда она не идёт."));
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
