// SPDX-License-Identifier: MIT
// Its init adds a page and a command, and throws what the application's property "throwType" says.
#include "callrecord.h"

#include <vexdesk/actionmanager.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>
#include <vexdesk/icore.h>
#include <vexdesk/ioptionspage.h>
#include <vexdesk/iplugin.h>

#include <QtCore/QtPlugin>

namespace {

// An exception whose code is in this library.
class OwnError final : public std::exception
{
public:
    const char* what() const noexcept override { return "собственная ошибка"; }
};

class Page final : public IOptionsPage
{
public:
    QString id() const override { return QStringLiteral("THROWING.General"); }
    QString displayName() const override { return QString(); }
    QString category() const override { return QString(); }
    QString displayCategory() const override { return QString(); }
    QIcon categoryIcon() const override { return QIcon(); }
    bool matches(const QString& /*searchText*/) const override { return false; }
    QWidget* createPage(QWidget* /*parent*/) override { return nullptr; }
    void apply() override {}
    void finish() override {}
};

} // namespace

class Throwing final : public QObject, public IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "qgui.plugin.desktest.Throwing")
    Q_INTERFACES(IPlugin)

public:
    ~Throwing() override { desktest::recordCall(QStringLiteral("THROWING.destroyed")); }

    QByteArrayView code() const override { return "THROWING"; }
    QString name() const override { return QStringLiteral("Бросающий модуль"); }
    QString author() const override { return QStringLiteral("Мастерская"); }
    QString version() const override { return QStringLiteral("0.1"); }
    QString description() const override { return QStringLiteral("Не запускается"); }

    void init(ICore* core) override
    {
        desktest::recordCall(QStringLiteral("THROWING.init"));
        core->addOptionsPage(&m_page);
        auto* const command = new Command("THROWING.Command", this);
        ActionManager::instance()->menuBar()->addCommand(command, "", "50");
        const QString type = qApp->property("throwType").toString();
        if (type == QLatin1String("exception"))
            throw OwnError();
        if (type == QLatin1String("text"))
            throw QStringLiteral("нет лицензии");
        throw 42;
    }
    void tini() override { desktest::recordCall(QStringLiteral("THROWING.tini")); }
    void initStage(InitStage /*stage*/) override
    {
        desktest::recordCall(QStringLiteral("THROWING.initStage"));
    }

private:
    Page m_page;
};

#include "throwing.moc"
