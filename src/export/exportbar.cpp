// SPDX-License-Identifier: MIT
#include "exportbar.h"

#include "barexporter.h"
#include "exportdetails.h"

#include <QtCore/QStringList>
#include <QtCore/QTextStream>

namespace {

tadata::LineSink into(QTextStream& out)
{
    return [&out](QByteArrayView lines) { out << QString::fromUtf8(lines); };
}

} // namespace

void exportBar(const BarDescription& source, BarDescription& target, const ExportDetails& details,
               QTextStream& out)
{
    tadata::BarExporter(details, into(out)).exportBar(source, target);
}

void writeBar(const BarDescription& bar, QTextStream& out, const ExportDetails& details)
{
    tadata::BarExporter(details, into(out)).writeBar(bar);
}

void writeHeader(QTextStream& out, const ExportDetails& details)
{
    const QStringList names = details.lineFormat.split(u',');
    out << u'<' << names.join(u'>' + details.separator + u'<') << QStringLiteral(">\n");
}
