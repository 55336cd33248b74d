// SPDX-License-Identifier: MIT
#pragma once

#include "desk/pluginrecord.h"

#include <QtCore/QList>
#include <QtCore/QString>

namespace vexdesk {

/// What became of the plug-ins, for scripts: a line for each file, its parts separated by tab
/// characters: "loaded" or "refused", the plug-in's code and version, the file, and the reason of
/// a refusal in the user's language, with what Qt says of it.
QString pluginList(const QList<PluginRecord>& records);

} // namespace vexdesk
