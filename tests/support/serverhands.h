// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QPoint>
#include <QtCore/Qt>

class QWidget;

namespace hands {

/// Mouse and keys of the server that has our windows.
class ServerHands
{
public:
    enum class Press { Held, Once, Twice };

    virtual void press(QWidget* widget, Press how, Qt::MouseButton button,
                       Qt::KeyboardModifiers modifiers, QPoint place) = 0;
    virtual void release(QWidget* widget, Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
                         QPoint place) = 0;
    virtual void move(QWidget* widget, QPoint place) = 0;
    virtual void type(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers) = 0;
    virtual void type(QWidget* widget, char character, Qt::KeyboardModifiers modifiers) = 0;

protected:
    ServerHands() = default;
    ~ServerHands() = default;

private:
    Q_DISABLE_COPY_MOVE(ServerHands)
};

/// Null where the windows are not those of an X server.
ServerHands* handsOnX();

} // namespace hands
