// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>
#include <QtCore/QDir>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <atomic>
#include <vector>

namespace tadata {

/// What a store holds of a series, and a number that is another one when a day file of it has
/// changed, come or gone.
struct SeriesStamp
{
    QString series; ///< "VENUE/BOARD/SECURITY"
    QString board;  ///< "VENUE/BOARD"
    QString path;
    std::vector<QDate> minuteDays; ///< ascending
    std::vector<QDate> secondDays;
    size_t stamp = 0;
};

/// A store as it is, without a look into its files.
struct StoreStamps
{
    std::vector<SeriesStamp> series; ///< in the order of code points
    QStringList unreadable;          ///< directories that could not be listed to their end
    QStringList lostLinks;           ///< that lead nowhere, but for days of the series
};

/// Any thread. Once `stop` is set it ends soon with something that is not all.
StoreStamps storeStamps(const QDir& root, const std::atomic<bool>& stop);

} // namespace tadata
