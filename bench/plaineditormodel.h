// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QAbstractTableModel>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QList>

#include <array>

/// What the editor's model is measured against: the same table in the plain way, with nine strings
/// a row made when the files are read, and rows taken out of the list one by one.
class PlainEditorModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit PlainEditorModel(QObject* parent = nullptr);

    void load(const QDir& dir, const QDateTime& from, const QDateTime& to, int timeframe);
    int find(const QString& key) const;
    void delRows(QList<int> rows);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    static constexpr int columns = 8;

    struct DataRow
    {
        std::array<QString, columns> fields;
        QString key;
    };

    QList<DataRow> m_rows;
};
