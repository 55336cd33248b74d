// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QObject>

#include <memory>

class Action;
class CommandContainer;

/// Knows the terminal's menus and ties each Command to the Action with the same id.
/// One object per process, made on first use; user-interface thread only.
class VEXDESK_GUI_EXPORT ActionManager final : public QObject
{
    Q_OBJECT

public:
    static ActionManager* instance();

    /// The container with this id. When there is none yet it is made, with the title, and added to
    /// the container `parentId` with `group` and `key` (see CommandContainer). "MenuBar" is the
    /// main window's menu bar and always exists; a parent that does not exist counts as "MenuBar".
    /// The manager owns the container: it stays for the life of the process, and is not shown
    /// while it holds nothing.
    CommandContainer* container(const QByteArray& id, const QString& title,
                                const QByteArray& parentId, const QByteArray& group,
                                const QByteArray& key);

    /// The container "MenuBar".
    CommandContainer* menuBar() const;

    /// The action that answers the command with this id now, or null.
    Action* action(const QByteArray& commandId) const;

Q_SIGNALS:
    /// Another action answers the command from now on, or none, or it was enabled or disabled.
    void actionChanged(const QByteArray& commandId);

private:
    friend class Action;

    ActionManager();
    ~ActionManager() override;
    void add(Action* action);
    void remove(Action* action);

    struct Private;
    const std::unique_ptr<Private> m_d;
};
