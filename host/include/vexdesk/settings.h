// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <memory>

class QSettings;

/// A group of named values that outlive the program. What is written is on disk when the object
/// is destroyed, and other objects of the same process see it at once.
///
/// An object belongs to one thread; objects in different threads may work at the same time.
class VEXDESK_CORE_EXPORT Settings
{
public:
    Settings(Settings&&) noexcept;
    Settings& operator=(Settings&&) noexcept;
    virtual ~Settings();

    bool contains(const QString& key) const;

    /// The stored value, or `defaultValue` when there is none.
    QVariant value(const QString& key, const QVariant& defaultValue = QVariant()) const;

    /// Stores the value. A settings file that cannot be written is not an error here: the value
    /// then lasts as long as the process, and sync() tells so.
    void setValue(const QString& key, const QVariant& value);

    /// The keys of the group's own values, and the groups in it.
    QStringList keys() const;
    QStringList groups() const;

    /// Forgets a value, or a group in this one with all that is in it.
    void remove(const QString& key);

    /// Writes what this process has stored, through whichever object, and is not on disk yet. False
    /// when it still is not: the file or its directory cannot be written, or the disk is full.
    bool sync();

protected:
    explicit Settings(std::unique_ptr<QSettings> store);

private:
    std::unique_ptr<QSettings> m_store;
};
