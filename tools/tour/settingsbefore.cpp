// SPDX-License-Identifier: MIT
#include "tour/settingsbefore.h"

#include <vexdesk/icore.h>

namespace vexdesk {

SettingsBefore::SettingsBefore(QStringList keys)
    : m_keys(std::move(keys))
    , m_settings(ICore::getDir(QString(), false).filePath(QStringLiteral("vexdesk.ini")),
                 QSettings::IniFormat)
{
    for (const QString& key : std::as_const(m_keys)) {
        if (m_settings.contains(key))
            m_values.insert(key, m_settings.value(key));
    }
}

SettingsBefore::~SettingsBefore() = default;

void SettingsBefore::restore()
{
    for (const QString& key : std::as_const(m_keys)) {
        if (m_values.contains(key))
            m_settings.setValue(key, m_values.value(key));
        else
            m_settings.remove(key);
    }
    m_settings.sync();
}

} // namespace vexdesk
