// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/storejob.h>

#include <QtCore/QByteArray>
#include <QtCore/QMap>
#include <QtCore/QString>

#include <memory>

class QDir;

namespace testsupport {

/// Contents of files by their paths below a store's root; a null one removes the file.
using StoreFiles = QMap<QString, QByteArray>;

/// Changes files of a store as a command does it: with the locks of their series and a restore
/// point of this maker, whose id comes back. Fails the test when it cannot.
QString changeStore(const QDir& root, const QString& by, const StoreFiles& files,
                    const QStringList& source = {});
/// The same with a command that has not ended: it is at work as long as the object is there, and
/// then it was killed.
std::unique_ptr<vexdesk::StoreJob> beginCommand(const QDir& root, const QString& by,
                                                const StoreFiles& files,
                                                const QStringList& source = {});
/// One that was killed already.
QString interruptCommand(const QDir& root, const QString& by, const StoreFiles& files);

} // namespace testsupport
