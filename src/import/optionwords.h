// SPDX-License-Identifier: MIT
#pragma once

#include "importways.h"

#include <vexdesk/outcome.h>

#include <QtCore/QMap>
#include <QtCore/QString>

#include <optional>

/// The values of options that say what a file looks like, as a command line and a profile have
/// them. Any thread.
namespace tadata {

/// "date=0,time=1,..." as ImportDetails::columns has it: each role and each column once, and all
/// roles without which a line is no bar.
vexdesk::Result<QMap<qint32, qint32>> columnsOfWord(const QString& word);

/// The separator that a word such as "comma" stands for, or that it is itself; none for what cannot
/// be one.
std::optional<QString> separatorOfWord(const QString& word);

/// "replace", "merge" or "fill".
QString modeWord(ImportMode mode);

/// What a restore point has as the maker of an import of this mode: its word, but "import" for one
/// that replaces days.
QString pointMaker(ImportMode mode);

} // namespace tadata
