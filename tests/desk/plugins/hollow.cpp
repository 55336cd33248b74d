// SPDX-License-Identifier: MIT
// Its metadata are right, its object is none of the terminal's plug-ins.
#include "callrecord.h"

#include <QtCore/QtPlugin>

class Hollow final : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "qgui.plugin.desktest.Hollow")

public:
    ~Hollow() override { desktest::recordCall(QStringLiteral("HOLLOW.destroyed")); }
};

#include "hollow.moc"
