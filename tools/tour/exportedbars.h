// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// What the exports of the tour must have written, worked out in a way of its own. The lines are
/// those of the wizard's defaults: a heading, every column, commas. User-interface thread only.
namespace vexdesk {

/// Null text when the file holds the stored demonstration bars in five minutes, otherwise what is
/// wrong with it. Of each stored line there is a line that says what its bar has come to, and of
/// each finished bar one more.
QString storedExportMissing(const QByteArray& file);

/// Null text when the file holds today's deals of the demonstration's series as minute bars,
/// otherwise what is wrong with it. Deals that came after the export are not in it.
QString dealsExportMissing(const QByteArray& file);

} // namespace vexdesk
