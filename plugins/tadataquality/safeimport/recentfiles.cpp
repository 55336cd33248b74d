// SPDX-License-Identifier: MIT
#include "recentfiles.h"

#include <vexdesk/appsettings.h>

namespace tadata {

namespace {

constexpr QLatin1String group("TADataQuality/SafeImport");
const QString key = QStringLiteral("recent");

} // namespace

QStringList recentFiles()
{
    return AppSettings(group).value(key).toStringList().mid(0, mostRecentFiles);
}

void addRecentFiles(const QStringList& files)
{
    QStringList recent = files + recentFiles();
    recent.removeDuplicates();
    AppSettings(group).setValue(key, QStringList(recent.mid(0, mostRecentFiles)));
}

} // namespace tadata
