// SPDX-License-Identifier: MIT
#include "tadatamanager.h"

#include "editortadatadialog.h"
#include "exportertadata.h"
#include "importertadata.h"
#include "purge.h"
#include "purgesettings.h"
#include "tadatamanagerpropertiespage.h"

#include <vexdesk/action.h>
#include <vexdesk/actionmanager.h>
#include <vexdesk/appsettings.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>
#include <vexdesk/history/storepaths.h>
#include <vexdesk/icore.h>

TADataManager::TADataManager() = default;
TADataManager::~TADataManager() = default;

QByteArrayView TADataManager::code() const
{
    return "tadatamanager";
}

QString TADataManager::name() const
{
    return tr("Управление данными ТА");
}

QString TADataManager::author() const
{
    return tr("Орвента");
}

QString TADataManager::version() const
{
    return QStringLiteral(TADATA_VERSION);
}

QString TADataManager::description() const
{
    return tr("Управление историческими данными для графиков");
}

void TADataManager::init(ICore* core)
{
    createMenu();
    core->addOptionsPage(new TADataManagerPropertiesPage(this));
    removeOldSecondFiles();
    // By text: the notifier's class is the terminal's own.
    connect(core->notifier(), SIGNAL(aNewDay()), this, SLOT(removeOldSecondFiles()));
}

void TADataManager::tini()
{}

void TADataManager::initStage(IPlugin::InitStage)
{}

void TADataManager::createMenu()
{
    CommandContainer* const menu = ActionManager::instance()->container(
        "TA", tr("Тех. &анализ"), "MenuBar", QByteArray(), "25");
    auto* const commands = new CommandContainer("100", this);
    commands->setTitle(tr("&Управление данными ТА"));
    menu->addContainer(commands, "B", QByteArray());

    createMenuCommand(commands, "1_Import", QIcon(QStringLiteral(":qm/icons/import.png")),
                      tr("&Импортировать..."), SLOT(importTAData()),
                      QKeySequence(Qt::SHIFT | Qt::Key_I));
    createMenuCommand(commands, "2_Export", QIcon(QStringLiteral(":qm/icons/export.png")),
                      tr("&Экспортировать..."), SLOT(exportTAData()),
                      QKeySequence(Qt::SHIFT | Qt::Key_X));
    createMenuCommand(commands, "3_Edit", QIcon(QStringLiteral(":qm/icons/edit.png")),
                      tr("&Редактировать..."), SLOT(editTAData()),
                      QKeySequence(Qt::SHIFT | Qt::Key_D));
}

void TADataManager::createMenuCommand(CommandContainer* container, const QByteArray& id,
                                      const QIcon& icon, const QString& text, const char* member,
                                      const QKeySequence& shortcut)
{
    auto* const command = new Command(id, this);
    command->setCategory(tr("Технический анализ"));
    command->setDefaultIcon(icon);
    command->setDefaultText(text);
    command->setContext(Command::GlobalContext);
    command->setDefaultShortcut(shortcut);

    // The terminal ties the action to the command of the same id.
    auto* const action = new Action(id, this);
    connect(action, SIGNAL(triggered()), this, member);

    container->addCommand(command, QByteArray(), QByteArray());
}

void TADataManager::importTAData()
{
    ImporterTAData::doImport();
}

void TADataManager::exportTAData()
{
    ExporterTAData::doExport();
}

void TADataManager::editTAData()
{
    EditorTADataDialog dialog(nullptr);
    dialog.exec();
}

void TADataManager::removeOldSecondFiles() const
{
    const AppSettings settings{QLatin1String(tadata::PurgeSettings::group)};
    const auto rule = tadata::PurgeSettings::from(settings);
    if (rule.deleteSeconds)
        tadata::removeOldSecondFiles(vexdesk::storeRoot(), QDate::currentDate(), rule.storeForDays);
}
