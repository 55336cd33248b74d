// SPDX-License-Identifier: MIT
#include "previewmodel.h"

#include <QtConcurrent/QtConcurrentRun>

#include <algorithm>

namespace tadata {

using vexdesk::Outcome;
using vexdesk::Result;

// Finds the lines of one file in a thread of the pool. What it has found comes to the model only
// while this is the model's search.
class PreviewModel::Search final
{
public:
    static std::shared_ptr<Search> begin(PreviewModel* model, const QString& path)
    {
        auto search = std::make_shared<Search>();
        const std::weak_ptr<Search> weak = search;
        const auto post = [model, weak](auto act) {
            QMetaObject::invokeMethod(
                model,
                [model, weak, act] {
                    if (const auto own = weak.lock(); own && own == model->m_search)
                        act();
                },
                Qt::QueuedConnection);
        };
        search->m_done =
            QtConcurrent::run(model->m_pool.get(), [model, path, post, stop = search->m_stop] {
                const Outcome found = findLines(
                    path,
                    [&](const LinePlaces& places) {
                        post([model, places] { model->takePlaces(places); });
                    },
                    *stop);
                if (!found && !*stop)
                    post([model, message = found.message()] { Q_EMIT model->failed(message); });
            });
        return search;
    }

    // It goes on to its next line, and nobody hears of it.
    void end() { *m_stop = true; }
    // The model may go once it has.
    const QFuture<void>& done() const { return m_done; }

private:
    std::shared_ptr<std::atomic<bool>> m_stop = std::make_shared<std::atomic<bool>>(false);
    QFuture<void> m_done;
};

PreviewModel::PreviewModel(QObject* parent)
    : QAbstractTableModel(parent)
    , m_places(std::make_shared<LinePlaces>())
{
    connect(&m_reading, &QFutureWatcherBase::finished, this, &PreviewModel::takePage);
}

PreviewModel::~PreviewModel()
{
    leaveSearch();
    for (QFuture<void>& left : m_left)
        left.waitForFinished();
    m_reading.waitForFinished();
}

void PreviewModel::leaveSearch()
{
    m_left.removeIf([](const QFuture<void>& left) { return left.isFinished(); });
    if (!m_search)
        return;
    m_search->end();
    m_left.append(m_search->done());
    m_search.reset();
}

void PreviewModel::setFile(const QString& path)
{
    leaveSearch();
    m_file = path;
    beginResetModel();
    m_places = std::make_shared<LinePlaces>();
    ++m_generation;
    m_page = {};
    m_notices.clear();
    m_first = 0;
    m_rows = 0;
    m_columns = 0;
    endResetModel();
    if (!path.isEmpty())
        m_search = Search::begin(this, path);
    Q_EMIT linesFound();
    Q_EMIT columnsChanged();
}

void PreviewModel::setLayout(const PreviewLayout& layout)
{
    m_layout = layout;
    readPage();
}

void PreviewModel::setNotices(const QMap<qint64, QString>& notices)
{
    m_notices = notices;
    if (m_rows > 0 && m_columns > 0)
        Q_EMIT dataChanged(index(0, 0), index(m_rows - 1, m_columns - 1));
}

qint64 PreviewModel::lineCount() const
{
    return m_places->lines;
}

bool PreviewModel::isWhole() const
{
    return m_places->isWhole;
}

void PreviewModel::takePlaces(const LinePlaces& places)
{
    m_places = std::make_shared<LinePlaces>(places);
    setRowsOf(m_first);
    readPage();
    Q_EMIT linesFound();
}

void PreviewModel::showFrom(qint64 line)
{
    const qint64 last = std::max<qint64>(0, lineCount() - m_pageSize);
    const qint64 first = std::clamp<qint64>(line, 0, last);
    if (first == m_first)
        return;
    setRowsOf(first);
    readPage();
    Q_EMIT pageChanged();
}

void PreviewModel::setPageSize(int lines)
{
    if (lines == m_pageSize || lines < 1)
        return;
    m_pageSize = lines;
    setRowsOf(m_first);
    readPage();
    Q_EMIT pageChanged();
}

// As many rows as there are lines to show.
void PreviewModel::setRowsOf(qint64 first)
{
    const qint64 last = std::max<qint64>(0, lineCount() - m_pageSize);
    m_first = std::min(first, last);
    const int rows = static_cast<int>(std::min<qint64>(m_pageSize, lineCount() - m_first));
    if (rows > m_rows) {
        beginInsertRows({}, m_rows, rows - 1);
        m_rows = rows;
        endInsertRows();
    } else if (rows < m_rows) {
        beginRemoveRows({}, rows, m_rows - 1);
        m_rows = rows;
        endRemoveRows();
    }
    if (m_rows > 0) {
        Q_EMIT headerDataChanged(Qt::Vertical, 0, m_rows - 1);
        if (m_columns > 0)
            Q_EMIT dataChanged(index(0, 0), index(m_rows - 1, m_columns - 1));
    }
}

void PreviewModel::readPage()
{
    if (m_reading.isRunning()) {
        m_readsAgain = true;
        return;
    }
    m_readsAgain = false;
    if (m_file.isEmpty() || m_places->places.empty())
        return;
    m_reading.setFuture(QtConcurrent::run(
        m_pool.get(), [file = m_file, places = m_places, layout = m_layout, first = m_first,
                       count = m_pageSize, generation = m_generation] {
            Page page{.first = first, .lines = {}, .failure = {}, .generation = generation};
            const Result<std::vector<ShownLine>> lines = readLines(file, *places, first, count);
            if (lines)
                page.lines = previewLines(*lines, first, layout);
            else
                page.failure = lines.message();
            return page;
        }));
}

void PreviewModel::takePage()
{
    if (m_readsAgain) {
        readPage();
        return;
    }
    Page page = m_reading.result();
    if (page.generation != m_generation)
        return;
    m_page = std::move(page);
    if (!m_page.failure.isNull()) {
        Q_EMIT failed(m_page.failure);
        return;
    }
    qsizetype columns = 0;
    for (const PreviewLine& line : m_page.lines)
        columns = std::max(columns, line.fields.size());
    // On the way through the file columns do not come and go.
    const bool isFirst = m_page.first == 0;
    if (isFirst ? columns != m_columns : columns > m_columns) {
        beginResetModel();
        m_columns = static_cast<int>(columns);
        endResetModel();
        Q_EMIT columnsChanged();
    } else if (m_rows > 0 && m_columns > 0) {
        Q_EMIT dataChanged(index(0, 0), index(m_rows - 1, m_columns - 1));
    }
    Q_EMIT pageRead(); // NOLINT(readability-misleading-indentation): the macro is empty
}

int PreviewModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int PreviewModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_columns;
}

