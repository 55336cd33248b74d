// SPDX-License-Identifier: MIT
#include "desk/commands.h"

#include "desk/errorreport.h"

#include <vexdesk/action.h>
#include <vexdesk/actionmanager.h>
#include <vexdesk/command.h>

namespace vexdesk {

bool isCommandEnabled(const QByteArray& id)
{
    const Action* const action = ActionManager::instance()->action(id);
    return action && action->isEnabled();
}

void triggerCommand(const QByteArray& id)
{
    std::exception_ptr error;
    try {
        if (Action* const action = ActionManager::instance()->action(id))
            action->trigger();
    } catch (...) {
        error = std::current_exception();
    }
    if (error)
        reportException(error);
}

QKeySequence activeShortcut(const Command& command)
{
    return command.context() == Command::NoContext ? QKeySequence() : command.defaultShortcut();
}

QString withoutMnemonic(const QString& text)
{
    QString plain;
    plain.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) == u'&' && ++i == text.size())
            break;
        plain.append(text.at(i));
    }
    return plain;
}

} // namespace vexdesk
