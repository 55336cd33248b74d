// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// How restore points are spoken of. Any thread.
namespace tadata {

/// What made a point, as its record calls it ("import", "undo" and so on), in the user's words. An
/// unknown one is shown as it is.
QString makerOfPoint(const QString& by);

/// "512 Б", "1,5 МБ": the numbers as the user's locale has them.
QString sizeText(qint64 bytes);

} // namespace tadata
