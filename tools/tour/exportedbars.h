// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/outcome.h>

#include <QtCore/QByteArray>

/// What the exports of the tour must have written, worked out in a way of its own. The lines are
/// those of the wizard's defaults: a heading, every column, commas. User-interface thread only.
namespace vexdesk {

/// Whether the file holds the stored demonstration bars in five minutes. Of each stored line there
/// is a line that says what its bar has come to, and of each finished bar one more.
Outcome hasStoredBars(const QByteArray& file);

/// Whether the file holds today's deals of the demonstration's series as minute bars. Deals that
/// came after the export are not in it.
Outcome hasDealsOfToday(const QByteArray& file);

} // namespace vexdesk
