// SPDX-License-Identifier: MIT
#include <vexdesk/appsettings.h>

#include <vexdesk/icore.h>

#include <QtCore/QHash>
#include <QtCore/QSettings>

#include <mutex>

namespace {

// Values that cannot be written are remembered only while an object for the file lives, so one does
// from the first use on. It is never destroyed: settings may be written by statics elsewhere.
void keepInMemory(const QString& file)
{
    static std::mutex mutex;
    static auto* const keepers = new QHash<QString, QSettings*>;
    const std::lock_guard lock(mutex);
    QSettings*& keeper = (*keepers)[file];
    if (!keeper)
        keeper = new QSettings(file, QSettings::IniFormat);
}

std::unique_ptr<QSettings> openGroup(const QString& group)
{
    const QString file = ICore::getDir(QString(), false).filePath(QStringLiteral("vexdesk.ini"));
    keepInMemory(file);
    auto store = std::make_unique<QSettings>(file, QSettings::IniFormat);
    store->beginGroup(group);
    return store;
}

} // namespace

AppSettings::AppSettings(const QString& group)
    : Settings(openGroup(group))
{}
