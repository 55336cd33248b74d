// SPDX-License-Identifier: MIT
#pragma once

#include "desk/rowbutton.h"

#include <QtCore/QByteArray>

class Command;

namespace vexdesk {

/// A command as a row of the start page, with its shortcut at the right edge. A click runs the
/// command. The row copies what it shows; it does not follow the Command.
class CommandButton final : public RowButton
{
    Q_OBJECT

public:
    explicit CommandButton(QWidget* parent = nullptr);

    QByteArray commandId() const { return m_commandId; }
    QString shortcutText() const { return remark(); }

    /// Shows this command, enabled when something answers it.
    void setCommand(const Command& command);

private:
    QByteArray m_commandId;
};

} // namespace vexdesk
