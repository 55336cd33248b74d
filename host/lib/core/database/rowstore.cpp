// SPDX-License-Identifier: MIT
#include "rowstore.h"

#include <vexdesk/database/datetime.h>
#include <vexdesk/database/xdecimal.h>
#include <vexdesk/decimal.h>

#include <QtCore/QString>

#include <algorithm>
#include <cstring>
#include <new>

namespace vexdesk {

namespace {

// The first slab is small, since most tables are; the later ones grow to about a megabyte.
constexpr std::size_t firstSlabRows = 16;
constexpr std::size_t slabBytes = std::size_t(1) << 20;

constexpr quint32 bitsPerWord = 32;
constexpr std::size_t rowAlignment = 8;

struct Extent
{
    quint32 size = 0;
    quint32 alignment = 0;
};

template <typename T>
constexpr Extent extentOf()
{
    static_assert(alignof(T) <= rowAlignment);
    return {sizeof(T), alignof(T)};
}

Extent extent(FieldType type)
{
    switch (type) {
    case FieldType::Int32:
        return extentOf<qint32>();
    case FieldType::Int64:
        return extentOf<qint64>();
    case FieldType::Double:
        return extentOf<double>();
    case FieldType::Decimal:
        return extentOf<decimal>();
    case FieldType::XDecimal:
        return extentOf<xdecimal>();
    case FieldType::DateTime:
        return extentOf<datetime>();
    case FieldType::Code:
    case FieldType::Text:
        break;
    }
    return extentOf<QString>();
}

bool isText(FieldType type)
{
    return type == FieldType::Code || type == FieldType::Text;
}

constexpr quint32 roundUp(quint32 value, quint32 alignment)
{
    return (value + alignment - 1) / alignment * alignment;
}

} // namespace

RowStore::RowStore(const QList<FieldType>& types)
{
    placeColumns(types);
}

void RowStore::placeColumns(const QList<FieldType>& types)
{
    const auto count = static_cast<quint32>(types.size());
    const quint32 words = std::max<quint32>(1, roundUp(count, bitsPerWord) / bitsPerWord);
    constexpr auto firstWord = static_cast<quint32>(offsetof(RowHeader, presence));
    quint32 end = firstWord + words * static_cast<quint32>(sizeof(quint32));
    for (quint32 number = 0; number < count; ++number) {
        const FieldType type = types.at(number);
        const Extent place = extent(type);
        const quint32 offset = roundUp(end, place.alignment);
        const quint32 word = number / bitsPerWord;
        m_layout.push_back({type, offset, firstWord + word * static_cast<quint32>(sizeof(quint32)),
                            quint32(1) << (number % bitsPerWord)});
        if (isText(type))
            m_textOffsets.push_back(offset);
        end = offset + place.size;
    }
    m_rowSize = roundUp(end, rowAlignment);
}

void RowStore::release() noexcept
{
    bool last = false;
    {
        const std::lock_guard lock(m_mutex);
        m_released = true;
        last = m_liveRows == 0;
    }
    if (last)
        delete this;
}

unsigned char* RowStore::newRow()
{
    unsigned char* const row = takeMemory();
    std::memset(row, 0, m_rowSize);
    new (row) RowHeader{this, {1}, 0};
    constructValues(row);
    return row;
}

void RowStore::freeRow(unsigned char* row) noexcept
{
    RowStore* const store = header(row)->store;
    store->destroyValues(row);
    bool last = false;
    {
        const std::lock_guard lock(store->m_mutex);
        std::memcpy(row, &store->m_freeRows, sizeof store->m_freeRows);
        store->m_freeRows = row;
        --store->m_liveRows;
        last = store->m_released && store->m_liveRows == 0;
    }
    if (last)
        delete store;
}

qsizetype RowStore::liveRowCount() const
{
    const std::lock_guard lock(m_mutex);
    return m_liveRows;
}

unsigned char* RowStore::takeMemory()
{
    const std::lock_guard lock(m_mutex);
    unsigned char* row = m_freeRows;
    if (row) {
        std::memcpy(&m_freeRows, row, sizeof m_freeRows);
    } else {
        if (m_fresh == m_freshEnd)
            addSlab();
        row = m_fresh;
        m_fresh += m_rowSize;
    }
    ++m_liveRows;
    return row;
}

void RowStore::addSlab()
{
    const std::size_t most = std::max<std::size_t>(firstSlabRows, slabBytes / m_rowSize);
    const std::size_t rows = std::clamp(m_slabRows * 4, firstSlabRows, most);
    m_slabs.emplace_back(new std::byte[rows * m_rowSize]);
    m_slabRows = rows;
    m_fresh = reinterpret_cast<unsigned char*>(m_slabs.back().get());
    m_freshEnd = m_fresh + rows * m_rowSize;
}

void RowStore::constructValues(unsigned char* row) const
{
    // All other types are numbers whose zero is made of zero bytes.
    for (const quint32 offset : m_textOffsets)
        new (row + offset) QString();
}

void RowStore::destroyValues(unsigned char* row) const noexcept
{
    for (const quint32 offset : m_textOffsets)
        reinterpret_cast<QString*>(row + offset)->~QString();
}

} // namespace vexdesk
