// SPDX-License-Identifier: MIT
// Files of reference data: what is taken keeps the rules of such files, the rest is named.
//
// An input is the file.

#include "target.h"

#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QSet>
#include <QtCore/QTemporaryFile>

namespace {

using fuzz::require;
using vexdesk::ReferenceData;

// Adds a key, which must be a new one.
void addNew(QSet<QString>& keys, const QString& key)
{
    require(!keys.contains(key), "ids and codes are unique within what they belong to");
    keys.insert(key);
}

void checkRules(const ReferenceData& data)
{
    QSet<QString> keys;
    QSet<QString> stocks;
    QSet<QString> boards;
    const QString mark(QChar(1));
    for (const vexdesk::Stock& stock : data.stocks) {
        require(stock.id > 0, "ids are positive");
        addNew(keys, QString::number(stock.id));
        addNew(stocks, stock.code);
    }
    for (const vexdesk::Board& board : data.boards) {
        require(board.id > 0 && stocks.contains(board.stockCode), "a board has its venue");
        addNew(keys, board.stockCode + mark + QString::number(board.id));
        addNew(boards, board.stockCode + mark + board.code);
    }
    for (const vexdesk::Security& security : data.securities) {
        const QString board = security.stockCode + mark + security.boardCode;
        require(security.id > 0 && boards.contains(board), "a security has its board");
        require(security.decimals >= 0 && security.decimals <= ReferenceData::maxDecimals,
                "there are as many decimals as a price can have");
        addNew(keys, board + mark + QString::number(security.id));
        addNew(keys, board + mark + mark + security.code);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QTemporaryFile file;
    const bool isWritten =
        file.open() &&
        file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size)) >= 0 &&
        file.flush();
    require(isWritten, "the input can be written");
    const auto read = ReferenceData::fromFile(file.fileName());
    if (read)
        checkRules(*read);
    else
        require(read.message().contains(file.fileName()), "a failure names the file");
    return 0;
}
