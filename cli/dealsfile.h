// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/outcome.h>

#include <QtCore/QString>

namespace vexdesk {
class Database;
}

namespace tadata::cli {

struct SeriesIds
{
    int stock = 0;
    int board = 0;
    long long security = 0;
};

/// Reads deals of one series from a text file into the database's table of deals, in the order of
/// the lines:
///
///     moment_ms_utc,price,quantity,open_interest,value
///     1705312800000,120.05,3,,360.15
///
/// The first line is a heading. The last one or two columns may be missing, and an empty field is
/// an absent value. A failure says what is wrong and in which line.
vexdesk::Outcome loadDeals(const QString& path, const SeriesIds& series,
                           vexdesk::Database& database);

} // namespace tadata::cli
