// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtGui/QIcon>
#include <QtGui/QKeySequence>

#include <memory>

/// Something that the user can choose in a menu or by a shortcut: how it looks. What it does is an
/// Action with the same id; while no Action with that id lives, the command is shown disabled.
///
/// The maker owns it. When it is destroyed it leaves the containers that hold it.
/// User-interface thread only.
class VEXDESK_GUI_EXPORT Command final : public QObject
{
    Q_OBJECT

public:
    /// Where the command's shortcut works. A modal dialog shields the window behind it always.
    enum CommandContext {
        NoContext = 0,     ///< nowhere: the menu only
        WidgetContext = 1, ///< while the menu bar's own window has the focus
        WindowContext = 2, ///< in the terminal's main window
        GlobalContext = 3, ///< in every window of the terminal
    };

    explicit Command(const QByteArray& id, QObject* parent = nullptr);
    ~Command() override;

    QByteArray id() const;

    /// The heading under which a list of shortcuts shows the command.
    QString category() const;
    void setCategory(const QString& category);

    QIcon defaultIcon() const;
    void setDefaultIcon(const QIcon& icon);

    /// The menu text, with "&" before the mnemonic.
    QString defaultText() const;
    void setDefaultText(const QString& text);

    int context() const;
    /// A CommandContext; any other number counts as NoContext.
    void setContext(int context);

    QKeySequence defaultShortcut() const;
    void setDefaultShortcut(const QKeySequence& shortcut);

Q_SIGNALS:
    /// One of the properties has changed.
    void changed();

private:
    struct Private;
    const std::unique_ptr<Private> m_d;
};
