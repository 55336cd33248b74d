// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QMap>
#include <QtCore/QSettings>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

namespace vexdesk {

/// Some of the terminal's settings as they were when this was made: a tour that changes them gives
/// them back to the user. User-interface thread only.
class SettingsBefore final
{
public:
    /// The keys with their groups, "Desk/Chart/timeframe".
    explicit SettingsBefore(QStringList keys);
    ~SettingsBefore();

    void restore();

private:
    QStringList m_keys;
    // The file of AppSettings, which cannot take a value back.
    QSettings m_settings;
    QMap<QString, QVariant> m_values;
};

} // namespace vexdesk
