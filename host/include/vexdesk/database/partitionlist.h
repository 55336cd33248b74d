// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/qglobal.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

/// A long list in pieces of limited length: an insertion anywhere moves the items of one piece and
/// not those of the whole list.
///
/// A plain container: guarded by whatever guards its owner. An insertion or a removal ends the
/// life of all iterators and references.
template <typename T>
class PartitionList final
{
    using Partition = std::vector<T>;

public:
    /// The items that a piece holds at most.
    static constexpr std::size_t partitionSize = 512;

    class const_iterator final
    {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = T;
        using difference_type = std::ptrdiff_t;
        using pointer = const T*;
        using reference = const T&;

        const_iterator() noexcept = default;

        reference operator*() const noexcept { return *m_item; }
        pointer operator->() const noexcept { return m_item; }
        const_iterator& operator++() noexcept
        {
            if (++m_item == m_itemsEnd)
                enter(m_partition + 1);
            return *this;
        }
        const_iterator operator++(int) noexcept
        {
            const_iterator before = *this;
            ++*this;
            return before;
        }
        friend bool operator==(const const_iterator& left, const const_iterator& right) noexcept
        {
            return left.m_item == right.m_item;
        }

    private:
        friend class PartitionList;

        const_iterator(const Partition* partition, const Partition* partitionsEnd) noexcept
            : m_partitionsEnd(partitionsEnd)
        {
            enter(partition);
        }

        // No piece is empty, so there is an item wherever there is a piece.
        void enter(const Partition* partition) noexcept
        {
            m_partition = partition;
            const bool atEnd = partition == m_partitionsEnd;
            m_item = atEnd ? nullptr : partition->data();
            m_itemsEnd = atEnd ? nullptr : partition->data() + partition->size();
        }

        const T* m_item = nullptr; // null at the end of the list
        const T* m_itemsEnd = nullptr;
        const Partition* m_partition = nullptr;
        const Partition* m_partitionsEnd = nullptr;
    };

    const_iterator begin() const noexcept { return {firstPartition(), lastPartition()}; }
    const_iterator end() const noexcept { return {lastPartition(), lastPartition()}; }

    qsizetype count() const noexcept { return m_count; }
    qsizetype size() const noexcept { return m_count; }
    bool isEmpty() const noexcept { return m_count == 0; }

    /// The first item for which `isBefore` is false, or end(). In the list, all items for which it
    /// is true must stand before all others. Takes a number of calls that grows with the logarithm
    /// of the count.
    template <typename Predicate>
    const_iterator partitionPoint(Predicate isBefore) const
    {
        const Partition* const partition = findPartition(isBefore);
        const_iterator found(partition, lastPartition());
        if (found != end())
            found.m_item = std::partition_point(found.m_item, found.m_itemsEnd, isBefore);
        return found;
    }

    void append(T item)
    {
        if (m_partitions.empty() || m_partitions.back().size() == partitionSize)
            addPartition(m_partitions.size());
        m_partitions.back().push_back(std::move(item));
        ++m_count;
    }

    /// Inserts behind the items for which `isBefore` is true, see partitionPoint().
    template <typename Predicate>
    void insert(T item, Predicate isBefore)
    {
        const auto number = static_cast<std::size_t>(findPartition(isBefore) - firstPartition());
        if (number == m_partitions.size()) {
            append(std::move(item));
            return;
        }
        Partition* partition = &m_partitions[number];
        if (partition->size() == partitionSize) {
            split(number);
            partition = &m_partitions[number];
            if (isBefore(partition->back()))
                ++partition;
        }
        partition->insert(std::partition_point(partition->begin(), partition->end(), isBefore),
                          std::move(item));
        ++m_count;
    }

    /// Removes the items for which `predicate` is true and returns how many they were.
    template <typename Predicate>
    qsizetype removeIf(Predicate predicate)
    {
        qsizetype removed = 0;
        for (Partition& partition : m_partitions)
            removed += static_cast<qsizetype>(std::erase_if(partition, predicate));
        std::erase_if(m_partitions, [](const Partition& partition) { return partition.empty(); });
        m_count -= removed;
        return removed;
    }

    void clear() noexcept
    {
        m_partitions.clear();
        m_count = 0;
    }

private:
    const Partition* firstPartition() const noexcept { return m_partitions.data(); }
    const Partition* lastPartition() const noexcept
    {
        return m_partitions.data() + m_partitions.size();
    }

    // The piece that holds the partition point; past the last one when it is the list's end.
    template <typename Predicate>
    const Partition* findPartition(Predicate isBefore) const
    {
        return std::partition_point(
            firstPartition(), lastPartition(),
            [&isBefore](const Partition& partition) { return isBefore(partition.back()); });
    }

    Partition& addPartition(std::size_t number)
    {
        Partition fresh;
        // A short list takes no more memory than it needs.
        if (number > 0)
            fresh.reserve(partitionSize);
        return *m_partitions.insert(m_partitions.begin() + static_cast<std::ptrdiff_t>(number),
                                    std::move(fresh));
    }

    void split(std::size_t number)
    {
        Partition& upper = addPartition(number + 1);
        Partition& lower = m_partitions[number];
        const auto middle = lower.begin() + partitionSize / 2;
        upper.assign(std::make_move_iterator(middle), std::make_move_iterator(lower.end()));
        lower.erase(middle, lower.end());
    }

    std::vector<Partition> m_partitions; // none of them empty
    qsizetype m_count = 0;
};
