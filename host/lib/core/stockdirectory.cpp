// SPDX-License-Identifier: MIT
#include <vexdesk/stockdirectory.h>

#include "referencetable.h"

#include <mutex>

const StockDirectory& StockDirectory::i()
{
    static const StockDirectory directory;
    return directory;
}

int StockDirectory::idByCode(const QString& code) const
{
    if (const vexdesk::Stock* stock = vexdesk::ReferenceTable::current().stock(code))
        return stock->id;
    static std::mutex mutex;
    static QHash<QString, int> unknownCodes;
    const std::lock_guard lock(mutex);
    int& id = unknownCodes[code];
    if (id == 0)
        id = -static_cast<int>(unknownCodes.size());
    return id;
}

QString StockDirectory::nameByCode(const QString& code) const
{
    const vexdesk::Stock* stock = vexdesk::ReferenceTable::current().stock(code);
    return stock ? stock->name : QString();
}
