// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/database/datetime.h>
#include <vexdesk/database/record.h>
#include <vexdesk/database/table.h>
#include <vexdesk/decimal.h>
#include <vexdesk/export.h>

#include <QtCore/QList>
#include <QtCore/QString>

#include <memory>
#include <optional>

/// The table "all_deals": the deals of the market as they arrive. Its schema is known here and
/// nowhere else.
///
/// | column        | type      |                                                              |
/// |---------------|-----------|--------------------------------------------------------------|
/// | stock_id      | int32     | the venue, by the id of its section                          |
/// | board_id      | int32     |                                                              |
/// | sec_id        | int64     |                                                              |
/// | moment        | date-time | the venue's wall clock as if it were UTC                     |
/// | price         | decimal   |                                                              |
/// | quantity      | int64     |                                                              |
/// | open_interest | int64     | absent where the venue has none                              |
/// | value         | decimal   | price times quantity, in money                               |
///
/// The rows stand in the order of their arrival.
namespace vexdesk {

class Database;

/// One deal. What is absent here is absent in the row.
struct Deal
{
    std::optional<int> stockId;
    std::optional<int> boardId;
    std::optional<long long> securityId;
    std::optional<datetime> moment;
    std::optional<decimal> price;
    std::optional<long long> quantity;
    std::optional<long long> openInterest;
    std::optional<decimal> value;

    friend bool operator==(const Deal&, const Deal&) = default;
};

/// "all_deals".
VEXDESK_CORE_EXPORT QString dealsTableName();
VEXDESK_CORE_EXPORT QList<Table::Column> dealsColumns();

/// The database's table of deals; made when it is not there yet. Any thread.
VEXDESK_CORE_EXPORT Table* dealsTable(Database& database);

/// Makes rows of a table of deals. The table's columns are found by name: one that the table does
/// not have is left out, and a value is converted to the column's type as Field does it.
class VEXDESK_CORE_EXPORT DealWriter final
{
public:
    /// `table` must outlive the writer.
    explicit DealWriter(Table* table);
    ~DealWriter();
    Q_DISABLE_COPY_MOVE(DealWriter)

    Table* table() const noexcept;

    /// A new row, not in the table yet: for Table::insert and RawQueue::post. Any thread. Throws
    /// Exception when a value cannot be converted to its column's type.
    Record row(const Deal& deal) const;

private:
    struct Private;
    const std::unique_ptr<const Private> m_d;
};

} // namespace vexdesk
