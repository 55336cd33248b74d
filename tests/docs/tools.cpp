// SPDX-License-Identifier: MIT
#include "tools.h"

#include "cli/tadatarunner.h"

#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>

namespace testsupport {

QString pythonWith(const QString& modules)
{
    for (const char* program : {"python3", "/usr/bin/python3"}) {
        const QString found = QStandardPaths::findExecutable(QLatin1String(program));
        if (!found.isEmpty() &&
            runProgram(found, {QStringLiteral("-c"), QStringLiteral("import ") + modules})
                    .exitCode == 0)
            return found;
    }
    return QString();
}

QString nodeWithDuckdb()
{
    constexpr char variable[] = "TADATA_NODE_MODULES";
    if (!qEnvironmentVariableIsSet(variable))
        qputenv(variable, SOURCE_FOLDER "/build/peers/node_modules");
    const bool isInstalled = QFileInfo::exists(qEnvironmentVariable(variable));
    return isInstalled ? QStandardPaths::findExecutable(QStringLiteral("node")) : QString();
}

} // namespace testsupport
