// SPDX-License-Identifier: MIT
// Its code is the one of the good plug-in.
#include "recordingplugin.h"

#include <QtCore/QtPlugin>

class Twin final : public desktest::RecordingPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "qgui.plugin.desktest.Twin")
    Q_INTERFACES(IPlugin)

public:
    Twin()
        : RecordingPlugin("TWIN")
    {}

    QByteArrayView code() const override { return "GOOD"; }
    QString name() const override { return QStringLiteral("Двойник"); }
};

#include "twin.moc"
