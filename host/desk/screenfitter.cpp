// SPDX-License-Identifier: MIT
#include "desk/screenfitter.h"

#include "desk/contentscroller.h"

#include <QtCore/QEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QWidget>

#include <algorithm>

namespace vexdesk {

namespace {

bool isToFit(const QWidget& window)
{
    const Qt::WindowType type = window.windowType();
    return (type == Qt::Window || type == Qt::Dialog) && window.isVisible() &&
           !window.testAttribute(Qt::WA_DontShowOnScreen) &&
           !(window.windowState() &
             (Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen));
}

void fit(QWidget* window)
{
    if (!isToFit(*window))
        return;
    const QRect available = window->screen()->availableGeometry();
    const QSize margins = window->frameGeometry().size() - window->size();
    const QSize most = available.size() - margins;
    const QSize size = window->size().boundedTo(most);
    if (size != window->size()) {
        window->setMinimumSize(window->minimumSize().boundedTo(most));
        window->resize(size);
        ContentScroller::attach(window);
    }
    const QSize frame = size + margins;
    const QPoint place(std::clamp(window->x(), available.left(),
                                  available.left() + available.width() - frame.width()),
                       std::clamp(window->y(), available.top(),
                                  available.top() + available.height() - frame.height()));
    if (place != window->pos())
        window->move(place);
}

void fitFramed(QWidget* window)
{
    fit(window);
    ContentScroller::askAgain(window);
}

} // namespace

ScreenFitter::ScreenFitter(QObject* parent)
    : QObject(parent)
{}

ScreenFitter::~ScreenFitter() = default;

bool ScreenFitter::eventFilter(QObject* watched, QEvent* event)
{
    auto* const window = qobject_cast<QWidget*>(watched);
    if (!window || !window->isWindow())
        return false;
    // After the window itself has seen the event: it may resize itself there.
    const auto fitSoon = [window](void (*fits)(QWidget*) = fit) {
        QMetaObject::invokeMethod(
            window, [window, fits] { fits(window); }, Qt::QueuedConnection);
    };
    switch (event->type()) {
    case QEvent::Show:
        m_new.insert(window);
        fitSoon();
        break;
    case QEvent::WindowActivate:
        // Only now is the frame there that the window manager puts around it.
        if (m_new.remove(window))
            fitSoon(fitFramed);
        break;
    case QEvent::Resize:
        if (window->windowType() == Qt::Dialog && !event->spontaneous())
            fitSoon();
        break;
    default:
        break;
    }
    return false;
}

} // namespace vexdesk
