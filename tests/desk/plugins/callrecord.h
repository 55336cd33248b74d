// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

/// What the test plug-ins were asked to do, seen by the test: plug-in and test share nothing but
/// the application object and the environment.
namespace desktest {

/// Appends the call to the application's property "calls", and to the file that the environment
/// variable DESK_TEST_RECORD names, if any.
inline void recordCall(const QString& call)
{
    qApp->setProperty("calls", qApp->property("calls").toStringList() << call);
    QFile file(qEnvironmentVariable("DESK_TEST_RECORD"));
    if (!file.fileName().isEmpty() && file.open(QIODevice::Append))
        file.write(call.toUtf8() + '\n');
}

/// The calls since the last takeCalls().
inline QStringList calls()
{
    return qApp->property("calls").toStringList();
}

/// The calls since the last time, which are forgotten now.
inline QStringList takeCalls()
{
    QStringList taken = calls();
    qApp->setProperty("calls", QVariant());
    return taken;
}

/// Whether the test wants the named call to fail.
inline bool hasToThrow(const QString& call)
{
    return qApp->property("throwIn").toString() == call;
}

} // namespace desktest
