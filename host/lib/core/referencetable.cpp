// SPDX-License-Identifier: MIT
#include "referencetable.h"

#include "securityregister.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

namespace vexdesk {

namespace {

std::atomic<const ReferenceTable*> published = nullptr;

// Readers hold no lock, so a replaced table may still be in use: it is kept.
const ReferenceTable* keep(std::unique_ptr<ReferenceTable> table)
{
    static std::mutex mutex;
    static std::vector<std::unique_ptr<ReferenceTable>> tables;
    const std::lock_guard lock(mutex);
    return tables.emplace_back(std::move(table)).get();
}

} // namespace

ReferenceTable::ReferenceTable(ReferenceData data)
    : m_data(std::move(data))
{
    for (qsizetype i = 0; i < m_data.stocks.size(); ++i)
        m_stocks.insert(m_data.stocks.at(i).code, i);
    for (qsizetype i = 0; i < m_data.boards.size(); ++i) {
        const Board& board = m_data.boards.at(i);
        m_boards.insert({board.stockCode, board.code}, i);
    }
    for (qsizetype i = 0; i < m_data.securities.size(); ++i) {
        const Security& entry = m_data.securities.at(i);
        m_securities.insert({entry.stockCode, {entry.boardCode, entry.code}}, i);
        const Stock* stock = this->stock(entry.stockCode);
        const Board* board = this->board(entry.stockCode, entry.boardCode);
        if (stock && board)
            m_decimals.insert({stock->id, board->id, entry.id}, entry.decimals);
    }
}

ReferenceTable::~ReferenceTable() = default;

const ReferenceTable& ReferenceTable::current()
{
    if (const ReferenceTable* table = published.load(std::memory_order_acquire))
        return *table;
    static const ReferenceTable* const demonstration =
        keep(std::make_unique<ReferenceTable>(ReferenceData::demonstration()));
    const ReferenceTable* expected = nullptr;
    published.compare_exchange_strong(expected, demonstration);
    return *published.load(std::memory_order_acquire);
}

void ReferenceTable::publish(ReferenceData data)
{
    published.store(keep(std::make_unique<ReferenceTable>(std::move(data))),
                    std::memory_order_release);
}

const Stock* ReferenceTable::stock(const QString& code) const
{
    const auto found = m_stocks.constFind(code);
    return found == m_stocks.cend() ? nullptr : &m_data.stocks.at(*found);
}

const Board* ReferenceTable::board(const QString& stockCode, const QString& boardCode) const
{
    const auto found = m_boards.constFind({stockCode, boardCode});
    return found == m_boards.cend() ? nullptr : &m_data.boards.at(*found);
}

const Security* ReferenceTable::security(const QString& stockCode, const QString& boardCode,
                                         const QString& securityCode) const
{
    const auto found = m_securities.constFind({stockCode, {boardCode, securityCode}});
    return found == m_securities.cend() ? nullptr : &m_data.securities.at(*found);
}

int ReferenceTable::decimals(int stockId, int boardId, qint64 securityId) const
{
    return m_decimals.value({stockId, boardId, securityId}, 0);
}

Table* ReferenceTable::securities() const
{
    std::call_once(m_registerMade, [this] { m_register = makeSecurityRegister(*this); });
    return m_register.get();
}

} // namespace vexdesk
