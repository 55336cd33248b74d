// SPDX-License-Identifier: MIT
// Files of deals: every line below the heading becomes a deal, or the first that is none is named.
//
// An input is the file.

#include "target.h"

#include "dealsfile.h"

#include <vexdesk/terminal/database.h>
#include <vexdesk/terminal/deals.h>

#include <QtCore/QStringDecoder>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryFile>

#include <algorithm>
#include <mutex>

namespace {

using fuzz::require;

// By the form of the file alone: a line that is not empty is one deal. What ends the file within a
// character is no line.
qsizetype dealLines(QByteArrayView content)
{
    QStringDecoder decode(QStringDecoder::encodingForData(content).value_or(QStringDecoder::Utf8));
    QStringList lines = QString(decode(content)).split(u'\n');
    lines.removeFirst();
    return std::count_if(lines.cbegin(), lines.cend(), [](const QString& line) {
        return !line.isEmpty() && line != QStringLiteral("\r");
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray content(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QTemporaryFile file;
    require(file.open() && file.write(content) == content.size() && file.flush(),
            "the input can be written");
    vexdesk::Database database;
    const auto loaded = tadata::cli::loadDeals(file.fileName(), {1, 1, 101}, database);
    if (!loaded) {
        require(loaded.message().contains(file.fileName()), "a failure names the file");
        return 0;
    }
    const Table* const table = vexdesk::dealsTable(database);
    const std::lock_guard lock(*table);
    require(static_cast<qsizetype>(table->masterIndex().size()) == dealLines(content),
            "each line is a deal");
    return 0;
}
