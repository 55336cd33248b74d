// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/database/record.h>
#include <vexdesk/database/table.h>
#include <vexdesk/export.h>

#include <QtCore/QList>

#include <array>
#include <tuple>
#include <utility>
#include <vector>

/// An order of the rows of a table: a comparison of two of them on some of their columns.
///
/// Integers, doubles, decimals and date-times compare by size (a NaN below every number), texts
/// by their UTF-16 code units. An absent value comes before every present one, and two absent
/// values are equal. The null record comes before every row.
///
/// An index keeps what it needs of the table's layout and may outlive the table. It is never
/// changed: any thread may use it, with the table's lock for the rows' sake.
class VEXDESK_CORE_EXPORT MasterIndex
{
public:
    virtual ~MasterIndex();

    /// Negative, zero or positive as `left` comes before, is equal to or comes after `right`. Both
    /// must be rows of the table.
    virtual int compare(const Record& left, const Record& right) const = 0;

    /// The columns that are compared, in that order.
    QList<int> columns() const { return m_columns; }

protected:
    /// Throws Exception for a column that the table does not have.
    MasterIndex(const Table* table, const QList<int>& columns);

    const std::vector<vexdesk::ColumnLayout>& layout() const noexcept { return m_layout; }

private:
    Q_DISABLE_COPY_MOVE(MasterIndex)

    QList<int> m_columns;
    std::vector<vexdesk::ColumnLayout> m_layout;
};

/// Compares columns of any types, which it finds out from the table.
class VEXDESK_CORE_EXPORT MasterIndex_Column_Pure final : public MasterIndex
{
public:
    /// Throws Exception for a column that the table does not have.
    MasterIndex_Column_Pure(const Table* table, const QList<int>& columns);

    int compare(const Record& left, const Record& right) const override
    {
        return bothPresent(left, right) ? compareIntegers(left.data(), right.data())
                                        : compareAny(left, right);
    }

private:
    // Most comparisons of a scan are of integer columns that are present: no call, no switch.
    bool bothPresent(const Record& left, const Record& right) const noexcept
    {
        return m_integerMask != 0 && left.data() && right.data() &&
               (presence(left) & presence(right) & m_integerMask) == m_integerMask;
    }
    int compareIntegers(const unsigned char* left, const unsigned char* right) const noexcept
    {
        for (const Integer& column : m_integers) {
            const qint64 a = column.read(left);
            const qint64 b = column.read(right);
            if (a != b)
                return a < b ? -1 : 1;
        }
        return 0;
    }
    int compareAny(const Record& left, const Record& right) const;

    static quint32 presence(const Record& row) noexcept
    {
        return reinterpret_cast<const vexdesk::RowHeader*>(row.data())->presence;
    }

    struct Integer
    {
        quint32 offset = 0;
        bool wide = false;

        qint64 read(const unsigned char* row) const noexcept
        {
            return wide ? *reinterpret_cast<const qint64*>(row + offset)
                        : *reinterpret_cast<const qint32*>(row + offset);
        }
    };

    std::vector<Integer> m_integers; // all columns, where all are integers
    quint32 m_integerMask = 0;       // their presence bits, 0 where the quick way is closed
};

namespace vexdesk {

/// How a C++ type is held in a column and compared.
template <typename T>
struct ColumnValue;

template <typename T, FieldType Type>
struct OrderedColumnValue
{
    static constexpr bool fits(FieldType type) noexcept { return type == Type; }
    static int compare(const T& left, const T& right) noexcept
    {
        return (left > right) - (left < right);
    }
};

template <>
struct ColumnValue<int> : OrderedColumnValue<int, FieldType::Int32>
{};
template <>
struct ColumnValue<long long> : OrderedColumnValue<long long, FieldType::Int64>
{};
template <>
struct ColumnValue<datetime> : OrderedColumnValue<datetime, FieldType::DateTime>
{};
template <>
struct ColumnValue<decimal> : OrderedColumnValue<decimal, FieldType::Decimal>
{
    static int compare(const decimal& left, const decimal& right) noexcept
    {
        return left.compare(right);
    }
};
template <>
struct ColumnValue<xdecimal> : OrderedColumnValue<xdecimal, FieldType::XDecimal>
{
    static int compare(const xdecimal& left, const xdecimal& right) noexcept
    {
        return left.compare(right);
    }
};
template <>
struct ColumnValue<double> : OrderedColumnValue<double, FieldType::Double>
{
    static int compare(double left, double right) noexcept
    {
        if (left != left || right != right)
            return (left == left) - (right == right);
        return (left > right) - (left < right);
    }
};
template <>
struct ColumnValue<QString>
{
    static constexpr bool fits(FieldType type) noexcept
    {
        return type == FieldType::Code || type == FieldType::Text;
    }
    static int compare(const QString& left, const QString& right) noexcept
    {
        return left.compare(right);
    }
};

using TypeCheck = bool (*)(FieldType);

/// Reads where `count` columns lie. Throws Exception unless the table is there, `columns` are as
/// many, and each of them is of a type for which its entry in `fits` is true.
VEXDESK_CORE_EXPORT void readLayout(const Table* table, const QList<int>& columns,
                                    const TypeCheck* fits, ColumnLayout* layout, int count);

} // namespace vexdesk

