#include <vexdesk/appsettings.h>

#include <vexdesk/icore.h>

#include <QtCore/QSettings>

namespace {

std::unique_ptr<QSettings> openGroup(const QString& group)
{
    const QString file = ICore::getDir(QString(), false).filePath(QStringLiteral("vexdesk.ini"));
    auto store = std::make_unique<QSettings>(file, QSettings::IniFormat);
    store->beginGroup(group);
    return store;
}

} // namespace

AppSettings::AppSettings(const QString& group)
    : Settings(openGroup(group))
{
}
