// SPDX-License-Identifier: MIT
#include "tadataquality.h"

#include "healthwindow.h"
#include "pointswindow.h"
#include "safeimportwindow.h"

#include <vexdesk/action.h>
#include <vexdesk/actionmanager.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>

#include <QtGui/QIcon>
#include <QtGui/QKeySequence>

namespace {

// The one that is open, or a new one.
template <typename Window>
Window* windowOf(QPointer<Window>& window)
{
    if (!window) {
        window = new Window;
        window->setAttribute(Qt::WA_DeleteOnClose);
        // The terminal ends with its own window.
        window->setAttribute(Qt::WA_QuitOnClose, false);
    }
    return window;
}

void bringToFront(QWidget* window)
{
    if (window->isMinimized())
        window->showNormal();
    window->show();
    window->raise();
    window->activateWindow();
}

} // namespace

TADataQuality::TADataQuality() = default;

TADataQuality::~TADataQuality()
{
    closeWindows();
}

QByteArrayView TADataQuality::code() const
{
    return "tadataquality";
}

QString TADataQuality::name() const
{
    return tr("Качество данных ТА");
}

QString TADataQuality::author() const
{
    return tr("Орвента");
}

QString TADataQuality::version() const
{
    return QStringLiteral(TADATAQUALITY_VERSION);
}

QString TADataQuality::description() const
{
    return tr("Безопасный импорт, здоровье и точки восстановления исторических данных");
}

void TADataQuality::init(ICore*)
{
    createMenu();
}

void TADataQuality::tini()
{
    closeWindows();
}

void TADataQuality::initStage(IPlugin::InitStage)
{}

void TADataQuality::closeWindows()
{
    delete m_safeImport.data();
    delete m_health.data();
    delete m_points.data();
}

void TADataQuality::createMenu()
{
    CommandContainer* const menu = ActionManager::instance()->container(
        "TA", tr("Тех. &анализ"), "MenuBar", QByteArray(), "25");
    auto* const commands = new CommandContainer("TADataQuality", this);
    commands->setTitle(tr("&Качество данных ТА"));
    menu->addContainer(commands, "B", "Quality");

    createMenuCommand(commands, "TADataQuality.SafeImport", QStringLiteral("safeimport"),
                      tr("&Безопасный импорт..."), &TADataQuality::showSafeImport,
                      QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_I));
    createMenuCommand(commands, "TADataQuality.Health", QStringLiteral("health"),
                      tr("&Здоровье данных..."), &TADataQuality::showHealth,
                      QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_H));
    createMenuCommand(commands, "TADataQuality.Points", QStringLiteral("points"),
                      tr("&Точки восстановления..."), &TADataQuality::showPoints,
                      QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));
}

void TADataQuality::createMenuCommand(CommandContainer* container, const QByteArray& id,
                                      const QString& icon, const QString& text,
                                      void (TADataQuality::*member)(), const QKeySequence& shortcut)
{
    auto* const command = new Command(id, this);
    command->setCategory(tr("Технический анализ"));
    command->setDefaultIcon(QIcon(QStringLiteral(":/quality/icons/%1.png").arg(icon)));
    command->setDefaultText(text);
    command->setContext(Command::GlobalContext);
    command->setDefaultShortcut(shortcut);

    // The terminal ties the action to the command of the same id.
    auto* const action = new Action(id, this);
    connect(action, &Action::triggered, this, member);

    container->addCommand(command, QByteArray(), QByteArray());
}

void TADataQuality::showSafeImport()
{
    bringToFront(windowOf(m_safeImport));
}

void TADataQuality::showHealth()
{
    bringToFront(windowOf(m_health));
}

void TADataQuality::showPoints()
{
    bringToFront(windowOf(m_points));
}
