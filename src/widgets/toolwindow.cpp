// SPDX-License-Identifier: MIT
#include "toolwindow.h"

#include "textcolours.h"
#include "windowsize.h"

#include <QtGui/QHideEvent>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QVBoxLayout>

namespace tadata {

ToolWindow::ToolWindow(const QString& title, QLatin1String settingsGroup, QWidget* parent)
    : QDialog(parent, Qt::Window)
    , m_group(settingsGroup)
    , m_status(plainLabel("status"))
{
    setWindowTitle(title);
    m_status->setParent(this);
    m_status->hide();
}

ToolWindow::~ToolWindow() = default;

void ToolWindow::restoreSizeOr(const QSize& size)
{
    resize(size);
    restoreSize(*this, m_group);
}

void ToolWindow::setParts(QWidget* upper, QWidget* lower, QWidget* buttons)
{
    auto* const parts = new QSplitter(Qt::Vertical);
    parts->setChildrenCollapsible(false);
    parts->addWidget(upper);
    parts->addWidget(lower);
    auto* const all = new QVBoxLayout(this);
    all->addWidget(parts, 1);
    all->addWidget(m_status);
    all->addWidget(buttons);
}

void ToolWindow::say(const QString& text, bool isWarning)
{
    m_status->setText(text);
    m_status->setVisible(!text.isEmpty());
    tintLabel(m_status, !isWarning);
}

QLabel* ToolWindow::plainLabel(const char* name)
{
    auto* const label = new QLabel;
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

void ToolWindow::prepareTable(QTreeView* view, QAbstractItemModel* model, const char* name)
{
    view->setObjectName(QLatin1String(name));
    view->setModel(model);
    view->setRootIsDecorated(false);
    view->setUniformRowHeights(true);
    view->setAllColumnsShowFocus(true);
    view->header()->setSectionsMovable(false);
    // By the rows in view: a thousand of them would be measured each time the order changes.
    view->header()->setResizeContentsPrecision(0);
}

QVBoxLayout* ToolWindow::layoutOf(QWidget* part)
{
    auto* const layout = new QVBoxLayout(part);
    layout->setContentsMargins(0, 0, 0, 0);
    return layout;
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
