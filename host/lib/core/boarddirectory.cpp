// SPDX-License-Identifier: MIT
#include <vexdesk/boarddirectory.h>

#include "referencetable.h"

const BoardDirectory& BoardDirectory::i()
{
    static const BoardDirectory directory;
    return directory;
}

int BoardDirectory::idByCode(const QString& stockCode, const QString& boardCode) const
{
    const vexdesk::Board* board = vexdesk::ReferenceTable::current().board(stockCode, boardCode);
    return board ? board->id : 0;
}

QString BoardDirectory::nameByCode(const QString& stockCode, const QString& boardCode) const
{
    const vexdesk::Board* board = vexdesk::ReferenceTable::current().board(stockCode, boardCode);
    return board ? board->name : QString();
}
