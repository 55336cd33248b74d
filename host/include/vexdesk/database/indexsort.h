// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/database/partitionlist.h>
#include <vexdesk/database/record.h>

/// Binary search over the rows of a table that has an order.
struct IndexSort final
{
    /// The first row that is equal to the key by its first `count` columns (by all of them when
    /// `count` is negative), or the null record.
    ///
    /// `compare(row, key, count)` is negative, zero or positive as the row comes before, is equal
    /// to or comes after the key, and must be of the order in which the rows stand: for a table
    /// with a MasterIndex_Struct, its CompareKey. Needs the table's lock unless the table is one
    /// that never changes.
    template <typename Key, typename Compare>
    static Record findBinary(const PartitionList<Record>& index, const Key& key, int count,
                             const Compare& compare)
    {
        const auto found =
            index.partitionPoint([&](const Record& row) { return compare(row, key, count) < 0; });
        return found != index.end() && compare(*found, key, count) == 0 ? *found : Record::null;
    }
};
