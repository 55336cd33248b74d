#pragma once

#include "editor/datarows.h"

#include <QtCore/QAbstractItemModel>
#include <QtCore/QDate>
#include <QtCore/QDir>
#include <QtCore/QList>

/// The bars of one series and timeframe in a range of time, as a table of text. Rows are shown and
/// removed, never edited, and removing happens in two steps: delRows() takes them from the table,
/// delRowsFromFiles() then from the day files. Errors are not reported: what cannot be read counts
/// as not there, and a file that cannot be written stays as it is. User-interface thread only.
class EditorTADataModel final : public QAbstractItemModel
{
    Q_OBJECT

public:
    explicit EditorTADataModel(QObject* parent);
    ~EditorTADataModel() override;

    /// Shows what the day files of a series' directory hold from `from` to `to`, both included, in
    /// place of what the table held. The timeframe is in seconds. A file is read up to the first
    /// line after the range.
    void load(const QDir& dir, const QDateTime& from, const QDateTime& to, int timeframe);

    /// The last row at or before a time, which is given as "yyyyMMdd hhmmss"; 0 when there is none.
    int find(const QString& key) const;

    /// Takes rows from the table. A number that is no row's is ignored.
    void delRows(QList<int> rows);

    /// Writes every day file of the loaded range anew from the rows that are left, then forgets all
    /// rows. Bars of the first and the last day that lie outside the range, and lines that are
    /// shown blank, go from the files with the removed ones: the editor stores what it showed.
    void delRowsFromFiles();

    QModelIndex index(int row, int column,
                      const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    using QObject::parent;

    /// What the rows take in memory, in bytes.
    qsizetype memory() const { return m_rows.memory(); }

private:
    void readDay(const QDate& day, const QDateTime& from, const QDateTime& to);
    void readWholeDay(const QDate& day, const QByteArray& text);
    void forget();

    tadata::DataRows m_rows;
    QDir m_dir = QDir(QString());
    QDate m_fromDate;
    QDate m_toDate;
    int m_timeframe = 0;
};
