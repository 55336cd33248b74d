#pragma once

#include <QtCore/QDate>
#include <QtCore/QDir>

namespace tadata {

/// Removes second files that were kept longer than `storeForDays` days: every file below the root
/// whose name ends in "_1" and begins with a date more than that many days before `today`.
/// Links to directories are not followed; hidden files and directories are left alone. What cannot
/// be read or removed is passed over. Any thread; the caller chooses.
///
/// Only names without an extension match. Day files of the store, which end in ".iss", are never
/// touched: they may be the only copy of a user's imported history.
void removeOldSecondFiles(const QDir& root, const QDate& today, int storeForDays);

} // namespace tadata
