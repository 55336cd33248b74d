// SPDX-License-Identifier: MIT
#include "support/eventually.h"
#include "support/serverhands.h"
#include "support/xserverinput.h"

#include <QtGui/QCursor>
#include <QtGui/QStyleHints>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <optional>

namespace hands {

namespace {

using testsupport::patience;
using testsupport::XServerInput;

QString nameOf(const QWidget* widget)
{
    return QStringLiteral("%1 \"%2\"")
        .arg(QLatin1String(widget->metaObject()->className()), widget->objectName());
}

QString says(const QWidget* widget, const char* what)
{
    return nameOf(widget) + u' ' + QLatin1String(what);
}

// As Qt Test does: no place is the middle, wherever that is by then.
QPoint placeIn(const QWidget* widget, QPoint place)
{
    return place.isNull() ? widget->rect().center() : place;
}

bool isOnTop(const QWidget* widget, QPoint place)
{
    const QWidget* const there =
        QApplication::widgetAt(widget->mapToGlobal(placeIn(widget, place)));
    return there == widget || widget->isAncestorOf(there);
}

// Whether a dialog keeps the user from it.
bool isBlocked(const QWidget* window)
{
    const QWidget* const modal = QApplication::activeModalWidget();
    for (const QWidget* one = window; modal && one; one = one->parentWidget()) {
        if (one == modal)
            return false;
    }
    return modal;
}

class XHands final : public ServerHands
{
public:
    explicit XHands(XServerInput& input)
        : m_input(input)
    {
        // On a slow machine a list opens later than a double click takes, and would be closed by
        // the release of the mouse that opened it.
        QApplication::setDoubleClickInterval(60'000);
    }
    ~XHands() = default;

    void press(QWidget* widget, Press how, Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
               QPoint place) override;
    void release(QWidget* widget, Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
                 QPoint place) override;
    void move(QWidget* widget, QPoint place) override;
    void type(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers) override
    {
        type(widget, m_input.strokeOf(key), modifiers);
    }
    void type(QWidget* widget, char character, Qt::KeyboardModifiers modifiers) override
    {
        type(widget, m_input.strokeOf(character), modifiers);
    }

private:
    Q_DISABLE_COPY_MOVE(XHands)

    bool isActive(const QWidget* window) const;
    std::optional<QPoint> placeOnScreen(const QWidget* widget, QPoint place) const;

    // What keeps a user from it; null when nothing does.
    QString obstacleTo(QWidget* window) const;
    // The mouse goes there.
    QString obstacleTo(QWidget* widget, QPoint place) const;
    QString obstacleToPress(QWidget* widget, QPoint place);
    QString obstacleToKeys(QWidget* widget) const;

    void type(QWidget* widget, std::optional<XServerInput::Stroke> stroke,
              Qt::KeyboardModifiers modifiers);

    XServerInput& m_input;
    QPoint m_pressedAt;
};

bool XHands::isActive(const QWidget* window) const
{
    // The application hears of it later than it happens.
    return QApplication::activeWindow() == window && m_input.givesKeysTo(window->effectiveWinId());
}

QString XHands::obstacleTo(QWidget* window) const
{
    if (!window->isVisible())
        return says(window, "is hidden");
    if (!QTest::qWaitForWindowExposed(window, patience))
        return says(window, "does not come to the screen");
    // A list or a menu that is open has mouse and keys, whichever window is active; and of a window
    // that waits for a dialog the dialog is.
    if (QApplication::activePopupWidget() || isBlocked(window))
        return {};
    // The window manager may have thought of another one meanwhile.
    constexpr int asksAgain = 1000;
    for (int waited = 0; waited < patience; waited += asksAgain) {
        if (QTest::qWaitFor([this, window] { return isActive(window); },
                            waited > 0 ? asksAgain : 0))
            return {};
        window->activateWindow();
    }
    return says(window, "does not become the active window");
}

// Nothing while the application believes that the window is where the server does not show it.
std::optional<QPoint> XHands::placeOnScreen(const QWidget* widget, QPoint place) const
{
    const QWidget* const window = widget->window();
    const std::optional<QPoint> origin = m_input.placeOf(window->effectiveWinId());
    const QPoint inWindow = widget->mapTo(window, placeIn(widget, place));
    const qreal ratio = window->devicePixelRatioF();
    if (!origin || *origin != (QPointF(window->mapToGlobal(QPoint())) * ratio).toPoint())
        return std::nullopt;
    return *origin + (QPointF(inWindow) * ratio).toPoint();
}

QString XHands::obstacleTo(QWidget* widget, QPoint place) const
{
    if (const QString obstacle = obstacleTo(widget->window()); !obstacle.isNull())
        return obstacle;
    const auto isReached = [&] {
        const std::optional<QPoint> where = placeOnScreen(widget, place);
        if (!where || !isOnTop(widget, place))
            return false;
        m_input.moveTo(*where);
        // What has just been shown is still being laid out.
        return m_input.arrived() && placeOnScreen(widget, place) == where && isOnTop(widget, place);
    };
    if (isReached())
        return {};
    widget->window()->raise();
    if (QTest::qWaitFor(isReached, patience))
        return {};
    const QWidget* const there =
        QApplication::widgetAt(widget->mapToGlobal(placeIn(widget, place)));
    return QStringLiteral("%1 does not come to lie below the mouse, but %2")
        .arg(nameOf(widget), there ? nameOf(there) : QStringLiteral("nothing"));
}

QString XHands::obstacleToKeys(QWidget* widget) const
{
    if (QWidget* const popup = QApplication::activePopupWidget()) {
        if (!QTest::qWaitForWindowExposed(popup, patience))
            return says(popup, "does not come to the screen");
        return widget->window() == popup || popup->focusProxy() == widget
                   ? QString()
                   : says(popup, "has the keys");
    }
    if (const QString obstacle = obstacleTo(widget->window()); !obstacle.isNull())
        return obstacle;
    if (widget->isWindow() || widget->hasFocus() ||
        widget->isAncestorOf(QApplication::focusWidget()))
        return {};
    if (widget->focusPolicy() != Qt::NoFocus)
        widget->setFocus();
    return widget->hasFocus() ? QString() : says(widget, "cannot have the focus");
}

QString XHands::obstacleToPress(QWidget* widget, QPoint place)
{
    const QString obstacle = obstacleTo(widget, place);
    const QPoint where = placeOnScreen(widget, place).value_or(QPoint());
    const int distance = 4 * QGuiApplication::styleHints()->mouseDoubleClickDistance();
    if (!obstacle.isNull() || (where - m_pressedAt).manhattanLength() >= distance)
        return obstacle;
    // Two clicks are no double click when the mouse has been elsewhere in between.
    const int middle = widget->window()->frameGeometry().center().x();
    m_input.moveTo(where + QPoint(where.x() < middle ? distance : -distance, 0));
    return m_input.arrived() ? obstacleTo(widget, place) : says(widget, "is left by no mouse");
}

void XHands::press(QWidget* widget, Press how, Qt::MouseButton button,
                   Qt::KeyboardModifiers modifiers, QPoint place)
{
    const QString obstacle = obstacleToPress(widget, place);
    QVERIFY2(obstacle.isNull(), qPrintable(obstacle));
    const QString name = nameOf(widget); // it may be gone afterwards
    m_pressedAt = placeOnScreen(widget, place).value_or(QPoint());
    m_input.hold(modifiers);
    for (int presses = how == Press::Twice ? 2 : 1; presses > 0; --presses) {
        m_input.press(button);
        if (how != Press::Held)
            m_input.release(button);
    }
    m_input.letGo(modifiers);
    QVERIFY2(m_input.arrived(),
             qPrintable(name + QLatin1String(" is not given the mouse's press")));
}

void XHands::release(QWidget* widget, Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
                     QPoint place)
{
    // What is dragged may be anywhere.
    const std::optional<QPoint> where = placeOnScreen(widget, place);
    QVERIFY2(where, qPrintable(nameOf(widget)));
    m_input.hold(modifiers);
    m_input.moveTo(*where);
    m_input.release(button);
    m_input.letGo(modifiers);
    QVERIFY(m_input.arrived());
}

void XHands::move(QWidget* widget, QPoint place)
{
    // A mouse that is there already has to come from beside it.
    if (const auto there = placeOnScreen(widget, place); there && *there == QCursor::pos()) {
        m_input.moveTo(*there + QPoint(1, 0));
        QVERIFY(m_input.arrived());
    }
    if (QGuiApplication::mouseButtons() == Qt::NoButton) {
        const QString obstacle = obstacleTo(widget, place);
        QVERIFY2(obstacle.isNull(), qPrintable(obstacle));
        return;
    }
    // What is dragged may be anywhere.
    const std::optional<QPoint> where = placeOnScreen(widget, place);
    QVERIFY2(where, qPrintable(nameOf(widget)));
    m_input.moveTo(*where);
    QVERIFY(m_input.arrived());
}

void XHands::type(QWidget* widget, std::optional<XServerInput::Stroke> stroke,
                  Qt::KeyboardModifiers modifiers)
{
    if (!widget)
        widget = QApplication::focusWidget();
    const QString obstacle = !stroke   ? QStringLiteral("The keyboard has no such key")
                             : !widget ? QStringLiteral("Nothing has the focus")
                                       : obstacleToKeys(widget);
    QVERIFY2(obstacle.isNull(), qPrintable(obstacle));
    const QString name = nameOf(widget); // it may be gone afterwards
    stroke->modifiers |= modifiers;
    m_input.type(*stroke);
    QVERIFY2(m_input.arrived(), qPrintable(name + QLatin1String(" is not given the key")));
}

} // namespace

ServerHands* handsOnX()
{
    XServerInput* const input = XServerInput::instance();
    if (!input)
        return nullptr;
    static XHands hands(*input);
    return &hands;
}

} // namespace hands
