// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>

namespace testsupport {

/// Makes the settings file of the data directory one with these lines in the plug-in's group.
void writeSettings(const QByteArray& lines);

} // namespace testsupport
