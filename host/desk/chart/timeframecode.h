// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/timeframe.h"

#include <QtCore/QString>

#include <optional>

/// The names of timeframes in settings and in the ids of commands. Any thread.
namespace vexdesk {

/// "Minutes10".
QString timeframeCode(Timeframe timeframe);
/// No value for a text that is no timeframe's code.
std::optional<Timeframe> timeframeOfCode(const QString& code);

} // namespace vexdesk
