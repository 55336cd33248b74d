// SPDX-License-Identifier: MIT
#include <vexdesk/database/masterindex.h>

#include <QtCore/QCoreApplication>

#include <algorithm>

using vexdesk::ColumnLayout;
using vexdesk::FieldType;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(MasterIndex)
};

bool isInteger(const ColumnLayout& column)
{
    return column.type == FieldType::Int32 || column.type == FieldType::Int64;
}

template <typename T>
int compareAs(const ColumnLayout& column, const unsigned char* left, const unsigned char* right)
{
    return vexdesk::ColumnValue<T>::compare(column.value<T>(left), column.value<T>(right));
}

// Both values must be present.
int compareValues(const ColumnLayout& column, const unsigned char* left, const unsigned char* right)
{
    switch (column.type) {
    case FieldType::Int32:
        return compareAs<int>(column, left, right);
    case FieldType::Int64:
        return compareAs<long long>(column, left, right);
    case FieldType::Double:
        return compareAs<double>(column, left, right);
    case FieldType::Decimal:
        return compareAs<decimal>(column, left, right);
    case FieldType::XDecimal:
        return compareAs<xdecimal>(column, left, right);
    case FieldType::DateTime:
        return compareAs<datetime>(column, left, right);
    case FieldType::Code:
    case FieldType::Text:
        break;
    }
    return compareAs<QString>(column, left, right);
}

} // namespace

MasterIndex::MasterIndex(const Table* table, const QList<int>& columns)
    : m_columns(columns)
{
    m_layout.reserve(static_cast<std::size_t>(columns.size()));
    for (const int column : columns)
        m_layout.push_back(table->layout(column));
}

MasterIndex::~MasterIndex() = default;

MasterIndex_Column_Pure::MasterIndex_Column_Pure(const Table* table, const QList<int>& columns)
    : MasterIndex(table, columns)
{
    constexpr auto firstWord = static_cast<quint32>(offsetof(vexdesk::RowHeader, presence));
    const bool quick =
        std::all_of(layout().begin(), layout().end(), [](const ColumnLayout& column) {
            return isInteger(column) && column.presenceOffset == firstWord;
        });
    if (!quick)
        return;
    for (const ColumnLayout& column : layout()) {
        m_integers.push_back({column.offset, column.type == FieldType::Int64});
        m_integerMask |= column.presenceMask;
    }
}

int MasterIndex_Column_Pure::compareAny(const Record& left, const Record& right) const
{
    if (left.isNull() || right.isNull())
        return right.isNull() - left.isNull();
    for (const ColumnLayout& column : layout()) {
        const bool hasLeft = column.isPresent(left.data());
        const bool hasRight = column.isPresent(right.data());
        const int result = hasLeft && hasRight ? compareValues(column, left.data(), right.data())
                                               : hasLeft - hasRight;
        if (result != 0)
            return result;
    }
    return 0;
}

void vexdesk::readLayout(const Table* table, const QList<int>& columns, const TypeCheck* fits,
                         ColumnLayout* layout, int count)
{
    if (!table || columns.size() != count)
        throw Exception(
            Text::tr("Колонок в порядке строк: %1, ожидалось: %2").arg(columns.size()).arg(count));
    for (int number = 0; number < count; ++number) {
        const int column = columns.at(number);
        layout[number] = table->layout(column);
        if (!fits[number](layout[number].type))
            throw Exception(Text::tr("Колонка %1 другого типа: %2")
                                .arg(QString::number(column), typeName(layout[number].type)));
    }
}
