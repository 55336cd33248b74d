// SPDX-License-Identifier: MIT
#pragma once

#include "datarows.h"

#include <vexdesk/history/fieldlengths.h>
#include <vexdesk/history/filestate.h>

#include <QtCore/QAbstractItemModel>
#include <QtCore/QDate>
#include <QtCore/QDir>
#include <QtCore/QList>
#include <QtCore/QStringList>

#include <optional>
#include <vector>

namespace vexdesk {
class DayFileLines;
class FileKeeper;
} // namespace vexdesk
namespace tadata {
class TimeOfDayRange;
}

/// The bars of one series and timeframe in a range of time, as a table of text. Rows are shown and
/// removed, never edited, and removing happens in two steps: delRows() takes them from the table,
/// delRowsFromFiles() then from the day files. What could not be read or written is told by
/// takeProblems(). User-interface thread only.
class EditorTADataModel final : public QAbstractItemModel
{
    Q_OBJECT

public:
    explicit EditorTADataModel(QObject* parent = nullptr);
    ~EditorTADataModel() override;

    /// Shows what the day files of a series' directory hold from `from` to `to`, both included, in
    /// place of what the table held. The timeframe is in seconds. A file is read up to the first
    /// line after the range. Of a day whose file cannot be opened, or cannot be read as far as
    /// that, no row is shown: half a day must not look like a whole one.
    void load(const QDir& dir, const QDateTime& from, const QDateTime& to, int timeframe);

    /// The last row at or before a time, which is given as "yyyyMMdd hhmmss"; 0 when there is none.
    int find(const QString& key) const;

    /// Takes rows from the table. A number that is no row's is ignored.
    void delRows(QList<int> rows);

    /// Writes every day file of the loaded range anew from the rows that are left, then forgets all
    /// rows. Bars of the first and the last day that lie outside the range, and lines that are
    /// shown blank, go from the files with the removed ones: the editor stores what it showed.
    /// A file that was not read, that has changed since, or that was not there then is left alone.
    /// The keeper, if there is one, is told of each file before; the first that it cannot keep ends
    /// the writing.
    void delRowsFromFiles(vexdesk::FileKeeper* keeper = nullptr);

    /// What load() could not read and delRowsFromFiles() left alone or could not write since the
    /// last call: a sentence for the user for each file.
    QStringList takeProblems();

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

    /// The lengths of the fields that were loaded last.
    const vexdesk::FieldLengths& fieldLengths() const { return m_lengths; }
    /// The rows that have other characters than numbers have; until rows are removed.
    const std::vector<int>& rowsOfText() const { return m_rowsOfText; }

private:
    // A day file that was there when the range was loaded.
    struct LoadedDay
    {
        QDate day;
        std::optional<vexdesk::FileState> state; ///< when it was opened; none if it was not read
    };

    QString dayPath(const QDate& day) const;
    QList<QDate> listDays();
    LoadedDay readDay(const QDate& day, const QDateTime& from, const QDateTime& to);
    void readLines(vexdesk::DayFileLines& lines, const QDate& day,
                   const tadata::TimeOfDayRange& range);
    bool isRecordLine(QByteArrayView line);
    void takeBackDay();
    void readWholeDay(const QDate& day, const QByteArray& text);
    bool keep(const LoadedDay& loaded, vexdesk::FileKeeper* keeper);
    void rewrite(const LoadedDay& loaded);
    bool isLoaded(const QDate& day) const;
    void forget();

    tadata::DataRows m_rows;
    vexdesk::FieldLengths m_lengths;
    std::vector<int> m_rowsOfText;
    QList<LoadedDay> m_loaded; ///< in ascending order
    QStringList m_problems;
    QDir m_dir = QDir(QString());
    QDate m_fromDate;
    QDate m_toDate;
    int m_timeframe = 0;
};
