// SPDX-License-Identifier: MIT
// Files of deals: every line below the heading becomes a deal, or the first that is none is named.
//
// An input is the file.

#include "target.h"

#include "dealsfile.h"

#include <vexdesk/terminal/database.h>
#include <vexdesk/terminal/deals.h>

#include <QtCore/QTemporaryFile>

#include <mutex>

namespace {

using fuzz::require;

// By the form of the file alone, byte for byte: a line that is not empty is one deal.
qsizetype dealLines(const QByteArray& content)
{
    QByteArrayList lines = content.split('\n');
    lines.removeFirst();
    qsizetype count = 0;
    for (const QByteArray& line : lines)
        count += line.isEmpty() || line == "\r" ? 0 : 1;
    return count;
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
    // A text in another encoding has other bytes.
    if (!content.contains('\0') && !content.startsWith("\xff\xfe") &&
        !content.startsWith("\xfe\xff"))
        require(static_cast<qsizetype>(table->masterIndex().size()) == dealLines(content),
                "each line is a deal");
    return 0;
}
