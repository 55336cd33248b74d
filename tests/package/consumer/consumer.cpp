// SPDX-License-Identifier: MIT
// A whole plug-in: a menu entry that tells how many series, by timeframe, are stored.
#include <vexdesk/action.h>
#include <vexdesk/actionmanager.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>
#include <vexdesk/history/storecatalog.h>
#include <vexdesk/history/storepaths.h>
#include <vexdesk/iplugin.h>

#include <QtWidgets/QMessageBox>

class Consumer final : public QObject, public IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "qgui.plugin.consumer" FILE "consumer.json")
    Q_INTERFACES(IPlugin)

public:
    QByteArrayView code() const override { return "consumer"; }
    QString name() const override { return tr("Счётчик серий"); }
    QString author() const override { return tr("Пример"); }
    QString version() const override { return QStringLiteral("1.0"); }
    QString description() const override { return tr("Считает серии в хранилище"); }

    void init(ICore*) override
    {
        auto* const command = new Command("Consumer.Count", this);
        command->setDefaultText(tr("&Сколько серий?"));
        command->setContext(Command::GlobalContext);
        CommandContainer* const menu = ActionManager::instance()->container(
            "TA", tr("Тех. &анализ"), "MenuBar", QByteArray(), "25");
        menu->addCommand(command, "C", QByteArray());

        auto* const action = new Action("Consumer.Count", this);
        connect(action, &Action::triggered, this, [] {
            const auto count = vexdesk::listStore(vexdesk::storeRoot()).size();
            QMessageBox::information(nullptr, tr("Счётчик серий"),
                                     tr("Хранится серий и таймфреймов: %1").arg(count));
        });
    }
    void initStage(InitStage) override {}
    void tini() override {}
};

#include "consumer.moc"
