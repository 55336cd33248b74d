// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/database/field.h>
#include <vexdesk/database/rowlayout.h>
#include <vexdesk/export.h>

#include <utility>

class Table;

/// A reference to a row of a table. The row lives until its last Record goes; the master index of
/// the table holds one for each of its rows. A row may outlive its table: the memory in which the
/// rows of a table lie is freed when the table and the last Record are gone.
///
/// One pointer; a copy counts a reference. Copies of one Record may be made, used and destroyed on
/// any threads. What the row holds is guarded by the table's lock, see Field.
class VEXDESK_CORE_EXPORT Record final
{
public:
    /// Refers to no row.
    static const Record null;

    constexpr Record() noexcept = default;
    /// A new row of the table with every value absent. It is not in the master index until it is
    /// inserted. Any thread, without the table's lock. Without a table, the null record.
    explicit Record(const Table* table);

    Record(const Record& other) noexcept
        : m_row(other.m_row)
    {
        if (m_row)
            header()->references.fetch_add(1, std::memory_order_relaxed);
    }
    Record(Record&& other) noexcept
        : m_row(std::exchange(other.m_row, nullptr))
    {}
    Record& operator=(const Record& other) noexcept
    {
        Record(other).swap(*this);
        return *this;
    }
    Record& operator=(Record&& other) noexcept
    {
        Record(std::move(other)).swap(*this);
        return *this;
    }
    ~Record()
    {
        if (m_row && header()->references.fetch_sub(1, std::memory_order_acq_rel) == 1)
            free();
    }

    void swap(Record& other) noexcept { std::swap(m_row, other.m_row); }

    bool isNull() const noexcept { return !m_row; }
    /// The row itself, for Table::dataPtr; null for the null record.
    unsigned char* data() const noexcept { return m_row; }

    /// The value in a column, to read or to assign to. Throws Exception for the null record and for
    /// a column that the table does not have.
    Field field(int column) const;

    /// Whether both refer to the same row.
    friend bool operator==(const Record& left, const Record& right) noexcept
    {
        return left.m_row == right.m_row;
    }

private:
    vexdesk::RowHeader* header() const noexcept
    {
        return reinterpret_cast<vexdesk::RowHeader*>(m_row);
    }
    void free() noexcept;

    unsigned char* m_row = nullptr;
};

Q_DECLARE_TYPEINFO(Record, Q_RELOCATABLE_TYPE);
