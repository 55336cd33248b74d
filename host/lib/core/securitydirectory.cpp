// SPDX-License-Identifier: MIT
#include <vexdesk/securitydirectory.h>

#include <vexdesk/database/table.h>

#include "referencetable.h"

const SecurityDirectory& SecurityDirectory::i()
{
    static const SecurityDirectory directory;
    return directory;
}

int SecurityDirectory::decimalsById(int stockId, int boardId, long long securityId) const
{
    return vexdesk::ReferenceTable::current().decimals(stockId, boardId, securityId);
}

long long SecurityDirectory::idByCode(const QString& stockCode, const QString& boardCode,
                                      const QString& securityCode) const
{
    const vexdesk::Security* security =
        vexdesk::ReferenceTable::current().security(stockCode, boardCode, securityCode);
    return security ? security->id : 0;
}

QPointer<Table> SecurityDirectory::table() const
{
    return vexdesk::ReferenceTable::current().securities();
}
