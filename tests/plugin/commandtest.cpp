// SPDX-License-Identifier: MIT
#include "commandtest.h"

#include "support/modalsteps.h"
#include "support/userhands.h"

#include <vexdesk/action.h>
#include <vexdesk/actionmanager.h>
#include <vexdesk/iplugin.h>
#include <vexdesk/terminal/core.h>

#include <QtCore/QPluginLoader>
#include <QtGui/QCloseEvent>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
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

LoadedPlugin::LoadedPlugin()
    : m_user(QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("user")))
    , m_core(std::make_unique<vexdesk::Core>())
    , m_loader(std::make_unique<QPluginLoader>(QStringLiteral(TADATAMANAGER_FILE)))
{
    // A run that was ended from outside leaves its folder, which is no part of this test.
    QVERIFY(m_user.removeRecursively());
    auto* const plugin = qobject_cast<IPlugin*>(m_loader->instance());
    QVERIFY2(plugin, qPrintable(m_loader->errorString()));
    plugin->init(m_core.get());
}

LoadedPlugin::~LoadedPlugin()
{
    const QWidgetList left = QApplication::topLevelWidgets();
    for (const QWidget* const widget : left) {
        if (widget->isVisible())
            QTest::qFail(widget->metaObject()->className(), __FILE__, __LINE__);
    }
    delete m_loader->instance();
    m_loader->unload();
    m_core.reset();
    m_user.removeRecursively();
}

void LoadedPlugin::trigger(const char* command)
{
    ActionManager::instance()->action(command)->trigger();
}

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

void readBox(ModalSteps& steps, Shown* shown)
{
    steps.on<QMessageBox>([shown](QMessageBox* box) {
        *shown = {box->windowTitle(),
                  box->text(),
                  box->icon(),
                  box->standardButtons(),
                  box->parentWidget() != nullptr,
                  box->textFormat(),
                  titleFits(*box),
                  box->detailedText()};
        click(box->button(QMessageBox::Ok));
    });
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