// Null where it is not read yet.
const PreviewLine* PreviewModel::lineAt(int row) const
{
    const qint64 place = m_first + row - m_page.first;
    const bool isRead = place >= 0 && place < static_cast<qint64>(m_page.lines.size());
    return isRead ? &m_page.lines[static_cast<size_t>(place)] : nullptr;
}

QVariant PreviewModel::data(const QModelIndex& index, int role) const
{
    const PreviewLine* const line = index.isValid() ? lineAt(index.row()) : nullptr;
    if (!line)
        return {};
    const bool isFault =
        !line->fault.isNull() && (line->faultColumn == index.column() || line->faultColumn < 0);
    const QString notice = m_notices.value(m_first + index.row() + 1);
    switch (role) {
    case Qt::DisplayRole:
        return line->fields.value(index.column());
    case Qt::ToolTipRole:
        return line->fault.isNull() ? notice : line->fault;
    case Qt::AccessibleDescriptionRole:
        return isFault ? line->fault : notice;
    case FaultRole:
        return isFault;
    case HeaderRole:
        return line->isHeader;
    case NoticeRole:
        return !notice.isEmpty();
    default:
        return {};
    }
}

QVariant PreviewModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical && role == Qt::DisplayRole)
        return m_first + section + 1;
    return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
}

} // namespace tadata
