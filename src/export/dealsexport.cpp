// SPDX-License-Identifier: MIT
#include "dealsexport.h"

#include <vexdesk/database/datetime.h>
#include <vexdesk/database/exception.h>
#include <vexdesk/database/idatabase.h>
#include <vexdesk/database/indexsort.h>
#include <vexdesk/database/masterindex.h>
#include <vexdesk/database/table.h>
#include <vexdesk/icore.h>
#include <vexdesk/securitydirectory.h>

#include <QtCore/QDateTime>

#include <algorithm>
#include <limits>
#include <mutex>

namespace tadata {

namespace {

using vexdesk::FieldType;

// The securities of these two venues are registered under the first of them.
constexpr int registeredVenue = 1;
constexpr int unregisteredVenue = 5;

constexpr qsizetype rowsPerProgress = 1000;

bool isRegistered(const ExportDetails& details)
{
    using Key = MasterKey_Struct<int, int, long long>;
    using CompareKey = MasterIndex_Struct<int, int, long long>::CompareKey;
    const QPointer<Table> securities = SecurityDirectory::i().table();
    if (!securities)
        return false;
    const int venue = details.stockId == unregisteredVenue ? registeredVenue : details.stockId;
    const Key key(venue, details.boardId, details.securityId);
    return !IndexSort::findBinary(securities->masterIndex(), key, -1, CompareKey(securities))
                .isNull();
}

Table* dealsTable()
{
    const ICore* const core = ICore::instance();
    const IDatabase* const database = core ? core->database() : nullptr;
    return database ? database->table(QStringLiteral("all_deals")) : nullptr;
}

[[noreturn]] void throwWrongType()
{
    throw Exception(QStringLiteral("Incorrect type conversion."));
}

qint64 momentOf(const Table::Cell& cell)
{
    if (!cell.present)
        return 0;
    switch (cell.type) {
    case FieldType::DateTime:
        return cell.as<datetime>().msecsSinceEpoch();
    case FieldType::Code:
    case FieldType::Text:
        return datetime(cell.as<QString>()).msecsSinceEpoch();
    default:
        throwWrongType();
    }
}

decimal decimalOf(const Table::Cell& cell)
{
    if (!cell.present)
        return decimal::zero;
    if (cell.type != FieldType::Decimal)
        throwWrongType();
    return cell.as<decimal>();
}

qint64 integerOf(const Table::Cell& cell)
{
    if (!cell.present)
        return 0;
    switch (cell.type) {
    case FieldType::Int32:
        return cell.as<qint32>();
    case FieldType::Int64:
        return cell.as<qint64>();
    default:
        throwWrongType();
    }
}

// Where the values of a deal stand in its row.
class DealColumns final
{
public:
    explicit DealColumns(const Table& deals)
        : m_deals(deals)
        , m_stock(deals.columnIndex(QStringLiteral("stock_id")))
        , m_board(deals.columnIndex(QStringLiteral("board_id")))
        , m_security(deals.columnIndex(QStringLiteral("sec_id")))
        , m_moment(deals.columnIndex(QStringLiteral("moment")))
        , m_price(deals.columnIndex(QStringLiteral("price")))
        , m_quantity(deals.columnIndex(QStringLiteral("quantity")))
        , m_openInterest(deals.columnIndex(QStringLiteral("open_interest")))
        , m_value(deals.columnIndex(QStringLiteral("value")))
    {}

    // The security first: it tells most deals apart.
    QList<int> key() const { return {m_security, m_board, m_stock}; }

    Record keyRow(const ExportDetails& details) const
    {
        Record row(&m_deals);
        row.field(m_stock) = details.stockId;
        row.field(m_board) = details.boardId;
        row.field(m_security) = static_cast<long long>(details.securityId);
        return row;
    }

    qint64 moment(const Record& deal) const { return momentOf(cell(deal, m_moment)); }

    // A deal as a bar of its own.
    BarDescription bar(const Record& deal, const QDate& date, const QTime& time) const
    {
        BarDescription bar;
        bar.valid = true;
        bar.date = date;
        bar.time = time;
        bar.open = bar.high = bar.low = bar.close = decimalOf(cell(deal, m_price));
        bar.volume = integerOf(cell(deal, m_quantity));
        bar.value = decimalOf(cell(deal, m_value));
        using Limits = std::numeric_limits<qint32>;
        bar.openInterest = static_cast<qint32>(std::clamp<qint64>(
            integerOf(cell(deal, m_openInterest)), Limits::min(), Limits::max()));
        return bar;
    }

private:
    Table::Cell cell(const Record& deal, int column) const
    {
        return m_deals.dataPtr(deal.data(), column);
    }

    const Table& m_deals;
    int m_stock;
    int m_board;
    int m_security;
    int m_moment;
    int m_price;
    int m_quantity;
    int m_openInterest;
    int m_value;
};

// The moments of a day by the venues' clocks.
class DayOfMoments final
{
public:
    explicit DayOfMoments(const QDate& day)
        : m_begin(QDateTime(day, QTime(0, 0), Qt::UTC).toMSecsSinceEpoch())
    {}

    bool contains(qint64 moment) const { return moment >= m_begin && moment < m_begin + length; }
    QTime time(qint64 moment) const
    {
        return QTime::fromMSecsSinceStartOfDay(static_cast<int>(moment - m_begin));
    }

private:
    static constexpr qint64 length = qint64(24) * 60 * 60 * 1000;

    qint64 m_begin;
};

} // namespace

void exportDeals(const ExportDetails& details, const QDate& today, const DealsProgress& progress,
                 BarExporter& exporter)
{
    Table* const deals = isRegistered(details) ? dealsTable() : nullptr;
    if (!deals)
        return;
    const DealColumns columns(*deals);
    const Record key = columns.keyRow(details);
    const MasterIndex_Column_Pure filter(deals, columns.key());
    const DayOfMoments day(today);
    const int rest = 100 - progress.start;
    BarDescription target;
    {
        const std::lock_guard lock(*deals);
        const auto& rows = deals->masterIndex();
        const auto count = static_cast<double>(rows.count());
        qsizetype done = 0;
        for (const Record& deal : rows) {
            if (filter.compare(deal, key) == 0) {
                const qint64 moment = columns.moment(deal);
                if (day.contains(moment)) {
                    exporter.exportBar(columns.bar(deal, today, day.time(moment)), target);
                }
            }
            if (++done % rowsPerProgress == 0) {
                progress.show(
                    static_cast<int>(static_cast<double>(done) / count * rest + progress.start));
            }
        }
    }
    if (target.valid)
        exporter.writeBar(target);
}

} // namespace tadata
