// SPDX-License-Identifier: MIT
#include "desk/dialogplacer.h"

#include "desk/windowinuse.h"

#include <QtCore/QEvent>
#include <QtGui/QWindow>
#include <QtWidgets/QDialog>

namespace vexdesk {

DialogPlacer::DialogPlacer(QObject* parent)
    : QObject(parent)
{}

DialogPlacer::~DialogPlacer() = default;

bool DialogPlacer::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && !event->spontaneous()) {
        if (auto* const dialog = qobject_cast<QDialog*>(watched))
            begin(*dialog);
    } else if (event->type() == QEvent::Resize && m_dialog && watched == m_dialog) {
        place();
    }
    return false;
}

void DialogPlacer::begin(QDialog& dialog)
{
    QWidget* const window = windowInUse();
    if (dialog.parentWidget() || !dialog.isWindow() || dialog.testAttribute(Qt::WA_Moved) ||
        dialog.testAttribute(Qt::WA_DontShowOnScreen) || !window || window == &dialog ||
        window->isMinimized())
        return;
    m_dialog = &dialog;
    m_window = window;
    // So a window manager knows too in front of what it stands. One that is made a window stands
    // beside the others, any of which can come to the front.
    if (dialog.windowType() == Qt::Dialog && dialog.windowHandle() && window->windowHandle())
        dialog.windowHandle()->setTransientParent(window->windowHandle());
    place();
    QMetaObject::invokeMethod(
        this, [this] { m_dialog.clear(); }, Qt::QueuedConnection);
}

void DialogPlacer::place()
{
    if (!m_window)
        return;
    const QPoint middle = m_window->frameGeometry().center();
    m_dialog->move(middle - m_dialog->rect().center());
}

} // namespace vexdesk
