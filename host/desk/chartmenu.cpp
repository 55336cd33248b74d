// SPDX-License-Identifier: MIT
#include "desk/chartmenu.h"

#include "desk/menubuilder.h"

#include <vexdesk/actionmanager.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>

#include <QtWidgets/QMenu>

namespace vexdesk {

namespace {

// Those of the container that are not the terminal's own; false where there are none.
bool addPluginItems(QMenu& menu, const MenuBuilder& builder, const CommandContainer& container,
                    const QSet<QByteArray>& ownCommands)
{
    QByteArray group;
    bool isAny = false;
    for (const CommandContainer::Entry& entry : container.entries()) {
        QAction* item = nullptr;
        if (entry.container) {
            auto* const inner = new QMenu(entry.container->title(), &menu);
            if (addPluginItems(*inner, builder, *entry.container, ownCommands))
                item = inner->menuAction();
            else
                delete inner;
        } else if (!ownCommands.contains(entry.command->id())) {
            item = builder.item(entry.command->id());
        }
        if (!item)
            continue;
        if (isAny && entry.group != group)
            menu.addSeparator();
        group = entry.group;
        isAny = true;
        menu.addAction(item);
    }
    return isAny;
}

} // namespace

void fillChartMenu(QMenu& menu, const MenuBuilder& builder, const QSet<QByteArray>& leftOut,
                   const QSet<QByteArray>& ownCommands)
{
    letScroll(menu);
    const CommandContainer* view = nullptr;
    const QList<CommandContainer::Entry> top = ActionManager::instance()->menuBar()->entries();
    for (const CommandContainer::Entry& entry : top) {
        if (entry.container && entry.container->id() == "View")
            view = entry.container;
    }
    const QMenu* const items = view ? builder.menu(*view) : nullptr;
    for (QAction* const item : items ? items->actions() : QList<QAction*>()) {
        // No line at the top.
        const bool isIdle = item->isSeparator() && menu.isEmpty();
        if (!isIdle && !leftOut.contains(item->data().toByteArray()))
            menu.addAction(item);
    }
    menu.addSeparator();
    for (const CommandContainer::Entry& entry : top) {
        if (!entry.container || entry.container == view)
            continue;
        auto* const inner = new QMenu(entry.container->title(), &menu);
        if (addPluginItems(*inner, builder, *entry.container, ownCommands))
            menu.addMenu(inner);
        else
            delete inner;
    }
}

} // namespace vexdesk
