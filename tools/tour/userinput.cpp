// SPDX-License-Identifier: MIT
#include "tour/userinput.h"

#include "desk/commands.h"

#include <QtGui/QContextMenuEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

namespace vexdesk {

namespace {

void sendMouse(QEvent::Type type, QWidget* widget, QPoint position)
{
    const bool pressed = type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick;
    QMouseEvent event(type, position, widget->mapToGlobal(QPointF(position)),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                      pressed ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

template <typename Menu>
bool clickEntry(Menu* menu, const QString& title)
{
    const QList<QAction*> actions = menu->actions();
    for (QAction* const action : actions) {
        if (!action->isEnabled() || withoutMnemonic(action->text()) != title)
            continue;
        click(menu, menu->actionGeometry(action).center());
        return true;
    }
    return false;
}

} // namespace

void click(QWidget* widget)
{
    click(widget, widget->rect().center());
}

void click(QWidget* widget, QPoint place)
{
    sendMouse(QEvent::MouseMove, widget, place);
    sendMouse(QEvent::MouseButtonPress, widget, place);
    sendMouse(QEvent::MouseButtonRelease, widget, place);
}

void doubleClick(QWidget* widget, QPoint place)
{
    click(widget, place);
    sendMouse(QEvent::MouseButtonDblClick, widget, place);
    sendMouse(QEvent::MouseButtonRelease, widget, place);
}

void askForMenu(QWidget* widget, QPoint place)
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, widget->mapToGlobal(place));
    QApplication::sendEvent(widget, &event);
}

void hover(QWidget* widget, QPoint place)
{
    const QPointF global = widget->mapToGlobal(QPointF(place));
    QMouseEvent event(QEvent::MouseMove, place, global, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

void leave(QWidget* widget)
{
    QEvent event(QEvent::Leave);
    QApplication::sendEvent(widget, &event);
}

void turnWheel(QWidget* widget, QPoint place, int steps)
{
    constexpr int angleOfStep = 120; // in eighths of a degree
    QWheelEvent event(place, widget->mapToGlobal(QPointF(place)), QPoint(),
                      QPoint(0, steps * angleOfStep), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &event);
}

void pressKey(QWidget* widget, int key, const QString& text, Qt::KeyboardModifiers modifiers)
{
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(widget, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
    QApplication::sendEvent(widget, &release);
}

void typeText(QWidget* widget, const QString& text)
{
    for (const QChar character : text)
        pressKey(widget, Qt::Key_unknown, QString(character));
}

bool clickMenu(QMenuBar* menuBar, const QString& title)
{
    return clickEntry(menuBar, title);
}

bool clickMenu(QMenu* menu, const QString& title)
{
    return clickEntry(menu, title);
}

void chooseEntry(QComboBox* box, int index)
{
    QAbstractItemView* const list = box->view();
    pressKey(list, Qt::Key_Home);
    for (int i = 0; i < index; ++i)
        pressKey(list, Qt::Key_Down);
    pressKey(list, Qt::Key_Return, QStringLiteral("\r"));
}

} // namespace vexdesk
