// SPDX-License-Identifier: MIT
#include <vexdesk/settings.h>

#include <QtCore/QSettings>

Settings::Settings(std::unique_ptr<QSettings> store)
    : m_store(std::move(store))
{}

Settings::Settings(Settings&&) noexcept = default;
Settings& Settings::operator=(Settings&&) noexcept = default;
Settings::~Settings() = default;

bool Settings::contains(const QString& key) const
{
    return m_store->contains(key);
}

QVariant Settings::value(const QString& key, const QVariant& defaultValue) const
{
    return m_store->value(key, defaultValue);
}

void Settings::setValue(const QString& key, const QVariant& value)
{
    m_store->setValue(key, value);
}

QStringList Settings::keys() const
{
    return m_store->childKeys();
}

QStringList Settings::groups() const
{
    return m_store->childGroups();
}

void Settings::remove(const QString& key)
{
    m_store->remove(key);
}

bool Settings::sync()
{
    // A store of its own: that of this object would remember an error for ever.
    QSettings store(m_store->fileName(), m_store->format());
    store.sync();
    return store.status() != QSettings::AccessError;
}
