// SPDX-License-Identifier: MIT
#include "desk/chart/seriestreemodel.h"

#include "desk/chart/axisticks.h"
#include "desk/chart/seriesname.h"
#include "desk/chart/wallclock.h"

#include <vexdesk/boarddirectory.h>
#include <vexdesk/stockdirectory.h>

#include <QtCore/QDate>

#include <algorithm>
#include <vector>

namespace vexdesk {

// A venue, a board or a series; the root is none of them.
struct SeriesTreeModel::Node
{
    struct Content
    {
        QString title;
        QList<int> timeframes; // in seconds; a series alone has any
        QDate firstDay;
        QDate lastDay;

        bool operator==(const Content&) const = default;
    };

    int depth() const { return parent ? parent->depth() + 1 : 0; }
    int row() const
    {
        const auto& rows = parent->children;
        const auto found = std::find_if(rows.begin(), rows.end(),
                                        [this](const auto& node) { return node.get() == this; });
        return static_cast<int>(found - rows.begin());
    }
    QString code;
    Content content;
    QString searched;
    Node* parent = nullptr;
    std::vector<std::unique_ptr<Node>> children; // in the order of their codes
};

SeriesTreeModel::SeriesTreeModel(QObject* parent)
    : QAbstractItemModel(parent)
    , m_root(std::make_unique<Node>())
{}

SeriesTreeModel::~SeriesTreeModel() = default;

void SeriesTreeModel::setStored(const QList<StoredSeries>& stored)
{
    const std::unique_ptr<Node> wanted = treeOf(stored);
    become(*m_root, QModelIndex(), *wanted);
}

SeriesTreeModel::Node& SeriesTreeModel::childOf(Node& parent, const QString& code)
{
    // They come in their order.
    if (parent.children.empty() || parent.children.back()->code != code) {
        auto child = std::make_unique<Node>();
        child->code = code;
        child->parent = &parent;
        parent.children.push_back(std::move(child));
    }
    return *parent.children.back();
}

std::unique_ptr<SeriesTreeModel::Node> SeriesTreeModel::treeOf(const QList<StoredSeries>& stored)
{
    auto root = std::make_unique<Node>();
    const SecurityTitles titles;
    for (const StoredSeries& one : stored) {
        Node& stock = childOf(*root, one.stockCode);
        stock.content.title = StockDirectory::i().nameByCode(one.stockCode);
        Node& board = childOf(stock, one.boardCode);
        board.content.title = BoardDirectory::i().nameByCode(one.stockCode, one.boardCode);
        Node& series = childOf(board, one.securityName);
        Node::Content& content = series.content;
        content.title = titles.titleOf({one.stockCode, one.boardCode, one.securityName});
        content.timeframes.append(one.timeframe);
        if (!content.firstDay.isValid() || one.firstDay < content.firstDay)
            content.firstDay = one.firstDay;
        if (!content.lastDay.isValid() || one.lastDay > content.lastDay)
            content.lastDay = one.lastDay;
        series.searched.clear();
        for (const Node* const node : {&series, &board, &stock})
            series.searched += node->code + u'\n' + node->content.title + u'\n';
    }
    return root;
}

void SeriesTreeModel::removeRow(Node& node, const QModelIndex& place, int row)
{
    beginRemoveRows(place, row, row);
    node.children.erase(node.children.begin() + row);
    endRemoveRows();
}

void SeriesTreeModel::insertRow(Node& node, const QModelIndex& place, int row,
                                std::unique_ptr<Node> child)
{
    beginInsertRows(place, row, row);
    child->parent = &node;
    node.children.insert(node.children.begin() + row, std::move(child));
    endInsertRows();
}

// Row by row, both in the order of their codes.
void SeriesTreeModel::become(Node& node, const QModelIndex& place, Node& wanted)
{
    int row = 0;
    const auto count = [&node] { return static_cast<int>(node.children.size()); };
    const auto codeAt = [&node](int at) { return node.children[static_cast<size_t>(at)]->code; };
    for (std::unique_ptr<Node>& next : wanted.children) {
        while (row < count() && codeAt(row) < next->code)
            removeRow(node, place, row);
        if (row < count() && codeAt(row) == next->code) {
            Node& present = *node.children[static_cast<size_t>(row)];
            present.searched = next->searched;
            if (present.content != next->content) {
                present.content = next->content;
                Q_EMIT dataChanged(index(row, 0, place), index(row, ColumnCount - 1, place));
            }
            become(present, index(row, 0, place), *next);
        } else {
            insertRow(node, place, row, std::move(next));
        }
        ++row;
    }
    while (count() > row)
        removeRow(node, place, count() - 1);
}

const SeriesTreeModel::Node& SeriesTreeModel::nodeOf(const QModelIndex& index) const
{
    return index.isValid() ? *static_cast<const Node*>(index.internalPointer()) : *m_root;
}

std::optional<SeriesName> SeriesTreeModel::seriesAt(const QModelIndex& index) const
{
    constexpr int seriesDepth = 3;
    const Node& node = nodeOf(index);
    if (node.depth() != seriesDepth)
        return std::nullopt;
    return SeriesName{node.parent->parent->code, node.parent->code, node.code};
}

QModelIndex SeriesTreeModel::indexOf(const SeriesName& series) const
{
    QModelIndex place;
    for (const QString& code : {series.stockCode, series.boardCode, series.securityName}) {
        const auto& rows = nodeOf(place).children;
        const auto found = std::find_if(rows.begin(), rows.end(),
                                        [&code](const auto& node) { return node->code == code; });
        if (found == rows.end())
            return QModelIndex();
        place = index(static_cast<int>(found - rows.begin()), 0, place);
    }
    return place;
}

QModelIndex SeriesTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return QModelIndex();
    return createIndex(row, column, nodeOf(parent).children[static_cast<size_t>(row)].get());
}

