// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtWidgets/QPushButton>

class Command;

namespace vexdesk {

/// A command as a row of the start page: picture, text, and the shortcut at the right edge. A click
/// runs the command. The row copies what it shows; it does not follow the Command.
class CommandButton final : public QPushButton
{
    Q_OBJECT

public:
    explicit CommandButton(QWidget* parent = nullptr);

    QByteArray commandId() const { return m_commandId; }
    QString shortcutText() const { return m_shortcutText; }

    /// Shows this command, enabled when something answers it.
    void setCommand(const Command& command);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QByteArray m_commandId;
    QString m_shortcutText;
};

} // namespace vexdesk
