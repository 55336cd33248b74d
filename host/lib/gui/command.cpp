// SPDX-License-Identifier: MIT
#include <vexdesk/command.h>

Command::Command(const QByteArray& id, QObject* parent)
    : QObject(parent)
    , m_id(id)
{}

void Command::setCategory(const QString& category)
{
    m_category = category;
    Q_EMIT changed();
}

void Command::setDefaultIcon(const QIcon& icon)
{
    m_icon = icon;
    Q_EMIT changed();
}

void Command::setDefaultText(const QString& text)
{
    m_text = text;
    Q_EMIT changed();
}

void Command::setContext(int context)
{
    m_context = context >= NoContext && context <= GlobalContext ? context : NoContext;
    Q_EMIT changed();
}

void Command::setDefaultShortcut(const QKeySequence& shortcut)
{
    m_shortcut = shortcut;
    Q_EMIT changed();
}
