// SPDX-License-Identifier: MIT
#include "desk/contentscroller.h"

#include <QtGui/QScreen>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLayout>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QScrollBar>

#include <algorithm>
#include <utility>

namespace vexdesk {

namespace {

// A child that fills the window and lays out all that it shows, as wizards have it; null without
// one.
QWidget* filler(const QWidget* window)
{
    const auto children = window->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    const auto found = std::find_if(children.begin(), children.end(), [window](QWidget* child) {
        return child->layout() && child->isVisible() && child->rect() == window->rect();
    });
    return found == children.end() ? nullptr : *found;
}

// A new one, to which the window's layout goes with all that is in it.
QWidget* makeFiller(QWidget* window)
{
    QWidget* const focus = window->focusWidget();
    auto* const contents = new QWidget(window);
    contents->setLayout(window->layout());
    contents->show();
    if (focus)
        focus->setFocus();
    return contents;
}

// Turns the bar so that what reaches from one place of the view to another is seen, its begin
// first.
void bringIntoView(QScrollBar* bar, int from, int to)
{
    if (from < 0)
        bar->setValue(bar->value() + from);
    else if (to > bar->pageStep())
        bar->setValue(bar->value() + std::min(to - bar->pageStep(), from));
}

// What is laid out needs in a view of this width.
QSize neededSize(const QLayout& layout, int width)
{
    QSize size = layout.minimumSize();
    if (layout.hasHeightForWidth()) {
        const int height = layout.heightForWidth(std::max(size.width(), width));
        size.setHeight(std::max(size.height(), height));
    }
    return size;
}

} // namespace

void ContentScroller::attach(QWidget* window)
{
    if (qobject_cast<QMainWindow*>(window) || qobject_cast<QMessageBox*>(window) ||
        window->findChild<ContentScroller*>(QString(), Qt::FindDirectChildrenOnly))
        return;
    QWidget* const contents = window->layout() ? window : filler(window);
    if (!contents)
        return;
    const QSize needed = neededSize(*contents->layout(), window->width());
    if (needed.boundedTo(window->size()) != needed)
        new ContentScroller(window, contents == window ? makeFiller(window) : contents);
}

void ContentScroller::askAgain(QWidget* window)
{
    auto* const scroller =
        window->findChild<ContentScroller*>(QString(), Qt::FindDirectChildrenOnly);
    if (!scroller)
        return;
    scroller->m_asked = QSize();
    scroller->update();
}

ContentScroller::ContentScroller(QWidget* window, QWidget* contents)
    : QObject(window)
    , m_window(window)
    , m_contents(contents)
    , m_across(new QScrollBar(Qt::Horizontal, window))
    , m_down(new QScrollBar(Qt::Vertical, window))
{
    for (QScrollBar* const bar : {m_across, m_down}) {
        bar->setSingleStep(window->fontMetrics().height());
        bar->setAutoFillBackground(true);
        bar->hide();
        connect(bar, &QScrollBar::valueChanged, this, [this] {
            if (m_contents)
                m_contents->move(-m_across->value(), -m_down->value());
        });
    }
    window->installEventFilter(this);
    contents->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now && m_contents && m_contents->isAncestorOf(now))
            reveal(now);
    });
    update();
    if (const QWidget* const focus = window->focusWidget())
        reveal(focus);
}

bool ContentScroller::eventFilter(QObject* watched, QEvent* event)
{
    // The window resizes a child of its own together with itself.
    if (event->type() == QEvent::Resize ||
        (watched == m_contents && event->type() == QEvent::LayoutRequest))
        update();
    if (watched != m_window || event->type() != QEvent::Wheel)
        return false;
    const auto* const wheel = static_cast<QWheelEvent*>(event);
    QScrollBar* const bar = wheel->angleDelta().y() != 0 ? m_down : m_across;
    return bar->isVisible() && QCoreApplication::sendEvent(bar, event);
}

void ContentScroller::update()
{
    if (!m_contents || !m_contents->layout())
        return;
    const QSize room = m_window->size();
    const int thickness = m_down->sizeHint().width();
    QSize view = room;
    QSize needed;
    // Each bar takes room, for which the other one may be needed then.
    for (int i = 0; i < 3; ++i) {
        needed = neededSize(*m_contents->layout(), view.width());
        view = room - QSize(needed.height() > view.height() ? thickness : 0,
                            needed.width() > view.width() ? thickness : 0);
    }
    const QSize hidden = (needed - view).expandedTo(QSize(0, 0));
    m_contents->resize(view + hidden);
    m_across->setPageStep(view.width());
    m_across->setRange(0, hidden.width());
    m_across->setGeometry(0, view.height(), view.width(), thickness);
    m_across->setVisible(hidden.width() > 0);
    m_across->raise();
    m_down->setPageStep(view.height());
    m_down->setRange(0, hidden.height());
    m_down->setGeometry(view.width(), 0, thickness, room.height());
    m_down->setVisible(hidden.height() > 0);
    m_down->raise();
    ask(needed + room - view);
}

// The layout is no longer that of the window, so nothing else makes a dialog larger for contents
// that have grown.
void ContentScroller::ask(const QSize& wanted)
{
    const QSize before = std::exchange(m_asked, m_asked.expandedTo(wanted));
    if (m_asked == before || m_window->windowType() != Qt::Dialog)
        return;
    const QSize frame = m_window->frameGeometry().size() - m_window->size();
    const QSize most = m_window->screen()->availableSize() - frame;
    m_window->resize(m_window->size().expandedTo(wanted.boundedTo(most)));
}

void ContentScroller::reveal(const QWidget* widget)
{
    m_contents->layout()->activate();
    const QRect place(widget->mapTo(m_window, QPoint()), widget->size());
    bringIntoView(m_across, place.left(), place.left() + place.width());
    bringIntoView(m_down, place.top(), place.top() + place.height());
}

} // namespace vexdesk
