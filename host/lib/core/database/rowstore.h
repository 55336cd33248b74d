// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/database/rowlayout.h>

#include <QtCore/QList>

#include <cstddef>
#include <memory>
#include <mutex>
#include <vector>

namespace vexdesk {

/// The memory of a table's rows: large slabs that are cut into rows of one size, and the rows that
/// were given back. Belongs to the table and to the rows that are referred to, and ends itself with
/// the last of them. Slabs are not given back before that: a table that was full once will be
/// again.
///
/// Any thread.
class RowStore final
{
public:
    /// For a table with columns of these types. The table calls release() once instead of deleting.
    static RowStore* create(const QList<FieldType>& types) { return new RowStore(types); }
    void release() noexcept;

    const std::vector<ColumnLayout>& layout() const noexcept { return m_layout; }

    /// A row with every value absent and zero, referred to once.
    unsigned char* newRow();
    static void freeRow(unsigned char* row) noexcept;
    qsizetype liveRowCount() const;

private:
    explicit RowStore(const QList<FieldType>& types);
    ~RowStore() = default;
    Q_DISABLE_COPY_MOVE(RowStore)

    static RowHeader* header(unsigned char* row) { return reinterpret_cast<RowHeader*>(row); }
    void placeColumns(const QList<FieldType>& types);
    unsigned char* takeMemory();
    void addSlab();
    void constructValues(unsigned char* row) const;
    void destroyValues(unsigned char* row) const noexcept;

    std::vector<ColumnLayout> m_layout;
    std::vector<quint32> m_textOffsets; // of the values that are objects
    std::size_t m_rowSize = sizeof(RowHeader);

    mutable std::mutex m_mutex; // guards everything below
    std::vector<std::unique_ptr<std::byte[]>> m_slabs;
    unsigned char* m_fresh = nullptr; // what is left of the last slab
    unsigned char* m_freshEnd = nullptr;
    std::size_t m_slabRows = 0;          // of the last slab
    unsigned char* m_freeRows = nullptr; // rows that came back, each with a pointer to the next one
    qsizetype m_liveRows = 0;
    bool m_released = false;
};

} // namespace vexdesk
