// SPDX-License-Identifier: MIT
// Its code is the one of the good plug-in.
#include "callrecord.h"

#include <vexdesk/iplugin.h>

#include <QtCore/QtPlugin>

class Twin final : public QObject, public IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "qgui.plugin.desktest.Twin")
    Q_INTERFACES(IPlugin)

public:
    ~Twin() override { desktest::recordCall(QStringLiteral("TWIN.destroyed")); }

    QByteArrayView code() const override { return "GOOD"; }
    QString name() const override { return QStringLiteral("Двойник"); }
    QString author() const override { return QStringLiteral("Мастерская"); }
    QString version() const override { return QStringLiteral("1.0"); }
    QString description() const override { return QStringLiteral("Двойник для проверки"); }

    void init(ICore* /*core*/) override { desktest::recordCall(QStringLiteral("TWIN.init")); }
    void tini() override { desktest::recordCall(QStringLiteral("TWIN.tini")); }
    void initStage(InitStage stage) override
    {
        desktest::recordCall(stage == InitStage::PluginsReady ? QStringLiteral("TWIN.PluginsReady")
                                                              : QStringLiteral("TWIN.WindowShown"));
    }
};

#include "twin.moc"
