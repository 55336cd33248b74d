// SPDX-License-Identifier: MIT
#include "desk/commandbutton.h"

#include "desk/commands.h"

#include <vexdesk/command.h>

namespace vexdesk {

CommandButton::CommandButton(QWidget* parent)
    : RowButton(parent)
{
    connect(this, &QPushButton::clicked, this, [this] { triggerCommand(m_commandId); });
}

void CommandButton::setCommand(const Command& command)
{
    m_commandId = command.id();
    setText(withoutMnemonic(command.defaultText()));
    setRemark(activeShortcut(command).toString(QKeySequence::NativeText));
    setIcon(command.defaultIcon());
    setEnabled(isCommandEnabled(m_commandId));
}

} // namespace vexdesk
