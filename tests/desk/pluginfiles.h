// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

class QDir;

namespace desktest {

/// The built library of the test plug-in with this name, such as "good".
QString pluginFile(const QString& name);

/// Puts a copy of each named plug-in into the directory; fails the test when it cannot.
void copyPlugins(const QStringList& names, const QDir& directory);

} // namespace desktest
