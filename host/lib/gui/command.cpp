// SPDX-License-Identifier: MIT
#include <vexdesk/command.h>

struct Command::Private
{
    QByteArray id;
    QString category = {};
    QIcon icon = {};
    QString text = {};
    int context = NoContext;
    QKeySequence shortcut = {};
};

Command::Command(const QByteArray& id, QObject* parent)
    : QObject(parent)
    , m_d(new Private{id})
{}

Command::~Command() = default;

QByteArray Command::id() const
{
    return m_d->id;
}

QString Command::category() const
{
    return m_d->category;
}

QIcon Command::defaultIcon() const
{
    return m_d->icon;
}

QString Command::defaultText() const
{
    return m_d->text;
}

int Command::context() const
{
    return m_d->context;
}

QKeySequence Command::defaultShortcut() const
{
    return m_d->shortcut;
}

void Command::setCategory(const QString& category)
{
    m_d->category = category;
    Q_EMIT changed();
}

void Command::setDefaultIcon(const QIcon& icon)
{
    m_d->icon = icon;
    Q_EMIT changed();
}

void Command::setDefaultText(const QString& text)
{
    m_d->text = text;
    Q_EMIT changed();
}

void Command::setContext(int context)
{
    m_d->context = context >= NoContext && context <= GlobalContext ? context : NoContext;
    Q_EMIT changed();
}

void Command::setDefaultShortcut(const QKeySequence& shortcut)
{
    m_d->shortcut = shortcut;
    Q_EMIT changed();
}
