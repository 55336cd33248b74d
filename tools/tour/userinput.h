// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QStringList>
#include <QtCore/Qt>

class QComboBox;
class QMenu;
class QMenuBar;
class QPoint;
class QWidget;

/// Does to widgets what a user's hands do, by mouse and key events. User-interface thread only; the
/// widgets must be visible. A call that opens a modal dialog returns when the dialog is closed.
namespace vexdesk {

/// Presses and releases the left button in the middle of the widget, or at a place in it.
void click(QWidget* widget);
void click(QWidget* widget, QPoint place);

/// Clicks twice at a place in the widget.
void doubleClick(QWidget* widget, QPoint place);
/// Asks with the right button for the context menu at a place in the widget.
void askForMenu(QWidget* widget, QPoint place);

/// Moves the mouse to a place in the widget.
void hover(QWidget* widget, QPoint place);
/// Moves the mouse out of the widget.
void leave(QWidget* widget);
/// Turns the wheel, away from the user by so many steps, at a place in the widget.
void turnWheel(QWidget* widget, QPoint place, int steps);

/// Presses and releases a key; the text is what the key types.
void pressKey(QWidget* widget, int key, const QString& text = QString(),
              Qt::KeyboardModifiers modifiers = Qt::NoModifier);

/// Types a text, one key after the other.
void typeText(QWidget* widget, const QString& text);

/// Clicks on the menu with this title (without the mnemonic's mark). False when there is none.
bool clickMenu(QMenuBar* menuBar, const QString& title);
bool clickMenu(QMenu* menu, const QString& title);

/// Chooses an entry of the open drop-down list with the keyboard.
void chooseEntry(QComboBox* box, int index);

} // namespace vexdesk
