// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>

class QWidget;

namespace vexdesk {

/// Remembers that the terminal was to close while a window in its way has work to end first, and
/// tells when that window has closed after all. Whatever the user does meanwhile, in any window, is
/// the end of the wish, and so is an answer that he gives when the window asks: who has told it to
/// stay would be surprised to lose the terminal with it later. User-interface thread.
class PendingClose final : public QObject
{
    Q_OBJECT

public:
    explicit PendingClose(QObject* parent = nullptr);
    ~PendingClose() override;

    /// Windows are about to be asked to close.
    void begin();
    /// This one has refused.
    void waitFor(QWidget* window);
    void stop();

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// The way may be free now.
    void windowClosed();

private:
    void tell();

    QPointer<QWidget> m_window;
    bool m_hasWish = false;
};

} // namespace vexdesk
