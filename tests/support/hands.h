// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QString>
#include <QtCore/Qt>

class QKeySequence;
class QWidget;

/// Mouse and keys. On an X server they are the server's: it is told to move its pointer and to
/// press its buttons and keys, and what comes of that is up to it, to the window manager and to the
/// windows. Elsewhere they are those of Qt Test, which gives events to the widgets. Either way a
/// function returns when the window has had what it sent.
///
/// On an X server a widget must be where a user could reach it: its window is activated, its place
/// is not covered, and what keys are for gets the focus first. What cannot be reached fails the
/// test.
namespace hands {

void mouseClick(QWidget* widget, Qt::MouseButton button, Qt::KeyboardModifiers modifiers = {},
                QPoint place = {});
/// Qt Test gives the widget the second press alone; a server's mouse clicks twice.
void mouseDClick(QWidget* widget, Qt::MouseButton button, Qt::KeyboardModifiers modifiers = {},
                 QPoint place = {});
void mousePress(QWidget* widget, Qt::MouseButton button, Qt::KeyboardModifiers modifiers = {},
                QPoint place = {});
void mouseRelease(QWidget* widget, Qt::MouseButton button, Qt::KeyboardModifiers modifiers = {},
                  QPoint place = {});
/// With the buttons that are pressed, so that it drags.
void mouseMove(QWidget* widget, QPoint place = {});

/// Of a window it is a key for whatever has the focus there.
void keyClick(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers = {});
void keyClick(QWidget* widget, char character, Qt::KeyboardModifiers modifiers = {});
void keyClicks(QWidget* widget, const QString& text);
void keySequence(QWidget* widget, const QKeySequence& keys);

} // namespace hands
