// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtWidgets/QMenuBar>

class Command;
class CommandContainer;
class QAction;
class QMenu;
class QWidget;

namespace vexdesk {

/// Lets a menu scroll that has more items than the screen has room for: most styles would put them
/// into columns, and those into which a narrow screen does not reach could not be chosen.
/// User-interface thread only.
void letScroll(QMenu& menu);

/// Keeps a menu bar true to ActionManager::menuBar(): whatever is added, changed or destroyed there
/// shows in the menus with the next turn of the event loop; whether an item is enabled, at once.
///
/// Containers without a command below them are not shown. Nothing of the menus may be changed by
/// anyone else. User-interface thread only.
class MenuBuilder final : public QObject
{
    Q_OBJECT

public:
    /// The menus are filled before this returns. Once `menuBar` is gone the builder does nothing.
    explicit MenuBuilder(QMenuBar* menuBar, QObject* parent = nullptr);
    ~MenuBuilder() override;

    /// Brings the menus up to date without waiting for the event loop.
    void rebuild();

    /// The item of a command and the menu of a container, null for what is not in the menus yet. To
    /// be shown elsewhere too; both stay the builder's and last as long as they are in the menus.
    QAction* item(const QByteArray& commandId) const;
    QMenu* menu(const CommandContainer& container) const { return m_menus.value(&container); }

private:
    /// The items of the container as they have to stand in its menu, null for a separator.
    QList<QAction*> itemsOf(const CommandContainer& container);
    QAction* itemOf(const Command& command);
    QMenu* menuOf(const CommandContainer& container);
    void fill(QWidget* menu, const QList<QAction*>& items);
    void setShortcut(QAction* item, const Command& command) const;
    void updateEnabled(const QByteArray& commandId);
    void trigger(const QAction& item);
    void discard(QObject* object);

    QPointer<QMenuBar> m_menuBar;
    // Items and menus are kept from one rebuild to the next, so that an open menu and a chosen item
    // survive it. The keys are compared only: an object of theirs may be gone already.
    QHash<const Command*, QAction*> m_items;
    QHash<const CommandContainer*, QMenu*> m_menus;
    // What is in use during the running rebuild.
    QList<const Command*> m_usedCommands;
    QList<const CommandContainer*> m_usedContainers;
    QList<QPointer<QObject>> m_discarded;
    int m_triggering = 0;
    QTimer m_rebuildSoon; // with the next turn of the event loop
};

} // namespace vexdesk
