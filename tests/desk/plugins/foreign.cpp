// SPDX-License-Identifier: MIT
// A plug-in of another program: the terminal must not run any of its code.
#include <QtCore/QObject>
#include <QtCore/QtPlugin>

namespace {

[[maybe_unused]] const bool codeRan = qputenv("DESK_TEST_FOREIGN_RAN", "1");

} // namespace

class Foreign final : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.example.editor.Foreign")
};

#include "foreign.moc"
