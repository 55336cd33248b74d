// SPDX-License-Identifier: MIT
#include "support/commandwindows.h"

#include "support/hands.h"
#include "support/loadedplugin.h"
#include "support/modalsteps.h"
#include "support/userhands.h"

#include <QtCore/QThreadPool>
#include <QtGui/QCloseEvent>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QProgressDialog>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>

namespace testsupport {

namespace {

// The title in bold letters, and beside it an icon and three buttons.
bool titleFits(const QMessageBox& box)
{
    QFont bold = box.font();
    bold.setBold(true);
    const int button = box.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &box);
    return box.width() >= QFontMetrics(bold).horizontalAdvance(box.windowTitle()) + 4 * button;
}

} // namespace

char* toString(const Shown& shown)
{
    const QString text = QStringLiteral("%1 / %2 / icon %3 / buttons %4 / parent %5 / "
                                        "format %6 / title fits %7 / %8")
                             .arg(shown.title, shown.text)
                             .arg(shown.icon)
                             .arg(shown.buttons.toInt(), 0, 16)
                             .arg(shown.hasParent)
                             .arg(shown.format)
                             .arg(shown.titleFits)
                             .arg(shown.details);
    return qstrdup(qPrintable(text));
}

Shown warning(const QString& title, const QString& text)
{
    return {.title = title,
            .text = text,
            .icon = QMessageBox::Warning,
            .buttons = QMessageBox::Ok,
            .hasParent = false};
}

Shown information(const QString& title, const QString& text)
{
    return {.title = title,
            .text = text,
            .icon = QMessageBox::Information,
            .buttons = QMessageBox::Ok,
            .hasParent = false};
}

void run(const ModalSteps& steps, const char* command)
{
    LoadedPlugin::trigger(command);
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
}

Shown lastBox(ModalSteps& steps, const char* command)
{
    Shown shown;
    steps.on<QMessageBox>([&shown](QMessageBox* box) {
        shown = {box->windowTitle(),
                 box->text(),
                 box->icon(),
                 box->standardButtons(),
                 box->parentWidget() != nullptr,
                 box->textFormat(),
                 titleFits(*box),
                 box->detailedText()};
        click(box->button(QMessageBox::Ok));
    });
    run(steps, command);
    return shown;
}

void checkThatItStays(QProgressDialog* dialog, const QString& title, const QString& text)
{
    QVERIFY(!dialog->parentWidget());
    QVERIFY(dialog->isModal());
    QCOMPARE(dialog->windowTitle(), title);
    QCOMPARE(dialog->labelText(), text);
    QCOMPARE(dialog->minimum(), 0);
    QCOMPARE(dialog->maximum(), 100);
    QVERIFY(dialog->findChildren<QAbstractButton*>().isEmpty());
    // The toolkit adds the menu that a minimise button needs.
    QCOMPARE(dialog->windowFlags() & ~Qt::WindowSystemMenuHint, Qt::Dialog | Qt::WindowTitleHint |
                                                                    Qt::WindowMinimizeButtonHint |
                                                                    Qt::CustomizeWindowHint);

    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Space})
        hands::keyClick(dialog, key);
    hands::keyClick(dialog, Qt::Key_Period, Qt::ControlModifier);
    // In an X server the window manager has this key, and closes the window from outside.
    QTest::keyClick(dialog, Qt::Key_F4, Qt::AltModifier);
    QVERIFY(dialog->isVisible());
    QVERIFY(!closeFromOutside(dialog));
    // What these might have asked for later.
    QCoreApplication::processEvents();
    QVERIFY(dialog->isVisible());
    QCOMPARE(QApplication::activeModalWidget(), dialog);
    QVERIFY(!dialog->wasCanceled());
    // The thread of an earlier job may not have come to rest yet.
    QTRY_COMPARE(QThreadPool::globalInstance()->activeThreadCount(), 1);
}

bool closeFromOutside(QWidget* window)
{
    QCloseEvent event;
    QCoreApplication::sendEvent(window->windowHandle(), &event);
    return event.isAccepted();
}

WhenShown::WhenShown(const char* className, std::function<void(QWidget*)> act)
    : m_className(className)
    , m_act(std::move(act))
{
    qApp->installEventFilter(this);
}

bool WhenShown::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && watched->isWidgetType() &&
        watched->inherits(m_className)) {
        ++m_times;
        m_act(static_cast<QWidget*>(watched));
    }
    return false;
}

} // namespace testsupport
