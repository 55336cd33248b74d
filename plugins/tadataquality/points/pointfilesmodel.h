// SPDX-License-Identifier: MIT
#pragma once

#include "pointfiles.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QSet>

/// The files of one restore point: what its command did, what putting it back would do, and which
/// of them have changed since. User-interface thread.
class PointFilesModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Series, Day, Bars, WasDone, WouldBeDone, Since, ColumnCount };

    explicit PointFilesModel(QObject* parent = nullptr);
    ~PointFilesModel() override;

    /// Of them it is not known yet what has changed since.
    void setFiles(std::vector<tadata::PointFile> files);
    /// Those that have changed since, by path. Of a work that was interrupted it is not known what
    /// it left, and so nothing of the other files.
    void setForbidding(const QSet<QString>& paths, bool isWorkKnown);
    /// How many of these are shown.
    qsizetype forbiddingCount() const { return m_forbidding.size(); }
    const std::vector<tadata::PointFile>& files() const { return m_files; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    QString textAt(const tadata::PointFile& file, int column) const;

    std::vector<tadata::PointFile> m_files;
    QSet<QString> m_forbidding;
    bool m_isChecked = false;
    bool m_isWorkKnown = true;
};
