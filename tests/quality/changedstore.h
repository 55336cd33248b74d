// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QMap>
#include <QtCore/QString>

class QDir;

namespace testsupport {

/// Contents of files by their paths below a store's root; a null one removes the file.
using StoreFiles = QMap<QString, QByteArray>;

/// Changes files of a store as a command does it: with the locks of their series and a restore
/// point of this maker, whose id comes back. Fails the test when it cannot.
QString changeStore(const QDir& root, const QString& by, const StoreFiles& files,
                    const QStringList& source = {});

} // namespace testsupport
