// SPDX-License-Identifier: MIT
#include "toolwindow.h"

#include "windowsize.h"

#include <QtGui/QHideEvent>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QPushButton>

namespace tadata {

ToolWindow::ToolWindow(const QString& title, QLatin1String settingsGroup, QWidget* parent)
    : QDialog(parent, Qt::Window)
    , m_group(settingsGroup)
{
    setWindowTitle(title);
}

ToolWindow::~ToolWindow() = default;

void ToolWindow::restoreSizeOr(const QSize& size)
{
    resize(size);
    restoreSize(*this, m_group);
}

void ToolWindow::hideEvent(QHideEvent* event)
{
    if (!event->spontaneous())
        saveSize(*this, m_group);
    QDialog::hideEvent(event);
}

void ToolWindow::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !qobject_cast<QPushButton*>(focusWidget()))
        return;
    QDialog::keyPressEvent(event);
}

} // namespace tadata
