// SPDX-License-Identifier: MIT
#include "filedrop.h"

#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QDropEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>

FileDrop::FileDrop(QWidget* window, QObject* parent)
    : QObject(parent)
    , m_window(window)
{
    window->setAcceptDrops(true);
    window->installEventFilter(this);
}

FileDrop::FileDrop(QObject* parent)
    : QObject(parent)
{
    qApp->installEventFilter(this);
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* const window : windows) {
        if (qobject_cast<QMainWindow*>(window))
            window->setAcceptDrops(true);
    }
}

FileDrop::~FileDrop() = default;

QStringList FileDrop::filesOf(const QMimeData* data)
{
    QStringList files;
    const QList<QUrl> urls = data->urls();
    for (const QUrl& url : urls) {
        if (!url.isLocalFile())
            return {};
        files.append(url.toLocalFile());
    }
    return files;
}

bool FileDrop::isMine(const QObject* watched) const
{
    return m_window ? watched == m_window : qobject_cast<const QMainWindow*>(watched) != nullptr;
}

bool FileDrop::eventFilter(QObject* watched, QEvent* event)
{
    // Every event of the application comes here: most go by their type alone.
    switch (event->type()) {
    case QEvent::Show:
        if (isMine(watched))
            static_cast<QWidget*>(watched)->setAcceptDrops(true);
        return false;
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        break;
    default:
        return false;
    }
    if (!isMine(watched))
        return false;
    auto* const drop = static_cast<QDropEvent*>(event);
    const QStringList files = filesOf(drop->mimeData());
    if (files.isEmpty())
        return false;
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (event->type() == QEvent::Drop)
        Q_EMIT dropped(files);
    return true;
}
