// SPDX-License-Identifier: MIT
#include "desk/menubuilder.h"

#include "desk/commands.h"

#include <vexdesk/actionmanager.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>

#include <QtGui/QAction>
#include <QtWidgets/QMenu>

#include <algorithm>

namespace vexdesk {

void letScroll(QMenu& menu)
{
    menu.setStyleSheet(QStringLiteral("QMenu { menu-scrollable: 1; }"));
}

MenuBuilder::MenuBuilder(QMenuBar* menuBar, QObject* parent)
    : QObject(parent)
    , m_menuBar(menuBar)
{
    const ActionManager* const manager = ActionManager::instance();
    m_rebuildSoon.setSingleShot(true);
    connect(manager->menuBar(), &CommandContainer::changed, &m_rebuildSoon,
            qOverload<>(&QTimer::start));
    connect(&m_rebuildSoon, &QTimer::timeout, this, &MenuBuilder::rebuild);
    connect(manager, &ActionManager::actionChanged, this, &MenuBuilder::updateEnabled);
    rebuild();
}

MenuBuilder::~MenuBuilder()
{
    // The items are the builder's children, the menus are the menu bar's.
    if (m_menuBar)
        qDeleteAll(m_menus);
}

void MenuBuilder::rebuild()
{
    m_rebuildSoon.stop();
    if (!m_menuBar)
        return;
    m_usedCommands.clear();
    m_usedContainers.clear();
    QList<QAction*> items = itemsOf(*ActionManager::instance()->menuBar());
    items.removeAll(nullptr); // a menu bar has no lines between its groups
    fill(m_menuBar, items);

    for (const Command* const command : m_items.keys()) {
        if (!m_usedCommands.contains(command))
            discard(m_items.take(command));
    }
    for (const CommandContainer* const container : m_menus.keys()) {
        if (!m_usedContainers.contains(container))
            discard(m_menus.take(container));
    }
}

QAction* MenuBuilder::item(const QByteArray& commandId) const
{
    const auto found =
        std::find_if(m_items.cbegin(), m_items.cend(), [&commandId](const QAction* item) {
            return item->data().toByteArray() == commandId;
        });
    return found == m_items.cend() ? nullptr : *found;
}

QList<QAction*> MenuBuilder::itemsOf(const CommandContainer& container)
{
    QList<QAction*> items;
    QByteArray group;
    for (const CommandContainer::Entry& entry : container.entries()) {
        QAction* item = nullptr;
        if (entry.command)
            item = itemOf(*entry.command);
        else if (QMenu* const menu = menuOf(*entry.container))
            item = menu->menuAction();
        if (!item || items.contains(item))
            continue;
        if (!items.isEmpty() && entry.group != group)
            items.append(nullptr);
        group = entry.group;
        items.append(item);
    }
    return items;
}

QAction* MenuBuilder::itemOf(const Command& command)
{
    QAction*& item = m_items[&command];
    if (!item) {
        item = new QAction(this);
        connect(item, &QAction::triggered, this, [this, item = item] { trigger(*item); });
    }
    m_usedCommands.append(&command);
    item->setData(command.id());
    item->setText(command.defaultText());
    // Unlike the other properties, the same icon again would count as a change of the item.
    if (item->icon().cacheKey() != command.defaultIcon().cacheKey())
        item->setIcon(command.defaultIcon());
    setShortcut(item, command);
    item->setEnabled(isCommandEnabled(command.id()));
    return item;
}

QMenu* MenuBuilder::menuOf(const CommandContainer& container)
{
    const QList<QAction*> items = itemsOf(container);
    if (items.isEmpty())
        return nullptr;
    QMenu*& menu = m_menus[&container];
    if (!menu) {
        menu = new QMenu(m_menuBar);
        letScroll(*menu);
    }
    m_usedContainers.append(&container);
    menu->setTitle(container.title());
    fill(menu, items);
    return menu;
}

void MenuBuilder::fill(QWidget* menu, const QList<QAction*>& items)
{
    const QList<QAction*> present = menu->actions();
    const bool same = std::equal(present.cbegin(), present.cend(), items.cbegin(), items.cend(),
                                 [](const QAction* left, const QAction* right) {
                                     return right ? left == right : left->isSeparator();
                                 });
    if (same)
        return;
    for (QAction* const item : present) {
        menu->removeAction(item);
        if (item->isSeparator())
            discard(item);
    }
    for (QAction* item : items) {
        if (!item) {
            item = new QAction(menu);
            item->setSeparator(true);
        }
        menu->addAction(item);
    }
}

void MenuBuilder::setShortcut(QAction* item, const Command& command) const
{
    item->setShortcut(activeShortcut(command));
    // Qt's own widget context would ask for the focus in the menu bar itself.
    item->setShortcutContext(command.context() == Command::GlobalContext ? Qt::ApplicationShortcut
                                                                         : Qt::WindowShortcut);
}

void MenuBuilder::updateEnabled(const QByteArray& commandId)
{
    const bool enabled = isCommandEnabled(commandId);
    for (QAction* const item : std::as_const(m_items)) {
        if (item->data().toByteArray() == commandId)
            item->setEnabled(enabled);
    }
}

void MenuBuilder::trigger(const QAction& item)
{
    const QPointer<MenuBuilder> self(this); // the command may close the window
    ++m_triggering;
    triggerCommand(item.data().toByteArray());
    if (!self || --m_triggering > 0)
        return;
    for (const QPointer<QObject>& object : std::as_const(m_discarded)) {
        if (object)
            object->deleteLater();
    }
    m_discarded.clear();
}

void MenuBuilder::discard(QObject* object)
{
    // A command may run an event loop of its own. What is on the call stack above it, the chosen
    // item and its menu, must outlive that loop.
    if (m_triggering > 0)
        m_discarded.append(object);
    else
        object->deleteLater();
}

} // namespace vexdesk
