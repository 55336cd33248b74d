// SPDX-License-Identifier: MIT
// A plug-in as it should be: commands in the menus, an options page, every call recorded.
#include "emptypage.h"
#include "recordingplugin.h"

#include <vexdesk/action.h>
#include <vexdesk/actionmanager.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>
#include <vexdesk/database/idatabase.h>
#include <vexdesk/database/table.h>
#include <vexdesk/icore.h>

#include <QtCore/QTimer>
#include <QtCore/QtPlugin>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>

#include <stdexcept>

namespace {

// Shows that code of the library ran, however far the loading came.
[[maybe_unused]] const bool codeRan = qputenv("DESK_TEST_GOOD_RAN", "1");

desktest::EmptyPage::Names pageNames()
{
    return {.id = QStringLiteral("GOOD.General"),
            .page = QStringLiteral("Общие"),
            .category = QStringLiteral("GOOD"),
            .shownCategory = QStringLiteral("Проверка")};
}

} // namespace

class Good final : public desktest::RecordingPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "qgui.plugin.desktest.Good")
    Q_INTERFACES(IPlugin)

public:
    Good()
        : RecordingPlugin("GOOD")
    {}

    QByteArrayView code() const override { return "GOOD"; }
    QString name() const override { return QStringLiteral("История котировок"); }
    QString version() const override { return QStringLiteral("7.6"); }
    QString description() const override
    {
        return QStringLiteral("Импорт, экспорт и правка истории");
    }

    void init(ICore* core) override;
    void tini() override;
    void initStage(InitStage stage) override;

private:
    void addCommand(CommandContainer* menu, const QByteArray& id, const QString& text, Qt::Key key,
                    QStyle::StandardPixmap picture);
    void chooseCommand();
    void countDeals() const;

    desktest::EmptyPage m_page{pageNames()};
    desktest::EmptyPage m_latePage{pageNames()};
    ICore* m_core = nullptr;
};

void Good::init(ICore* core)
{
    RecordingPlugin::init(core);
    m_core = core;
    core->addOptionsPage(&m_page);
    ActionManager* const manager = ActionManager::instance();
    manager->container("TA", QStringLiteral("Тех. &анализ"), "MenuBar", "", "25");
    CommandContainer* const menu =
        manager->container("TA.History", QStringLiteral("&История"), "TA", "B", "10");
    addCommand(menu, "GOOD.Import", QStringLiteral("&Импорт..."), Qt::Key_I, QStyle::SP_ArrowDown);
    addCommand(menu, "GOOD.Export", QStringLiteral("&Экспорт..."), Qt::Key_X, QStyle::SP_ArrowUp);
    addCommand(menu, "GOOD.Edit", QStringLiteral("&Правка..."), Qt::Key_D,
               QStyle::SP_FileDialogDetailedView);
}

void Good::addCommand(CommandContainer* menu, const QByteArray& id, const QString& text,
                      Qt::Key key, QStyle::StandardPixmap picture)
{
    auto* const command = new Command(id, this);
    command->setDefaultText(text);
    command->setDefaultIcon(QApplication::style()->standardIcon(picture));
    command->setDefaultShortcut(QKeySequence(Qt::SHIFT | key));
    command->setContext(Command::GlobalContext);
    menu->addCommand(command, "", QByteArray::number(menu->entries().size()));
    connect(new Action(id, this), &Action::triggered, this, [id] {
        desktest::recordCall(QString::fromLatin1(id));
        if (id == "GOOD.Export")
            throw std::runtime_error("Экспорт невозможен");
    });
}

// As a user: chooses a command of the terminal, answers what it asks, and leaves.
void Good::chooseCommand()
{
    desktest::recordCall(QStringLiteral("GOOD.arguments ") +
                         QCoreApplication::arguments().mid(1).join(u' '));
    QTimer answers;
    connect(&answers, &QTimer::timeout, this, [] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || !box->isVisible())
            return;
        desktest::recordCall(QStringLiteral("GOOD.answers ") + box->defaultButton()->text());
        box->defaultButton()->click();
    });
    answers.start(1);
    ActionManager::instance()->action(qgetenv("DESK_TEST_CHOOSE"))->trigger();
    QCoreApplication::quit();
}

// What an export of today would find.
void Good::countDeals() const
{
    const Table* const deals = m_core->database()->table(QStringLiteral("all_deals"));
    if (!deals) {
        desktest::recordCall(QStringLiteral("GOOD.deals none"));
        return;
    }
    const std::lock_guard lock(*deals);
    desktest::recordCall(deals->masterIndex().isEmpty() ? QStringLiteral("GOOD.deals 0")
                                                        : QStringLiteral("GOOD.deals some"));
}

void Good::tini()
{
    RecordingPlugin::tini();
    if (desktest::hasToThrow(QStringLiteral("GOOD.tini")))
        throw QStringLiteral("не закрывается");
}

void Good::initStage(InitStage stage)
{
    RecordingPlugin::initStage(stage);
    if (stage == InitStage::PluginsReady) {
        m_core->addOptionsPage(&m_latePage);
    } else {
        if (qEnvironmentVariableIsSet("DESK_TEST_CHOOSE"))
            QTimer::singleShot(0, this, &Good::chooseCommand);
        if (qEnvironmentVariableIsSet("DESK_TEST_DEALS"))
            QTimer::singleShot(0, this, &Good::countDeals);
        if (qEnvironmentVariableIsSet("DESK_TEST_QUIT"))
            QMetaObject::invokeMethod(
                qApp, [] { QCoreApplication::quit(); }, Qt::QueuedConnection);
    }
    if (desktest::hasToThrow(QStringLiteral("GOOD.initStage")))
        throw std::runtime_error("ступень не пройдена");
}

#include "good.moc"
