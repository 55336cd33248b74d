// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/database/partitionlist.h>
#include <vexdesk/database/record.h>
#include <vexdesk/database/rowlayout.h>
#include <vexdesk/export.h>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>

#include <functional>
#include <memory>
#include <mutex>

class MasterIndex;

/// A table of the in-memory database: named columns of fixed types, rows, and the order of the rows
/// (the master index). Owned by the database, or by whoever made it.
///
/// Threads: name, columns and the layout of a row never change and may be asked for from any
/// thread; so may new rows be made (Record) and rows be freed. The master index and the values of
/// the rows in it are guarded by the table's lock: whoever reads them holds it, and so does whoever
/// inserts or removes. The functions that need the lock do not take it themselves.
///
/// The table is a QObject so that a QPointer can watch it; it emits nothing and may be made and
/// destroyed on any thread. Rows that are still referred to outlive it.
class VEXDESK_CORE_EXPORT Table final : public QObject
{
    Q_OBJECT

public:
    struct Column
    {
        QString name;
        vexdesk::FieldType type = vexdesk::FieldType::Int32;
    };

    /// A value in a row, by reference.
    struct Cell
    {
        vexdesk::FieldType type = vexdesk::FieldType::Int32;
        const void* value = nullptr; ///< of the C++ type that FieldType names
        bool present = false;

        /// The value; the type's default (zero, the empty text) where there is none.
        template <typename T>
        T as() const
        {
            return present ? *static_cast<const T*>(value) : T();
        }
    };

    /// The names must differ. The rows stand in the order of their insertion until setOrder().
    Table(QString name, QList<Column> columns, QObject* parent = nullptr);
    ~Table() override;

    QString name() const;
    QList<Column> columns() const;
    int columnCount() const noexcept { return m_layoutSize; }
    /// The number of the column, -1 when there is none of that name.
    int columnIndex(const QString& name) const;

    /// Gives the rows an order, those that are there too; rows with equal keys stand in the order
    /// of their insertion. Needs the lock. Without an index the rows come as they are inserted.
    void setOrder(std::unique_ptr<MasterIndex> order);
    /// The order; null when the rows stand as they were inserted. Needs the lock where another
    /// thread may still call setOrder().
    const MasterIndex* order() const noexcept;

    /// The rows in their order. Needs the lock for as long as the list or an iterator is used.
    const PartitionList<Record>& masterIndex() const noexcept;

    /// Puts the row at its place in the master index. Needs the lock. Throws Exception for a row of
    /// another table and for the null record. From here on the row is not written to any more.
    void insert(Record row);
    /// Takes out the rows for which `predicate` is true; returns how many they were. Needs the
    /// lock.
    qsizetype removeIf(const std::function<bool(const Record&)>& predicate);
    /// Takes out all rows. Needs the lock.
    void clear();

    /// Exclusive use of the table, for std::lock_guard and its kin. Not recursive.
    void lock() const;
    bool try_lock() const; // NOLINT(readability-identifier-naming)
    void unlock() const;

    /// The value of a row in a column. `row` is the data() of a Record of this table. For a null
    /// row and for a column that the table does not have, a cell without a value.
    Cell dataPtr(const unsigned char* row, int column) const noexcept
    {
        if (!row || column < 0 || column >= m_layoutSize)
            return Cell();
        const vexdesk::ColumnLayout& layout = m_layout[column];
        return {layout.type, row + layout.offset, layout.isPresent(row)};
    }

    /// Whether the row was made for this table.
    bool owns(const Record& row) const noexcept;

    /// Where the column lies in a row. Throws Exception for a column that the table does not have.
    const vexdesk::ColumnLayout& layout(int column) const;

    /// Rows that are referred to, in the master index or outside of it.
    qsizetype liveRowCount() const;

    /// Gives a row's memory back. Record calls it when the last reference goes, on that thread.
    static void freeRow(unsigned char* row) noexcept;

private:
    friend class Record;

    unsigned char* newRow() const;

    struct Private;
    const std::unique_ptr<Private> m_d;
    // Of every column; here for dataPtr(), which a scan calls for each value.
    const vexdesk::ColumnLayout* m_layout;
    int m_layoutSize;
};
