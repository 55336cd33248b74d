// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/database/fieldtype.h>

#include <QtCore/qglobal.h>

#include <atomic>

/// How a row lies in memory. For the classes of the database, which inline what they do for every
/// row of a scan; a plug-in uses Record, Field and Table::dataPtr.
namespace vexdesk {

class RowStore;

/// The start of every row. The words of the presence bits follow the count of references without a
/// gap, and the values follow them.
struct RowHeader
{
    RowStore* store;                 ///< who made the row and takes it back
    std::atomic<quint32> references; ///< Record objects that refer to the row
    quint32 presence;                ///< of the first 32 columns
};

static_assert(sizeof(RowHeader) == 16);

/// Where one column lies in the rows of a table.
struct ColumnLayout
{
    FieldType type = FieldType::Int32;
    quint32 offset = 0;         ///< of the value, in bytes from the row's start
    quint32 presenceOffset = 0; ///< of the quint32 with the presence bit
    quint32 presenceMask = 0;

    bool isPresent(const unsigned char* row) const noexcept
    {
        return (*reinterpret_cast<const quint32*>(row + presenceOffset) & presenceMask) != 0;
    }
    void setPresent(unsigned char* row, bool present) const noexcept
    {
        auto* const word = reinterpret_cast<quint32*>(row + presenceOffset);
        *word = present ? *word | presenceMask : *word & ~presenceMask;
    }
    template <typename T>
    const T& value(const unsigned char* row) const noexcept
    {
        return *reinterpret_cast<const T*>(row + offset);
    }
    template <typename T>
    T& value(unsigned char* row) const noexcept
    {
        return *reinterpret_cast<T*>(row + offset);
    }
};

} // namespace vexdesk
