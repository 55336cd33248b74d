// SPDX-License-Identifier: MIT
#include "store/bardescription.h"

#include "store/recordline.h"
#include "store/textlines.h"

#include <QtCore/QTextStream>

QTextStream& operator<<(QTextStream& stream, const BarDescription& bar)
{
    tadata::TextLines line;
    tadata::appendRecordLine(line, bar);
    return stream << line.text();
}
