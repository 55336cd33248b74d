// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QMap>
#include <QtCore/QString>

namespace testsupport {

/// Writes a file and the directories above it; fails the test when it cannot.
void writeFile(const QString& path, const QByteArray& content);

/// The whole content of a file. A file that cannot be read gives a null array, an empty one an
/// empty array that is not null.
QByteArray readFile(const QString& path);

/// The data directory of a test program, "user" beside it; it need not exist.
QDir userFolder();
/// The same. Fails the test where an earlier one has left it behind, and removes it.
QDir newUserFolder();

/// Every file below a directory (hidden ones too): path relative to it, and content.
QMap<QString, QByteArray> readTree(const QDir& root);

} // namespace testsupport
