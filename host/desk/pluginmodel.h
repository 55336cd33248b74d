// SPDX-License-Identifier: MIT
#pragma once

#include "desk/pluginrecord.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QList>

namespace vexdesk {

/// The plug-in records as a table, one row each. The model holds a copy and never changes.
class PluginModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column {
        StateColumn,
        FileColumn, ///< the file's name; its tool tip is the whole path
        CodeColumn,
        NameColumn,
        VersionColumn,
        AuthorColumn,
        DescriptionColumn,
        ReasonColumn,
        ColumnCount,
    };

    explicit PluginModel(QList<PluginRecord> records, QObject* parent = nullptr);

    const PluginRecord& record(int row) const { return m_records.at(row); }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

    /// The state as a word for the user.
    static QString stateText(PluginRecord::State state);

private:
    QList<PluginRecord> m_records;
};

} // namespace vexdesk
