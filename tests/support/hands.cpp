// SPDX-License-Identifier: MIT
#include "support/hands.h"

#include "support/serverhands.h"

#include <QtGui/QKeySequence>
#include <QtTest/QTest>
#include <QtWidgets/QWidget>

namespace hands {

namespace {

using Press = ServerHands::Press;

ServerHands* server()
{
#ifdef TADATA_XTEST
    return handsOnX();
#else
    return nullptr;
#endif
}

} // namespace

void mouseClick(QWidget* widget, Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
                QPoint place)
{
    if (ServerHands* const hands = server())
        hands->press(widget, Press::Once, button, modifiers, place);
    else
        QTest::mouseClick(widget, button, modifiers, place);
}

void mouseDClick(QWidget* widget, Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
                 QPoint place)
{
    if (ServerHands* const hands = server())
        hands->press(widget, Press::Twice, button, modifiers, place);
    else
        QTest::mouseDClick(widget, button, modifiers, place);
}

void mousePress(QWidget* widget, Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
                QPoint place)
{
    if (ServerHands* const hands = server())
        hands->press(widget, Press::Held, button, modifiers, place);
    else
        QTest::mousePress(widget, button, modifiers, place);
}

void mouseRelease(QWidget* widget, Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
                  QPoint place)
{
    if (ServerHands* const hands = server())
        hands->release(widget, button, modifiers, place);
    else
        QTest::mouseRelease(widget, button, modifiers, place);
}

void mouseMove(QWidget* widget, QPoint place)
{
    if (ServerHands* const hands = server())
        hands->move(widget, place);
    else
        QTest::mouseMove(widget, place);
}

void keyClick(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (ServerHands* const hands = server())
        hands->type(widget, key, modifiers);
    else
        QTest::keyClick(widget, key, modifiers);
}

void keyClick(QWidget* widget, char character, Qt::KeyboardModifiers modifiers)
{
    if (ServerHands* const hands = server())
        hands->type(widget, character, modifiers);
    else
        QTest::keyClick(widget, character, modifiers);
}

void keyClicks(QWidget* widget, const QString& text)
{
    for (const QChar character : text)
        keyClick(widget, character.toLatin1());
}

void keySequence(QWidget* widget, const QKeySequence& keys)
{
    for (int i = 0; i < keys.count(); ++i)
        keyClick(widget, keys[i].key(), keys[i].keyboardModifiers());
}

} // namespace hands
