// SPDX-License-Identifier: MIT
#include <vexdesk/action.h>

#include <vexdesk/actionmanager.h>

struct Action::Private
{
    QByteArray id;
    bool enabled = true;
};

Action::Action(const QByteArray& id, QObject* parent)
    : QObject(parent)
    , m_d(new Private{id})
{
    ActionManager::instance()->add(this);
}

Action::~Action()
{
    ActionManager::instance()->remove(this);
}

QByteArray Action::id() const
{
    return m_d->id;
}

bool Action::isEnabled() const
{
    return m_d->enabled;
}

void Action::setEnabled(bool enabled)
{
    if (m_d->enabled == enabled)
        return;
    m_d->enabled = enabled;
    Q_EMIT enabledChanged(enabled);
}

void Action::trigger()
{
    if (m_d->enabled)
        Q_EMIT triggered();
}
