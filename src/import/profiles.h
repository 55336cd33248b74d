// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/outcome.h>

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

/// Options that were saved under a name, in the terminal's settings: each is a group
/// "TADataManager/Profiles/NAME" with a value for each option, of a switch "true". One thread at a
/// time.
namespace tadata {

/// From the options' names, without dashes, to their values.
using ProfileOptions = QMap<QString, QString>;

/// Whether a profile can be called so: not empty, no slashes, no blanks at the ends, no dash first.
bool isProfileName(const QString& name);

/// In alphabetical order.
QStringList profileNames();
/// None where there is no such profile.
std::optional<ProfileOptions> profileOptions(const QString& name);

/// Replaces one that is there.
vexdesk::Outcome saveProfile(const QString& name, const ProfileOptions& options);
vexdesk::Outcome deleteProfile(const QString& name);

} // namespace tadata
