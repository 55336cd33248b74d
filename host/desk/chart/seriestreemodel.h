// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/storecatalog.h>
#include <vexdesk/icharts.h>

#include <QtCore/QAbstractItemModel>

#include <memory>
#include <optional>

namespace vexdesk {

/// What is stored as a tree: venues, in them boards, in these series. User-interface thread only.
class SeriesTreeModel final : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Column {
        CodeColumn,
        TimeframesColumn,
        FirstDayColumn,
        LastDayColumn,
        TitleColumn,
        ColumnCount
    };
    /// All that a series may be looked for by: its codes, its title and the names of board and
    /// venue.
    static constexpr int SearchRole = Qt::UserRole;

    explicit SeriesTreeModel(QObject* parent = nullptr);
    ~SeriesTreeModel() override;

    /// Shows these series, in the order in which a store is listed. What was there before stays in
    /// its place: nothing that is open or chosen in a view is lost.
    void setStored(const QList<StoredSeries>& stored);

    /// No value for a venue or a board.
    std::optional<SeriesName> seriesAt(const QModelIndex& index) const;
    /// Not valid for a series that is not stored.
    QModelIndex indexOf(const SeriesName& series) const;

    QModelIndex index(int row, int column,
                      const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Node;

    const Node& nodeOf(const QModelIndex& index) const;
    static std::unique_ptr<Node> treeOf(const QList<StoredSeries>& stored);
    static Node& childOf(Node& parent, const QString& code);

    void become(Node& node, const QModelIndex& place, Node& wanted);
    void removeRow(Node& node, const QModelIndex& place, int row);
    void insertRow(Node& node, const QModelIndex& place, int row, std::unique_ptr<Node> child);
    QVariant textOf(const Node& node, int column) const;

    std::unique_ptr<Node> m_root;
};

} // namespace vexdesk
