// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtGui/QKeySequence>

class Command;

/// What every place that shows commands needs to know about them. User-interface thread only.
namespace vexdesk {

/// Whether something answers the command now.
bool isCommandEnabled(const QByteArray& id);

/// Runs what answers the command, if anything does. An exception that it throws is reported to the
/// user; none leaves this function.
void triggerCommand(const QByteArray& id);

/// The command's shortcut, empty for one that works in the menu only.
QKeySequence activeShortcut(const Command& command);

/// A menu text as it reads: "&Файл" is "Файл", "A && B" is "A & B".
QString withoutMnemonic(const QString& text);

} // namespace vexdesk
