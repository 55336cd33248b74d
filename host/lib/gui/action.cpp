// SPDX-License-Identifier: MIT
#include <vexdesk/action.h>

#include <vexdesk/actionmanager.h>

Action::Action(const QByteArray& id, QObject* parent)
    : QObject(parent)
    , m_id(id)
{
    ActionManager::instance()->add(this);
}

Action::~Action()
{
    ActionManager::instance()->remove(this);
}

void Action::setEnabled(bool enabled)
{
    if (m_enabled == enabled)
        return;
    m_enabled = enabled;
    Q_EMIT enabledChanged(enabled);
}

void Action::trigger()
{
    if (m_enabled)
        Q_EMIT triggered();
}