QModelIndex SeriesTreeModel::parent(const QModelIndex& child) const
{
    const Node* const parent = nodeOf(child).parent;
    if (!parent || parent == m_root.get())
        return QModelIndex();
    return createIndex(parent->row(), 0, parent);
}

int SeriesTreeModel::rowCount(const QModelIndex& parent) const
{
    return parent.column() > 0 ? 0 : static_cast<int>(nodeOf(parent).children.size());
}

int SeriesTreeModel::columnCount(const QModelIndex& /*parent*/) const
{
    return ColumnCount;
}

QVariant SeriesTreeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    const Node& node = nodeOf(index);
    switch (role) {
    case Qt::DisplayRole:
        return textOf(node, index.column());
    case Qt::ToolTipRole:
        if (const std::optional<SeriesName> series = seriesAt(index))
            return seriesDescription(*series);
        return node.content.title;
    case SearchRole:
        return node.searched;
    default:
        return QVariant();
    }
}

QVariant SeriesTreeModel::textOf(const Node& node, int column) const
{
    const auto dayText = [](const QDate& day) {
        return day.isValid() ? dateText(wallTime(day)) : QString();
    };
    switch (column) {
    case CodeColumn:
        return node.code;
    case TitleColumn:
        return node.content.title;
    case TimeframesColumn: {
        QStringList texts;
        for (const int timeframe : node.content.timeframes)
            texts.append(intervalText(timeframe));
        return texts.join(QStringLiteral(", "));
    }
    case FirstDayColumn:
        return dayText(node.content.firstDay);
    case LastDayColumn:
        return dayText(node.content.lastDay);
    default:
        return QVariant();
    }
}

QVariant SeriesTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    switch (section) {
    case CodeColumn:
        return tr("Серия");
    case TimeframesColumn:
        return tr("Бары");
    case FirstDayColumn:
        return tr("Первый");
    case LastDayColumn:
        return tr("Последний");
    case TitleColumn:
        return tr("Название");
    default:
        return QVariant();
    }
}

} // namespace vexdesk
