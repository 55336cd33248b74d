// SPDX-License-Identifier: MIT
#include "desk/letterkeys.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QMainWindow>

namespace vexdesk {

namespace {

bool looksForLetters(const QWidget& widget)
{
    return qobject_cast<const QComboBox*>(&widget) ||
           qobject_cast<const QAbstractItemView*>(&widget);
}

bool writesLetter(const QKeyEvent& key)
{
    const bool isCommand =
        key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    return !isCommand && !key.text().isEmpty() && key.text().at(0).isPrint();
}

} // namespace

LetterKeys::LetterKeys(QObject* parent)
    : QObject(parent)
{}

bool LetterKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride)
        return false;
    const auto* const widget = qobject_cast<const QWidget*>(watched);
    if (!widget || !looksForLetters(*widget) ||
        qobject_cast<const QMainWindow*>(widget->window()) ||
        !writesLetter(*static_cast<QKeyEvent*>(event)))
        return false;
    event->accept();
    return true;
}

} // namespace vexdesk
