// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QDir>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// Where bars are stored. Below the store's root, which is the directory "tadata" of the terminal's
/// data directory, each series has a directory "stock/board/security", and in it one text file for
/// each day and timeframe (<vexdesk/history/dayfilenames.h>). There is no index: the file system is
/// the database. Any thread.
namespace vexdesk {

/// The store's root, made when it is missing. Where it cannot be made, because something else has
/// its name or a link of its name leads nowhere, the directory that it should have been: it does
/// not exist, so nothing is found in it, and nothing in any other place is taken for the store.
VEXDESK_HISTORY_EXPORT QDir storeRoot();

/// Where the terminal's store is or would be: nothing is made.
VEXDESK_HISTORY_EXPORT QDir storePlace();

/// The directory of a series below a store's root. Nothing is looked for or made.
VEXDESK_HISTORY_EXPORT QString seriesPath(const QDir& root, const QString& stockCode,
                                          const QString& boardCode, const QString& securityName);

/// The directory of a series in the terminal's store, made when it is missing. Where it cannot be
/// made, the directory that it should have been: opening a file in it then fails by name, and
/// nothing is written to any other place.
VEXDESK_HISTORY_EXPORT QDir makeSeriesDir(const QString& stockCode, const QString& boardCode,
                                          const QString& securityName);

/// The names of the directories in a directory of the store, in no order and without hidden ones.
VEXDESK_HISTORY_EXPORT QStringList subdirectories(const QString& path);

/// The paths of a store's directories, each list in no order.
struct StoreDirectories
{
    QStringList stocks;
    QStringList boards;
    QStringList series;     ///< with bars or without
    QStringList unreadable; ///< whose directories are missing in these lists
};

/// Hidden ones too, and those behind links.
VEXDESK_HISTORY_EXPORT StoreDirectories storeDirectories(const QDir& root);

} // namespace vexdesk
