// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QStringList>

/// The files that were imported last, in the terminal's settings. User-interface thread.
namespace tadata {

constexpr qsizetype mostRecentFiles = 10;

/// The newest first; those that are not there any more too.
QStringList recentFiles();
/// They become the newest, in their order.
void addRecentFiles(const QStringList& files);

} // namespace tadata
