// SPDX-License-Identifier: MIT
#include <vexdesk/actionmanager.h>

#include <vexdesk/action.h>
#include <vexdesk/commandcontainer.h>

#include <QtCore/QHash>
#include <QtCore/QList>

struct ActionManager::Private
{
    CommandContainer* menuBar = nullptr;
    QHash<QByteArray, CommandContainer*> containers = {};
    QHash<QByteArray, QList<Action*>> actions = {};
};

ActionManager* ActionManager::instance()
{
    // Never destroyed: actions of statically owned plug-in objects may outlive any static here.
    static ActionManager* const manager = new ActionManager;
    return manager;
}

ActionManager::ActionManager()
    : m_d(new Private{new CommandContainer("MenuBar", this)})
{
    m_d->containers.insert(m_d->menuBar->id(), m_d->menuBar);
}

ActionManager::~ActionManager() = default;

CommandContainer* ActionManager::container(const QByteArray& id, const QString& title,
                                           const QByteArray& parentId, const QByteArray& group,
                                           const QByteArray& key)
{
    if (CommandContainer* const known = m_d->containers.value(id))
        return known;
    // The parent is looked up first: a container cannot be its own.
    CommandContainer* const parent = m_d->containers.value(parentId, m_d->menuBar);
    auto* const container = new CommandContainer(id, this);
    container->setTitle(title);
    m_d->containers.insert(id, container);
    parent->addContainer(container, group, key);
    return container;
}

CommandContainer* ActionManager::menuBar() const
{
    return m_d->menuBar;
}

Action* ActionManager::action(const QByteArray& commandId) const
{
    const QList<Action*> actions = m_d->actions.value(commandId);
    return actions.isEmpty() ? nullptr : actions.last();
}

void ActionManager::add(Action* action)
{
    const QByteArray id = action->id();
    m_d->actions[id].append(action);
    connect(action, &Action::enabledChanged, this, [this, action] {
        if (this->action(action->id()) == action)
            Q_EMIT actionChanged(action->id());
    });
    Q_EMIT actionChanged(id);
}

void ActionManager::remove(Action* action)
{
    const QByteArray id = action->id();
    const bool answered = this->action(id) == action;
    QList<Action*>& actions = m_d->actions[id];
    actions.removeOne(action);
    if (actions.isEmpty())
        m_d->actions.remove(id);
    if (answered)
        Q_EMIT actionChanged(id);
}
