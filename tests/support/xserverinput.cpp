// SPDX-License-Identifier: MIT
#include "support/xserverinput.h"

#include "support/eventually.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QGuiApplication>
#include <QtTest/QTest>

#include <array>
#include <utility>

// Their macros have the names of much else.
#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/XI2proto.h>
#include <X11/extensions/XInput2.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <xcb/xcb.h>

namespace testsupport {

namespace {

constexpr std::array<std::pair<Qt::KeyboardModifier, KeySym>, 4> modifierKeys{
    {{Qt::ShiftModifier, XK_Shift_L},
     {Qt::ControlModifier, XK_Control_L},
     {Qt::AltModifier, XK_Alt_L},
     {Qt::MetaModifier, XK_Super_L}}};

// Keys that write nothing, or nothing that is seen.
KeySym symbolOf(Qt::Key key)
{
    switch (key) {
    case Qt::Key_Escape:
        return XK_Escape;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return XK_Tab;
    case Qt::Key_Backspace:
        return XK_BackSpace;
    case Qt::Key_Return:
        return XK_Return;
    case Qt::Key_Enter:
        return XK_KP_Enter;
    case Qt::Key_Insert:
        return XK_Insert;
    case Qt::Key_Delete:
        return XK_Delete;
    case Qt::Key_Home:
        return XK_Home;
    case Qt::Key_End:
        return XK_End;
    case Qt::Key_Left:
        return XK_Left;
    case Qt::Key_Up:
        return XK_Up;
    case Qt::Key_Right:
        return XK_Right;
    case Qt::Key_Down:
        return XK_Down;
    case Qt::Key_PageUp:
        return XK_Page_Up;
    case Qt::Key_PageDown:
        return XK_Page_Down;
    case Qt::Key_Menu:
        return XK_Menu;
    default:
        break;
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12)
        return XK_F1 + static_cast<KeySym>(key - Qt::Key_F1);
    return NoSymbol;
}

unsigned int numberOf(Qt::MouseButton button)
{
    switch (button) {
    case Qt::LeftButton:
        return Button1;
    case Qt::MiddleButton:
        return Button2;
    case Qt::RightButton:
        return Button3;
    default:
        qFatal("A mouse has three buttons");
    }
}

} // namespace

struct XServerInput::Server
{
    Display* display = nullptr;
    Atom mark = None;
    int inputExtension = -1; // the mouse's events are those of this extension
    int pointer = 0;         // and of this device; the one that it stands for may be heard as well
};

XServerInput* XServerInput::instance()
{
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        return nullptr;
    static XServerInput input;
    return &input;
}

XServerInput::XServerInput()
    : m_server(new Server)
{
    m_server->display = XOpenDisplay(nullptr);
    int event = 0;
    int error = 0;
    int major = 2;
    int minor = 0;
    if (!m_server->display ||
        !XQueryExtension(m_server->display, "XInputExtension", &m_server->inputExtension, &event,
                         &error) ||
        XIQueryVersion(m_server->display, &major, &minor) != Success ||
        !XTestQueryExtension(m_server->display, &event, &error, &major, &minor))
        qFatal("The X server lacks XTEST or XInput 2");
    int count = 0;
    XIDeviceInfo* const devices = XIQueryDevice(m_server->display, XIAllMasterDevices, &count);
    for (int i = 0; i < count; ++i) {
        if (devices[i].use == XIMasterPointer)
            m_server->pointer = devices[i].deviceid;
    }
    XIFreeDeviceInfo(devices);
    m_server->mark = XInternAtom(m_server->display, "_TADATA_TEST_MARK", False);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

XServerInput::~XServerInput()
{
    XCloseDisplay(m_server->display);
    delete m_server;
}

std::optional<QPoint> XServerInput::placeOf(WId window) const
{
    Display* const display = m_server->display;
    int x = 0;
    int y = 0;
    Window child = None;
    if (!XTranslateCoordinates(display, window, DefaultRootWindow(display), 0, 0, &x, &y, &child))
        return std::nullopt;
    return QPoint(x, y);
}

bool XServerInput::givesKeysTo(WId window) const
{
    Window focus = None;
    int revert = 0;
    XGetInputFocus(m_server->display, &focus, &revert);
    return focus == window;
}

std::optional<XServerInput::Stroke> XServerInput::strokeOfSymbol(unsigned long symbol) const
{
    Display* const display = m_server->display;
    int first = 0;
    int last = 0;
    XDisplayKeycodes(display, &first, &last);
    for (const int level : {0, 1}) {
        for (int code = first; code <= last; ++code) {
            if (XkbKeycodeToKeysym(display, static_cast<KeyCode>(code), 0, level) == symbol)
                return Stroke{static_cast<unsigned int>(code),
                              level == 1 ? Qt::ShiftModifier : Qt::NoModifier};
        }
    }
    return std::nullopt;
}

std::optional<XServerInput::Stroke> XServerInput::strokeOf(Qt::Key key) const
{
    if (key >= Qt::Key_A && key <= Qt::Key_Z)
        return strokeOfSymbol(XK_a + static_cast<KeySym>(key - Qt::Key_A));
    if (key >= Qt::Key_Space && key <= Qt::Key_AsciiTilde)
        return strokeOf(static_cast<char>(key));
    const KeySym symbol = symbolOf(key);
    if (symbol == NoSymbol)
        return std::nullopt;
    std::optional<Stroke> stroke = strokeOfSymbol(symbol);
    if (stroke && key == Qt::Key_Backtab)
        stroke->modifiers |= Qt::ShiftModifier;
    return stroke;
}

std::optional<XServerInput::Stroke> XServerInput::strokeOf(char character) const
{
    // The symbols of ASCII have its numbers.
    return character >= ' ' && character <= '~'
               ? strokeOfSymbol(static_cast<unsigned long>(character))
               : std::nullopt;
}

void XServerInput::moveTo(QPoint place)
{
    XTestFakeMotionEvent(m_server->display, -1, place.x(), place.y(), CurrentTime);
}

void XServerInput::press(Qt::MouseButton button)
{
    XTestFakeButtonEvent(m_server->display, numberOf(button), True, CurrentTime);
    ++m_pressesSent;
}

void XServerInput::release(Qt::MouseButton button)
{
    XTestFakeButtonEvent(m_server->display, numberOf(button), False, CurrentTime);
}

void XServerInput::key(unsigned long symbol, bool down)
{
    const KeyCode code = XKeysymToKeycode(m_server->display, symbol);
    XTestFakeKeyEvent(m_server->display, code, down ? True : False, CurrentTime);
    if (down)
        ++m_pressesSent;
}

void XServerInput::hold(Qt::KeyboardModifiers modifiers)
{
    for (const auto& [modifier, symbol] : modifierKeys) {
        if (modifiers & modifier)
            key(symbol, true);
    }
}

void XServerInput::letGo(Qt::KeyboardModifiers modifiers)
{
    for (auto it = modifierKeys.crbegin(); it != modifierKeys.crend(); ++it) {
        if (modifiers & it->first)
            key(it->second, false);
    }
}

void XServerInput::type(const Stroke& stroke)
{
    // All at once: a key that is held repeats itself, however long its first press is worked on.
    hold(stroke.modifiers);
    XTestFakeKeyEvent(m_server->display, stroke.code, True, CurrentTime);
    ++m_pressesSent;
    XTestFakeKeyEvent(m_server->display, stroke.code, False, CurrentTime);
    letGo(stroke.modifiers);
}

bool XServerInput::arrived()
{
    // The window manager may look at a press first, and another client would not wait for that.
    XSync(m_server->display, False);
    const int presses = m_pressesSent;
    if (!QTest::qWaitFor([this, presses] { return m_pressesSeen >= presses; }, patience)) {
        m_pressesSeen = m_pressesSent;
        return false;
    }
    // A release may go to nobody, when the press has closed the window; what comes later than all
    // is a change of a property, which the windows of Qt listen to.
    const int mark = ++m_marksSent;
    const long value = mark;
    XChangeProperty(m_server->display, DefaultRootWindow(m_server->display), m_server->mark,
                    XA_CARDINAL, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(&value), 1);
    XFlush(m_server->display);
    return QTest::qWaitFor([this, mark] { return m_marksSeen >= mark; }, patience);
}

bool XServerInput::nativeEventFilter(const QByteArray& type, void* message, qintptr*)
{
    if (type != "xcb_generic_event_t")
        return false;
    const auto* const event = static_cast<const xcb_generic_event_t*>(message);
    switch (event->response_type & ~0x80) {
    case XCB_KEY_PRESS:
        ++m_pressesSeen;
        break;
    case XCB_GE_GENERIC: {
        const auto* const input = static_cast<const xXIDeviceEvent*>(message);
        if (input->extension == m_server->inputExtension && input->evtype == XI_ButtonPress &&
            input->deviceid == m_server->pointer)
            ++m_pressesSeen;
        break;
    }
    case XCB_PROPERTY_NOTIFY:
        if (static_cast<const xcb_property_notify_event_t*>(message)->atom == m_server->mark)
            ++m_marksSeen;
        break;
    default:
        break;
    }
    return false;
}

} // namespace testsupport
