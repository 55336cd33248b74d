// SPDX-License-Identifier: MIT
#include "pluginfiles.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtTest/QTest>

namespace desktest {

QString pluginFile(const QString& name)
{
    return QStringLiteral(DESK_PLUGIN_DIR "/%1" DESK_PLUGIN_SUFFIX).arg(name);
}

void copyPlugins(const QStringList& names, const QDir& directory)
{
    for (const QString& name : names) {
        const QString file = pluginFile(name);
        const QString copy = directory.filePath(QFileInfo(file).fileName());
        QVERIFY2(QFile::copy(file, copy), qPrintable(copy));
    }
}

} // namespace desktest
