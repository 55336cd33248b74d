// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QStringList>

namespace vexdesk {
struct RestorePointRecord;
}

/// How restore points are spoken of. Any thread.
namespace tadata {

/// What made a point, as its record calls it ("import", "undo" and so on), in the user's words. An
/// unknown one is shown as it is.
QString makerOfPoint(const QString& by);

/// No more of them than so many, and how many others there are: a long list is not read.
QString shortList(const QStringList& texts, qsizetype shown);

/// Whose command was interrupted, and where the user can put it back.
QString interruptionInWords(const vexdesk::RestorePointRecord& point);

/// "512 Б", "1,5 МБ": the numbers as the user's locale has them.
QString sizeText(qint64 bytes);

} // namespace tadata
