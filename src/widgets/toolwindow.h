// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QLatin1String>
#include <QtWidgets/QDialog>

class QAbstractItemModel;
class QLabel;
class QTreeView;
class QVBoxLayout;

namespace tadata {

/// A window that stays open beside the terminal's. Escape closes it; Return presses the button that
/// has the focus, and nothing where no button has. Its size is remembered in a group of the
/// terminal's settings. User-interface thread.
class ToolWindow : public QDialog
{
    Q_OBJECT

public:
    ToolWindow(const QString& title, QLatin1String settingsGroup, QWidget* parent);
    ~ToolWindow() override;

protected:
    /// The size that was remembered, or this one. For the constructor.
    void restoreSizeOr(const QSize& size);
    /// The one above the other, with a line between them that can be moved, and below them what
    /// say() says, and the buttons. For the constructor.
    void setParts(QWidget* upper, QWidget* lower, QWidget* buttons);
    /// What the user is to know, in the last line; nothing takes the line away.
    void say(const QString& text, bool isWarning = false);

    /// A label for sentences, and a table without branches: each has this name.
    static QLabel* plainLabel(const char* name);
    static void prepareTable(QTreeView* view, QAbstractItemModel* model, const char* name);
    /// The layout of a part of the window.
    static QVBoxLayout* layoutOf(QWidget* part);

    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QLatin1String m_group;
    QLabel* const m_status;
};

} // namespace tadata
