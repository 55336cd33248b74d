// SPDX-License-Identifier: MIT
// A plug-in beside the good one: the order of calls shows with two.
#include "recordingplugin.h"

#include <QtCore/QtPlugin>

class Second final : public desktest::RecordingPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "qgui.plugin.desktest.Second")
    Q_INTERFACES(IPlugin)

public:
    Second()
        : RecordingPlugin("SECOND")
    {}

    QByteArrayView code() const override { return "SECOND"; }
    QString name() const override { return QStringLiteral("Второй модуль"); }
};

#include "second.moc"
