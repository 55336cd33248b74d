// SPDX-License-Identifier: MIT
#include "bardescription.h"

#include "recordline.h"
#include "textlines.h"

#include <QtCore/QTextStream>

QTextStream& operator<<(QTextStream& stream, const BarDescription& bar)
{
    tadata::TextLines line;
    tadata::appendRecordLine(line, bar);
    return stream << line.text();
}
