// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace tadata::cli {

/// The word among the known ones that a mistyped one was probably to be; null for none. Capitals
/// and dashes before it do not matter, and its end may be missing.
QString nearestWord(const QString& word, const QStringList& known);

/// "; похоже на %1" with the prefix and the nearest word, as the end of a message; empty for none.
QString suggestion(const QString& word, const QStringList& known,
                   const QString& prefix = QString());

} // namespace tadata::cli
