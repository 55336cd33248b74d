// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtGui/QIcon>
#include <QtGui/QKeySequence>

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

    QByteArray id() const { return m_id; }

    /// The heading under which a list of shortcuts shows the command.
    QString category() const { return m_category; }
    void setCategory(const QString& category);

    QIcon defaultIcon() const { return m_icon; }
    void setDefaultIcon(const QIcon& icon);

    /// The menu text, with "&" before the mnemonic.
    QString defaultText() const { return m_text; }
    void setDefaultText(const QString& text);

    int context() const { return m_context; }
    /// A CommandContext; any other number counts as NoContext.
    void setContext(int context);

    QKeySequence defaultShortcut() const { return m_shortcut; }
    void setDefaultShortcut(const QKeySequence& shortcut);

Q_SIGNALS:
    /// One of the properties has changed.
    void changed();

private:
    QByteArray m_id;
    QString m_category;
    QIcon m_icon;
    QString m_text;
    int m_context = NoContext;
    QKeySequence m_shortcut;
};
