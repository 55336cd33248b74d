// SPDX-License-Identifier: MIT
#include "desk/pendingclose.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtWidgets/QWidget>

namespace vexdesk {

namespace {

bool isOfTheUser(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::Shortcut:
    case QEvent::MouseButtonPress:
    case QEvent::Wheel:
    case QEvent::Drop:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
        return true;
    default:
        return false;
    }
}

} // namespace

PendingClose::PendingClose(QObject* parent)
    : QObject(parent)
{}

PendingClose::~PendingClose() = default;

void PendingClose::begin()
{
    stop();
    m_hasWish = true;
    QCoreApplication::instance()->installEventFilter(this);
}

void PendingClose::waitFor(QWidget* window)
{
    if (!m_hasWish)
        return;
    m_window = window;
    connect(window, &QObject::destroyed, this, &PendingClose::tell);
}

void PendingClose::stop()
{
    QCoreApplication::instance()->removeEventFilter(this);
    if (m_window)
        disconnect(m_window, nullptr, this, nullptr);
    m_window.clear();
    m_hasWish = false;
}

bool PendingClose::eventFilter(QObject* watched, QEvent* event)
{
    if (isOfTheUser(*event))
        stop();
    else if (m_window && watched == m_window && event->type() == QEvent::Hide &&
             !event->spontaneous())
        tell();
    return false;
}

// Later: the window is not done with its own closing.
void PendingClose::tell()
{
    stop();
    QMetaObject::invokeMethod(this, &PendingClose::windowClosed, Qt::QueuedConnection);
}

} // namespace vexdesk
