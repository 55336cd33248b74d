// SPDX-License-Identifier: MIT
// A plug-in beside the good one: the order of calls shows with two.
#include "callrecord.h"

#include <vexdesk/iplugin.h>

#include <QtCore/QtPlugin>

class Second final : public QObject, public IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "qgui.plugin.desktest.Second")
    Q_INTERFACES(IPlugin)

public:
    ~Second() override { desktest::recordCall(QStringLiteral("SECOND.destroyed")); }

    QByteArrayView code() const override { return "SECOND"; }
    QString name() const override { return QStringLiteral("Второй модуль"); }
    QString author() const override { return QStringLiteral("Мастерская"); }
    QString version() const override { return QStringLiteral("1.0"); }
    QString description() const override { return QStringLiteral("Второй модуль для проверки"); }

    void init(ICore* /*core*/) override { desktest::recordCall(QStringLiteral("SECOND.init")); }
    void tini() override { desktest::recordCall(QStringLiteral("SECOND.tini")); }
    void initStage(InitStage stage) override
    {
        desktest::recordCall(stage == InitStage::PluginsReady
                                 ? QStringLiteral("SECOND.PluginsReady")
                                 : QStringLiteral("SECOND.WindowShown"));
    }
};

#include "second.moc"
