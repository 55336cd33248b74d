// SPDX-License-Identifier: MIT
#pragma once

#include "ownpool.h"
#include "previewlines.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QFutureWatcher>
#include <QtCore/QMap>

#include <memory>

namespace tadata {

/// A window onto the lines of a file: its rows are those that are in view, however long the file
/// is, so that neither the view nor the model grows with it. The lines are found, and those in view
/// read and judged, in threads of its own; rows that are not read yet are empty.
/// User-interface thread.
class PreviewModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Role {
        FaultRole = Qt::UserRole, ///< of the field that an import refuses: true
        HeaderRole,               ///< of the header of the file: true
        NoticeRole,               ///< of a line that a check has something to say of: true
    };

    explicit PreviewModel(QObject* parent = nullptr);
    ~PreviewModel() override;

    /// Begins with the first line of another file, or of the same one anew. An empty path: none.
    void setFile(const QString& path);
    QString file() const { return m_file; }
    void setLayout(const PreviewLayout& layout);
    /// What a check says of lines, by their numbers from 1: it is their tool tip.
    void setNotices(const QMap<qint64, QString>& notices);

    /// The lines of the file that are known so far, and whether these are all.
    qint64 lineCount() const;
    bool isWhole() const;
    /// Of the first row, from 0.
    qint64 firstLine() const { return m_first; }
    /// Goes to a line as far as there are lines enough behind it to fill the view.
    void showFrom(qint64 line);
    /// So many lines are in view.
    void setPageSize(int lines);
    int pageSize() const { return m_pageSize; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

Q_SIGNALS:
    /// More lines were found, or all of them.
    void linesFound();
    /// Other lines are in view.
    void pageChanged();
    /// The rows in view have their content.
    void pageRead();
    void columnsChanged();
    /// The file cannot be read, or is not any more what it was when its lines were found.
    void failed(const QString& message);

private:
    struct Page
    {
        qint64 first = 0;
        std::vector<PreviewLine> lines;
        QString failure;    ///< null where the lines were read
        int generation = 0; ///< of the file
    };
    class Search;

    void leaveSearch();
    void takePlaces(const LinePlaces& places);
    void setRowsOf(qint64 first);
    void readPage();
    void takePage();
    const PreviewLine* lineAt(int row) const;

    OwnPool m_pool;
    QString m_file;
    PreviewLayout m_layout;
    QMap<qint64, QString> m_notices;
    std::shared_ptr<Search> m_search; ///< of the lines of this file
    QList<QFuture<void>> m_left;      ///< searches that may not have noticed that they ended
    std::shared_ptr<const LinePlaces> m_places;
    int m_generation = 0;
    qint64 m_first = 0;
    int m_pageSize = 1;
    int m_rows = 0;
    int m_columns = 0;
    Page m_page; ///< what was read last
    QFutureWatcher<Page> m_reading;
    bool m_readsAgain = false; ///< something else is wanted than what is being read
};

} // namespace tadata
