// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QAbstractNativeEventFilter>
#include <QtCore/QPoint>
#include <QtCore/Qt>
#include <QtGui/qwindowdefs.h>

#include <optional>

namespace testsupport {

/// The mouse and the keyboard of the X server that has our windows (its extension XTEST).
class XServerInput final : public QAbstractNativeEventFilter
{
public:
    /// A key as it lies on the keyboard, and what is held meanwhile.
    struct Stroke
    {
        unsigned int code;
        Qt::KeyboardModifiers modifiers;
    };

    /// Null where the windows are not those of an X server.
    static XServerInput* instance();

    /// Where the server has put this window, in pixels of the screen.
    std::optional<QPoint> placeOf(WId window) const;
    /// Whether the server gives this window the keys.
    bool givesKeysTo(WId window) const;

    /// Nothing where the keyboard has no such key.
    std::optional<Stroke> strokeOf(Qt::Key key) const;
    std::optional<Stroke> strokeOf(char character) const;

    void moveTo(QPoint place);
    void press(Qt::MouseButton button);
    void release(Qt::MouseButton button);
    void hold(Qt::KeyboardModifiers modifiers);
    void letGo(Qt::KeyboardModifiers modifiers);
    void type(const Stroke& stroke);

    /// Waits until the windows have had everything; false when a press does not come to them.
    [[nodiscard]] bool arrived();

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

private:
    XServerInput();
    ~XServerInput() override;
    Q_DISABLE_COPY_MOVE(XServerInput)

    std::optional<Stroke> strokeOfSymbol(unsigned long symbol) const;
    void key(unsigned long symbol, bool down);

    struct Server;
    Server* const m_server;
    // Both come in the order in which they are sent.
    int m_pressesSent = 0;
    int m_pressesSeen = 0;
    int m_marksSent = 0;
    int m_marksSeen = 0;
};

} // namespace testsupport
