// SPDX-License-Identifier: MIT
// It calls a function that no library has.
#include <QtCore/QObject>
#include <QtCore/QtPlugin>

extern "C" void deskTestFunctionOfNoLibrary();

class Unresolved final : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "qgui.plugin.desktest.Unresolved")

public:
    ~Unresolved() override { deskTestFunctionOfNoLibrary(); }
};

#include "unresolved.moc"
