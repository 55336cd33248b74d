// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QSize>

class QScrollBar;
class QWidget;

namespace vexdesk {

/// Lets the user reach everything in a window that is smaller than its contents need: scroll bars
/// stand at its edges for as long as that is so, the wheel turns them where nothing else takes it,
/// and what gets the focus is moved into sight. A window needs to know nothing of it, but its
/// layout is that of a child of it from here on.
///
/// Owned by the window. User-interface thread only.
class ContentScroller final : public QObject
{
    Q_OBJECT

public:
    /// Gives the window a scroller when its contents do not fit and it has none. Does nothing for a
    /// window without a layout, which would tell what it needs, and for main windows and message
    /// boxes, which rely on their own.
    static void attach(QWidget* window);
    /// Has a window that was just put on the screen ask for its size again: a window manager may
    /// have answered to the first size after that. Does nothing for a window without a scroller.
    static void askAgain(QWidget* window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    ContentScroller(QWidget* window, QWidget* contents);

    void update();
    void ask(const QSize& wanted);
    void reveal(const QWidget* widget);

    QWidget* m_window;
    QPointer<QWidget> m_contents; // all of the window's, with its layout; it may delete them
    QSize m_asked;                // the largest size that was asked for
    QScrollBar* m_across;
    QScrollBar* m_down;
};

} // namespace vexdesk
