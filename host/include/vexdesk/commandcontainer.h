// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>

#include <memory>

class Command;

/// A menu: commands and further containers in the order of their keys.
///
/// Each entry is added with a group and a key. Entries stand in the order of group, then key
/// (both compared byte by byte, so "25" stands before "3"), then in the order in which they were
/// added; a line separates different groups.
///
/// The maker owns it. Entries that are destroyed leave the container, and a container that is
/// destroyed leaves the one that holds it. User-interface thread only.
class VEXDESK_GUI_EXPORT CommandContainer final : public QObject
{
    Q_OBJECT

public:
    /// One line of the menu: either a command or a container.
    struct Entry
    {
        Command* command = nullptr;
        CommandContainer* container = nullptr;
        QByteArray group;
        QByteArray key;
    };

    explicit CommandContainer(const QByteArray& id, QObject* parent = nullptr);
    ~CommandContainer() override;

    QByteArray id() const;

    /// The menu's title, with "&" before the mnemonic.
    QString title() const;
    void setTitle(const QString& title);

    void addCommand(Command* command, const QByteArray& group, const QByteArray& key);
    /// A container that is this one, or holds it at any depth, is not added.
    void addContainer(CommandContainer* container, const QByteArray& group, const QByteArray& key);

    /// In the order in which they are shown.
    QList<Entry> entries() const;

Q_SIGNALS:
    /// The title, an entry, or something below an entry has changed.
    void changed();

private:
    void insert(const Entry& entry);
    void remove(const QObject* object);

    struct Private;
    const std::unique_ptr<Private> m_d;
};
