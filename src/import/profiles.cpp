// SPDX-License-Identifier: MIT
#include "profiles.h"

#include <vexdesk/appsettings.h>

#include <QtCore/QCoreApplication>

namespace tadata {

using vexdesk::Failure;
using vexdesk::Outcome;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ImportProfiles)
};

AppSettings allProfiles()
{
    return AppSettings(QStringLiteral("TADataManager/Profiles"));
}

AppSettings settingsOf(const QString& name)
{
    return AppSettings(QStringLiteral("TADataManager/Profiles/") + name);
}

// A list of values with commas, in a settings file that was written by hand, comes as a list.
QString textOf(const QVariant& value)
{
    return value.toStringList().join(u',');
}

Outcome written(AppSettings& settings)
{
    if (settings.sync())
        return {};
    return Failure{Text::tr("Невозможно записать файл настроек терминала")};
}

} // namespace

// Slashes of both kinds would name a group in a group.
bool isProfileName(const QString& name)
{
    return !name.isEmpty() && !name.contains(u'/') && !name.contains(u'\\') &&
           !name.startsWith(u'-') && name == name.trimmed();
}

QStringList profileNames()
{
    QStringList names = allProfiles().groups();
    names.sort();
    return names;
}

std::optional<ProfileOptions> profileOptions(const QString& name)
{
    if (!isProfileName(name))
        return std::nullopt;
    const AppSettings settings = settingsOf(name);
    const QStringList keys = settings.keys();
    if (keys.isEmpty())
        return std::nullopt;
    ProfileOptions options;
    for (const QString& key : keys)
        options.insert(key, textOf(settings.value(key)));
    return options;
}

Outcome saveProfile(const QString& name, const ProfileOptions& options)
{
    AppSettings settings = settingsOf(name);
    for (const QString& key : settings.keys())
        settings.remove(key);
    for (auto option = options.begin(); option != options.end(); ++option)
        settings.setValue(option.key(), option.value());
    return written(settings);
}

Outcome deleteProfile(const QString& name)
{
    AppSettings settings = allProfiles();
    settings.remove(name);
    return written(settings);
}

} // namespace tadata
