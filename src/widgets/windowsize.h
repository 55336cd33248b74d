// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QLatin1String>

class QWidget;
class QWizard;

namespace tadata {

/// Gives a window the size that saveSize() kept in this group of the terminal's settings, if it
/// did.
/// User-interface thread, as all here.
void restoreSize(QWidget& window, QLatin1String settingsGroup);
void saveSize(const QWidget& window, QLatin1String settingsGroup);

/// Makes a wizard that is about to be shown so wide that a page of this width has its place in it,
/// but no wider than the screen. A wizard that has been given a size keeps it. Call it from
/// showEvent(), when the wizard has its first page. User-interface thread.
void widenForPage(QWizard& wizard, int pageWidth);

} // namespace tadata
