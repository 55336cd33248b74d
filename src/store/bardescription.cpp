// SPDX-License-Identifier: MIT
#include "bardescription.h"

#include <QtCore/QTextStream>

#include <array>

QTextStream& operator<<(QTextStream& stream, const BarDescription& bar)
{
    std::array<char, vexdesk::maxRecordLine> line;
    return stream << QLatin1String(line.data(), vexdesk::writeRecordLine(line.data(), bar));
}

namespace tadata {

BarDescription barFromRecordLine(QByteArrayView line, const QDate& day)
{
    return {vexdesk::storedBar(line, day), true, QString()};
}

} // namespace tadata
