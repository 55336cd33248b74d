// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>
#include <QtCore/QDir>
#include <QtCore/QStringList>

namespace tadata {

/// The second files that were kept longer than `storeForDays` days: every file below the root
/// whose name ends in "_1" and begins, up to its first underscore, with a date "yyyyMMdd" more than
/// that many days before `today`. Paths in the order in which they were found. A name that begins
/// with no date counts as one of today.
///
/// Links to directories are not followed; a link to a file counts as a file of its own name. Hidden
/// files and what lies in hidden directories are left alone, and so is what is neither a file nor
/// leads to one. What cannot be read is passed over. Any thread.
///
/// Only names without an extension match. Day files of the store, which end in ".iss", are never
/// among them: they may be the only copy of a user's imported history.
QStringList oldSecondFiles(const QDir& root, const QDate& today, int storeForDays);

/// Removes oldSecondFiles(), once all of them are found. What cannot be removed is passed over, a
/// link goes and not what it leads to, and no directory is ever removed. Any thread; the caller
/// chooses.
void removeOldSecondFiles(const QDir& root, const QDate& today, int storeForDays);

} // namespace tadata
