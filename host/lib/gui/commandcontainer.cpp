// SPDX-License-Identifier: MIT
#include <vexdesk/commandcontainer.h>

#include <vexdesk/command.h>

#include <algorithm>
#include <tuple>

namespace {

bool holds(const CommandContainer* container, const CommandContainer* sought)
{
    const QList<CommandContainer::Entry> entries = container->entries();
    return std::any_of(entries.cbegin(), entries.cend(), [sought](const auto& entry) {
        return entry.container && (entry.container == sought || holds(entry.container, sought));
    });
}

} // namespace

struct CommandContainer::Private
{
    QByteArray id;
    QString title = {};
    QList<Entry> entries = {};
};

CommandContainer::CommandContainer(const QByteArray& id, QObject* parent)
    : QObject(parent)
    , m_d(new Private{id})
{}

CommandContainer::~CommandContainer() = default;

QByteArray CommandContainer::id() const
{
    return m_d->id;
}

QString CommandContainer::title() const
{
    return m_d->title;
}

QList<CommandContainer::Entry> CommandContainer::entries() const
{
    return m_d->entries;
}

void CommandContainer::setTitle(const QString& title)
{
    m_d->title = title;
    Q_EMIT changed();
}

void CommandContainer::addCommand(Command* command, const QByteArray& group, const QByteArray& key)
{
    if (!command)
        return;
    connect(command, &Command::changed, this, &CommandContainer::changed, Qt::UniqueConnection);
    connect(command, &QObject::destroyed, this, &CommandContainer::remove, Qt::UniqueConnection);
    insert({command, nullptr, group, key});
}

void CommandContainer::addContainer(CommandContainer* container, const QByteArray& group,
                                    const QByteArray& key)
{
    if (!container || container == this || holds(container, this))
        return;
    connect(container, &CommandContainer::changed, this, &CommandContainer::changed,
            Qt::UniqueConnection);
    connect(container, &QObject::destroyed, this, &CommandContainer::remove, Qt::UniqueConnection);
    insert({nullptr, container, group, key});
}

void CommandContainer::insert(const Entry& entry)
{
    const auto position = std::upper_bound(m_d->entries.cbegin(), m_d->entries.cend(), entry,
                                           [](const Entry& left, const Entry& right) {
                                               return std::tie(left.group, left.key) <
                                                      std::tie(right.group, right.key);
                                           });
    m_d->entries.insert(position, entry);
    Q_EMIT changed();
}

void CommandContainer::remove(const QObject* object)
{
    const qsizetype removed = m_d->entries.removeIf([object](const Entry& entry) {
        return static_cast<const QObject*>(entry.command) == object ||
               static_cast<const QObject*>(entry.container) == object;
    });
    if (removed > 0)
        Q_EMIT changed();
}
