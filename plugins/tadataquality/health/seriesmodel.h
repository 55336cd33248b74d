// SPDX-License-Identifier: MIT
#pragma once

#include "healthdigest.h"

#include <QtCore/QAbstractTableModel>

#include <vector>

/// The series of a store with what is known of their health, sorted and filtered. It does both
/// itself: a store has more series than a proxy can sort while the user types. User-interface
/// thread.
class SeriesModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column {
        Series,
        Bars, ///< their length
        Coverage,
        Gaps,
        MissingDays,
        Broken,
        Jumps,
        Count, ///< of bars
        First,
        Last,
        ColumnCount
    };

    explicit SeriesModel(QObject* parent = nullptr);
    ~SeriesModel() override;

    void setSeries(const QList<tadata::SharedDigest>& series);
    /// Only series whose names hold each of these words, in whatever case.
    void setFilter(const QString& words);
    /// Those that are shown, in the order in which they are.
    QList<tadata::SharedDigest> shown() const;
    qsizetype allCount() const { return m_all.size(); }

    const tadata::SharedDigest& seriesAt(int row) const;
    /// -1 where it is not shown.
    int rowOf(const QString& series, int timeframe) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

private:
    void arrange();
    bool isShown(const tadata::SeriesDigest& series) const;

    QList<tadata::SharedDigest> m_all; // in the order of names
    std::vector<qsizetype> m_rows;     // places in it
    QStringList m_words;
    int m_sortColumn = Series;
    Qt::SortOrder m_order = Qt::AscendingOrder;
};
