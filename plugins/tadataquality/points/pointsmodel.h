// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/restorepoint.h>

#include <QtCore/QAbstractTableModel>
#include <QtCore/QSet>

/// The restore points of a store, the newest first. User-interface thread.
class PointsModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { When, By, Series, Source, Files, Size, ColumnCount };

    explicit PointsModel(QObject* parent = nullptr);
    ~PointsModel() override;

    /// With the ids of those whose command is at work, and of those that are put back. Points that
    /// stay keep their place among the selected ones.
    void setPoints(const QList<vexdesk::RestorePointRecord>& points,
                   const QSet<QString>& running = {}, const QSet<QString>& putBack = {});
    const QList<vexdesk::RestorePointRecord>& points() const { return m_points; }
    const vexdesk::RestorePointRecord& pointAt(int row) const { return m_points.at(row); }
    /// -1 where there is none.
    int rowOf(const QString& id) const;
    /// Of all kept copies.
    qint64 bytes() const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    QString makerOf(const vexdesk::RestorePointRecord& point) const;
    QString textAt(const vexdesk::RestorePointRecord& point, int column) const;
    QString toolTipOf(const vexdesk::RestorePointRecord& point) const;

    QList<vexdesk::RestorePointRecord> m_points;
    QSet<QString> m_running; ///< ids
    QSet<QString> m_putBack; ///< likewise
};