/// The values by which a row is sought in a MasterIndex_Struct.
template <typename... Types>
struct MasterKey_Struct final
{
    explicit MasterKey_Struct(Types... parts)
        : values(std::move(parts)...)
    {}

    std::tuple<Types...> values;
};

/// Compares columns whose C++ types are known when the program is compiled: int, long long, double,
/// decimal, xdecimal, QString (for both types of text) and datetime.
template <typename... Types>
class MasterIndex_Struct final : public MasterIndex
{
    using Layout = std::array<vexdesk::ColumnLayout, sizeof...(Types)>;

public:
    /// Throws Exception when the columns are not as many and of these types.
    MasterIndex_Struct(const Table* table, const QList<int>& columns)
        : MasterIndex(table, columns)
        , m_columns(checked(table, columns))
    {}

    int compare(const Record& left, const Record& right) const override
    {
        if (left.isNull() || right.isNull())
            return right.isNull() - left.isNull();
        return compareRows(left.data(), right.data(), std::index_sequence_for<Types...>());
    }

    /// Compares a row of a table that has such an index with a key.
    class CompareKey final
    {
    public:
        /// Throws Exception when the table has no order by columns of these types.
        explicit CompareKey(const Table* table)
            : m_columns(checked(table,
                                table && table->order() ? table->order()->columns() : QList<int>()))
        {}

        /// Negative, zero or positive as the row comes before, is equal to or comes after the key,
        /// by the first `count` columns; by all of them when `count` is negative.
        int operator()(const Record& row, const MasterKey_Struct<Types...>& key,
                       int count = -1) const
        {
            return compareKey(row.data(), key, count, std::index_sequence_for<Types...>());
        }

    private:
        template <std::size_t... Numbers>
        int compareKey(const unsigned char* row, const MasterKey_Struct<Types...>& key, int count,
                       std::index_sequence<Numbers...>) const
        {
            int result = 0;
            (void)(((count < 0 || static_cast<int>(Numbers) < count) &&
                    (result = compareOne(m_columns[Numbers], row, std::get<Numbers>(key.values))) ==
                        0) &&
                   ...);
            return result;
        }

        template <typename T>
        static int compareOne(const vexdesk::ColumnLayout& column, const unsigned char* row,
                              const T& value)
        {
            return column.isPresent(row)
                       ? vexdesk::ColumnValue<T>::compare(column.value<T>(row), value)
                       : -1;
        }

        Layout m_columns;
    };

private:
    static Layout checked(const Table* table, const QList<int>& columns)
    {
        constexpr std::array<vexdesk::TypeCheck, sizeof...(Types)> fits{
            &vexdesk::ColumnValue<Types>::fits...};
        Layout layout;
        vexdesk::readLayout(table, columns, fits.data(), layout.data(),
                            static_cast<int>(layout.size()));
        return layout;
    }

    template <std::size_t... Numbers>
    int compareRows(const unsigned char* left, const unsigned char* right,
                    std::index_sequence<Numbers...>) const
    {
        int result = 0;
        (void)(((result = compareOne<Types>(m_columns[Numbers], left, right)) == 0) && ...);
        return result;
    }

    template <typename T>
    static int compareOne(const vexdesk::ColumnLayout& column, const unsigned char* left,
                          const unsigned char* right)
    {
        const bool hasLeft = column.isPresent(left);
        const bool hasRight = column.isPresent(right);
        return hasLeft && hasRight
                   ? vexdesk::ColumnValue<T>::compare(column.value<T>(left), column.value<T>(right))
                   : hasLeft - hasRight;
    }

    Layout m_columns;
};
